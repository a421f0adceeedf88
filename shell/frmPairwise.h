// The pairwise comparison dialog. Its rules are those of PairwiseForm.
#pragma once

#include <QDialog>

#include "analyses/PairwiseForm.h"

class QComboBox;
class QPushButton;
class QRadioButton;

namespace kestrow {

class frmPairwise : public QDialog {
  Q_OBJECT

 public:
  frmPairwise(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox *cmbRV, *cmbAlpha;
  QRadioButton* optAlgorithm[2];
  QPushButton *cmdOK, *cmdCancel;

  bool Stored() const { return form_.stored; }
  void cmdOK_Click();

 protected:
  void reject() override;

 private:
  void FromForm();
  PairwiseForm form_;
};

}  // namespace kestrow
