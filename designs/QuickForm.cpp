#include "designs/QuickForm.h"

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

namespace {
constexpr std::size_t LEVEL_NAME_LIMIT = 6;
constexpr int MAX_REPS = 30;
}  // namespace

QuickForm::QuickForm() : problem_(std::make_unique<Problem>()) {
  problem_->Clear();
  study_.pProblem = problem_.get();
}

std::string QuickForm::VetFactors() {
  std::vector<Factor> made;
  for (const FactorRow& row : grdFactors) {
    std::string name = Trim(row.name);
    if (name.empty()) continue;
    for (const Factor& f : made)
      if (f.sName == name) return GetText("QCKerr5");
    Factor f;
    f.sName = name;
    f.sKey = "f" + std::to_string(made.size() + 1);
    bool numeric = true;
    // The levels stand in the first columns: a blank between two of them is
    // a level left out by mistake, which is said rather than passed over.
    std::size_t last = row.levels.size();
    while (last > 0 && Trim(row.levels[last - 1]).empty()) --last;
    for (std::size_t i = 0; i < last; ++i)
      if (Trim(row.levels[i]).empty()) return SubstituteCopy(GetText("QCKerrb"), name);
    for (const std::string& text : row.levels) {
      std::string level = Trim(text);
      if (level.empty()) continue;
      if (CharCount(level) > LEVEL_NAME_LIMIT) return GetText("QCKerr6");
      for (const Level& l : f.Levels)
        if (l.sName == level) return GetText("QCKerr7");
      if (!IsFloatText(level)) numeric = false;
      f.Levels.Add(Level{level, "", MISSING_VALUE});
    }
    if (f.Levels.Count() < 2) return GetText("QCKerr8");
    if (!numeric) f.iFlag = FACTOR_DISCRETE;
    made.push_back(std::move(f));
  }
  if (made.empty()) return GetText("QCKerr9");

  // The study keeps a design chosen for the same factors.
  bool same = static_cast<int>(made.size()) == problem_->Factors.Count();
  for (std::size_t i = 0; same && i < made.size(); ++i) {
    const Factor& old = problem_->Factors(static_cast<int>(i + 1));
    same = old.sName == made[i].sName && old.Levels.Count() == made[i].Levels.Count() && old.iFlag == made[i].iFlag;
    for (int l = 1; same && l <= old.Levels.Count(); ++l) same = old.Levels(l).sName == made[i].Levels(l).sName;
  }
  problem_->Factors.Clear();
  for (Factor& f : made) {
    std::string key = f.sKey;
    problem_->Factors.Add(std::move(f), key);
  }
  if (!same) {
    study_.ZapDesign();
    study_.Factors.Clear();
    for (const Factor& f : problem_->Factors) study_.Factors.Add(Item{f.sKey});
  }
  return "";
}

std::string QuickForm::DesignClick() { return VetFactors(); }

QuickForm::Complaint QuickForm::QuickOK() {
  if (Trim(txtName).empty()) return {GetText("QCKerr1"), "txtName"};
  if (std::string c = VetFactors(); !c.empty()) return {c, "grdFactors"};
  if (Trim(txtRV).empty()) return {GetText("QCKerr2"), "txtRV"};
  if (cmbReps < 1 || cmbReps > MAX_REPS) return {GetText("QCKerr3") + " " + std::to_string(MAX_REPS), "cmbReps"};
  if (study_.sDesignName.empty()) return {GetText("QCKerr4"), "cmdDesign"};

  problem_->sName = Trim(txtName);
  RespVar rv;
  rv.sKey = "v1";
  rv.sName = Trim(txtRV);
  problem_->RespVars.Add(rv, "v1");
  Study s = study_;
  s.sKey = "s1";
  s.sName = problem_->sName;
  s.iReps = static_cast<std::int16_t>(cmbReps);
  // An unstructured or blocked design has one replication and no run order.
  if (s.iDesFlag & (DES_UNSTRUCTURED | DES_BLOCKED)) {
    s.iReps = 1;
    s.iSequence = 1;
  }
  s.StudyRespVars.Clear();
  s.StudyRespVars.Add(StudyRespVar{"v1", 0, 0, 0});
  s.SetDataArray();
  if (s.iSequence == 0) s.Randomise();
  problem_->AddStudy(std::move(s));
  problem_->bChanged = true;
  ReplaceProblem(std::move(problem_));
  gStudy = &gProblem->Studies(1);
  problem_ = std::make_unique<Problem>();
  problem_->Clear();
  study_ = Study();
  study_.pProblem = problem_.get();
  return {};
}

}  // namespace kestrow
