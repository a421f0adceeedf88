#include "analyses/Residuals.h"

#include <cmath>
#include <functional>
#include <vector>

#include "analyses/BlockStats.h"
#include "charts/ChartPage.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"

namespace kestrow {

namespace {

const char* TAG = "SetupResiduals1l";

std::string RunRep(int run, int rep) { return std::to_string(run) + "/" + std::to_string(rep); }

class Residuals {
 public:
  Residuals(Study& s, Statistics& st) : s_(s), st_(st) {}
  bool Run(const std::string& chartList);

 private:
  // The model value of a run, or MISSING_VALUE.
  float Model(int run) const;
  // Calls visit(run, rep, y, e) for each good observation, runs in order.
  void EachResidual(const std::function<void(int, int, float, float)>& visit) const;
  void Probability();
  void RunOrder();
  void Fitted();
  void ByFactor(int factor);

  Study& s_;
  Statistics& st_;
  bool blocked_ = false, latin_ = false;
  BlockStats blocks_;
  std::string name_;
};

float Residuals::Model(int run) const {
  if (!blocked_) return st_.SampAvgRV(run);
  float value = MISSING_VALUE;
  bool ok = latin_ ? blocks_.GetPredicted2(s_, run, value) : blocks_.GetPredicted1(s_, run, value);
  return ok ? value : MISSING_VALUE;
}

void Residuals::EachResidual(const std::function<void(int, int, float, float)>& visit) const {
  for (int run = 1; run <= s_.iNumRuns; ++run) {
    float m = Model(run);
    if (m == MISSING_VALUE) continue;
    for (int rep = 1; rep <= s_.iReps; ++rep) {
      float y = s_.GetDataRV(run, rep);
      if (y == MISSING_VALUE) continue;
      visit(run, rep, y, y - m);
    }
  }
}

void Residuals::Probability() {
  Chart& c = gphNewChart(CHT_RES_NPP);
  c.sTitle = GetText("Chtc") + " " + GetText("for") + " " + name_;
  float sumSq = 0;
  int count = 0;
  EachResidual([&](int run, int rep, float, float e) {
    sumSq += e * e;
    ++count;
    DataPoint p;
    p.fX = e;
    p.sId = RunRep(run, rep);
    p.iDotType = 1;
    c.AddData(p);
  });
  if (count > 1) c.sText1 = "sigma = " + FormatNumSF(std::sqrt(sumSq / static_cast<float>(count - 1)));
  c.RankForNPP();
}

void Residuals::RunOrder() {
  Chart& c = gphNewChart(CHT_RES_RUN);
  c.sTitle = GetText("RESot") + " " + GetText("for") + " " + name_;
  c.sXlabel = GetText(s_.iSequence == 0 ? "Random" : "RunRep");
  c.sYlabel = name_;
  // Each replication in its run order, one after the other.
  for (int rep = 1; rep <= s_.iReps; ++rep) {
    std::vector<int> runAt(static_cast<std::size_t>(s_.iNumRuns) + 1, 0);
    for (int run = 1; run <= s_.iNumRuns; ++run) {
      int seq = s_.GetSeq(run, rep);
      if (seq >= 1 && seq <= s_.iNumRuns) runAt[static_cast<std::size_t>(seq)] = run;
    }
    for (int seq = 1; seq <= s_.iNumRuns; ++seq) {
      int run = runAt[static_cast<std::size_t>(seq)];
      if (run == 0) continue;
      float m = Model(run), y = s_.GetDataRV(run, rep);
      if (m == MISSING_VALUE || y == MISSING_VALUE) continue;
      DataPoint p;
      p.fX = static_cast<float>((rep - 1) * s_.iNumRuns + seq);
      p.fY = y - m;
      p.sId = RunRep(run, rep);
      p.iDotType = 1;
      c.AddData(p);
    }
  }
}

void Residuals::Fitted() {
  Chart& c = gphNewChart(CHT_RES_FITTED);
  c.sTitle = GetText("Chtf") + " " + GetText("for") + " " + name_;
  c.sXlabel = s_.GetRVname2();
  c.sYlabel = name_;
  EachResidual([&](int run, int rep, float y, float e) {
    DataPoint p;
    p.fX = y - e;
    p.fY = e;
    p.sId = std::to_string(run);
    p.sId2 = std::to_string(rep);
    p.iDotType = 1;
    c.AddData(p);
  });
}

void Residuals::ByFactor(int factor) {
  const std::string key = s_.GetFactorKey(factor);
  const int levels = s_.GetNumLevels(factor);
  Chart& c = gphNewChart(CHT_RES_FACTOR);
  c.sTitle = GetText("Chte") + " " + s_.GetFactorName(factor);
  c.sXlabel = s_.GetPFactorName2(key);
  c.sYlabel = name_;
  c.xAxisCount = static_cast<std::int16_t>(levels + 1);
  for (int level = 1; level <= levels; ++level) {
    DataPoint label;
    label.fX = static_cast<float>(level);
    label.sId = s_.GetPFactorLevelName(key, level);
    label.idf = 1;
    c.AddData(label);
  }
  EachResidual([&](int run, int rep, float, float e) {
    int level = s_.GetTreatmentLevel(factor, run);
    if (level < 1 || level > levels) return;
    DataPoint p;
    p.fX = static_cast<float>(level);
    p.fY = e;
    p.sId = RunRep(run, rep);
    p.iDotType = 1;
    c.AddData(p);
  });
}

bool Residuals::Run(const std::string& chartList) {
  s_.ConfigureRV(s_.RESIDUAL_sRVkey);
  if (s_.GetRVnum(s_.RESIDUAL_sRVkey) < 0) {
    ReportError("The response variable of this analysis is not in the study", TAG);
    return false;
  }
  st_.ComputeRV(s_);
  name_ = s_.GetRVname();
  blocked_ = (s_.iDesFlag & DES_BLOCKED) != 0;
  latin_ = (s_.iDesFlag & DES_SECOND_NOISE) != 0;  // a Latin square: two blocking factors
  if (blocked_ && !(latin_ ? blocks_.Compute2(s_, st_) : blocks_.Compute1(s_, st_))) {
    ReportError("A blocked design can have at most 8 levels in a factor, and needs data", TAG);
    return false;
  }
  std::string rest = chartList;
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    if (token.empty()) continue;
    int n = static_cast<int>(std::lround(Val(token)));
    if (n == -3) Probability();
    else if (n == -2 && HasRunSequence(s_)) RunOrder();
    else if (n == -1) Fitted();
    else if (n >= 1 && n <= s_.Factors.Count()) ByFactor(n);
  }
  return true;
}

}  // namespace

bool HasRunSequence(const Study& study) { return study.DoesArrayExist() && study.GetSeq(1, 1) > 0; }

bool SetupResiduals1l(Study& study, Statistics& stats, const std::string& chartList) {
  return Residuals(study, stats).Run(chartList);
}

}  // namespace kestrow
