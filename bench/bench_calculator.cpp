// The regression calculator's two-pass solve over the quadratic model of
// five factors (21 terms) at a net of 20: 20^5 cell centres, then 21^5
// corners round the best cell, about 7.3 million evaluations of the model.
#include <benchmark/benchmark.h>

#include <memory>

#include "BenchStudies.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"
#include "regression/CalculatorForm.h"
#include "regression/Regress.h"
#include "regression/TermGrid.h"

namespace kestrow {
namespace {

void BM_TwoPassSolve(benchmark::State& state) {
  InstallUi(std::make_unique<ScriptedUi>());
  SetProgramFolder(KESTROW_BIN);
  OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
  gSettings.OptNetSize = 20;
  auto p = bench::ScatteredStudy();
  Study& s = p->Studies(1);
  s.REGRESS_iModelType = MODEL_QUADRATIC;
  for (const TermEntry& e : RegressionTerms(s, MODEL_QUADRATIC)) {
    Rterm t;
    InitRterm(t);
    t.sTerm = e.sTerm;
    if (e.sTerm != "0" && e.sTerm.find(',') == std::string::npos) t.fValue = FREE_AXIS;
    s.REGRESS_Rterms.Add(t);
  }
  Regress fit;
  fit.Init(s);
  if (!fit.Compute("v1")) state.SkipWithError("the model cannot be fitted");
  CalculatorForm form(s);
  form.txtTarget = "MAX";
  for (auto _ : state)
    if (!form.cmdSolve_Click()) state.SkipWithError("the solve was refused");
  state.counters["evaluations"] = static_cast<double>(form.Evaluations());
  state.counters["best"] = form.BestValue();
  state.SetLabel(std::to_string(form.Factors().size()) + " factors");
}

BENCHMARK(BM_TwoPassSolve)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);

}  // namespace
}  // namespace kestrow

BENCHMARK_MAIN();
