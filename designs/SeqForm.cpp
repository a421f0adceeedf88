#include "designs/SeqForm.h"

#include "core/Language.h"
#include "core/Ui.h"

namespace kestrow {

std::vector<std::string> SeqForm::ColumnHeads() const {
  std::vector<std::string> heads{GetText("Seq")};
  for (const Item& f : study_.Factors) heads.push_back(study_.GetPFactorName2(f.sKey));
  return heads;
}

int SeqForm::PositionOf(int t) const {
  for (int p = 1; p <= study_.iNumRuns; ++p)
    if (study_.GetSeq(p, rep_) == t) return p;
  return 0;
}

std::string SeqForm::SeqCell(int t) const {
  int p = PositionOf(t);
  return p ? std::to_string(p) : std::string();
}

std::string SeqForm::LevelCell(int t, int f) const { return study_.GetTreatmentLevelName(f, t); }

std::string SeqForm::RepCaption() const { return GetText("Repn") + std::to_string(rep_); }

void SeqForm::cmdScramble_Click() {
  nextPos_ = 0;
  study_.Randomise();
  orderComplete_ = true;
}

void SeqForm::cmdEdit_Click() {
  nextPos_ = 1;
  for (int rep = 1; rep <= study_.iReps; ++rep)
    for (int p = 1; p <= study_.iNumRuns; ++p) study_.SetSeq(p, rep, 0);
  orderComplete_ = nextPos_ > study_.iNumRuns;
}

// Only a treatment without a position can be clicked, so the positions filled
// one after another always hold different treatments.
void SeqForm::RowClick(int t) {
  if (!InEditMode() || nextPos_ > study_.iNumRuns) return;
  if (t < 1 || t > study_.iNumRuns || PositionOf(t) != 0) return;
  study_.SetSeq(nextPos_, rep_, static_cast<std::int16_t>(t));
  ++nextPos_;
  if (nextPos_ > study_.iNumRuns) orderComplete_ = true;
}

void SeqForm::cmdPropagate_Click() {
  for (int rep = 1; rep <= study_.iReps; ++rep) {
    if (rep == rep_) continue;
    for (int p = 1; p <= study_.iNumRuns; ++p) study_.SetSeq(p, rep, study_.GetSeq(p, rep_));
  }
}

// In edit mode the typing starts again at position 1 of the replication
// scrolled to.
void SeqForm::vsbRep_Change(int value) {
  if (value < 1) value = study_.iReps;
  else if (value > study_.iReps) value = 1;
  rep_ = value < 1 ? 1 : value;
  if (InEditMode()) nextPos_ = 1;
}

bool SeqForm::cmdOK_Click() {
  for (int rep = 1; rep <= study_.iReps; ++rep)
    for (int p = 1; p <= study_.iNumRuns; ++p)
      if (study_.GetSeq(p, rep) == 0) {
        ErrorBox(GetText("SEQerr1"));
        return false;
      }
  return true;
}

}  // namespace kestrow
