#include "analyses/ANOMForm.h"

#include "analyses/ANOM.h"
#include "analyses/FormParts.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"
#include "data/Statistics.h"

namespace kestrow {

namespace {

constexpr int MAX_CHARTS = 6;
const char* ONE_WAY = "1W";  // the key of the one-way row of the chart list

}  // namespace

ANOMForm::ANOMForm(Study& study, const Statistics& stats) : study_(study) {
  rvList = FillRVList(study, stats, 1);
  rvIndex = ChosenRV(rvList, study.ANOM_sRVkey);
  alphaList = AlphaChoices(study.ANOM_fAlpha);
  cmbAlpha = IsTabledAlpha(study.ANOM_fAlpha) ? FormatDecimals(2, study.ANOM_fAlpha) : ShortestText(study.ANOM_fAlpha);
  charts = study.ANOM_sCharts;
  if (charts.empty()) charts = study.iReps > 1 ? std::string(ANOM_XBAR) + "," + ANOM_RANGE : ANOM_XBAR;
  for (int f = 1; f <= study.Factors.Count(); ++f) factorNames.push_back(study.GetFactorName(f));
  optSG = study.ANOM_iSubgrouping > 0 && study.ANOM_iSubgrouping <= study.Factors.Count() ? 1 : 0;
  cmbSG = optSG ? study.ANOM_iSubgrouping - 1 : 0;
  excludeEnabled = study.iReps > 1;
  chkExclude = excludeEnabled && (study.ANOM_flags & 1);
  chk1in5 = (study.ANOM_flags & 2) != 0;
  before_ = Snapshot();
}

std::string ANOMForm::Snapshot() const {
  return std::to_string(rvIndex) + "|" + Trim(cmbAlpha) + "|" + charts + "|" + std::to_string(optSG) + "|" +
         std::to_string(cmbSG) + "|" + (chkExclude ? "1" : "0") + (chk1in5 ? "1" : "0");
}

bool ANOMForm::Edited() const { return Snapshot() != before_; }

CheckList ANOMForm::ChartList() const {
  CheckList list;
  list.Init();
  list.prompt = GetText("ANOMmsg1");
  const bool replicated = study_.iReps > 1;
  std::string rows = charts;
  bool oneWay = false;
  std::vector<std::string> keys;
  while (!rows.empty()) {
    std::string token = Trim(PopToken(rows));
    if (token == ANOM_XBAR || token == ANOM_RANGE) oneWay = true;
    else if (!token.empty()) keys.push_back(token);
  }
  list.Add(GetText("ANOMmsg3") + (replicated ? " " + GetText("ANOMmsg2") : ""), ONE_WAY, oneWay);
  for (int f = 1; f <= study_.Factors.Count(); ++f) {
    std::string key = study_.GetFactorKey(f);
    bool ticked = false;
    for (const std::string& k : keys) ticked = ticked || k == key;
    list.Add(SubstituteCopy(GetText("ANOMmsg4"), study_.GetFactorName(f)), key, ticked);
  }
  list.check = [replicated](const std::vector<bool>& ticks) {
    int count = 0;
    for (std::size_t i = 0; i < ticks.size(); ++i)
      if (ticks[i]) count += i == 0 && replicated ? 2 : 1;
    if (count == 0) return GetText("ANOMerr1");
    if (count > MAX_CHARTS) return GetText("ANOMerr2");
    return std::string();
  };
  return list;
}

void ANOMForm::TakeCharts(const CheckList& list) {
  std::string tokens;
  auto add = [&](const std::string& t) { tokens += (tokens.empty() ? "" : ",") + t; };
  for (const CheckList::Row& row : list.Rows()) {
    if (!row.checked) continue;
    if (row.key == ONE_WAY) {
      add(ANOM_XBAR);
      if (study_.iReps > 1) add(ANOM_RANGE);
    } else {
      add(row.key);
    }
  }
  charts = tokens;
}

bool ANOMForm::cmdCharts_Click() {
  CheckList list = ChartList();
  if (!list.Show()) return false;
  TakeCharts(list);
  return true;
}

std::string ANOMForm::lblCharts() const {
  std::string text, rest = charts;
  bool oneWay = false;
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    std::string item;
    if (token == ANOM_XBAR || token == ANOM_RANGE) {
      if (oneWay) continue;
      oneWay = true;
      item = GetText("ANOMmsg3");
    } else if (!token.empty()) {
      int f = study_.GetFactorNum(token);
      if (f > study_.Factors.Count()) continue;
      item = SubstituteCopy(GetText("ANOMmsg4"), study_.GetFactorName(f));
    }
    if (!item.empty()) text += (text.empty() ? "" : ", ") + item;
  }
  return text;
}

FormOutcome ANOMForm::OK(std::string& message) {
  message.clear();
  float alpha = 0;
  message = ResponseAndAlphaComplaint(rvIndex, rvList.size(), cmbAlpha, alpha);
  if (!message.empty()) return FormOutcome::Refused;
  if (!IsTabledAlpha(alpha)) {  // the decision factors are tabled at three levels only
    message = GetText("ANOMerr5");
    return FormOutcome::Refused;
  }
  if (Trim(charts).empty()) {
    message = GetText("ANOMerr1");
    return FormOutcome::Refused;
  }
  const std::string& key = rvList[static_cast<std::size_t>(rvIndex)].key;
  std::int16_t subgrouping = optSG == 1 ? static_cast<std::int16_t>(cmbSG + 1) : 0;
  std::int16_t flags = static_cast<std::int16_t>((chkExclude && excludeEnabled ? 1 : 0) | (chk1in5 ? 2 : 0));
  stored = key != study_.ANOM_sRVkey || alpha != study_.ANOM_fAlpha || charts != study_.ANOM_sCharts ||
           subgrouping != study_.ANOM_iSubgrouping || flags != study_.ANOM_flags;
  study_.ANOM_sRVkey = key;
  study_.ANOM_fAlpha = alpha;
  study_.ANOM_sCharts = charts;
  study_.ANOM_iSubgrouping = subgrouping;
  study_.ANOM_flags = flags;
  return FormOutcome::Accepted;
}

}  // namespace kestrow
