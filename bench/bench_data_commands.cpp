// The run statistics of a large study (500 runs, 30 replications, ten
// responses: 150,000 observations), which every analysis computes first, and
// a paste of 15,000 cells (500 runs of 30 replications) into the data grid.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "core/Language.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"
#include "data/DataGrid.h"
#include "data/GridCommands.h"
#include "data/Statistics.h"
#include "LargeStudy.h"

namespace kestrow {
namespace {

// Says Yes to every question, as a user pasting over old data does.
class YesUi : public ScriptedUi {
 public:
  Answer YesNoBox(const std::string& text) override {
    ScriptedUi::YesNoBox(text);
    return Answer::Yes;
  }
  bool WarnYesNo(const std::string& text) override {
    ScriptedUi::WarnYesNo(text);
    return true;
  }
};

void BM_ComputeStatistics(benchmark::State& state) {
  InstallUi(std::make_unique<ScriptedUi>());
  auto p = LargeStudy(500, 30, 10);
  Statistics stats;
  for (auto _ : state) benchmark::DoNotOptimize(stats.Compute(p->Studies(1)));
  state.counters["observations"] = 500.0 * 30 * 10;
}

void BM_Paste15000Cells(benchmark::State& state) {
  InstallUi(std::make_unique<YesUi>());
  OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
  gSettings.ClipAcknowledge = false;
  gSettings.GridMode = 1;
  auto p = LargeStudy(500, 30, 1);
  Grid grid;
  DataGrid dg(grid);
  dg.FixUpDataGrid(p->Studies(1));
  dg.LoadDataGrid(p->Studies(1));
  std::string text = CopyData(dg, grid, p->Studies(1));
  bool pasted = true;
  for (auto _ : state) pasted = PasteData(dg, grid, *p, p->Studies(1), text) && pasted;
  if (!pasted) state.SkipWithError("the paste was refused");
  state.counters["cells"] = 500.0 * 30;
  CloseLanguage();
}

BENCHMARK(BM_ComputeStatistics)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Paste15000Cells)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace kestrow
BENCHMARK_MAIN();
