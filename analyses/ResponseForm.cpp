#include "analyses/ResponseForm.h"

#include <algorithm>

#include "analyses/FormParts.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

ResponseForm::ResponseForm(Study& study, const Statistics& stats) : study_(study) {
  rvList = FillRVList(study, stats, 5);
  option = study.RESPONSE_iVariable;
  SelectRV(ChosenRV(rvList, study.RESPONSE_sRVkey));
  chkAngled = (study.RESPONSE_iFlag & 1) != 0;
  for (const std::string& key : {study.RESPONSE_sF1Key, study.RESPONSE_sF2Key, study.RESPONSE_sF3Key})
    if (!key.empty() && study.GetFactorNum(key) <= study.Factors.Count() &&
        std::find(factors.begin(), factors.end(), key) == factors.end())
      factors.push_back(key);
  before_ = Snapshot();
}

std::string ResponseForm::Snapshot() const {
  std::string s = std::to_string(rvIndex) + "|" + std::to_string(option) + (chkAngled ? "1" : "0");
  for (const std::string& f : factors) s += "|" + f;
  return s;
}

bool ResponseForm::Edited() const { return Snapshot() != before_; }

void ResponseForm::SelectRV(int index) {
  rvIndex = index >= 0 && index < static_cast<int>(rvList.size()) ? index : -1;
  optionEnabled[1] = study_.iReps > 1;
  optionEnabled[2] = rvIndex >= 0 &&
                     study_.GetPRVTarget(PureKey(rvList[static_cast<std::size_t>(rvIndex)].key)) != MISSING_VALUE;
  SetOption(option);
}

void ResponseForm::SetOption(int value) {
  option = value >= 0 && value <= 2 && optionEnabled[value] ? value : 0;
}

CheckList ResponseForm::FactorList() const { return FactorChoices(study_, factors, 2, 3, "RSPerr1"); }

void ResponseForm::TakeFactors(const CheckList& list) { factors = ChosenFactors(list); }

bool ResponseForm::cmdBrowse_Click() {
  CheckList list = FactorList();
  if (!list.Show()) return false;
  TakeFactors(list);
  return true;
}

void ResponseForm::cmdCycle_Click() {
  if (factors.size() < 2) return;
  std::rotate(factors.rbegin(), factors.rbegin() + 1, factors.rend());
}

std::string ResponseForm::lblFactors() const {
  std::string text;
  for (const std::string& key : factors) text += (text.empty() ? "" : ", ") + study_.GetPFactorName(key);
  return text;
}

FormOutcome ResponseForm::OK(std::string& message) {
  message.clear();
  if (rvIndex < 0 || factors.size() < 2) {
    message = GetText("ANOMerr1");
    return FormOutcome::Refused;
  }
  const std::string& key = rvList[static_cast<std::size_t>(rvIndex)].key;
  std::string f1 = factors[0], f2 = factors[1], f3 = factors.size() > 2 ? factors[2] : std::string();
  std::int16_t flag = static_cast<std::int16_t>((study_.RESPONSE_iFlag & ~1) | (chkAngled ? 1 : 0));
  stored = key != study_.RESPONSE_sRVkey || f1 != study_.RESPONSE_sF1Key || f2 != study_.RESPONSE_sF2Key ||
           f3 != study_.RESPONSE_sF3Key || option != study_.RESPONSE_iVariable || flag != study_.RESPONSE_iFlag;
  study_.RESPONSE_sRVkey = key;
  study_.RESPONSE_sF1Key = f1;
  study_.RESPONSE_sF2Key = f2;
  study_.RESPONSE_sF3Key = f3;
  study_.RESPONSE_iVariable = static_cast<std::int16_t>(option);
  study_.RESPONSE_iFlag = flag;
  return FormOutcome::Accepted;
}

}  // namespace kestrow
