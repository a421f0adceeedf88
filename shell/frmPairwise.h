// The pairwise comparison dialog. Its rules are those of PairwiseForm.
#pragma once

#include "analyses/PairwiseForm.h"
#include "shell/AnalysisDialog.h"

class QComboBox;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmPairwise : public AnalysisDialog<PairwiseForm> {
  Q_OBJECT

 public:
  frmPairwise(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox *cmbRV, *cmbAlpha;
  QRadioButton* optAlgorithm[2];
  QPushButton *cmdOK, *cmdCancel;

 private:
  void FromForm() override;
};

}  // namespace kestrow
