// The developers' bench of the statistical routines and the table readers:
// one row per routine with its arguments, a "Do It!" button and the result.
// Nothing else in the program depends on it.
#pragma once

#include <QDialog>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kestrow {

class frmTest : public QDialog {
  Q_OBJECT

 public:
  static constexpr int ROUTINES = 11;
  // The routines of the rows, in row order.
  static const char* const ROUTINE_NAMES[ROUTINES];

  explicit frmTest(QWidget* parent = nullptr);

  QLabel* lblRoutine[ROUTINES];              // the routine and its arguments
  std::vector<QLineEdit*> txtArg[ROUTINES];  // one per typed argument; an alpha is fixed and read-only
  QComboBox* cboColumn = nullptr;            // ReadTableC's column, one of the table's names
  QPushButton* cmdDoIt[ROUTINES];
  QLineEdit* txtResult[ROUTINES];            // the result, or what was wrong with the arguments
  QPushButton* cmdQuit;

  void cmdDoIt_Click(int index);

 private:
  // The argument fields of each row in the routine's order.
  std::vector<QWidget*> args_[ROUTINES];
};

}  // namespace kestrow
