// The response plot dialog. Its rules are those of ResponseForm.
#pragma once

#include <QDialog>

#include "analyses/ResponseForm.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmResponse : public QDialog {
  Q_OBJECT

 public:
  frmResponse(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox* cmbRV;
  QRadioButton* optVar[3];
  QCheckBox* chkAngled;
  QPushButton *cmdBrowse, *cmdCycle, *cmdOK, *cmdCancel;
  QLabel* lblFactors;

  bool Stored() const { return form_.stored; }
  void cmdOK_Click();

 protected:
  void reject() override;

 private:
  void ToForm();
  void FromForm();
  ResponseForm form_;
};

}  // namespace kestrow
