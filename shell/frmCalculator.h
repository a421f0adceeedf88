// The regression calculator: the stored model evaluated at typed factor
// values, or solved for a target. Its rules are those of CalculatorForm;
// nothing is stored in the study.
#pragma once

#include <QDialog>

#include "regression/CalculatorForm.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QTableWidget;

namespace kestrow {

class frmCalculator : public QDialog {
  Q_OBJECT

 public:
  explicit frmCalculator(Study& study, QWidget* parent = nullptr);
  const CalculatorForm& Form() const { return form_; }

  QTabWidget* tabs;
  QLabel *lblEquation, *lblValue, *lblTarget, *lblSolution;
  QTableWidget *grdEval, *grdRestraints;
  QLineEdit* txtTarget;
  QComboBox *cmbRange, *cmbAlgorithm;
  QPushButton *cmdEvaluate, *cmdSolve, *cmdStop, *cmdAddLog, *cmdCCHelp, *cmdOK;

  // The grids' columns.
  enum { EVAL_FACTOR, EVAL_RANGE, EVAL_VALUE };
  enum { RES_FACTOR, RES_RELATION, RES_VALUE };

 protected:
  void reject() override;

 private:
  void cmdEvaluate_Click();
  void cmdSolve_Click();
  void ReadRestraints();

  CalculatorForm form_;
};

}  // namespace kestrow
