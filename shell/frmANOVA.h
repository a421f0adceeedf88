// The ANOVA dialog of a study. Its rules are those of ANOVAForm.
#pragma once

#include <QDialog>

#include "analyses/ANOVAForm.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace kestrow {

class frmANOVA : public QDialog {
  Q_OBJECT

 public:
  // stats must hold every response of the study.
  frmANOVA(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox* cmbRV;
  QLineEdit* txtAlpha;
  QRadioButton* optVar[3];
  QPushButton *cmdPooling, *cmdOK, *cmdCancel;
  QGroupBox* fra1;
  QTableWidget* grdPool;
  QLabel *lblDF, *lblErrorSS, *lblTotalSS, *lblPooling;

  // True when the pool list was touched.
  bool Changed() const { return form_.changed; }
  // True when OK changed what the study holds.
  bool Stored() const { return form_.stored; }

 protected:
  void reject() override;

 private:
  void ToForm();
  void FillPool();
  void ShowTotals();
  void cmdPooling_Click();
  void cmdOK_Click();

  ANOVAForm form_;
};

}  // namespace kestrow
