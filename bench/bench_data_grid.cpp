// The data grid of a large study: 2,000 runs of 30 replications and two
// responses, one of them transformed (about 180,000 cells). Laying out and
// loading run when the data node is clicked, the unload when it is left.
#include <benchmark/benchmark.h>

#include <memory>

#include "core/Problem.h"
#include "core/ScriptedUi.h"
#include "data/DataGrid.h"

namespace kestrow {
namespace {

std::unique_ptr<Problem> LargeStudy() {
  auto p = std::make_unique<Problem>();
  for (int f = 1; f <= 3; ++f) {
    Factor factor;
    factor.sKey = "f" + std::to_string(f);
    factor.sName = "Factor " + std::to_string(f);
    factor.Levels.Add(Level{"10", "", 0});
    factor.Levels.Add(Level{"20", "", 0});
    p->Factors.Add(factor, factor.sKey);
  }
  for (int v = 1; v <= 2; ++v) {
    RespVar rv;
    rv.sKey = "v" + std::to_string(v);
    rv.sName = "Response " + std::to_string(v);
    p->RespVars.Add(rv, rv.sKey);
  }
  Study s;
  s.sKey = "s1";
  s.sDesignName = "2000 runs";
  s.iNumRuns = 2000;
  s.iReps = 30;
  for (int f = 1; f <= 3; ++f) s.Factors.Add(Item{"f" + std::to_string(f)});
  s.StudyRespVars.Add(StudyRespVar{"v1", 0, 0, 0});
  s.StudyRespVars.Add(StudyRespVar{"v2", 1, 1, 0});
  for (int r = 0; r < 2000; ++r) {
    Treatment t;
    t.SetZero(3);
    for (int f = 1; f <= 3; ++f) t.SetLevel(f, ((r >> f) & 1) + 1);
    s.Treatments.Add(t);
  }
  s.SetDataArray();
  for (int rv = 1; rv <= 2; ++rv)
    for (int run = 1; run <= 2000; ++run)
      for (int rep = 1; rep <= 30; ++rep) s.SetData(rv, run, rep, static_cast<float>(run) + rep * 0.25f);
  p->AddStudy(std::move(s));
  return p;
}

void BM_ShowDataGrid(benchmark::State& state) {
  InstallUi(std::make_unique<ScriptedUi>());
  auto p = LargeStudy();
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
  auto p = LargeStudy();
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
