// The study dialog: name, description, factors, response variables, design,
// replications and run order. Its rules are those of StudyForm.
#pragma once

#include <QDialog>

#include "designs/StudyForm.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QLineEdit;
class QPushButton;

namespace kestrow {

class frmStudy : public QDialog {
  Q_OBJECT

 public:
  // mode 1 new, 2 copy, 3 edit; `refusal` says why a new study cannot be made.
  frmStudy(int mode, const std::string& key, QWidget* parent = nullptr);
  const std::string& Refusal() const { return refusal_; }

  QLineEdit *txtName, *txtDesc, *txtReps;
  QCheckBox* chkRandom;
  QLabel* lblDesign;
  QListWidget *lblFactors, *lblRespVars;  // the study's factors and responses, one a line
  QPushButton *cmdFactors, *cmdRespVars, *cmdDesign, *cmdViewDes, *cmdOK, *cmdCancel;
  QComboBox* cmbPartial;

  StudyForm& Form() { return form_; }
  // The key of the study stored at OK.
  const std::string& StoredKey() const { return form_.key; }

  void cmdFactors_Click();
  void cmdRespVars_Click();
  void cmdDesign_Click();
  void cmdViewDes_Click();
  void cmdOK_Click();

 private:
  void ToForm();
  void FromForm();
  void ShowLists();
  void txtReps_LostFocus();
  void reject() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

  StudyForm form_;
  std::string refusal_;
};

}  // namespace kestrow
