// The analysis-of-means dialog. Its rules are those of ANOMForm.
#pragma once

#include "analyses/ANOMForm.h"
#include "shell/AnalysisDialog.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmANOM : public AnalysisDialog<ANOMForm> {
  Q_OBJECT

 public:
  frmANOM(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox *cmbRV, *cmbAlpha, *cmbSG;
  QPushButton *cmdCharts, *cmdOK, *cmdCancel;
  QLabel* lblCharts;
  QRadioButton* optSG[2];
  QCheckBox *chkExclude, *chk1in5;

 private:
  void FromForm() override;
};

}  // namespace kestrow
