// The transformation dialog of a study's responses. Its rules are those of XformForm.
#pragma once

#include <QDialog>

#include "data/XformForm.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmXform : public QDialog {
  Q_OBJECT

 public:
  frmXform(Study& study, QWidget* parent = nullptr);

  QComboBox* cmbRV;
  QRadioButton* optXform[3];
  QLineEdit *txtA, *txtB;
  QPushButton *cmdCompute, *cmdOK, *cmdCancel;
  bool Changed() const { return changed_; }

 private:
  void ToForm();
  void FromForm();
  void cmdOK_Click();

  XformForm form_;
  bool changed_ = false;
};

}  // namespace kestrow
