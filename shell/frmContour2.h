// The dialog of a contour plot of a model of two factors: rainbow fill,
// target contour, filters, and a sample picture of the look chosen. Its
// rules are those of Contour2Form.
#pragma once

#include "regression/ContourForms.h"
#include "shell/AnalysisDialog.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace kestrow {

class frmContour2 : public AnalysisDialog<Contour2Form> {
  Q_OBJECT

 public:
  frmContour2(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QCheckBox *chkRainbow, *chkTgtContour;
  QPushButton *cmdFilter, *cmdOK, *cmdCancel;
  QLabel *lblFilter, *img1;

 private:
  void FromForm() override;
  void cmdFilter_Click();
  void ShowChoices();
  Study& study_;
};

// A sample of a contour plot's look, by its name ("conFilledTgt",
// "conFilled", "conEmptyTgt", "conEmpty").
QPixmap ContourSample(const std::string& name, int size);

}  // namespace kestrow
