// The quick study: a problem, its factors, one response variable and a design
// on one screen. Its rules are those of QuickForm.
#pragma once

#include <QDialog>

#include "designs/QuickForm.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace kestrow {

class frmQuick : public QDialog {
  Q_OBJECT

 public:
  explicit frmQuick(QWidget* parent = nullptr);

  QLineEdit *txtName, *txtRV;
  QTableWidget* grdFactors;
  QComboBox* cmbReps;
  QLabel* lblDesign;
  QPushButton *cmdDesign, *cmdViewDes, *cmdOK, *cmdCancel;

  // True when the user wants the data grid after OK.
  bool GoToData() const { return goToData_; }

  void cmdDesign_Click();
  void cmdOK_Click();

 private:
  void FromForm();
  QuickForm form_;
  bool goToData_ = false;
};

}  // namespace kestrow
