#include "workbench/RVForm.h"

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Text.h"

namespace kestrow {

void RVForm::Begin(EditMode m, const std::string& selectedKey) {
  mode = m;
  gRespVarEdit.Clear();
  if (m != EditMode::New) {
    if (const RespVar* rv = gProblem->RespVars.Find(selectedKey)) gRespVarEdit = *rv;
  }
  if (m == EditMode::Copy) gRespVarEdit.sDesc = GetText("Copyof") + gRespVarEdit.sDesc;
  key = m == EditMode::Edit ? selectedKey : gProblem->GetNextNode("v");
  gRespVarEdit.sKey = key;
  if (m == EditMode::New) gsKey = key;
  txtName = gRespVarEdit.sName;
  txtAbbr = gRespVarEdit.sAbbr;
  txtDesc = gRespVarEdit.sDesc;
  txtUnits = gRespVarEdit.sUnits;
  txtTarget = TargetToText(gRespVarEdit.fTarget);
}

std::string RVForm::RVOK(RespVar& out) const {
  out.Clear();
  out.sKey = key;
  out.sName = Trim(txtName);
  out.sAbbr = Trim(txtAbbr);
  out.sDesc = txtDesc;
  out.sUnits = Trim(txtUnits);
  if (out.sName.empty()) return GetText("Ferr1");
  for (const RespVar& rv : gProblem->RespVars)
    if (rv.sName == out.sName && !(mode == EditMode::Edit && rv.sKey == key)) return GetText("WIZerr8");
  std::string target = txtTarget;
  out.fTarget = ParseTarget(target);
  if (out.fTarget == BAD_NUMBER) return GetText("WIZerr9");
  return "";
}

std::string RVForm::OK(bool& stored) {
  stored = false;
  RespVar made;
  std::string complaint = RVOK(made);
  if (!complaint.empty()) return complaint;
  gRespVarEdit = made;
  if (mode == EditMode::Edit) {
    RespVar* existing = gProblem->RespVars.Find(key);
    if (!existing) return "";
    *existing = made;
    gRespVar = existing;
  } else {
    gRespVar = gProblem->RespVars.Add(made, key);
  }
  gProblem->bChanged = true;
  stored = true;
  return "";
}

}  // namespace kestrow
