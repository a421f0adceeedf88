// The marginal means dialog. Its rules are those of MMPForm.
#pragma once

#include "analyses/MMPForm.h"
#include "shell/AnalysisDialog.h"

class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmMMP : public AnalysisDialog<MMPForm> {
  Q_OBJECT

 public:
  frmMMP(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox* cmbRV;
  QRadioButton* optWhat[2];
  QCheckBox *chkReduce, *chkIncSD;
  QPushButton *cmdOK, *cmdCancel;

 private:
  void FromForm() override;
};

}  // namespace kestrow
