#include "workbench/MultiChart.h"

#include <algorithm>

#include "analyses/ANOM.h"
#include "analyses/MarginalMeans.h"
#include "analyses/Residuals.h"
#include "analyses/RunChart.h"
#include "charts/ChartPage.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"
#include "data/Filter.h"
#include "data/Statistics.h"
#include "workbench/Availability.h"
#include "workbench/ProblemTree.h"
#include "workbench/ShowAnalysis.h"

namespace kestrow {

namespace {

constexpr int MAX_CHARTS = 6;

// The tokens of a comma list.
std::vector<std::string> Tokens(std::string list) {
  std::vector<std::string> tokens;
  while (!list.empty()) {
    std::string token = Trim(PopToken(list));
    if (!token.empty()) tokens.push_back(token);
  }
  return tokens;
}

// What a chart of an analysis is called in the list.
std::string ChartText(const Study& s, int code, const std::string& token) {
  switch (code) {
    case ANALYSIS_ANOM:
      if (token == ANOM_XBAR) return GetText("Cht1");
      if (token == ANOM_RANGE) return GetText("Cht2");
      return s.GetPFactorName(token) + " " + GetText("MEANOM");
    case ANALYSIS_RESIDUALS: {
      int n = static_cast<int>(Val(token));
      if (n == -3) return GetText("NPP");
      if (n == -2) return GetText("RESot");
      if (n == -1) return GetText("RESfit");
      return GetText("RESfac") + " " + s.GetFactorName(n);
    }
    case ANALYSIS_FXPLOT: return FilterToText(s, token);
    case ANALYSIS_MMEANS: return GetText(token == "S" ? "Chtb" : "Chta");
    case ANALYSIS_SCREE: return GetText(token == "0" ? "Chti" : token == "1" ? "Chtj" : "Chtk");
    case ANALYSIS_RUNCHART:
      return GetText(token == "R" ? "Cht7" : s.StudyRespVars.Count() == 1 ? "Cht5" : "Cht6");
    case ANALYSIS_PAIRWISE: return GetText("Cht4");
    default: return GetText(AnalysisTag(code));
  }
}

// The charts an analysis makes with its stored settings, one token each; an
// analysis of a single chart has the empty token.
std::vector<std::string> ChartsOf(const Study& s, int code) {
  switch (code) {
    case ANALYSIS_ANOM: return Tokens(s.ANOM_sCharts);
    case ANALYSIS_RESIDUALS: return Tokens(s.RESIDUAL_sCharts);
    case ANALYSIS_FXPLOT: return Tokens(s.FXPLOT_sFilter);
    case ANALYSIS_MMEANS: return Tokens(MMPChartList(s));
    case ANALYSIS_SCREE: return Tokens(s.ANOVA_sCharts);
    case ANALYSIS_RUNCHART: return Tokens(RunChartList(s));
    default: return {""};
  }
}

// The analyses that draw, in the order of the tree.
const int CHARTED[] = {ANALYSIS_ANOM,   ANALYSIS_SCREE,  ANALYSIS_PAIRWISE, ANALYSIS_RESIDUALS,
                       ANALYSIS_FXPLOT, ANALYSIS_RESPLOT, ANALYSIS_MMEANS,  ANALYSIS_RUNCHART};

}  // namespace

bool ShowMultiChart(Study& study, Statistics& stats) {
  gphStart();
  Grid grid;
  for (const std::string& entry : Tokens(study.sMultiChart)) {
    std::size_t plus = entry.find('+');
    int code = static_cast<int>(Val(entry.substr(0, plus)));
    std::string detail = plus == std::string::npos ? std::string() : entry.substr(plus + 1);
    if (!IsAnalysisBuilt(code) || !IsChartAnalysis(code)) continue;
    stats.Compute(study);
    if (!AnalysisUnavailableReason(study, stats, code).empty() || !IsAnalysisSetUp(study, stats, code)) continue;
    if (!DrawAnalysis(code, study, stats, grid, detail)) return false;
  }
  return true;
}

MultiChartForm::MultiChartForm(Study& study, const Statistics& stats) : study_(study) {
  LoadMultiChart(stats);
  for (const Row& row : rows) before_ += row.checked ? "1" : "0";
}

bool MultiChartForm::Edited() const {
  std::string now;
  for (const Row& row : rows) now += row.checked ? "1" : "0";
  return now != before_;
}

FormOutcome MultiChartForm::OK(std::string& message) {
  message = MChartOK();
  return message.empty() ? FormOutcome::Accepted : FormOutcome::Refused;
}

void MultiChartForm::LoadMultiChart(const Statistics& stats) {
  std::vector<std::string> chosen = Tokens(study_.sMultiChart);
  for (int code : CHARTED) {
    if (!IsAnalysisBuilt(code)) continue;
    if (!AnalysisUnavailableReason(study_, stats, code).empty() || !IsAnalysisSetUp(study_, stats, code)) continue;
    for (const std::string& token : ChartsOf(study_, code)) {
      Row row;
      row.key = std::to_string(code) + (token.empty() ? "" : "+" + token);
      // The analysis's name, then the chart's, unless that already starts with it.
      std::string analysis = GetText(AnalysisTag(code)), chart = ChartText(study_, code, token);
      row.text = chart.rfind(analysis, 0) == 0 ? chart : analysis + ": " + chart;
      row.checked = std::find(chosen.begin(), chosen.end(), row.key) != chosen.end();
      rows.push_back(row);
    }
  }
}

std::string MultiChartForm::MChartOK() {
  std::string list;
  int count = 0;
  for (const Row& row : rows)
    if (row.checked) {
      list += (list.empty() ? "" : ",") + row.key;
      ++count;
    }
  if (count == 0) return GetText("ANOMerr1");
  if (count > MAX_CHARTS) return GetText("MCerr1");
  stored = list != study_.sMultiChart;
  study_.sMultiChart = list;
  return std::string();
}

}  // namespace kestrow
