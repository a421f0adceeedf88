// The rules of the run-order dialog: which replication is shown, what each row
// of its grid holds, and what its buttons, row clicks and scroll control do to
// the study's run order. The dialog only moves values between its widgets and
// this class.
#pragma once

#include <string>
#include <vector>

#include "core/Study.h"

namespace kestrow {

class SeqForm {
 public:
  explicit SeqForm(Study& study) : study_(study) {}

  // The replication shown, from 1.
  int iRep() const { return rep_; }
  // The position the next clicked row takes; 0 when not in edit mode.
  int iNextPos() const { return nextPos_; }
  bool InEditMode() const { return nextPos_ != 0; }

  // ---- the grid: one row per treatment, in treatment order -----------------
  int RowCount() const { return study_.iNumRuns; }
  // The headings: the position column, then one per study factor.
  std::vector<std::string> ColumnHeads() const;
  // The position at which treatment t stands in the replication shown, as
  // text; blank when it has none.
  std::string SeqCell(int t) const;
  // The level name of factor f in treatment t.
  std::string LevelCell(int t, int f) const;
  // The caption of lblRep.
  std::string RepCaption() const;

  // ---- enabling -------------------------------------------------------------
  bool ScrollEnabled() const { return orderComplete_; }
  bool PropagateEnabled() const { return orderComplete_; }

  // ---- events ---------------------------------------------------------------
  void cmdScramble_Click();
  void cmdEdit_Click();
  // A click on the row of treatment t.
  void RowClick(int t);
  void cmdPropagate_Click();
  // The scroll control moved to value; 0 and iReps + 1 wrap around.
  void vsbRep_Change(int value);
  // True when the dialog may close; otherwise SEQerr1 has been shown.
  bool cmdOK_Click();

 private:
  // The position p with Seq(p, rep) = t in the replication shown; 0 if none.
  int PositionOf(int t) const;

  Study& study_;
  int rep_ = 1;
  int nextPos_ = 0;
  // The scroll control and cmdPropagate are off while an order is typed in.
  bool orderComplete_ = true;
};

}  // namespace kestrow
