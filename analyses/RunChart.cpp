#include "analyses/RunChart.h"

#include "analyses/RunFigures.h"
#include "charts/ChartPage.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"

namespace kestrow {

namespace {

const char* TAG = "SetupRunChart";
const char* SCALE_TAGS[3] = {"Actual", "Coded", "Sigma"};

// One response's line: its averages (or ranges) on the chosen scale. False
// when the scale cannot be formed.
bool Line(const Study& s, const Statistics& st, Chart& c, int rv, bool range, bool labels) {
  const float low = range ? 0 : st.MinAvg(rv), high = range ? st.MaxRng(rv) : st.MaxAvg(rv);
  const float centre = range ? st.RngAvg(rv) : st.AvgAvg(rv), scale = st.SigInd(rv);
  const int scaling = s.RUN_iScaling;
  if (scaling == 1 && !(high > low)) {
    ReportError("Division by zero: every run of " + s.GetPRVName2(s.StudyRespVars(rv).sKey) +
                    " holds the same value, so it has no range to code",
                TAG);
    return false;
  }
  if (scaling == 2 && !(scale > 0)) {
    ReportError("Division by zero: " + s.GetPRVName2(s.StudyRespVars(rv).sKey) +
                    " has no spread within runs to measure sigma deviations by",
                TAG);
    return false;
  }
  bool joined = false;
  for (int run = 1; run <= s.iNumRuns; ++run) {
    float value = range ? st.SampRng(run, rv) : st.SampAvg(run, rv);
    if (value == MISSING_VALUE) continue;  // the line joins the neighbours
    if (scaling == 1) value = 2 * (value - low) / (high - low) - 1;
    if (scaling == 2) value = (value - centre) / scale;
    DataPoint p;
    p.fX = static_cast<float>(run);
    p.fY = value;
    p.sId = s.GetPRVName2(s.StudyRespVars(rv).sKey);
    p.idf = labels && (!(s.RUN_flags & RUN_LABEL_FIFTH) || run % 5 == 0) ? 1 : 0;
    p.iDotType = SeriesDotType(rv);
    p.bJoined = joined;
    joined = true;
    c.AddData(p);
  }
  return true;
}

bool Chart1(Study& s, const Statistics& st, bool range) {
  const int responses = s.StudyRespVars.Count();
  Chart& c = gphNewChart(CHT_RUN);
  if (range) {
    c.sTitle = GetText("Cht7");
    c.sYlabel = GetText("Range");
    c.sTextType = "Range";
  } else {
    c.sTitle = GetText(responses == 1 ? "Cht5" : "Cht6");
    c.sYlabel = GetText("Mean");
  }
  int scaling = s.RUN_iScaling >= 0 && s.RUN_iScaling <= 2 ? s.RUN_iScaling : 0;
  c.sText1 = GetText(SCALE_TAGS[scaling]);
  c.sXlabel = GetText("RunNo");
  c.xAxisCount = static_cast<std::int16_t>(std::min(s.iNumRuns + 1, 32767));
  for (int rv = 1; rv <= responses; ++rv)
    if (!Line(s, st, c, rv, range, rv == 1)) return false;
  return true;
}

}  // namespace

std::string RunChartList(const Study& study) { return (study.RUN_flags & RUN_SHOW_RANGE) ? "X,R" : "X"; }

bool SetupRunChart(Study& s, Statistics& st, const std::string& chartList) {
  st.Compute(s);
  std::string rest = chartList;
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    if (token == "X") {
      if (!Chart1(s, st, false)) return false;
    } else if (token == "R") {
      // Only where some response has a range at all.
      bool anyRange = false;
      for (int rv = 1; rv <= s.StudyRespVars.Count(); ++rv) anyRange = anyRange || st.RngAvg(rv) > 0;
      if (anyRange && !Chart1(s, st, true)) return false;
    }
  }
  return true;
}

}  // namespace kestrow
