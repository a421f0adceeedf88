// Problem.Save and Problem.Load of a large problem: 20 studies of 500 runs,
// 30 replications and 8 response variables (about 17 MB, nearly all cells).
// Reports bytes per second; the aim is to be limited by the disk, not the code.
// Then the largest full factorial of few factors the selection table offers,
// five seven-level factors (16,807 runs, strings of 33,614 characters): it is
// saved, read back and saved again, and the two files must be the same bytes.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>

#include "core/Paths.h"
#include "core/Problem.h"
#include "core/ScriptedUi.h"
#include "designs/Builders.h"
#include "designs/Design.h"

namespace kestrow {
namespace {

constexpr int STUDIES = 20, RUNS = 500, REPS = 30, RVS = 8, FACTORS = 9;

std::unique_ptr<Problem> LargeProblem() {
  auto p = std::make_unique<Problem>();
  p->sName = "Large problem";
  for (int v = 1; v <= RVS; ++v) {
    RespVar rv;
    rv.sKey = "v" + std::to_string(v);
    rv.sName = "Response " + std::to_string(v);
    p->RespVars.Add(rv, rv.sKey);
  }
  for (int f = 1; f <= FACTORS; ++f) {
    Factor factor;
    factor.sKey = "f" + std::to_string(f);
    factor.sName = "Factor " + std::to_string(f);
    factor.Levels.Add(Level{"10", "", -1});
    factor.Levels.Add(Level{"20", "", 1});
    p->Factors.Add(factor, factor.sKey);
  }
  std::mt19937 rng(42);
  std::normal_distribution<float> noise(100.0f, 15.0f);
  for (int s = 1; s <= STUDIES; ++s) {
    Study study;
    study.sKey = "s" + std::to_string(s);
    study.sName = "Study " + std::to_string(s);
    for (const Factor& f : p->Factors) study.Factors.Add(Item{f.sKey});
    for (const RespVar& rv : p->RespVars) study.StudyRespVars.Add(StudyRespVar{rv.sKey, 0, 0, 0});
    study.sDesignName = "500 Runs";
    study.iDesFlag = 1;
    study.iNumRuns = RUNS;
    study.iReps = REPS;
    for (int r = 0; r < RUNS; ++r) {
      Treatment t;
      t.SetZero(FACTORS);
      for (int f = 1; f <= FACTORS; ++f) t.SetLevel(f, ((r >> (f - 1)) & 1) + 1);
      study.Treatments.Add(t);
    }
    for (int c = 1; c <= 45; ++c) {
      Contrast con;
      con.SetName(c);
      for (int r = 1; r <= RUNS; ++r) con.fSetLevel(r, ((r * c) & 1) ? 1.0f : -1.0f);
      study.Contrasts.Add(con);
    }
    study.SetDataArray();
    for (int rv = 1; rv <= RVS; ++rv)
      for (int run = 1; run <= RUNS; ++run)
        for (int rep = 1; rep <= REPS; ++rep) study.SetData(rv, run, rep, noise(rng));
    p->AddStudy(std::move(study));
  }
  return p;
}

std::string BenchFile() {
  const char* dir = std::getenv("KESTROW_BENCH_DIR");
  return std::string(dir ? dir : "/tmp") + "/kestrow-bench-" + std::to_string(::getpid()) + ".KSW";
}

void BM_ProblemSave(benchmark::State& state) {
  InstallUi(std::make_unique<ScriptedUi>());
  auto p = LargeProblem();
  std::string path = BenchFile();
  for (auto _ : state) {
    if (!p->Save(path)) state.SkipWithError("save failed");
  }
  auto bytes = static_cast<int64_t>(std::filesystem::file_size(path));
  state.SetBytesProcessed(state.iterations() * bytes);
  state.counters["file_MB"] = static_cast<double>(bytes) / 1.0e6;
  std::filesystem::remove(path);
}

void BM_ProblemLoad(benchmark::State& state) {
  InstallUi(std::make_unique<ScriptedUi>());
  std::string path = BenchFile();
  LargeProblem()->Save(path);
  auto bytes = static_cast<int64_t>(std::filesystem::file_size(path));
  for (auto _ : state) {
    Problem q;
    if (!q.Load(path)) state.SkipWithError("load failed");
    benchmark::DoNotOptimize(q.Studies.Count());
  }
  state.SetBytesProcessed(state.iterations() * bytes);
  state.counters["file_MB"] = static_cast<double>(bytes) / 1.0e6;
  std::filesystem::remove(path);
}

void BM_FullFactorialRoundTrip(benchmark::State& state) {
  InstallUi(std::make_unique<ScriptedUi>());
  if (!std::getenv("KESTROW_HOME")) SetProgramFolder(KESTROW_BIN);
  Problem p;
  Study study;
  study.sKey = "s1";
  study.sName = "Seven to the fifth";
  for (int n = 1; n <= 5; ++n) {
    Factor f;
    f.sKey = "f" + std::to_string(n);
    f.sName = f.sKey;
    for (int l = 1; l <= 7; ++l) f.Levels.Add(Level{std::to_string(l * 10), "", 0});
    p.Factors.Add(f, f.sKey);
    study.Factors.Add(Item{f.sKey});
  }
  study.pProblem = &p;
  if (GetFullyCrossed(study, Design{}) != -1) state.SkipWithError("the build failed");
  study.sDesignName = "16807-run Full factorial";
  study.iDesFlag = 1;
  p.AddStudy(std::move(study));
  std::string first = BenchFile(), second = first + ".again";
  for (auto _ : state) {
    if (!p.Save(first)) state.SkipWithError("save failed");
    Problem back;
    if (!back.Load(first)) state.SkipWithError("load failed");
    if (!back.Save(second)) state.SkipWithError("second save failed");
  }
  auto bytes = static_cast<int64_t>(std::filesystem::file_size(first));
  std::ifstream a(first, std::ios::binary), b(second, std::ios::binary);
  std::string x((std::istreambuf_iterator<char>(a)), {}), y((std::istreambuf_iterator<char>(b)), {});
  if (x != y) state.SkipWithError("the file read back saves to other bytes");
  state.counters["file_MB"] = static_cast<double>(bytes) / 1.0e6;
  std::filesystem::remove(first);
  std::filesystem::remove(second);
}

BENCHMARK(BM_ProblemSave)->Unit(benchmark::kMillisecond)->MinTime(2.0)->UseRealTime();
BENCHMARK(BM_ProblemLoad)->Unit(benchmark::kMillisecond)->MinTime(2.0)->UseRealTime();
BENCHMARK(BM_FullFactorialRoundTrip)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();

}  // namespace
}  // namespace kestrow

BENCHMARK_MAIN();
