// The dialogs of the regression's charts: the residuals of the stored model
// and the scattergram. Their rules are those of Residuals2Form and
// ScattergramForm.
#pragma once

#include "regression/RegressionChartForms.h"
#include "shell/AnalysisDialog.h"

class QCheckBox;
class QComboBox;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmResiduals2 : public AnalysisDialog<Residuals2Form> {
  Q_OBJECT

 public:
  frmResiduals2(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QListWidget* grd1;
  QCheckBox* chkStudent;
  QPushButton *cmdOK, *cmdCancel;

 private:
  void FromForm() override;
};

class frmScattergram : public AnalysisDialog<ScattergramForm> {
  Q_OBJECT

 public:
  frmScattergram(Study& study, const Statistics& stats, QWidget* parent = nullptr);
  // The choice of an accepted dialog.
  const ScatterChoice& Choice() const { return form_.choice; }

  QComboBox *cmbRV, *cmbFactor;
  QRadioButton* optDegree[3];
  QPushButton *cmdOK, *cmdCancel;

 private:
  void FromForm() override;
};

}  // namespace kestrow
