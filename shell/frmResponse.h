// The response plot dialog. Its rules are those of ResponseForm.
#pragma once

#include "analyses/ResponseForm.h"
#include "shell/AnalysisDialog.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmResponse : public AnalysisDialog<ResponseForm> {
  Q_OBJECT

 public:
  frmResponse(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox* cmbRV;
  QRadioButton* optVar[3];
  QCheckBox* chkAngled;
  QPushButton *cmdBrowse, *cmdCycle, *cmdOK, *cmdCancel;
  QLabel* lblFactors;

 private:
  void ToForm();
  void FromForm() override;
};

}  // namespace kestrow
