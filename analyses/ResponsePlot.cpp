#include "analyses/ResponsePlot.h"

#include <algorithm>
#include <array>

#include "analyses/RunFigures.h"
#include "charts/ChartPage.h"
#include "core/Factor.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"

namespace kestrow {

namespace {

const char* TAG = "SetupResponsePlot";
constexpr int MAX_LEVELS = 8;
const char* SUFFIX[3] = {" (Avg)", " (sd)", " (MSD)"};

struct Cell {
  float sum = 0, count = 0;
};
using Cells = std::array<std::array<std::array<Cell, MAX_LEVELS + 1>, MAX_LEVELS + 1>, MAX_LEVELS + 1>;

}  // namespace

bool SetupResponsePlot(Study& s, Statistics& st) {
  s.ConfigureRV(s.RESPONSE_sRVkey);
  if (s.GetRVnum(s.RESPONSE_sRVkey) < 0) {
    ReportError("The response variable of this analysis is not in the study", TAG);
    return false;
  }
  st.ComputeRV(s);
  const int factors = s.Factors.Count();
  const int f1 = s.GetFactorNum(s.RESPONSE_sF1Key), f2 = s.GetFactorNum(s.RESPONSE_sF2Key);
  const int f3 = s.RESPONSE_sF3Key.empty() ? 0 : s.GetFactorNum(s.RESPONSE_sF3Key);
  if (f1 < 1 || f1 > factors || f2 < 1 || f2 > factors || f3 > factors || f1 == f2 || (f3 > 0 && (f3 == f1 || f3 == f2))) {
    ReportError("The factors of this response plot are not in the study", TAG);
    return false;
  }
  const int l1 = s.GetNumLevels(f1), l2 = s.GetNumLevels(f2), l3 = f3 > 0 ? s.GetNumLevels(f3) : 1;
  if (std::max({l1, l2, l3}) > MAX_LEVELS) {
    ReportError("A factor of a response plot has at most 8 levels", TAG);
    return false;
  }
  const int variable = std::clamp<int>(s.RESPONSE_iVariable, 0, 2);
  const float target = s.GetPRVTarget(PureKey(s.RESPONSE_sRVkey));
  if (variable == 2 && target == MISSING_VALUE) {
    ReportError("The response variable has no target: the mean-square deviation cannot be formed", TAG);
    return false;
  }

  Cells cells{};
  for (int run = 1; run <= s.iNumRuns; ++run) {
    int a = s.GetTreatmentLevel(f1, run), b = s.GetTreatmentLevel(f2, run), c = f3 > 0 ? s.GetTreatmentLevel(f3, run) : 1;
    if (a < 1 || a > l1 || b < 1 || b > l2 || c < 1 || c > l3) continue;
    Cell& cell = cells[static_cast<std::size_t>(a)][static_cast<std::size_t>(b)][static_cast<std::size_t>(c)];
    if (variable == 0) {
      for (int rep = 1; rep <= s.iReps; ++rep) {
        float y = s.GetDataRV(run, rep);
        if (y == MISSING_VALUE) continue;
        cell.sum += y;
        cell.count += 1;
      }
    } else {
      float y = variable == 1 ? st.SampSigRV(run) : RunMSD(s, st, run, target);
      if (!(y > MISSING_VALUE)) continue;
      cell.sum += y;
      cell.count += 1;
    }
  }

  Chart& chart = gphNewChart(f3 > 0 ? CHT_RESPONSE3 : CHT_RESPONSE2);
  chart.sTitle = GetText("Cht9") + " " + s.GetRVname2() + SUFFIX[variable];
  chart.sXlabel = s.GetPFactorName2(s.RESPONSE_sF1Key);
  chart.sYlabel = s.GetRVname2() + SUFFIX[variable];
  chart.sText1 = s.GetPFactorName2(s.RESPONSE_sF2Key) + (f3 > 0 ? ", " + s.GetPFactorName2(s.RESPONSE_sF3Key) : "");
  if (s.RESPONSE_iFlag & 1) chart.sTextType = "Angled";
  // Each block takes the levels of the first factor and a place between
  // blocks; a dotted line parts them.
  const int width = l1 + 1;
  chart.xAxisCount = static_cast<std::int16_t>(l3 * width);
  const std::string key1 = s.RESPONSE_sF1Key, key2 = s.RESPONSE_sF2Key, key3 = s.RESPONSE_sF3Key;
  for (int c = 1; c <= l3; ++c) {
    const int base = (c - 1) * width;
    if (c > 1) chart.AddLinePoint(static_cast<float>(base), MISSING_VALUE, 0, 1, false);
    for (int a = 1; a <= l1; ++a) {
      DataPoint label;
      label.fX = static_cast<float>(base + a);
      label.sId = s.GetPFactorLevelName(key1, a);
      label.idf = 1;
      chart.AddData(label);
    }
    if (f3 > 0) {
      DataPoint caption;
      caption.fX = static_cast<float>(base) + static_cast<float>(width) / 2;
      caption.sId2 = s.GetPFactorName2(key3) + " = " + s.GetPFactorLevelName(key3, c);
      caption.idf = 2;
      chart.AddData(caption);
    }
    for (int b = 1; b <= l2; ++b) {
      bool joined = false;
      for (int a = 1; a <= l1; ++a) {
        const Cell& cell = cells[static_cast<std::size_t>(a)][static_cast<std::size_t>(b)][static_cast<std::size_t>(c)];
        if (cell.count <= 0) {
          joined = false;  // a combination without a run leaves a gap in its line
          continue;
        }
        DataPoint p;
        p.fX = static_cast<float>(base + a);
        p.fY = cell.sum / cell.count;
        p.sId = s.GetPFactorName2(key1) + " = " + s.GetPFactorLevelName(key1, a) + ", " + s.GetPFactorName2(key2) +
                " = " + s.GetPFactorLevelName(key2, b);
        if (f3 > 0) p.sId += ", " + s.GetPFactorName2(key3) + " = " + s.GetPFactorLevelName(key3, c);
        p.sId2 = s.GetPFactorLevelName(key2, b);
        p.idf = a == l1 ? 2 : 0;  // each line named at its end
        p.iDotType = SeriesDotType(b);
        p.bJoined = joined;
        joined = true;
        chart.AddData(p);
      }
    }
  }
  return true;
}

void SetupIPO(const Study& s) {
  Chart& c = gphNewChart(CHT_IPO);
  c.sTitle = GetText("Cht8");
  c.sText1 = s.sName;
  int inputs = 0, noise = 0;
  for (int f = 1; f <= s.Factors.Count(); ++f) {
    const std::string key = s.GetFactorKey(f);
    bool isNoise = (s.GetPFactorFlag(key) & FACTOR_NOISE) != 0;
    DataPoint p;
    p.sId = s.GetPFactorName2(key) + (isNoise ? "*" : "") + "\r\n\r\n" + std::to_string(s.GetNumLevels(f));
    p.fX = isNoise ? 2 : 0;
    p.fY = static_cast<float>(isNoise ? ++noise : ++inputs);
    c.AddDataUnconsidered(p);
  }
  if (noise > 0) c.sText2 = GetText("MNmsgi");
  int outputs = 0;
  for (int rv = 1; rv <= s.StudyRespVars.Count(); ++rv) {
    DataPoint p;
    p.sId = s.GetPRVName2(s.StudyRespVars(rv).sKey);
    p.fX = 1;
    p.fY = static_cast<float>(++outputs);
    c.AddDataUnconsidered(p);
  }
  c.yAxisCount = static_cast<std::int16_t>(std::max(s.Factors.Count(), s.StudyRespVars.Count()) + 2);
}

}  // namespace kestrow
