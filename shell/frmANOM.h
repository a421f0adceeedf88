// The analysis-of-means dialog. Its rules are those of ANOMForm.
#pragma once

#include <QDialog>

#include "analyses/ANOMForm.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmANOM : public QDialog {
  Q_OBJECT

 public:
  frmANOM(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox *cmbRV, *cmbAlpha, *cmbSG;
  QPushButton *cmdCharts, *cmdOK, *cmdCancel;
  QLabel* lblCharts;
  QRadioButton* optSG[2];
  QCheckBox *chkExclude, *chk1in5;

  bool Stored() const { return form_.stored; }
  void cmdOK_Click();

 protected:
  void reject() override;

 private:
  void FromForm();
  ANOMForm form_;
};

}  // namespace kestrow
