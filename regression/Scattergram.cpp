#include "regression/Scattergram.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "charts/ChartPage.h"
#include "core/Factor.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/FillRVList.h"
#include "data/Statistics.h"
#include "regression/Regress.h"

namespace kestrow {

namespace {

const char* TAG = "SetupScattergram";
constexpr int LINE_STEPS = 60;

bool IsNumericFactor(const Study& s, int f) { return (s.GetPFactorFlag(s.GetFactorKey(f)) & FACTOR_DISCRETE) == 0; }

}  // namespace

ScatterChoice DefaultScatterChoice(const Study& study, const Statistics& stats) {
  ScatterChoice c;
  std::vector<RVListEntry> list = FillRVList(study, stats, 18);
  for (const RVListEntry& e : list)
    if (e.key == study.REGRESS_sRVkey) c.rvKey = e.key;
  if (c.rvKey.empty() && !list.empty()) c.rvKey = list.front().key;
  for (int i = 1; i <= study.REGRESS_Rterms.Count() && c.factorKey.empty(); ++i) {
    const std::string& t = study.REGRESS_Rterms(i).sTerm;
    int f = static_cast<int>(Val(t));
    if (t.find(',') == std::string::npos && f >= 1 && f <= study.Factors.Count() && IsNumericFactor(study, f))
      c.factorKey = study.GetFactorKey(f);
  }
  for (int f = 1; f <= study.Factors.Count() && c.factorKey.empty(); ++f)
    if (IsNumericFactor(study, f)) c.factorKey = study.GetFactorKey(f);
  c.degree = study.REGRESS_iModelType >= 3 ? 3 : study.REGRESS_iModelType == 2 ? 2 : 1;
  return c;
}

bool ParseScatterChoice(const Study& study, const Statistics& stats, const std::string& detail, ScatterChoice& out,
                        std::string& complaint) {
  out = DefaultScatterChoice(study, stats);
  std::string rest = detail;
  std::string factor = Trim(PopBar(rest)), rv = Trim(PopBar(rest)), degree = Trim(rest);
  if (!factor.empty()) {
    int f = study.GetFactorNum(factor);
    if (f < 1 || f > study.Factors.Count() || !IsNumericFactor(study, f)) {
      complaint = "the study has no numeric factor " + factor;
      return false;
    }
    out.factorKey = study.GetFactorKey(f);
  }
  if (!rv.empty()) {
    bool found = false;
    for (const RVListEntry& e : FillRVList(study, stats, 18)) found = found || e.key == rv;
    if (!found) {
      complaint = "the study has no response " + rv + " with data";
      return false;
    }
    out.rvKey = rv;
  }
  if (!degree.empty()) {
    if (degree != "1" && degree != "2" && degree != "3") {
      complaint = "the degree of the fitted line is 1, 2 or 3";
      return false;
    }
    out.degree = static_cast<int>(Val(degree));
  }
  return true;
}

bool SetupScattergram(Study& study, Statistics& stats, const ScatterChoice& choice) {
  const int f = study.GetFactorNum(choice.factorKey);
  if (choice.rvKey.empty() || f < 1 || f > study.Factors.Count()) {
    ReportError("The scattergram needs a response with data and a numeric factor", TAG);
    return false;
  }
  study.ConfigureRV(choice.rvKey);
  stats.ComputeRV(study);
  Chart& c = gphNewChart(CHT_SCATTER);
  c.sTitle = "Scattergram " + GetText("for") + " " + study.GetPRVDisplayAbbr(choice.rvKey);
  c.sXlabel = study.GetPFactorName2(choice.factorKey);
  c.sYlabel = study.GetPRVDisplayAbbr(choice.rvKey);
  float low = TARGET_MAX, high = TARGET_MIN;
  std::set<double> distinct;
  for (int run = 1; run <= study.iNumRuns; ++run)
    for (int rep = 1; rep <= study.iReps; ++rep) {
      float y = study.GetDataRV(run, rep);
      if (y == MISSING_VALUE) continue;
      const double x = study.GetTreatmentLevelValue(f, run);
      distinct.insert(x);
      DataPoint p;
      p.fX = static_cast<float>(x);
      p.fY = y;
      p.sId = std::to_string(run);
      p.iDotType = 1;
      c.AddData(p);
      low = std::min(low, p.fX);
      high = std::max(high, p.fX);
    }
  if (distinct.size() < 2) return true;  // no line through a single value
  // The polynomial of the factor alone, in coded units, no higher than the
  // distinct values allow.
  const int degree = std::clamp(choice.degree, 1, static_cast<int>(distinct.size()) - 1);
  Regress fit;
  fit.Init(study);
  fit.SetFlag(2);
  fit.ZapTerms();
  std::string term = "0";
  for (int d = 0; d <= degree; ++d) {
    Rterm t;
    InitRterm(t);
    t.sTerm = term;
    if (d == 1) t.fValue = FREE_AXIS;
    fit.AddTerm(t);
    term = d == 0 ? std::to_string(f) : term + "," + std::to_string(f);
  }
  if (!fit.Compute(choice.rvKey) || !fit.SetupFastConstants()) return true;  // the points stand; the fit has said why
  for (int i = 0; i <= LINE_STEPS; ++i) {
    float x = low + (high - low) * static_cast<float>(i) / LINE_STEPS;
    float coded = study.FValueToCode(choice.factorKey, x);
    c.AddLinePoint(x, fit.FastEvaluate(coded, 0), 0, 1, i > 0);
  }
  c.sText1 = GetText("Rsq") + " = " + FormatSF(4, fit.fRSquared);
  return true;
}

}  // namespace kestrow
