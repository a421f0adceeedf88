#include "analyses/Pairwise.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "charts/ChartPage.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Ui.h"
#include "data/Statistics.h"
#include "stats/TableReaders.h"

namespace kestrow {

namespace {

const char* TAG = "Pairwise";
constexpr int BUCKETS = 200;
constexpr int LANES = 10;
constexpr float STEP = 0.4f;  // the height of a dot, and of a lane of bars
constexpr int INFINITE_DF = 10000;

// The error mean square within runs, with its degrees of freedom and the
// count of observations behind an average. Only good observations enter:
// with every cell filled this is the balanced figure, the runs times the
// replicates less the runs; a missing cell is left out rather than summed
// as the no-value mark. The count is the harmonic mean of the runs' counts,
// which for a balanced study is their common count.
void ErrorTerm(const Study& s, const Statistics& st, float& mse, int& df, float& perAverage) {
  float sse = 0;
  int good = 0, runs = 0;
  float inverse = 0;
  for (int run = 1; run <= s.iNumRuns; ++run) {
    float avg = st.SampAvgRV(run);
    if (avg == MISSING_VALUE) continue;
    int n = 0;
    for (int rep = 1; rep <= s.iReps; ++rep) {
      float y = s.GetDataRV(run, rep);
      if (y == MISSING_VALUE) continue;
      sse += (y - avg) * (y - avg);
      ++n;
    }
    good += n;
    ++runs;
    inverse += 1.0f / static_cast<float>(n);
  }
  df = good - runs;
  mse = df > 0 ? sse / static_cast<float>(df) : 0;
  perAverage = inverse > 0 ? static_cast<float>(runs) / inverse : 1;
}

}  // namespace

bool Pairwise(Study& s, Statistics& st, PairwiseGroups* out) {
  s.ConfigureRV(s.PAIRWISE_sRVkey);
  if (s.GetRVnum(s.PAIRWISE_sRVkey) < 0) {
    ReportError("The response variable of this analysis is not in the study", TAG);
    return false;
  }
  st.ComputeRV(s);
  PairwiseGroups g;
  float perAverage = 1;
  ErrorTerm(s, st, g.mse, g.df, perAverage);

  Chart& c = gphNewChart(CHT_PAIRWISE);
  c.sTitle = GetText("Cht4");
  c.sXlabel = s.GetRVname();
  c.fValue = s.PAIRWISE_fAlpha;
  float low = st.MinAvgRV(), high = st.MaxAvgRV();
  c.xMin = low;
  c.xMax = high;
  if (g.df < 1) {
    ReportError("The runs hold no replicated observations: there is no error to compare the averages with", TAG);
    return false;
  }
  if (!(high > low)) {
    ReportError("All run averages are equal: there is nothing to compare", TAG);
    return false;
  }

  // The dots, stacked downwards from the axis in buckets of the range.
  std::array<int, BUCKETS + 1> stack{};
  int deepest = 0;
  for (int run = 1; run <= s.iNumRuns; ++run) {
    float avg = st.SampAvgRV(run);
    if (avg == MISSING_VALUE) continue;
    int b = std::clamp(static_cast<int>(std::floor(static_cast<float>(BUCKETS) * (avg - low) / (high - low))), 0, BUCKETS);
    DataPoint p;
    p.fX = avg;
    p.fY = -STEP * static_cast<float>(stack[static_cast<std::size_t>(b)]);
    p.sId = std::to_string(run);
    p.idf = 1;
    p.iDotType = 1;
    c.AddData(p);
    deepest = std::max(deepest, ++stack[static_cast<std::size_t>(b)]);
    g.sorted.push_back(avg);
  }
  std::sort(g.sorted.begin(), g.sorted.end());
  const int n = static_cast<int>(g.sorted.size());
  g.groupEnd.assign(static_cast<std::size_t>(n), 0);
  auto at = [&](int row) { return g.sorted[static_cast<std::size_t>(row - 1)]; };
  auto end = [&](int row) -> int& { return g.groupEnd[static_cast<std::size_t>(row - 1)]; };
  // The t and Duncan tables end on a row of 10000 degrees of freedom that
  // stands for infinity: an error with more reads it.
  const std::int16_t df = static_cast<std::int16_t>(std::min(g.df, INFINITE_DF));
  const float alpha = s.PAIRWISE_fAlpha;

  if (s.PAIRWISE_iAlgorithm == 0) {
    float t = 0;
    if (!ReadtPercent(df, alpha / 2, t)) return false;  // said by the reader
    g.critical = t * std::sqrt(2 * g.mse / perAverage);
    c.sText1 = GetText("using") + " Least Significant Difference";
    c.sText2 = GetText("LSD") + " = " + FormatSF(4, g.critical);
    for (int i = 1; i < n; ++i)
      for (int j = i + 1; j <= n && at(j) - at(i) <= g.critical; ++j) end(i) = j;
  } else {
    float se = std::sqrt(g.mse / perAverage);
    g.critical = se;
    c.sText1 = GetText("using") + " Duncan's Multiple Range Test";
    c.sText2 = GetText("AvgStdE") + " = " + FormatSF(4, se);
    DuncanRows table{};
    ReadDuncanRow(df, alpha, table);
    if (table[1][1] == 0) return false;  // said by the reader
    g.ranges.assign(static_cast<std::size_t>(std::max(n + 1, 2)), 0);
    for (int p = 2; p <= n; ++p) {
      // The first tabled count at or above p, read or interpolated; beyond
      // the table the last column stands.
      float r = table[13][2];
      for (int i = 1; i <= 13; ++i) {
        if (table[static_cast<std::size_t>(i)][1] < static_cast<float>(p)) continue;
        const auto& row = table[static_cast<std::size_t>(i)];
        const auto& before = table[static_cast<std::size_t>(i - 1)];
        r = row[1] == static_cast<float>(p) || i == 1
                ? row[2]
                : before[2] + (static_cast<float>(p) - before[1]) / (row[1] - before[1]) * (row[2] - before[2]);
        break;
      }
      g.ranges[static_cast<std::size_t>(p)] = r * se;
    }
    // The longest group that starts at a row is kept; its extent is its size.
    for (int p = n; p >= 2; --p)
      for (int i = 1; i <= n - p + 1; ++i)
        if (at(i + p - 1) - at(i) <= g.ranges[static_cast<std::size_t>(p)] && end(i) == 0) end(i) = p;
    // From here on a group is told by its last row, as for the least
    // significant difference.
    for (int i = 1; i <= n; ++i)
      if (end(i) > 0) end(i) = i + end(i) - 1;
  }

  // The bars, each in the first lane free at its start, under the dots.
  std::array<int, LANES + 1> lanes{};
  for (int i = 1; i <= n; ++i) {
    if (end(i) == 0) continue;
    int lane = LANES;
    for (int l = 1; l <= LANES; ++l)
      if (lanes[static_cast<std::size_t>(l)] < i) {
        lane = l;
        break;
      }
    float y = -STEP * static_cast<float>(deepest + lane);
    c.AddLinePoint(at(i), y, 0, static_cast<std::int16_t>(lane), false);
    c.AddLinePoint(at(end(i)), y, 0, static_cast<std::int16_t>(lane), true);
    lanes[static_cast<std::size_t>(lane)] = end(i);
  }
  if (out) *out = std::move(g);
  return true;
}

}  // namespace kestrow
