// The data grid of a large study: 2,000 runs of 30 replications and two
// responses, one of them transformed (about 180,000 cells). Laying out and
// loading run when the data node is clicked, the unload when it is left.
#include <benchmark/benchmark.h>

#include <memory>

#include "core/ScriptedUi.h"
#include "data/DataGrid.h"
#include "LargeStudy.h"

namespace kestrow {
namespace {

void BM_ShowDataGrid(benchmark::State& state) {
  InstallUi(std::make_unique<ScriptedUi>());
  auto p = LargeStudy(2000, 30, 2);
  Grid grid;
  DataGrid dg(grid);
  for (auto _ : state) {
    dg.FixUpDataGrid(p->Studies(1));
    dg.LoadDataGrid(p->Studies(1));
  }
  state.counters["cells"] = grid.Rows() * grid.Cols();
}

void BM_LeaveDataGrid(benchmark::State& state) {
  InstallUi(std::make_unique<ScriptedUi>());
  auto p = LargeStudy(2000, 30, 2);
  Grid grid;
  DataGrid dg(grid);
  dg.FixUpDataGrid(p->Studies(1));
  dg.LoadDataGrid(p->Studies(1));
  for (auto _ : state) dg.UnLoadDataGrid(p->Studies(1));
}

BENCHMARK(BM_ShowDataGrid)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LeaveDataGrid)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace kestrow

BENCHMARK_MAIN();
