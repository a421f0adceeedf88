#include "regression/RegressionResiduals.h"

#include <cmath>
#include <vector>

#include "analyses/Residuals.h"
#include "charts/ChartPage.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"
#include "regression/Regress.h"

namespace kestrow {

namespace {

struct Residual {
  int run = 0, rep = 0;  // rep 0: the run's standard deviation
  float fitted = 0, e = 0;
};

DataPoint Point(float x, float y, std::string id, std::string id2 = "") {
  DataPoint p;
  p.fX = x;
  p.fY = y;
  p.sId = std::move(id);
  p.sId2 = std::move(id2);
  p.iDotType = 1;
  return p;
}

}  // namespace

bool SetupResiduals2(Study& study, Statistics& stats, const std::string& chartList, bool studentised) {
  (void)stats;  // the fit reads the statistics of its own response
  Regress fit;
  fit.Init(study);
  if (!fit.Compute(study.REGRESS_sRVkey)) return false;
  const bool sd = fit.UseSD();
  const std::string name = study.GetRVname() + (sd ? " (SD)" : "");
  // Each observation's residual as the fit found it; studentised, by the
  // leverage of that observation.
  std::vector<Residual> res;
  for (int v = 1; v <= fit.NumObs(); ++v) {
    Residual r{fit.ObsRun(v), fit.ObsRep(v), fit.EvaluateRE(fit.ObsRun(v)), static_cast<float>(fit.Residual(v))};
    if (studentised) r.e *= fit.GetStudentCoeff(v);
    res.push_back(r);
  }
  std::string rest = chartList;
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    if (token.empty()) continue;
    const int n = static_cast<int>(std::lround(Val(token)));
    if (n == -3) {
      Chart& c = gphNewChart(CHT_REG_NPP);
      c.sTitle = GetText("Chtc") + " " + GetText("RegOn");
      float sumSq = 0;
      for (const Residual& r : res) {
        sumSq += r.e * r.e;
        DataPoint p = Point(r.e, MISSING_VALUE, std::to_string(r.run), std::to_string(r.rep));
        c.AddData(p);
      }
      if (!res.empty()) c.sText1 = "sigma = " + FormatNumSF(std::sqrt(sumSq / static_cast<float>(res.size())));
      c.RankForNPP();
    } else if (n == -2 && !sd && HasRunSequence(study)) {
      Chart& c = gphNewChart(CHT_RES_RUN);
      c.sTitle = GetText("RESot") + " " + GetText("for") + " " + name;
      c.sXlabel = GetText(study.iSequence == 0 ? "Random" : "RunRep");
      c.sYlabel = name;
      // Each replication in its run order, one after the other.
      std::vector<const Residual*> at(static_cast<std::size_t>(study.iNumRuns * study.iReps) + 1, nullptr);
      for (const Residual& r : res) {
        int seq = study.GetSeq(r.run, r.rep);
        if (seq >= 1 && seq <= study.iNumRuns) at[static_cast<std::size_t>((r.rep - 1) * study.iNumRuns + seq)] = &r;
      }
      for (std::size_t x = 1; x < at.size(); ++x)
        if (at[x]) c.AddData(Point(static_cast<float>(x), at[x]->e, std::to_string(at[x]->run) + "/" + std::to_string(at[x]->rep)));
    } else if (n == -1) {
      Chart& c = gphNewChart(CHT_RES_FITTED);
      c.sTitle = GetText("Chtf") + " " + GetText("for") + " " + name;
      c.sXlabel = study.GetRVname2() + (sd ? " (SD)" : "");
      c.sYlabel = name;
      for (const Residual& r : res) c.AddData(Point(r.fitted, r.e, std::to_string(r.run), std::to_string(r.rep)));
    } else if (n >= 1 && n <= study.Factors.Count()) {
      Chart& c = gphNewChart(CHT_RES_VARIABLE);
      c.sTitle = "Residuals for factor " + study.GetFactorName(n);
      c.sXlabel = study.GetPFactorName2(study.GetFactorKey(n));
      c.sYlabel = name;
      for (const Residual& r : res)
        c.AddData(Point(static_cast<float>(study.GetTreatmentLevelValue(n, r.run)), r.e, std::to_string(r.run)));
    }
  }
  return true;
}

}  // namespace kestrow
