// The effects plot dialog. Its rules are those of FXPlotForm.
#pragma once

#include <QDialog>

#include "analyses/FXPlotForm.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace kestrow {

class frmFXplot : public QDialog {
  Q_OBJECT

 public:
  frmFXplot(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox* cmbRV;
  QPushButton *cmdBrowse, *cmdFlip, *cmdFilter, *cmdOK, *cmdCancel;
  QLabel *lblFactors, *lblFilter;

  bool Stored() const { return form_.stored; }
  void cmdOK_Click();
  void cmdFilter_Click();

 protected:
  void reject() override;

 private:
  void ShowChoices();
  FXPlotForm form_;
  const Study& study_;
};

}  // namespace kestrow
