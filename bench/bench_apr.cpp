// The all-subsets search on a study of 64 runs and five factors: the
// quadratic model (20 terms beside the constant, 1,048,575 subsets) and the
// interactions model (15 terms, 32,767 subsets), hierarchy off so that every
// subset is fitted and listed. Each row carries the figures of the fit of
// its subset alone; the time is from the start of the search to the sorted
// list with its Cp and best row.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>

#include "core/Language.h"
#include "core/Paths.h"
#include "core/Problem.h"
#include "core/ScriptedUi.h"
#include "core/Text.h"
#include "regression/APRSearch.h"
#include "regression/TermGrid.h"

namespace kestrow {
namespace {

// Five three-level factors run at 64 points scattered over the coded cube, and a response with
// curvature, interactions and noise.
std::unique_ptr<Problem> ScatteredStudy() {
  auto p = std::make_unique<Problem>();
  Study s;
  s.sKey = "s1";
  for (int f = 1; f <= 5; ++f) {
    Factor factor;
    factor.sKey = "f" + std::to_string(f);
    factor.sName = factor.sAbbr = std::string(1, static_cast<char>('A' + f - 1));
    for (const char* level : {"10", "20", "30"}) factor.Levels.Add(Level{level, "", 0});
    p->Factors.Add(factor, factor.sKey);
    s.Factors.Add(Item{factor.sKey});
  }
  RespVar rv;
  rv.sKey = "v1";
  rv.sName = "Yield";
  p->RespVars.Add(rv, rv.sKey);
  s.StudyRespVars.Add(StudyRespVar{"v1", 0, 0, 0});
  std::vector<std::vector<double>> x;
  std::uint32_t seed = 12345;  // a linear congruential sequence, the same on every machine
  const auto next = [&seed] {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<double>(seed >> 8) / (1 << 23) - 1;
  };
  for (int run = 1; run <= 64; ++run) {
    Treatment t;
    t.sTlist = "*";
    std::vector<double> point;
    for (int f = 1; f <= 5; ++f) {
      point.push_back(std::round(next() * 1000) / 1000);
      t.sTlist += "|" + ShortestText(point.back());
    }
    x.push_back(point);
    s.Treatments.Add(t);
  }
  s.iNumRuns = 64;
  s.iReps = 1;
  s.SetDataArray();
  for (int run = 1; run <= 64; ++run) {
    const std::vector<double>& v = x[static_cast<std::size_t>(run - 1)];
    double y = 50 + 4 * v[0] - 3 * v[1] + 2 * v[2] + v[0] * v[1] - 2 * v[3] * v[3] + 0.3 * std::cos(run * 2.3);
    s.SetData(1, run, 1, static_cast<float>(y));
  }
  s.REGRESS_sRVkey = "v1";
  s.REGRESS_iFlag = 2;
  p->AddStudy(std::move(s));
  return p;
}

void BM_AllPossibleRegressions(benchmark::State& state) {
  InstallUi(std::make_unique<ScriptedUi>());
  SetProgramFolder(KESTROW_BIN);
  OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
  auto p = ScatteredStudy();
  Study& s = p->Studies(1);
  std::vector<std::pair<std::string, std::string>> grid;
  for (const TermEntry& e : RegressionTerms(s, static_cast<int>(state.range(0)))) grid.emplace_back(e.sText, e.sTerm);
  APRSearch search;
  if (!search.Prepare(s, "v1", 2, APRSearch::TermTable(grid))) state.SkipWithError("cannot prepare");
  // The longest wait between two looks at the window (from the start, to the
  // end): how long a Stop can wait to be heard.
  using Clock = std::chrono::steady_clock;
  double longestGap = 0;
  for (auto _ : state) {
    Clock::time_point last = Clock::now();
    const auto look = [&] {
      const Clock::time_point now = Clock::now();
      longestGap = std::max(longestGap, std::chrono::duration<double, std::milli>(now - last).count());
      last = now;
      return true;
    };
    if (!search.Run(false, look)) state.SkipWithError("the search stopped");
    look();
  }
  state.counters["stop_wait_ms"] = longestGap;
  state.counters["subsets"] = static_cast<double>(search.Subsets());
  state.counters["rows"] = static_cast<double>(search.Rows().size());
  state.counters["collinear"] = static_cast<double>(search.Collinear());
  state.counters["exact"] = static_cast<double>(search.ExactFits());
  state.SetLabel(std::to_string(search.NumTerms() - 1) + " terms");
}

BENCHMARK(BM_AllPossibleRegressions)
    ->Arg(MODEL_INTERACTIONS)
    ->Arg(MODEL_QUADRATIC)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(7)
    ->ReportAggregatesOnly(true);

}  // namespace
}  // namespace kestrow

BENCHMARK_MAIN();
