#include "designs/StudyForm.h"

#include <cmath>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

namespace {
// The replications of a study lie between these.
constexpr int MIN_REPS = 1, MAX_REPS = 30;

bool RepsValid(const std::string& text, int& reps) {
  std::string t = Trim(text);
  if (!IsNumeric(t)) return false;
  double v = Val(t);
  // The range first: a huge count has no int to compare with.
  if (v < MIN_REPS || v > MAX_REPS || v != std::floor(v)) return false;
  reps = static_cast<int>(v);
  return true;
}

std::string RepsComplaint() { return GetText("QCKerr3") + " " + std::to_string(MAX_REPS); }
}  // namespace

std::string StudyForm::Begin(int m, const std::string& studyKey) {
  mode = m;
  gStudyEdit.pProblem = gProblem.get();
  key = m == 3 ? studyKey : std::string();
  changed = designReplaced = askedData_ = false;
  if (m == 1) {
    bool anyControl = false;
    for (const Factor& f : gProblem->Factors)
      if (!(f.iFlag & FACTOR_NOISE)) anyControl = true;
    if (!anyControl) return GetText("MNerrd");
    if (gProblem->RespVars.Empty()) return GetText("MNerre");
    gStudyEdit.Clear();
    gStudyEdit.pProblem = gProblem.get();
  } else {
    const Study* s = gProblem->Studies.Find(studyKey);
    if (!s) return "";
    if (m == 2) {
      // A copy is unlocked and so reads its factors and responses from the
      // problem: a locked study whose factor or response has since been
      // deleted there cannot be copied.
      std::string missing;
      auto note = [&](const std::string& what) { missing += (missing.empty() ? "" : ", ") + what; };
      for (const Item& item : s->Factors)
        if (!gProblem->Factors.Find(item.sKey)) {
          const Factor* own = s->MyFactors.Find(item.sKey);
          note("the factor \"" + (own ? own->sName : item.sKey) + "\"");
        }
      for (const StudyRespVar& srv : s->StudyRespVars)
        if (!gProblem->RespVars.Find(srv.sKey)) {
          const RespVar* own = s->MyRespVars.Find(srv.sKey);
          note("the response variable \"" + (own ? own->sName : srv.sKey) + "\"");
        }
      if (!missing.empty()) return SubstituteCopy(GetText("STUerr4"), missing);
    }
    gStudyEdit = *s;
    if (m == 2) {
      gStudyEdit.sKey.clear();
      gStudyEdit.sDesc = GetText("Copyof") + gStudyEdit.sDesc;
      gStudyEdit.iFlag = 0;  // a copy starts unlocked
      gStudyEdit.MyFactors.Clear();
      gStudyEdit.MyRespVars.Clear();
      changed = true;
    }
  }
  txtName = gStudyEdit.sName;
  txtDesc = gStudyEdit.sDesc;
  txtReps = std::to_string(gStudyEdit.iReps);
  oldReps_ = txtReps;
  chkRandom = gStudyEdit.iSequence == 0;
  lblDesign = gStudyEdit.sDesignName;
  viewDesEnabled = !lblDesign.empty();
  cmbPartial = gStudyEdit.GetPFactorName(gStudyEdit.sPartial);
  DesignChosen(false);
  return "";
}

bool StudyForm::HasData() const { return gStudyEdit.DoesArrayExist() && !gStudyEdit.IsArrayEmpty(); }

bool StudyForm::RepsChanging() {
  if (!HasData() || askedData_) return true;
  askedData_ = true;
  if (YesNoBox(GetText("STUmsg3")) == Answer::Yes) return true;
  askedData_ = false;
  txtReps = oldReps_;
  return false;
}

std::string StudyForm::RepsLostFocus() {
  int reps;
  if (!RepsValid(txtReps, reps)) return RepsComplaint();
  int old = gStudyEdit.iReps;
  if (reps == old) return "";
  changed = true;
  if (reps == 1 || old == 1) gStudyEdit.ZapAnalyses();
  gStudyEdit.iReps = static_cast<std::int16_t>(reps);
  oldReps_ = txtReps;
  if (!gStudyEdit.DoesArrayExist()) return "";
  if (HasData()) {
    // The data are kept; new replications start blank in treatment order.
    gStudyEdit.SetDataArrayPreserve();
    for (int rep = old + 1; rep <= reps; ++rep)
      for (int run = 1; run <= gStudyEdit.iNumRuns; ++run) {
        for (int rv = 1; rv <= gStudyEdit.StudyRespVars.Count(); ++rv) {
          gStudyEdit.SetData(rv, run, rep, MISSING_VALUE);
          gStudyEdit.SetFlag(rv, run, rep, 0);
        }
        gStudyEdit.SetSeq(run, rep, static_cast<std::int16_t>(run));
      }
  } else {
    gStudyEdit.SetDataArray();
    if (chkRandom) gStudyEdit.Randomise();
  }
  for (int i = gStudyEdit.Notes.Count(); i >= 1; --i)
    if (gStudyEdit.Notes(i).iRep > reps) gStudyEdit.Notes.Remove(i);
  return "";
}

bool StudyForm::FactorsClick() {
  if (HasData() && !askedData_) {
    if (YesNoBox(GetText("STUmsg1")) != Answer::Yes) return false;
    askedData_ = true;
  }
  return true;
}

void StudyForm::FactorsChosen(const std::vector<std::string>& keys) {
  gStudyEdit.Factors.Clear();
  for (const std::string& k : keys) gStudyEdit.Factors.Add(Item{k});
  gStudyEdit.ZapDesign();
  lblDesign.clear();
  cmbPartial.clear();
  partialEnabled = false;
  viewDesEnabled = false;
  changed = true;
}

bool StudyForm::BrowseRespVars() {
  if (gProblem->RespVars.Count() == 1) {
    RespVarsChosen({gProblem->RespVars(1).sKey});
    return false;  // taken without a list
  }
  if (HasData() && !askedData_) {
    if (YesNoBox(GetText("STUmsg2")) != Answer::Yes) return false;
    askedData_ = true;
  }
  return true;
}

void StudyForm::RespVarsChosen(const std::vector<std::string>& keys) {
  // A response kept from before keeps its transform.
  Collection<StudyRespVar> chosen;
  for (const std::string& k : keys) {
    StudyRespVar srv;
    srv.sKey = k;
    int at = gStudyEdit.GetRVnum(k);
    if (at > 0) srv = gStudyEdit.StudyRespVars(at);
    chosen.Add(srv);
  }
  bool same = chosen.Count() == gStudyEdit.StudyRespVars.Count();
  for (int i = 1; same && i <= chosen.Count(); ++i) same = chosen(i).sKey == gStudyEdit.StudyRespVars(i).sKey;
  if (same) return;
  gStudyEdit.StudyRespVars = chosen;
  // The array follows the responses; their data start afresh.
  if (gStudyEdit.DoesArrayExist() || !gStudyEdit.sDesignName.empty()) gStudyEdit.SetDataArray();
  if (chkRandom && gStudyEdit.DoesArrayExist()) gStudyEdit.Randomise();
  changed = true;
}

std::string StudyForm::DesignClick() const {
  if (gStudyEdit.Factors.Empty()) return GetText("SFerr1");
  return "";
}

void StudyForm::DesignChosen(bool designChanged) {
  if (designChanged) {
    changed = true;
    designReplaced = true;
    lblDesign = gStudyEdit.sDesignName;
    viewDesEnabled = !lblDesign.empty();
    // A new design makes a new array at OK.
    gStudyEdit.SetDataArray();
  }
  repsLocked = false;
  randomEnabled = true;
  if (gStudyEdit.iDesFlag & DES_UNSTRUCTURED) {
    // An unstructured study has one replication and no run order.
    txtReps = "1";
    repsLocked = true;
    chkRandom = false;
    randomEnabled = false;
    viewDesEnabled = false;
  } else if (gStudyEdit.iDesFlag & DES_BLOCKED) {
    txtReps = "1";
    repsLocked = true;
    chkRandom = false;
    randomEnabled = false;
  }
  partialEnabled = (gStudyEdit.iDesFlag & DES_REFLECTABLE) != 0;
  if (designChanged && repsLocked) RepsLostFocus();
}

std::vector<std::string> StudyForm::PartialChoices() const {
  std::vector<std::string> names;
  if (!(gStudyEdit.iDesFlag & DES_REFLECTABLE)) return names;
  for (int f = 1; f <= gStudyEdit.Factors.Count(); ++f) names.push_back(gStudyEdit.GetFactorName(f));
  return names;
}

StudyForm::Complaint StudyForm::StudyOK() {
  // Nothing changed: the dialog closes and the design stays as it was.
  if (mode == 3 && !changed) return {};
  std::string name = Trim(txtName);
  if (name.empty()) return {GetText("QCKerr1"), "txtName"};
  for (const Study& s : gProblem->Studies)
    if (s.sName == name && !(mode == 3 && s.sKey == key)) return {GetText("STUerr1"), "txtName"};
  if (gStudyEdit.Factors.Empty()) return {GetText("SFerr1"), "cmdFactors"};
  if (gStudyEdit.StudyRespVars.Empty()) return {GetText("STUerr3"), "cmdRespVars"};
  if (Trim(lblDesign).empty()) return {GetText("QCKerr4"), "cmdDesign"};
  int reps;
  if (!RepsValid(txtReps, reps)) return {RepsComplaint(), "txtReps"};
  if (reps != gStudyEdit.iReps) {
    std::string complaint = RepsLostFocus();
    if (!complaint.empty()) return {complaint, "txtReps"};
  }

  gStudyEdit.sName = name;
  gStudyEdit.sDesc = txtDesc;
  gStudyEdit.iReps = static_cast<std::int16_t>(reps);
  gStudyEdit.sDesignName = lblDesign;
  gStudyEdit.iSequence = chkRandom ? 0 : 1;
  gStudyEdit.sPartial = cmbPartial.empty() ? "" : gStudyEdit.SFactorNameToKey(cmbPartial);
  if (!gStudyEdit.DoesArrayExist() || designReplaced) {
    gStudyEdit.SetDataArray();
    if (gStudyEdit.iSequence == 0) gStudyEdit.Randomise();
  } else if (!chkRandom) {
    gStudyEdit.UnRandomise();
  }

  // Into the problem: a new study under the next key, an edit in place.
  if (mode == 3) {
    Study* s = gProblem->Studies.Find(key);
    if (s) {
      *s = gStudyEdit;
      s->pProblem = gProblem.get();
      gStudy = s;
    }
  } else {
    // A new study, a copy too, starts with an empty data array: the
    // original's observations are no measurements of the copy.
    if (mode == 2) {
      gStudyEdit.SetDataArray();
      gStudyEdit.ZapNotes();
      if (gStudyEdit.iSequence == 0) gStudyEdit.Randomise();
    }
    key = gProblem->GetNextNode("s");
    gStudyEdit.sKey = key;
    gStudy = gProblem->AddStudy(gStudyEdit);
  }
  gProblem->bChanged = true;
  return {};
}

}  // namespace kestrow
