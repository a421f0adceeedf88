// The run-order dialog: the treatments of a study with their position in the
// run order of one replication, and the buttons that scramble, type in or copy
// that order. Its rules are those of SeqForm. It has no Cancel: closing it
// is OK, and an unfinished order keeps it open.
#pragma once

#include <QDialog>

#include "designs/SeqForm.h"

class QLabel;
class QPushButton;
class QScrollBar;
class QTableWidget;

namespace kestrow {

class frmSetSeq : public QDialog {
  Q_OBJECT

 public:
  frmSetSeq(Study& study, QWidget* parent = nullptr);

  QTableWidget* grd1;
  QScrollBar* vsbRep;
  QLabel* lblRep;
  QPushButton* cmdScramble;
  QPushButton* cmdEdit;
  QPushButton* cmdPropagate;
  QPushButton* cmdOK;

 private:
  void cmdScramble_Click();
  void cmdEdit_Click();
  void cmdPropagate_Click();
  void cmdOK_Click();
  void grd1_Click(int row, int column);
  void vsbRep_Change(int value);
  void reject() override;
  void LoadGrid();
  void Refresh();

  SeqForm form_;
};

}  // namespace kestrow
