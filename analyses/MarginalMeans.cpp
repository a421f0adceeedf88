#include "analyses/MarginalMeans.h"

#include <algorithm>
#include <vector>

#include "charts/ChartPage.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"

namespace kestrow {

namespace {

const char* TAG = "SetupMMP";

// A run's figure of the chart: its average, or its standard deviation.
float Figure(const Statistics& st, int run, bool sd) { return sd ? st.SampSigRV(run) : st.SampAvgRV(run); }

// The group name over a run of positions, centred on them, at the height of
// their mean: on the chart of means it does not stretch the scale, on the
// chart of standard deviations it does.
void NameOver(Chart& c, const std::string& name, float first, int count, float sum, int n, bool sd) {
  DataPoint p;
  p.fX = first + static_cast<float>(count - 1) / 2;
  p.fY = n > 0 ? sum / static_cast<float>(n) : MISSING_VALUE;
  p.sId2 = name;
  p.idf = 2;
  if (sd) c.AddData(p);
  else c.AddDataUnconsidered(p);
}

// The level means of the factors in turn, one line a factor.
int MainEffects(const Study& s, const Statistics& st, Chart& c, bool sd) {
  int position = 0;
  for (int f = 1; f <= s.Factors.Count(); ++f) {
    const std::string key = s.GetFactorKey(f);
    const int levels = s.GetNumLevels(f);
    const float first = static_cast<float>(position + 1);
    float means = 0;
    int withMean = 0;
    bool joined = false;
    for (int j = 1; j <= levels; ++j) {
      ++position;
      float sum = 0, n = 0;
      for (int run = 1; run <= s.iNumRuns; ++run) {
        if (s.GetTreatmentLevel(f, run) != j) continue;
        float y = Figure(st, run, sd);
        if (y == MISSING_VALUE) continue;
        sum += y;
        n += 1;
      }
      if (n <= 0) continue;  // a level without data has no point: the line joins its neighbours
      DataPoint p;
      p.fX = static_cast<float>(position);
      p.fY = sum / n;
      p.sId = s.GetPFactorLevelName(key, j);
      p.sId2 = s.GetPFactorName2(key);
      p.idf = 1;
      p.iDotType = 1;
      p.bJoined = joined;
      joined = true;
      c.AddData(p);
      means += p.fY;
      ++withMean;
    }
    NameOver(c, s.GetPFactorName2(key), first, levels, means, withMean, sd);
  }
  return position;
}

// The means at each distinct coefficient of each contrast, the coefficients
// rising, one line a contrast.
int Contrasts(const Study& s, const Statistics& st, Chart& c, bool sd) {
  int position = 0;
  for (int i = 1; i <= s.Contrasts.Count(); ++i) {
    std::vector<float> values, sums, counts;
    for (int run = 1; run <= s.iNumRuns; ++run) {
      float k = s.GetContrastEntry(i, run);
      auto at = std::find(values.begin(), values.end(), k);
      std::size_t slot = static_cast<std::size_t>(at - values.begin());
      if (at == values.end()) {
        values.push_back(k);
        sums.push_back(0);
        counts.push_back(0);
      }
      float y = Figure(st, run, sd);
      if (y == MISSING_VALUE) continue;
      sums[slot] += y;
      counts[slot] += 1;
    }
    std::vector<std::size_t> order(values.size());
    for (std::size_t k = 0; k < order.size(); ++k) order[k] = k;
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
    const float first = static_cast<float>(position + 1);
    float means = 0;
    int withMean = 0;
    bool joined = false;
    for (std::size_t k : order) {
      ++position;
      if (counts[k] <= 0) continue;
      DataPoint p;
      p.fX = static_cast<float>(position);
      p.fY = sums[k] / counts[k];
      p.sId = ShortestText(values[k]);
      p.sId2 = s.Contrasts(i).sName;
      p.idf = 1;
      p.iDotType = 1;
      p.bJoined = joined;
      joined = true;
      c.AddData(p);
      means += p.fY;
      ++withMean;
    }
    NameOver(c, s.Contrasts(i).sName, first, static_cast<int>(values.size()), means, withMean, sd);
  }
  return position;
}

}  // namespace

std::string MMPChartList(const Study& s) { return s.MMP_bStdDevChart ? "X,S" : "X"; }

bool SetupMMP(Study& s, Statistics& st, const std::string& chartList) {
  s.ConfigureRV(s.MMP_sRVkey);
  if (s.GetRVnum(s.MMP_sRVkey) < 0) {
    ReportError("The response variable of this analysis is not in the study", TAG);
    return false;
  }
  st.ComputeRV(s);
  const bool mainEffects = (s.MMP_flags & 1) != 0;
  std::string rest = chartList;
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    if (token != "X" && token != "S") continue;
    const bool sd = token == "S";
    Chart& c = gphNewChart(CHT_MMP);
    c.sTitle = GetText(sd ? "Chtb" : "Chta");
    c.sXlabel = GetText(mainEffects ? "Effects" : "Contrasts");
    c.sYlabel = s.GetRVname2();
    c.sTextType = sd ? "SD" : "Mean";
    if (s.MMP_flags & 8) c.fValue = 1;
    int places = mainEffects ? MainEffects(s, st, c, sd) : Contrasts(s, st, c, sd);
    // One place more than the points, so that the last stands clear of the frame.
    c.xAxisCount = static_cast<std::int16_t>(std::min(places + 1, 32767));
  }
  return true;
}

}  // namespace kestrow
