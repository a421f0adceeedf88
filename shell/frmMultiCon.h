// The dialog of a contour plot of a model of more than two factors: the two
// plotted, the values the others are held at, and the key factor of a
// series with up to eight values. Its rules are those of MultiConForm.
#pragma once

#include "regression/ContourForms.h"
#include "shell/AnalysisDialog.h"

class QCheckBox;
class QPushButton;
class QTableWidget;

namespace kestrow {

class frmMultiCon : public AnalysisDialog<MultiConForm> {
  Q_OBJECT

 public:
  // The grid's columns; the values follow the key.
  enum Column { COL_FACTOR, COL_PLOT, COL_KEY, COL_VALUE };

  frmMultiCon(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QTableWidget* grdFactors;
  QCheckBox *chkRainbow, *chkTgtContour;
  QPushButton *cmdOK, *cmdCancel;

 private:
  void FromForm() override;
  bool filling_ = false;
};

}  // namespace kestrow
