// The marginal means dialog. Its rules are those of MMPForm.
#pragma once

#include <QDialog>

#include "analyses/MMPForm.h"

class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmMMP : public QDialog {
  Q_OBJECT

 public:
  frmMMP(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox* cmbRV;
  QRadioButton* optWhat[2];
  QCheckBox *chkReduce, *chkIncSD;
  QPushButton *cmdOK, *cmdCancel;

  bool Stored() const { return form_.stored; }
  void cmdOK_Click();

 protected:
  void reject() override;

 private:
  void FromForm();
  MMPForm form_;
};

}  // namespace kestrow
