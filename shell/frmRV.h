// The response-variable dialog. Its rules are those of RVForm.
#pragma once

#include <QDialog>

#include "workbench/RVForm.h"

class QLineEdit;
class QPushButton;

namespace kestrow {

class frmRV : public QDialog {
  Q_OBJECT

 public:
  frmRV(EditMode mode, const std::string& key, QWidget* parent = nullptr);

  QLineEdit* txtName;
  QLineEdit* txtAbbr;
  QLineEdit* txtDesc;
  QLineEdit* txtUnits;
  QLineEdit* txtTarget;
  QPushButton* cmdOK;
  QPushButton* cmdCancel;

  std::string storedKey;

 private:
  void cmdOK_Click();
  void reject() override;

  RVForm form_;
  bool changed_ = false;
};

}  // namespace kestrow
