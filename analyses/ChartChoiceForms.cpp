#include "analyses/ChartChoiceForms.h"

#include <algorithm>
#include <cmath>

#include "analyses/Residuals.h"
#include "analyses/RunChart.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

namespace {

constexpr int MAX_CHARTS = 6;

std::vector<int> Numbers(std::string list) {
  std::vector<int> out;
  while (!list.empty()) {
    std::string token = Trim(PopToken(list));
    if (!token.empty()) out.push_back(static_cast<int>(std::lround(Val(token))));
  }
  return out;
}

}  // namespace

// ---- ANOVA graphics ---------------------------------------------------------

ScreeForm::ScreeForm(Study& study, const Statistics&) : study_(study) {
  std::vector<int> tokens = Numbers(study.ANOVA_sCharts);
  bool none = study.ANOVA_sCharts.empty();  // a new analysis offers all three
  auto has = [&](int t) { return none || std::find(tokens.begin(), tokens.end(), t) != tokens.end(); };
  chkScree = has(0);
  chkLHNPP = has(1);
  chkPareto = has(2);
  before_ = Tokens();
}

std::string ScreeForm::Tokens() const {
  std::string list;
  for (auto [on, token] : {std::pair{chkScree, "0"}, {chkLHNPP, "1"}, {chkPareto, "2"}})
    if (on) list += (list.empty() ? "" : ",") + std::string(token);
  return list;
}

bool ScreeForm::Edited() const { return Tokens() != before_; }

FormOutcome ScreeForm::OK(std::string& message) {
  std::string list = Tokens();
  if (list.empty()) {
    message = GetText("ANOMerr1");
    return FormOutcome::Refused;
  }
  message.clear();
  stored = list != study_.ANOVA_sCharts;
  study_.ANOVA_sCharts = list;
  return FormOutcome::Accepted;
}

// ---- Residuals ----------------------------------------------------------------

std::vector<ResidualChartRow> ResidualChartRows(const std::string& stored, bool runOrder,
                                                const std::vector<std::pair<int, std::string>>& factors) {
  std::vector<ResidualChartRow> rows;
  std::vector<int> chosen = Numbers(stored);
  auto add = [&](const std::string& text, int token, bool byDefault) {
    bool ticked = stored.empty() ? byDefault : std::find(chosen.begin(), chosen.end(), token) != chosen.end();
    rows.push_back(ResidualChartRow{text, token, ticked});
  };
  add(GetText("NPP"), -3, true);
  if (runOrder) add(GetText("RESot"), -2, true);
  add(GetText("RESfit"), -1, true);
  for (const auto& [f, name] : factors) add(GetText("RESfac") + " " + name, f, false);
  return rows;
}

std::string ResidualChartList(const std::vector<ResidualChartRow>& rows, std::string& complaint) {
  std::string list;
  int count = 0;
  for (const ResidualChartRow& r : rows)
    if (r.checked) {
      list += (list.empty() ? "" : ",") + std::to_string(r.token);
      ++count;
    }
  complaint = count == 0 ? GetText("REGerr1") : count > MAX_CHARTS ? GetText("MCerr1") : "";
  return complaint.empty() ? list : std::string();
}

ResidualsForm::ResidualsForm(Study& study, const Statistics& stats) : study_(study) {
  rvList = FillRVList(study, stats, 3);
  rvIndex = ChosenRV(rvList, study.RESIDUAL_sRVkey);
  std::vector<std::pair<int, std::string>> factors;
  for (int f = 1; f <= study.Factors.Count(); ++f) factors.emplace_back(f, study.GetFactorName(f));
  // The run order exists only where the study was given one.
  rows = ResidualChartRows(study.RESIDUAL_sCharts, HasRunSequence(study), factors);
  before_ = Snapshot();
}

std::string ResidualsForm::Snapshot() const {
  std::string s = std::to_string(rvIndex);
  for (const Row& r : rows) s += r.checked ? "1" : "0";
  return s;
}

bool ResidualsForm::Edited() const { return Snapshot() != before_; }

FormOutcome ResidualsForm::OK(std::string& message) {
  message = ResponseComplaint(rvIndex, rvList.size());
  if (!message.empty()) return FormOutcome::Refused;
  std::string list = ResidualChartList(rows, message);
  if (!message.empty()) return FormOutcome::Refused;
  const std::string& key = rvList[static_cast<std::size_t>(rvIndex)].key;
  stored = key != study_.RESIDUAL_sRVkey || list != study_.RESIDUAL_sCharts;
  study_.RESIDUAL_sRVkey = key;
  study_.RESIDUAL_sCharts = list;
  return FormOutcome::Accepted;
}

// ---- Run chart ------------------------------------------------------------------

RunChartForm::RunChartForm(Study& study, const Statistics&) : study_(study) {
  optScale = study.RUN_iScaling >= 0 && study.RUN_iScaling <= 2 ? study.RUN_iScaling : 0;
  chkShowRange = (study.RUN_flags & RUN_SHOW_RANGE) != 0;
  chk1in5 = (study.RUN_flags & RUN_LABEL_FIFTH) != 0;
  scaleBefore_ = optScale;
  rangeBefore_ = chkShowRange;
  fifthBefore_ = chk1in5;
}

bool RunChartForm::Edited() const {
  return optScale != scaleBefore_ || chkShowRange != rangeBefore_ || chk1in5 != fifthBefore_;
}

FormOutcome RunChartForm::OK(std::string& message) {
  message.clear();
  std::int16_t flags = static_cast<std::int16_t>((chkShowRange ? RUN_SHOW_RANGE : 0) | (chk1in5 ? RUN_LABEL_FIFTH : 0));
  stored = flags != study_.RUN_flags || optScale != study_.RUN_iScaling;
  study_.RUN_flags = flags;
  study_.RUN_iScaling = static_cast<std::int16_t>(optScale);
  return FormOutcome::Accepted;
}

}  // namespace kestrow
