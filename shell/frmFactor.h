// The factor dialog: name, abbreviation, description, the two kinds, and up
// to eight levels with their coding and description. Its rules are those of
// FactorForm.
#pragma once

#include <QDialog>

#include "workbench/FactorForm.h"

class QCheckBox;
class QLineEdit;
class QTableWidget;
class QPushButton;

namespace kestrow {

class frmFactor : public QDialog {
  Q_OBJECT

 public:
  frmFactor(EditMode mode, const std::string& key, QWidget* parent = nullptr);

  QLineEdit* txtName;
  QLineEdit* txtAbbr;
  QLineEdit* txtDesc;
  QCheckBox* chkNumeric;
  QCheckBox* chkControlled;
  QTableWidget* grdLevels;
  QPushButton* cmdOK;
  QPushButton* cmdCancel;
  QPushButton* cmdNext;

  // The keys of the factors stored while the dialog was open (Next adds one each).
  std::vector<std::string> stored;

 private:
  void cmdOK_Click();
  void cmdCancel_Click();
  void cmdNext_Click();
  bool Store();
  void FromForm();
  void ToForm();
  void reject() override;

  FactorForm form_;
  bool changed_ = false;
};

}  // namespace kestrow
