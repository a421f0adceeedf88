#include "workbench/SetupWizard.h"

#include <cmath>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "workbench/MainCommands.h"

namespace kestrow {

namespace {
constexpr int MAX_REPS = 30;
}  // namespace

void SetupWizard::Begin() {
  CreateNew();
  gStudyEdit.Clear();
  gStudyEdit.pProblem = gProblem.get();
  factor.Begin(EditMode::New);
  respVar.Begin(EditMode::New);
}

std::string SetupWizard::Wiz01OK(const std::string& name, const std::string& desc) {
  if (Trim(name).empty()) return GetText("WIZerr1");
  gProblem->sName = Trim(name);
  gProblem->sDesc = desc;
  gProblem->bChanged = true;
  return "";
}

bool SetupWizard::Wiz02HasText() const {
  if (!Trim(factor.txtName).empty()) return true;
  for (const auto& row : factor.grdLevels)
    if (!Trim(row.value).empty()) return true;
  return false;
}

std::string SetupWizard::Wiz02Add() {
  // The wizard names its own complaint about a missing name.
  if (Trim(factor.txtName).empty()) return GetText("WIZerr2");
  bool stored = false;
  std::string complaint = factor.OK(stored);
  if (!complaint.empty()) return complaint;
  factor.Begin(EditMode::New);
  return "";
}

std::string SetupWizard::Wiz02OK() {
  if (Wiz02HasText()) return Wiz02Add();
  return gProblem->Factors.Empty() ? GetText("WIZerr2") : "";
}

bool SetupWizard::Wiz04HasText() const { return !Trim(respVar.txtName).empty() || !Trim(respVar.txtUnits).empty(); }

std::string SetupWizard::Wiz04Add() {
  if (Trim(respVar.txtName).empty()) return GetText("WIZerr7");
  bool stored = false;
  std::string complaint = respVar.OK(stored);
  if (!complaint.empty()) return complaint;
  respVar.Begin(EditMode::New);
  return "";
}

std::string SetupWizard::Wiz04OK() {
  if (Wiz04HasText()) return Wiz04Add();
  return gProblem->RespVars.Empty() ? GetText("WIZerr7") : "";
}

std::string SetupWizard::Wiz06OK(const std::string& name, const std::string& desc) {
  std::string n = Trim(name);
  if (n.empty()) return GetText("WIZerrb");
  for (const Study& s : gProblem->Studies)
    if (s.sName == n) return GetText("WIZerrc");
  gStudyEdit.sName = n;
  gStudyEdit.sDesc = desc;
  return "";
}

std::string SetupWizard::Wiz07OK() const {
  if (gStudyEdit.Factors.Empty()) return GetText("WIZerre");
  if (gStudyEdit.sDesignName.empty()) return GetText("WIZerrf");
  return "";
}

std::string SetupWizard::Wiz08OK(const std::vector<std::string>& respVars, const std::string& reps, bool randomise) {
  if (respVars.empty()) return GetText("WIZerrg");
  std::string t = Trim(reps);
  double n = Val(t);
  // The range first: a huge count has no int to compare with.
  if (!IsNumeric(t) || n < 1 || n > MAX_REPS || n != std::floor(n))
    return GetText("QCKerr3") + " " + std::to_string(MAX_REPS);
  Study s = gStudyEdit;
  s.StudyRespVars.Clear();
  for (const std::string& k : respVars) s.StudyRespVars.Add(StudyRespVar{k, 0, 0, 0});
  s.iReps = static_cast<std::int16_t>(n);
  s.iSequence = randomise ? 0 : 1;
  // An unstructured or blocked design has one replication and no run order.
  if (s.iDesFlag & (DES_UNSTRUCTURED | DES_BLOCKED)) {
    s.iReps = 1;
    s.iSequence = 1;
  }
  s.sKey = gProblem->GetNextNode("s");
  s.SetDataArray();
  if (s.iSequence == 0) s.Randomise();
  gStudy = gProblem->AddStudy(std::move(s));
  gProblem->bChanged = true;
  return "";
}

bool SetupWizard::ConfirmBack(const std::string& tag) {
  return WarnYesNoTitled("Kestrow Wizard", GetText(tag) + "\r\n" + GetText("WIZerr6b"));
}

}  // namespace kestrow
