// The charted analyses on a study of 500 runs in 30 replicates, from the
// click on the analysis node to the chart list: the statistics of every
// response, the availability check, and the analysis filling the chart page
// (ANOM with its one-way and main-effect charts, pairwise comparison by
// Duncan's test, the interaction plot by two filters, marginal means with
// standard deviations, the response plot of three factors).
#include <benchmark/benchmark.h>

#include <memory>

#include "LargeStudy.h"
#include "charts/ChartPage.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/ScriptedUi.h"
#include "data/Statistics.h"
#include "workbench/Availability.h"
#include "workbench/ShowAnalysis.h"

namespace kestrow {
namespace {

std::unique_ptr<Problem> SetUpStudy() {
  InstallUi(std::make_unique<ScriptedUi>());
  SetProgramFolder(KESTROW_BIN);
  OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
  auto p = LargeStudy(500, 30, 1);
  Study& s = p->Studies(1);
  s.ANOM_sRVkey = s.PAIRWISE_sRVkey = s.FXPLOT_sRVkey = s.MMP_sRVkey = s.RESPONSE_sRVkey = "v1";
  s.ANOM_sCharts = "1WX,1WR,f1,f2,f3";
  s.PAIRWISE_iAlgorithm = 1;
  s.FXPLOT_sF1Key = "f1";
  s.FXPLOT_sF2Key = "f2";
  s.FXPLOT_sFilter = "3;1,3;2";
  s.MMP_bStdDevChart = true;
  s.RESPONSE_sF1Key = "f1";
  s.RESPONSE_sF2Key = "f2";
  s.RESPONSE_sF3Key = "f3";
  return p;
}

void BM_ClickToChartList(benchmark::State& state) {
  auto p = SetUpStudy();
  Study& s = p->Studies(1);
  const int code = static_cast<int>(state.range(0));
  Statistics stats;
  Grid grid;
  for (auto _ : state) {
    stats.Compute(s);
    if (!AnalysisUnavailableReason(s, stats, code).empty()) state.SkipWithError("not available");
    gphStart();
    if (!DrawAnalysis(code, s, stats, grid)) state.SkipWithError("the analysis stopped");
  }
  state.counters["charts"] = static_cast<double>(gPage.Charts.size());
  state.SetLabel(AnalysisPaneName(code));
}

BENCHMARK(BM_ClickToChartList)
    ->Arg(ANALYSIS_ANOM)
    ->Arg(ANALYSIS_PAIRWISE)
    ->Arg(ANALYSIS_FXPLOT)
    ->Arg(ANALYSIS_MMEANS)
    ->Arg(ANALYSIS_RESPLOT)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Repetitions(7)
    ->ReportAggregatesOnly(true);

}  // namespace
}  // namespace kestrow

BENCHMARK_MAIN();
