// The non-linearity test of a study with centre points and replicates: shown
// at once, again on every change of response or confidence, and printable.
#pragma once

#include <QDialog>

#include "analyses/NonLin.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace kestrow {

class Study;
class Statistics;

class frmNonLin : public QDialog {
  Q_OBJECT

 public:
  // stats must hold every response of the study.
  frmNonLin(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox *cmbRV, *cmbConf;
  QLabel *lblBaseAvg, *lblCentreAvg, *lblENonLin, *lblSigma, *lblDL, *lblConclusion;
  QPushButton *cmdPrint, *cmdOK;
  int iRVnum = 1;

 private:
  void ComputeNonLin();
  int Confidence() const;

  Study& study_;
  const Statistics& stats_;
  NonLinResult result_;
};

}  // namespace kestrow
