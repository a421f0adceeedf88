// The setup wizard: eight pages, frmWiz01 to frmWiz08, from the problem's
// name to a study with its design. Its rules are those of SetupWizard.
#pragma once

#include <QDialog>

#include "workbench/SetupWizard.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QTableWidget;

namespace kestrow {

class frmWizard : public QDialog {
  Q_OBJECT

 public:
  explicit frmWizard(QWidget* parent = nullptr);

  int Step() const;  // 1 to 8
  QPushButton *cmdPrev, *cmdNext, *cmdCancel;
  // Page 1
  QLineEdit *txtProblem, *txtProblemDesc;
  // Page 2
  QLineEdit *txtFactor, *txtFactorAbbr, *txtFactorDesc;
  QCheckBox *chkNumeric, *chkControlled;
  QTableWidget* grdLevels;
  QPushButton* cmdAddFactor;
  // Page 3
  QListWidget* lstFactors;
  // Page 4
  QLineEdit *txtRV, *txtRVAbbr, *txtRVDesc, *txtUnits, *txtTarget;
  QPushButton* cmdAddRV;
  // Page 5
  QListWidget* lstRespVars;
  // Page 6
  QLineEdit *txtStudy, *txtStudyDesc;
  // Page 7
  QPushButton *cmdStudyFactors, *cmdStudyDesign;
  QLabel *lblStudyFactors, *lblStudyDesign;
  // Page 8
  QListWidget* grdRVs;
  QLineEdit* txtReps;
  QCheckBox* chkRnd;

  void cmdNext_Click();
  void cmdPrev_Click();

 private:
  void Show(int step);
  void FactorToForm();
  void FactorFromForm();
  void RVToForm();
  void RVFromForm();
  bool Complain(const std::string& text);

  SetupWizard wizard_;
  QStackedWidget* pages_;
};

}  // namespace kestrow
