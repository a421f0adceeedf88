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
#include "BenchStudies.h"
#include "regression/APRSearch.h"
#include "regression/TermGrid.h"

namespace kestrow {
namespace {

void BM_AllPossibleRegressions(benchmark::State& state) {
  InstallUi(std::make_unique<ScriptedUi>());
  SetProgramFolder(KESTROW_BIN);
  OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
  auto p = bench::ScatteredStudy();
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
