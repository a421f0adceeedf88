// The developers' bench of the statistical routines and the table readers:
// one row per routine with its arguments, a "Do It!" button and the result.
// Nothing else in the program depends on it.
#pragma once

#include <QDialog>
#include <vector>

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
  std::vector<QLineEdit*> txtArg[ROUTINES];  // one per argument; an alpha is fixed and read-only
  QPushButton* cmdDoIt[ROUTINES];
  QLineEdit* txtResult[ROUTINES];            // the result, or what was wrong with the arguments
  QPushButton* cmdQuit;

  void cmdDoIt_Click(int index);
};

}  // namespace kestrow
