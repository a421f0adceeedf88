// GetFullyCrossed for the largest full factorials the selection table offers:
// 14 two-level factors (16,384 runs) and 7 two-level with 5 three-level
// factors (31,104 runs). Reports the peak memory of the process against the
// size of the contrast table itself (2 bytes per contrast per run). Run each
// case in a process of its own (--benchmark_filter), so that the peak is its own.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <memory>

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

void Crossed(benchmark::State& state, int twoLevel, int threeLevel) {
  InstallUi(std::make_unique<ScriptedUi>());
  if (const char* home = std::getenv("KESTROW_HOME"); !home) SetProgramFolder(KESTROW_BIN);
  auto p = std::make_unique<Problem>();
  Study study;
  int n = 0;
  for (int levels : {2, 3}) {
    for (int i = 0; i < (levels == 2 ? twoLevel : threeLevel); ++i) {
      Factor f;
      f.sKey = "f" + std::to_string(++n);
      f.sName = f.sKey;
      for (int l = 1; l <= levels; ++l) f.Levels.Add(Level{std::to_string(l * 10), "", 0});
      p->Factors.Add(f, f.sKey);
      study.Factors.Add(Item{f.sKey});
    }
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

void BM_FullyCrossed14TwoLevel(benchmark::State& state) { Crossed(state, 14, 0); }
void BM_FullyCrossedMixed(benchmark::State& state) { Crossed(state, 7, 5); }

BENCHMARK(BM_FullyCrossed14TwoLevel)->Unit(benchmark::kSecond)->Iterations(1)->UseRealTime();
BENCHMARK(BM_FullyCrossedMixed)->Unit(benchmark::kSecond)->Iterations(1)->UseRealTime();

}  // namespace
}  // namespace kestrow

BENCHMARK_MAIN();
