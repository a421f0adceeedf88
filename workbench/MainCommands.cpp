#include "workbench/MainCommands.h"

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

namespace {
const char* FILTER = "Kestrow (*.KSW)|*.KSW";

std::string WithExtension(const std::string& path) {
  return UCase(GetFExt(path)) == "KSW" ? path : path + ".KSW";
}
}  // namespace

std::string MainTitle() { return std::string(PROGRAM_TITLE) + " - " + GetFName(gProblem->sPathFileName); }

void CreateNew() {
  auto p = std::make_unique<Problem>();
  p->Clear();
  ReplaceProblem(std::move(p));
}

bool IsUntitled() { return UCase(GetFName(gProblem->sPathFileName)) == "UNTITLED.KSW"; }

bool SaveLogic() {
  if (!gProblem->bChanged) return true;
  Answer a = CurrentUi().YesNoCancelBox("Current file has changed. Do you wish to save the changes?");
  if (a == Answer::Cancel) return false;
  if (a == Answer::No) return true;
  std::string path = gProblem->sPathFileName;
  if (IsUntitled()) {
    path = CurrentUi().SaveFileDialog("Save File As", ProgramFolder(), FILTER, "untitled.KSW");
    // A cancelled dialog means "stay where I am", as Cancel in the question
    // does: the command that asked does not go on, and nothing is lost.
    if (path.empty()) return false;
    path = WithExtension(path);
  }
  if (!gProblem->Save(path)) {
    ErrorBox("Error saving file " + path);
    return false;
  }
  gProblem->bChanged = false;
  gProblem->sPathFileName = path;
  return true;
}

bool OpenKSTFile(const std::string& path) {
  auto p = std::make_unique<Problem>();
  if (!p->Load(path)) {
    ErrorBox(path + "\n" + GetText("MNerr8"));
    return false;
  }
  gSettings.DataDir = GetFPath(path);
  p->bChanged = false;
  ReplaceProblem(std::move(p));
  AddToRecentList(path);
  return true;
}

bool FileSave() {
  if (IsUntitled()) return FileSaveAs();
  if (!gProblem->Save(gProblem->sPathFileName)) {
    ErrorBox(gProblem->sPathFileName + "\n" + GetText("MNerr4"));
    return false;
  }
  gProblem->bChanged = false;
  AddToRecentList(gProblem->sPathFileName);
  return true;
}

bool FileSaveAs(const std::string& chosen) {
  std::string path = chosen;
  if (path.empty()) {
    path = CurrentUi().SaveFileDialog(GetText("SaveAs"), GetFPath(gProblem->sPathFileName), FILTER,
                                      GetFName(gProblem->sPathFileName));
    if (path.empty()) return false;
  }
  path = WithExtension(path);
  if (!gProblem->Save(path)) {
    ErrorBox(path + "\n" + GetText("MNerr4"));
    return false;
  }
  gProblem->sPathFileName = path;
  gProblem->bChanged = false;
  AddToRecentList(path);
  return true;
}

bool FactorIsUsed(const std::string& key) {
  for (const Study& s : gProblem->Studies)
    for (const Item& item : s.Factors)
      if (item.sKey == key) return true;
  return false;
}

bool RespVarIsUsed(const std::string& key) {
  for (const Study& s : gProblem->Studies)
    if (s.GetRVnum(key) > 0) return true;
  return false;
}

void ZapTaggedStudies() {
  for (int i = gProblem->Studies.Count(); i >= 1; --i) {
    if (!gProblem->Studies(i).bTag) continue;
    if (gStudy == &gProblem->Studies(i)) gStudy = nullptr;
    gProblem->Studies.Remove(i);
    gProblem->bChanged = true;
  }
}

bool DeleteFactor(const std::string& key) {
  if (!gProblem->Factors.Find(key)) return false;
  bool used = FactorIsUsed(key);
  bool yes = used ? WarnYesNo(GetText("MNmsgd")) : YesNoBox(GetText("MNmsge")) == Answer::Yes;
  if (!yes) return false;
  if (gFactor == gProblem->Factors.Find(key)) gFactor = nullptr;
  gProblem->Factors.Remove(key);
  for (Study& s : gProblem->Studies) {
    s.bTag = false;
    // A locked study holds its own copy of the factor and stays.
    if (s.IsLocked()) continue;
    for (const Item& item : s.Factors)
      if (item.sKey == key) s.bTag = true;
  }
  ZapTaggedStudies();
  gProblem->bChanged = true;
  return true;
}

bool DeleteRespVar(const std::string& key) {
  if (!gProblem->RespVars.Find(key)) return false;
  bool used = RespVarIsUsed(key);
  bool yes = used ? WarnYesNo(GetText("MNmsgf")) : YesNoBox(GetText("MNmsgg")) == Answer::Yes;
  if (!yes) return false;
  if (gRespVar == gProblem->RespVars.Find(key)) gRespVar = nullptr;
  gProblem->RespVars.Remove(key);
  for (Study& s : gProblem->Studies) s.bTag = !s.IsLocked() && s.GetRVnum(key) > 0;
  ZapTaggedStudies();
  gProblem->bChanged = true;
  return true;
}

bool DeleteStudy(const std::string& key) {
  Study* s = gProblem->Studies.Find(key);
  if (!s) return false;
  if (YesNoBox(GetText("MNmsgh")) != Answer::Yes) return false;
  if (gStudy == s) gStudy = nullptr;
  gProblem->Studies.Remove(key);
  gProblem->bChanged = true;
  return true;
}

bool LockStudy(const std::string& key) {
  Study* s = gProblem->Studies.Find(key);
  if (!s || s->IsLocked()) return false;
  if (!WarnYesNo(GetText("MNmsgb"))) return false;
  if (!s->IsArrayFull() && !WarnYesNo(GetText("MNmsgc"))) return false;
  s->LockMe();
  gProblem->bChanged = true;
  return true;
}

}  // namespace kestrow
