// The dialogs that choose the charts of an analysis. "ANOVA graphics": which
// charts of the contrasts are drawn; its rules are those of ScreeForm.
#pragma once

#include "analyses/ChartChoiceForms.h"
#include "shell/AnalysisDialog.h"

class QCheckBox;
class QComboBox;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmScree : public AnalysisDialog<ScreeForm> {
  Q_OBJECT

 public:
  frmScree(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QCheckBox *chkScree, *chkLHNPP, *chkPareto;
  QPushButton *cmdOK, *cmdCancel;

 private:
  void FromForm() override;
};

// The residuals analysis: a response and up to six charts. Its rules are
// those of ResidualsForm.
class frmResiduals : public AnalysisDialog<ResidualsForm> {
  Q_OBJECT

 public:
  frmResiduals(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox* cmbRV;
  QListWidget* grd1;
  QPushButton *cmdOK, *cmdCancel;

 private:
  void FromForm() override;
};

// The run chart's scale and options. Its rules are those of RunChartForm.
class frmRunChart : public AnalysisDialog<RunChartForm> {
  Q_OBJECT

 public:
  frmRunChart(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QRadioButton* optScale[3];
  QCheckBox *chkShowRange, *chk1in5;
  QPushButton *cmdOK, *cmdCancel;

 private:
  void FromForm() override;
};

}  // namespace kestrow
