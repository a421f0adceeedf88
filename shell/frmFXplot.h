// The effects plot dialog. Its rules are those of FXPlotForm.
#pragma once

#include "analyses/FXPlotForm.h"
#include "shell/AnalysisDialog.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace kestrow {

class frmFXplot : public AnalysisDialog<FXPlotForm> {
  Q_OBJECT

 public:
  frmFXplot(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox* cmbRV;
  QPushButton *cmdBrowse, *cmdFlip, *cmdFilter, *cmdOK, *cmdCancel;
  QLabel *lblFactors, *lblFilter;

  void cmdFilter_Click();

 private:
  void FromForm() override;
  void ShowChoices();
  const Study& study_;
};

}  // namespace kestrow
