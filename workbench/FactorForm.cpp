#include "workbench/FactorForm.h"

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "workbench/MainCommands.h"

namespace kestrow {

namespace {
// A level name holds at most this many characters.
constexpr std::size_t LEVEL_NAME_LIMIT = 6;
}  // namespace

void FactorForm::Begin(EditMode m, const std::string& selectedKey) {
  mode = m;
  gFactorEdit.Clear();
  if (m != EditMode::New) {
    if (const Factor* f = gProblem->Factors.Find(selectedKey)) gFactorEdit = *f;
  }
  if (m == EditMode::Copy) gFactorEdit.sDesc = GetText("Copyof") + gFactorEdit.sDesc;
  key = m == EditMode::Edit ? selectedKey : gProblem->GetNextNode("f");
  gFactorEdit.sKey = key;
  if (m == EditMode::New) gsKey = key;

  txtName = gFactorEdit.sName;
  txtAbbr = gFactorEdit.sAbbr;
  txtDesc = gFactorEdit.sDesc;
  chkNumeric = (gFactorEdit.iFlag & FACTOR_DISCRETE) != 0;
  chkControlled = (gFactorEdit.iFlag & FACTOR_NOISE) != 0;
  grdLevels = {};
  for (int i = 1; i <= gFactorEdit.Levels.Count() && i <= LEVEL_ROWS; ++i) {
    const Level& l = gFactorEdit.Levels(i);
    grdLevels[static_cast<std::size_t>(i - 1)] = {TargetToText(l.fCode), l.sName, l.sDesc};
  }
}

std::string FactorForm::ValidateForm(Factor& out) const {
  out.Clear();
  out.sKey = key;
  out.sName = Trim(txtName);
  out.sAbbr = Trim(txtAbbr);
  out.sDesc = txtDesc;
  if (out.sName.empty()) return GetText("Ferr1");
  for (const Factor& f : gProblem->Factors)
    if (f.sName == out.sName && !(mode == EditMode::Edit && f.sKey == key)) return GetText("WIZerr3");
  out.iFlag = static_cast<std::int16_t>((chkNumeric ? FACTOR_DISCRETE : 0) | (chkControlled ? FACTOR_NOISE : 0));

  int filled = 0;
  for (const LevelRow& row : grdLevels)
    if (!Trim(row.value).empty()) ++filled;
  if (filled < 2) return GetText("WIZerr4");

  for (const LevelRow& row : grdLevels) {
    std::string value = Trim(row.value);
    if (value.empty()) continue;
    Level level;
    std::string coding = row.coding;
    level.fCode = ParseTarget(coding);
    if (level.fCode == BAD_NUMBER) return GetText("Ferr7");
    if (CharCount(value) > LEVEL_NAME_LIMIT) return SubstituteCopy(GetText("Ferr4"), std::to_string(LEVEL_NAME_LIMIT));
    if (out.IsNumeric()) {
      if (!IsFloatText(value)) return GetText("Ferr5");
      value = ShortestText(ParseFloat(value));
    }
    for (const Level& earlier : out.Levels)
      if (earlier.sName == value) return GetText("WIZerr5");
    level.sName = value;
    level.sDesc = row.desc;
    out.Levels.Add(std::move(level));
  }
  if (gSettings.SortLevels && out.IsNumeric()) out.SortNumericLevels();
  return "";
}

bool FactorForm::NeedsUsedQuestion() const { return mode == EditMode::Edit && FactorIsUsed(key); }

std::string FactorForm::OK(bool& stored) {
  stored = false;
  Factor made;
  std::string complaint = ValidateForm(made);
  if (!complaint.empty()) return complaint;
  if (NeedsUsedQuestion() && YesNoBox(GetText("Fmsg2")) != Answer::Yes) return "";
  gFactorEdit = made;
  if (mode == EditMode::Edit) {
    Factor* existing = gProblem->Factors.Find(key);
    if (!existing) return "";
    existing->Clear();
    *existing = made;
    gFactor = existing;
  } else {
    gFactor = gProblem->Factors.Add(made, key);
  }
  gProblem->bChanged = true;
  stored = true;
  return "";
}

}  // namespace kestrow
