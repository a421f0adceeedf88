// The regression dialog of a study. Its rules are those of RegressForm; the
// Search button opens the search dialog over the grid's terms.
#pragma once

#include "regression/RegressForm.h"
#include "shell/AnalysisDialog.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace kestrow {

class frmRegress : public AnalysisDialog<RegressForm> {
  Q_OBJECT

 public:
  frmRegress(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QComboBox* cmbRV;
  QRadioButton* optVar[2];
  QCheckBox* chkCoding;
  QRadioButton* optModel[4];
  QTableWidget* grdTerms;
  QLabel *lblEquation, *lblRsquared, *lblMSE;
  QPushButton *cmdRegress, *cmdSearch, *cmdOK, *cmdCancel;

  // The grid's columns.
  enum { COL_TERM, COL_TICK, COL_COEFF, COL_P };

 private:
  void FromForm() override;
  void ToGrid();
  void ShowLabels();
  void cmdRegress_Click();
  void cmdSearch_Click();

  Study& study_;
};

}  // namespace kestrow
