#include "analyses/ANOM.h"

#include <cmath>
#include <vector>

#include "charts/ChartPage.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"
#include "stats/TableReaders.h"

namespace kestrow {

namespace {

const char* TAG = "SetupANOM";

class Anom {
 public:
  Anom(Study& s, Statistics& st) : s_(s), st_(st) {}
  bool Run(const std::string& chartList);

 private:
  bool MainEffect(const std::string& key);
  bool OneWay(bool range);
  void SubgroupPass(Chart& c, bool range);
  void LimitsText(Chart& c, float h) const;

  Study& s_;
  Statistics& st_;
  // The working figures, in 32 bits.
  float v_ = 0, d2_ = 0, rBar_ = 0, xBar_ = 0, rangeLow_ = TARGET_MIN, rangeHigh_ = TARGET_MAX;
  int count_ = 0;  // points inside the range limits in the last pass
};

bool Anom::Run(const std::string& chartList) {
  s_.ConfigureRV(s_.ANOM_sRVkey);
  if (s_.GetRVnum(s_.ANOM_sRVkey) < 0) {
    ReportError("The response variable of this analysis is not in the study", TAG);
    return false;
  }
  st_.ComputeRV(s_);
  // Subgroups are the runs, of the replicates' size; excluded runs later do
  // not change v or d2.
  if (s_.iReps > 1) {
    v_ = d2_ = -1;
    ReadTableB(s_.iReps, s_.iNumRuns, v_, d2_);
    if (d2_ <= 0) return false;  // said by the reader
  }
  std::string rest = chartList;
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    if (token.empty()) continue;
    bool ok = token == ANOM_XBAR ? OneWay(false) : token == ANOM_RANGE ? OneWay(true) : MainEffect(token);
    if (!ok) return false;
  }
  return true;
}

void Anom::LimitsText(Chart& c, float h) const {
  c.sText2 = "v=" + FormatNumSF(v_) + ", H=" + FormatNumSF(h) + ", alpha=" + ShortestText(s_.ANOM_fAlpha);
}

bool Anom::MainEffect(const std::string& key) {
  int f = s_.GetFactorNum(key);
  if (f < 1 || f > s_.Factors.Count()) {
    ReportError("The factor " + key + " of this analysis is not in the study", TAG);
    return false;
  }
  int levels = s_.GetNumLevels(f);
  Chart& c = gphNewChart(CHT_ANOM);
  c.sTitle = s_.GetPFactorName(key) + " " + GetText("MEANOM");
  c.xAxisCount = static_cast<std::int16_t>(2 * levels);
  c.sXlabel = GetText("Level");
  c.sYlabel = s_.GetRVname2();
  c.sTextType = "Main";
  float n = 0;  // the count of observations at a level; the last one's serves below
  for (int j = 1; j <= levels; ++j) {
    float sum = 0;
    n = 0;
    for (int run = 1; run <= s_.iNumRuns; ++run) {
      if (s_.GetTreatmentLevel(f, run) != j) continue;
      for (int rep = 1; rep <= s_.iReps; ++rep) {
        float y = s_.GetDataRV(run, rep);
        if (y == MISSING_VALUE) continue;
        sum += y;
        n += 1;
      }
    }
    DataPoint p;
    p.fX = static_cast<float>(2 * j - 1);
    p.fY = n > 0 ? sum / n : MISSING_VALUE;
    p.iDotType = 1;
    p.sId = s_.GetPFactorLevelName(key, j);
    p.idf = 1;
    p.bJoined = j > 1;
    c.AddData(p);
  }
  float g = st_.AvgAvgRV();
  if (s_.iReps < 2 || n <= 0) {
    c.SetLimits(MISSING_VALUE, g, MISSING_VALUE);
    return true;
  }
  rBar_ = st_.RngAvgRV();
  float sigma = rBar_ / d2_ / std::sqrt(n);
  float h = -1;
  ReadTableD(s_.ANOM_fAlpha, v_, static_cast<std::int16_t>(levels), h);
  if (h < 0) return false;  // beyond the table: said by the reader, and the analysis ends
  c.SetLimits(g - h * sigma, g, g + h * sigma);
  LimitsText(c, h);
  return true;
}

// The runs as subgroups, in run order or by the levels of a factor; a run
// whose range lies outside the range limits is marked and left out of the
// sums.
void Anom::SubgroupPass(Chart& c, bool range) {
  rangeLow_ = TARGET_MIN;
  rangeHigh_ = TARGET_MAX;
  if ((s_.ANOM_flags & 1) && s_.iReps >= 2) {
    float rBarAll = st_.RngAvgRV();
    rangeHigh_ = ReadTableC(s_.iReps, "D4") * rBarAll;
    float d3 = ReadTableC(s_.iReps, "D3");
    if (d3 > MISSING_VALUE) rangeLow_ = d3 * rBarAll;
  }
  // The runs in their order, each with the level it starts (0 for none).
  std::vector<std::pair<int, int>> order;
  int by = s_.ANOM_iSubgrouping;
  if (by < 1 || by > s_.Factors.Count()) {
    c.sText1 = GetText("RunOrder");
    for (int run = 1; run <= s_.iNumRuns; ++run) order.emplace_back(run, 0);
  } else {
    c.sText1 = SubstituteCopy(GetText("FacOrder"), s_.GetFactorName(by));
    for (int level = 1; level <= s_.GetNumLevels(by); ++level) {
      bool first = true;
      for (int run = 1; run <= s_.iNumRuns; ++run)
        if (s_.GetTreatmentLevel(by, run) == level) {
          order.emplace_back(run, first ? level : 0);
          first = false;
        }
    }
  }
  float sumAvg = 0, sumRange = 0;
  count_ = 0;
  int position = 0;
  for (auto [run, level] : order) {
    ++position;
    DataPoint p;
    p.fX = static_cast<float>(position);
    p.sId = std::to_string(run);
    p.idf = (s_.ANOM_flags & 2) && position % 5 != 0 ? 0 : 1;
    if (level > 0) {
      p.idf = static_cast<std::int16_t>(p.idf + 2);
      p.sId2 = s_.GetPFactorLevelName(s_.GetFactorKey(by), level);
    }
    float r = st_.SampRngRV(run), avg = st_.SampAvgRV(run);
    p.fY = range ? r : avg;
    // A run of one observation has no range: it is plotted as it stands and
    // kept out of the sums, which it would swamp with the no-value mark.
    if (r != MISSING_VALUE && r >= rangeLow_ && r <= rangeHigh_) {
      p.iDotType = 1;
      sumAvg += avg;
      sumRange += r;
      ++count_;
    } else if (r == MISSING_VALUE && !range && avg != MISSING_VALUE && s_.iReps < 2) {
      // Without replicates there are no ranges: every run counts.
      p.iDotType = 1;
      sumAvg += avg;
      ++count_;
    } else {
      p.iDotType = 6;
    }
    c.AddData(p);
  }
  xBar_ = count_ > 0 ? sumAvg / static_cast<float>(count_) : MISSING_VALUE;
  rBar_ = count_ > 0 ? sumRange / static_cast<float>(count_) : MISSING_VALUE;
}

bool Anom::OneWay(bool range) {
  Chart& c = gphNewChart(CHT_ANOM);
  c.sTitle = GetText(range ? "Cht2" : "Cht1");
  c.xAxisCount = static_cast<std::int16_t>(std::min(s_.iNumRuns + 1, 32767));
  c.sXlabel = GetText("RunNo");
  c.sYlabel = s_.GetRVname2();
  c.sTextType = range ? "Range" : "X-bar";
  SubgroupPass(c, range);
  if (s_.iReps < 2 || count_ == 0) {
    c.SetLimits(MISSING_VALUE, range ? MISSING_VALUE : xBar_, MISSING_VALUE);
    return true;
  }
  if (range) {
    c.ConsiderValue(rBar_);
    float upper = ReadTableC(s_.iReps, "D4") * rBar_;
    c.ConsiderValue(upper);
    float d3 = ReadTableC(s_.iReps, "D3");
    c.SetLimits(d3 != MISSING_VALUE ? d3 * rBar_ : MISSING_VALUE, rBar_, upper);
    return true;
  }
  float sigma = rBar_ / d2_ / std::sqrt(static_cast<float>(s_.iReps));
  float h = -1;
  ReadTableD(s_.ANOM_fAlpha, v_, static_cast<std::int16_t>(std::min(count_, 32767)), h);
  if (h < 0) return false;
  c.SetLimits(xBar_ - h * sigma, xBar_, xBar_ + h * sigma);
  LimitsText(c, h);
  return true;
}

}  // namespace

bool SetupANOM(Study& study, Statistics& stats, const std::string& chartList) {
  return Anom(study, stats).Run(chartList);
}

}  // namespace kestrow
