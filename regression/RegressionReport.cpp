#include "regression/RegressionReport.h"

#include <string>

#include "core/Formatters.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/Settings.h"
#include "core/Study.h"
#include "core/Text.h"
#include "regression/Regress.h"

namespace kestrow {

namespace {

constexpr int COLS = 7;

// The label of an observation: its run, and with replicates the letter of
// the replicate (a for the first).
std::string ObservationLabel(const Study& s, int run, int rep) {
  std::string label = std::to_string(run);
  if (s.iReps > 1 && rep >= 1) label += static_cast<char>('a' + rep - 1);
  return label;
}

}  // namespace

bool DrawRegression(Study& study, Grid& grid) {
  grid.Clear();
  grid.SetSize(0, COLS);
  grid.SetColWidth(0, 192);  // a margin
  for (int col = 1; col < COLS - 1; ++col) grid.SetColWidth(col, col == 1 ? 2000 : 1400);
  Regress fit;
  fit.Init(study);
  if (!fit.Compute(study.REGRESS_sRVkey)) return false;
  const bool sd = fit.UseSD();
  const int digits = gSettings.NumSF;
  auto row = [&](const std::vector<std::string>& cells) {
    int r = grid.AddRow();
    for (std::size_t c = 0; c < cells.size() && c + 1 < COLS; ++c) grid.SetText(r, static_cast<int>(c) + 1, cells[c]);
    return r;
  };
  auto headings = [&](const std::vector<std::string>& tags) {
    std::vector<std::string> cells;
    for (const std::string& t : tags) cells.push_back(GetText(t));
    int r = row(cells);
    for (int c = 1; c < COLS; ++c) grid.SetBack(r, c, gSettings.ANOVATitles);
  };
  grid.BeginBatch();
  int title = row({GetText("RegFor") + " " + study.GetRVname() + " (" + GetText(sd ? "SD" : "ybar") + ")" +
                   ((study.REGRESS_iFlag & REGRESS_CODED) ? " " + GetText("usingdc") : "")});
  grid.Merges.push_back({title, 1, 1, COLS - 1});
  for (int c = 1; c < COLS; ++c) grid.SetBack(title, c, gSettings.ANOVATitles);
  headings({"Variable", "Coeff", "StdErr", "tvalue", "pvalue"});
  for (int j = 1; j <= fit.NumTerms(); ++j) {
    const Rterm& t = fit.Term(j);
    row({t.sTerm == "0" ? GetText("Constant") : fit.FactorListToText(t.sTerm), FormatSF(4, t.fBeta),
         FormatDecimals(digits, fit.GetStat(j, 4)), FormatDecimals(digits, fit.GetStat(j, 3)),
         FormatP(digits, fit.GetStat(j, 2))});
  }
  row({});
  row({GetText("Rsq"), FormatSF(4, fit.fRSquared)});
  row({GetText("Rsqadj"), FormatSF(4, fit.fRSquaredAdj)});
  row({});
  row({});
  headings({"Run", "Actual", "Predicted", "Residual", "Student"});
  // The residuals are those of the fit, unrounded: the predicted value is
  // shown to the figures of the setting, the residual to its own.
  for (int v = 1; v <= fit.NumObs(); ++v) {
    const int run = fit.ObsRun(v);
    const auto e = static_cast<float>(fit.Residual(v));
    row({ObservationLabel(study, run, fit.ObsRep(v)), TargetToText(static_cast<float>(fit.Observation(v))),
         FormatNumSF(fit.EvaluateRE(run)), FormatNumSF(e), FormatNumSF(e * fit.GetStudentCoeff(v))});
  }
  grid.EndBatch();
  return true;
}

}  // namespace kestrow
