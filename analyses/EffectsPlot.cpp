#include "analyses/EffectsPlot.h"

#include <array>

#include "analyses/RunFigures.h"
#include "charts/ChartPage.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Filter.h"
#include "data/Statistics.h"

namespace kestrow {

namespace {

const char* TAG = "SetupFXPlot";
// The working sums are indexed by level: a factor has at most eight.
constexpr int MAX_LEVELS = 8;

void OneFactor(const Study& s, const Statistics& st, const Filter& filter, int f1, Chart& c) {
  const std::string key = s.GetFactorKey(f1);
  const int levels = s.GetNumLevels(f1);
  std::array<float, MAX_LEVELS + 1> sum{}, count{};
  // The run averages at each level, as crosses labelled by their runs.
  for (int j = 1; j <= levels; ++j)
    for (int run = 1; run <= s.iNumRuns; ++run) {
      float avg = st.SampAvgRV(run);
      if (s.GetTreatmentLevel(f1, run) != j || !filter.bRunIsGood(run) || !(avg > MISSING_VALUE)) continue;
      sum[static_cast<std::size_t>(j)] += avg;
      count[static_cast<std::size_t>(j)] += 1;
      DataPoint p;
      p.sId = s.GetPFactorLevelName(key, j);
      p.sId2 = std::to_string(run);
      p.idf = 2;
      p.iDotType = 9;
      p.fX = static_cast<float>(2 * j - 1);
      p.fY = avg;
      c.AddData(p);
    }
  // The level means, one joined line.
  bool first = true;
  for (int j = 1; j <= levels; ++j) {
    if (count[static_cast<std::size_t>(j)] <= 0) continue;
    DataPoint p;
    p.sId = s.GetPFactorLevelName(key, j);
    p.idf = 1;
    p.iDotType = 1;
    p.fX = static_cast<float>(2 * j - 1);
    p.fY = sum[static_cast<std::size_t>(j)] / count[static_cast<std::size_t>(j)];
    p.bJoined = !first;
    first = false;
    c.AddData(p);
  }
}

void TwoFactors(const Study& s, const Filter& filter, int f1, int f2, Chart& c) {
  const std::string key1 = s.GetFactorKey(f1), key2 = s.GetFactorKey(f2);
  const int levels1 = s.GetNumLevels(f1), levels2 = s.GetNumLevels(f2);
  for (int k = 1; k <= levels2; ++k) {
    bool first = true;
    for (int j = 1; j <= levels1; ++j) {
      float sum = 0, count = 0;
      for (int run = 1; run <= s.iNumRuns; ++run) {
        if (s.GetTreatmentLevel(f1, run) != j || s.GetTreatmentLevel(f2, run) != k || !filter.bRunIsGood(run)) continue;
        for (int rep = 1; rep <= s.iReps; ++rep) {
          float y = s.GetDataRV(run, rep);
          if (y == MISSING_VALUE) continue;
          sum += y;
          count += 1;
        }
      }
      if (count <= 0) continue;
      DataPoint p;
      p.fX = static_cast<float>(2 * j - 1);
      p.fY = sum / count;
      p.iDotType = SeriesDotType(k);
      p.sId = s.GetPFactorLevelName(key1, j);
      p.sId2 = s.GetPFactorLevelName(key2, k);
      // The first line labels the axis; each line is named at its last level.
      p.idf = static_cast<std::int16_t>((k == 1 ? 1 : 0) + (j == levels1 ? 2 : 0));
      p.bJoined = !first;
      first = false;
      c.AddData(p);
    }
  }
}

}  // namespace

bool SetupFXPlot(Study& s, Statistics& st, const std::string& filterList) {
  s.ConfigureRV(s.FXPLOT_sRVkey);
  if (s.GetRVnum(s.FXPLOT_sRVkey) < 0) {
    ReportError("The response variable of this analysis is not in the study", TAG);
    return false;
  }
  st.ComputeRV(s);
  int f1 = s.GetFactorNum(s.FXPLOT_sF1Key);
  int f2 = s.FXPLOT_sF2Key.empty() ? 0 : s.GetFactorNum(s.FXPLOT_sF2Key);
  int factors = s.Factors.Count();
  if (f1 < 1 || f1 > factors || f2 > factors || f2 == f1) {
    ReportError("The factors of this effects plot are not in the study", TAG);
    return false;
  }
  if (s.GetNumLevels(f1) > MAX_LEVELS || (f2 > 0 && s.GetNumLevels(f2) > MAX_LEVELS)) {
    ReportError("A factor of an effects plot has at most 8 levels", TAG);
    return false;
  }
  std::string rest = filterList.empty() ? "0;0" : filterList;
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    if (token.empty()) continue;
    Filter filter;
    filter.InitnoRV(s, token, 0);
    Chart& c = gphNewChart(f2 > 0 ? CHT_INTERACTION : CHT_EFFECT);
    c.sTitle = GetText("FXPlot");
    c.xAxisCount = static_cast<std::int16_t>(2 * s.GetNumLevels(f1));
    c.sXlabel = s.GetPFactorName2(s.FXPLOT_sF1Key);
    c.sYlabel = s.GetRVname2();
    c.sText1 = token == "0;0" ? GetText("AllData") : SubstituteCopy(GetText("Filterby"), FilterToText(s, token));
    if (f2 > 0) {
      c.sText2 = s.GetPFactorName2(s.FXPLOT_sF2Key);
      TwoFactors(s, filter, f1, f2, c);
    } else {
      OneFactor(s, st, filter, f1, c);
    }
  }
  return true;
}

}  // namespace kestrow
