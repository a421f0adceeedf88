// GetFullyCrossed for the largest full factorials the selection table offers:
// 14 two-level factors (16,384 runs); 7 two-level with 5 three-level factors
// (31,104 runs); and levels 4, 4, 3, 3, 3, 3, 5, 5 (32,400 runs, near the
// largest mixed set below 32,768, with higher-order contrasts whose products
// leave the whole-number range). Reports the peak memory of the process against the
// size of the contrast table itself (2 bytes per contrast per run). Run each
// case in a process of its own (--benchmark_filter), so that the peak is its own.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <memory>
#include <vector>

#include "core/Globals.h"
#include "core/Paths.h"
#include "core/ScriptedUi.h"
#include "designs/Builders.h"
#include "designs/Design.h"

namespace kestrow {
namespace {

long PeakKilobytes() {
  rusage u {};
  getrusage(RUSAGE_SELF, &u);
  return u.ru_maxrss;
}

void Crossed(benchmark::State& state, const std::vector<int>& levelCounts) {
  InstallUi(std::make_unique<ScriptedUi>());
  if (const char* home = std::getenv("KESTROW_HOME"); !home) SetProgramFolder(KESTROW_BIN);
  auto p = std::make_unique<Problem>();
  Study study;
  int n = 0;
  for (int levels : levelCounts) {
    Factor f;
    f.sKey = "f" + std::to_string(++n);
    f.sName = f.sKey;
    for (int l = 1; l <= levels; ++l) f.Levels.Add(Level{std::to_string(l * 10), "", 0});
    p->Factors.Add(f, f.sKey);
    study.Factors.Add(Item{f.sKey});
  }
  study.pProblem = p.get();
  long before = PeakKilobytes();
  double tableMB = 0;
  for (auto _ : state) {
    study.ZapDesign();
    if (GetFullyCrossed(study, Design{}) != -1) state.SkipWithError("the build failed");
    tableMB = 2.0 * study.Contrasts.Count() * study.iNumRuns / 1.0e6;
  }
  state.counters["runs"] = study.iNumRuns;
  state.counters["table_MB"] = tableMB;
  state.counters["peak_MB"] = static_cast<double>(PeakKilobytes() - before) / 1000.0;
  state.counters["peak_over_table"] = tableMB > 0 ? (PeakKilobytes() - before) / 1000.0 / tableMB : 0;
}

void BM_FullyCrossed14TwoLevel(benchmark::State& state) { Crossed(state, std::vector<int>(14, 2)); }
void BM_FullyCrossedMixed(benchmark::State& state) { Crossed(state, {2, 2, 2, 2, 2, 2, 2, 3, 3, 3, 3, 3}); }
void BM_FullyCrossedMixed32400(benchmark::State& state) { Crossed(state, {4, 4, 3, 3, 3, 3, 5, 5}); }

BENCHMARK(BM_FullyCrossed14TwoLevel)->Unit(benchmark::kSecond)->Iterations(1)->UseRealTime();
BENCHMARK(BM_FullyCrossedMixed)->Unit(benchmark::kSecond)->Iterations(1)->UseRealTime();
BENCHMARK(BM_FullyCrossedMixed32400)->Unit(benchmark::kSecond)->Iterations(1)->UseRealTime();

}  // namespace
}  // namespace kestrow

BENCHMARK_MAIN();
