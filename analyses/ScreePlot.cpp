#include "analyses/ScreePlot.h"

#include <cmath>
#include <vector>

#include "analyses/RunFigures.h"
#include "charts/ChartPage.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Settings.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"

namespace kestrow {

namespace {

const char* TAG = "SetupScreePlot";

struct Figures {
  float effect = 0, ss = 0;
};

// A contrast's effect 2 sum(c y) / sum|c| and sum of squares
// sum(c y)^2 / (sum c^2 / r), r the replicates for averages and 1 otherwise.
// A run without a figure (a standard deviation of one observation) is left
// out with its coefficient rather than summed as the no-value mark.
Figures Of(const Study& s, const Statistics& st, int contrast, int variable, float target) {
  float sumCY = 0, sumCC = 0, sumAbsC = 0;
  for (int run = 1; run <= s.iNumRuns; ++run) {
    float y = RunVariable(s, st, run, variable, target);
    if (!(y > MISSING_VALUE)) continue;
    float c = s.GetContrastEntry(contrast, run);
    sumCY += c * y;
    sumCC += c * c;
    sumAbsC += std::fabs(c);
  }
  float r = variable == 0 ? static_cast<float>(s.iReps) : 1.0f;
  Figures f;
  f.effect = sumAbsC > 0 ? 2 * sumCY / sumAbsC : 0;
  f.ss = sumCC > 0 ? sumCY * sumCY / (sumCC / r) : 0;
  return f;
}

// The contrasts by falling figure; of equal ones the first in the collection.
std::vector<int> Falling(const std::vector<float>& figure) {
  std::vector<float> left = figure;
  std::vector<int> order;
  for (std::size_t round = 0; round < left.size(); ++round) {
    int best = -1;
    float most = -1;
    for (std::size_t i = 0; i < left.size(); ++i)
      if (left[i] > most) {
        most = left[i];
        best = static_cast<int>(i);
      }
    if (best < 0) break;
    order.push_back(best);
    left[static_cast<std::size_t>(best)] = -1;
  }
  return order;
}

// The ranked bars or points up to the cut-off, and the average of the rest
// in one last entry.
void Ranked(const Study& s, Chart& c, const std::vector<float>& figure, bool joined) {
  const int cutoff = gSettings.ParetoCutoff;
  float otherSum = 0;
  int others = 0, rank = 0;
  for (int i : Falling(figure)) {
    ++rank;
    if (rank > cutoff) {
      otherSum += figure[static_cast<std::size_t>(i)];
      ++others;
      continue;
    }
    DataPoint p;
    p.fX = static_cast<float>(rank);
    p.fY = figure[static_cast<std::size_t>(i)];
    p.sId = s.GetContrastSource(i + 1);
    p.sId2 = s.Contrasts(i + 1).sName;
    p.idf = 2;
    p.iDotType = 1;
    p.bJoined = joined && rank > 1;
    c.AddData(p);
  }
  if (others > 0 && otherSum > 0) {
    DataPoint p;
    p.fX = static_cast<float>(cutoff + 1);
    p.fY = otherSum / static_cast<float>(others);
    p.sId = GetText("pooledt") + " " + std::to_string(others);
    p.sId2 = GetText("Other");
    p.idf = 2;
    p.iDotType = 1;
    p.bJoined = joined;
    c.AddData(p);
  }
}

}  // namespace

bool SetupScreePlot(Study& s, Statistics& st, const std::string& chartList) {
  s.ConfigureRV(s.ANOVA_sRVkey);
  if (s.GetRVnum(s.ANOVA_sRVkey) < 0) {
    ReportError("The response variable of this analysis is not in the study", TAG);
    return false;
  }
  st.ComputeRV(s);
  const int variable = s.ANOVA_iVariable;
  const float target = variable == 2 ? s.GetPRVTarget(PureKey(s.ANOVA_sRVkey)) : MISSING_VALUE;
  if (variable == 2 && target == MISSING_VALUE) {
    ReportError("The response variable has no target: the mean-square deviation cannot be formed", TAG);
    return false;
  }
  static const char* const TITLES[] = {"RespAvgs", "StdDevs", "MSD", "snR"};
  std::string name = s.GetRVname();
  if (variable == 2 && !name.empty() && name.back() == '*') name.pop_back();
  const std::string subject = GetText(TITLES[variable >= 0 && variable <= 3 ? variable : 0]) + " (" + name + ")";
  const int n = s.Contrasts.Count();
  std::vector<Figures> figures;
  for (int i = 1; i <= n; ++i) figures.push_back(Of(s, st, i, variable, target));
  const int places = std::min(n + 1, static_cast<int>(gSettings.ParetoCutoff) + 1);

  std::string rest = chartList;
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    if (token == "0") {
      Chart& c = gphNewChart(CHT_SCREE);
      c.sTitle = GetText("Chti");
      c.sText1 = subject;
      c.sXlabel = GetText("Contrast");
      c.sYlabel = "SS(C)";
      c.xAxisCount = static_cast<std::int16_t>(places + 1);
      std::vector<float> ss;
      for (const Figures& f : figures) ss.push_back(f.ss);
      Ranked(s, c, ss, true);
    } else if (token == "1") {
      Chart& c = gphNewChart(CHT_NPP);
      c.sTitle = GetText("Chtj");
      c.sText1 = subject;
      c.sTextType = "LHNPP";
      for (int i = 1; i <= n; ++i) {
        DataPoint p;
        p.fX = figures[static_cast<std::size_t>(i - 1)].effect;
        p.sId = s.GetContrastSource(i);
        p.sId2 = s.Contrasts(i).sName;
        p.idf = 2;
        p.iDotType = 1;
        c.AddData(p);
      }
      c.RankForNPP();
    } else if (token == "2") {
      Chart& c = gphNewChart(CHT_PARETO);
      c.sTitle = GetText("Chtk");
      c.sText1 = subject;
      c.sXlabel = GetText("Contrasts");
      c.sYlabel = "l-hat/2";
      c.xAxisCount = static_cast<std::int16_t>(places + 2);
      // The size of the effect itself, although the label speaks of halves.
      std::vector<float> size;
      for (const Figures& f : figures) size.push_back(std::fabs(f.effect));
      Ranked(s, c, size, false);
    }
  }
  return true;
}

}  // namespace kestrow
