// Contour plots of a stored model. The textbook case is Montgomery's central
// composite (Design and Analysis of Experiments, chapter 11): the fitted
// yield y = 79.94 + 0.995 x1 + 0.515 x2 - 1.376 x1^2 - 1.001 x2^2 + 0.250 x1 x2
// in coded units (x1 = (time - 85) / 5, x2 = (temperature - 175) / 5).
// Every drawn point must lie on its level of that published quadratic, to
// within the straight-line interpolation along its cell's edge and the
// rounding of the printed coefficients. Surfaces made to order (planes,
// a flat one, a series over a held factor) check the walk's rules.
#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "analyses/ChartFixture.h"
#include "charts/ChartPage.h"
#include "core/Formatters.h"
#include "core/Problem.h"
#include "core/Settings.h"
#include "regression/ContourForms.h"
#include "regression/ContourPlot.h"
#include "regression/Regress.h"
#include "core/TestSupport.h"
#include "workbench/Availability.h"
#include "workbench/ChartLog.h"
#include "workbench/PrintLog.h"
#include "workbench/ShowAnalysis.h"

namespace kestrow {
namespace {

double Published(double x1, double x2) {
  return 79.94 + 0.995 * x1 + 0.515 * x2 - 1.376 * x1 * x1 - 1.001 * x2 * x2 + 0.250 * x1 * x2;
}

class ContourPlotTest : public test::ChartFixture {
 protected:
  void SetUp() override {
    ChartFixture::SetUp();
    gSettings.ContourCellSize = 20;
    gSettings.ContourProgress = false;
  }
  // A model given by its coefficients, each main term free or held.
  static void Model(Study& s, const std::vector<std::pair<std::string, float>>& terms, int flag = 0) {
    s.REGRESS_Rterms.Clear();
    for (const auto& [text, beta] : terms) {
      Rterm r;
      InitRterm(r);
      r.sTerm = text;
      r.fBeta = beta;
      if (text != "0" && text.find(',') == std::string::npos) r.fValue = FREE_AXIS;
      s.REGRESS_Rterms.Add(r);
    }
    s.REGRESS_sRVkey = "v1";
    s.REGRESS_iFlag = static_cast<std::int16_t>(flag);
  }
  static void Hold(Study& s, int factor, float value) {
    Regress fit;
    fit.Init(s);
    fit.SetmRTerm(factor, value);
  }
  // The lines of a chart by level: each run of points from its labelled start.
  static std::vector<std::vector<DataPoint>> Runs(const Chart& c) {
    std::vector<std::vector<DataPoint>> runs;
    for (const DataPoint& p : c.DataPoints) {
      if (p.sId == "COL") continue;
      if (!p.bJoined) runs.emplace_back();
      runs.back().push_back(p);
    }
    return runs;
  }
};

TEST_F(ContourPlotTest, EveryPointOfMontgomerysContoursLiesOnItsLevel) {
  Study& s = SampleStudy("CentralComposite");
  ASSERT_TRUE(SetupContourPlot(s, "")) << (ui->messages.empty() ? "" : ui->messages.back().text);
  ASSERT_EQ(Charts().size(), 1u);
  const Chart& c = Charts()[0];
  EXPECT_EQ(c.chtType, CHT_CONTOUR);
  EXPECT_EQ(c.sTitle, "Yield contour plot");
  EXPECT_EQ(c.sXlabel, "Time");
  EXPECT_EQ(c.sYlabel, "Temp");
  EXPECT_EQ(c.sText2, "Yield");
  EXPECT_EQ(c.sText3.substr(0, 2), "1|");  // a coded model
  EXPECT_EQ(c.xMin, 80);
  EXPECT_EQ(c.xMax, 90);
  EXPECT_EQ(c.yMin, 170);
  EXPECT_EQ(c.yMax, 180);
  // The model was fitted from the data on the way: its printed coefficients.
  EXPECT_EQ(FormatSF(3, s.REGRESS_Rterms(1).fBeta), "79.9");
  EXPECT_EQ(FormatSF(3, s.REGRESS_Rterms(2).fBeta), "0.995");

  const double h = 2.0 / 20;  // a cell's side in coded units
  std::map<std::string, int> lines;
  for (const auto& run : Runs(c)) {
    ASSERT_EQ(run[0].idf, 2);
    ++lines[run[0].sId2];
    for (const DataPoint& p : run) {
      EXPECT_EQ(ShortestText(p.fZ), run[0].sId2);
      const double x1 = (p.fX - 85.0) / 5, x2 = (p.fY - 175.0) / 5;
      ASSERT_GE(x1, -1 - 1e-6);
      ASSERT_LE(x1, 1 + 1e-6);
      // A chord of a quadratic of curvature at most 2 x 1.376 strays
      // 2.752 h^2 / 8 from it; each printed coefficient is off by 0.0005.
      const double tol = 2.752 * h * h / 8 + 0.0005 * (1 + std::fabs(x1) + std::fabs(x2) + x1 * x1 + x2 * x2 + std::fabs(x1 * x2)) + 1e-4;
      EXPECT_NEAR(Published(x1, x2), p.fZ, tol) << "at " << p.fX << ", " << p.fY;
    }
  }
  // At least five levels, strictly inside the range of the surface (76.30
  // at the corner (-1, -1) to 80.21 at the stationary point).
  ASSERT_GE(lines.size(), 5u);
  for (const auto& [level, count] : lines) {
    EXPECT_GT(Val(level), 76.3);
    EXPECT_LT(Val(level), 80.22);
  }
  // The level 80 closes round the maximum: its last point is its first.
  ASSERT_TRUE(lines.count("80"));
  for (const auto& run : Runs(c))
    if (run[0].sId2 == "80") {
      EXPECT_EQ(run.back().fX, run[0].fX);
      EXPECT_EQ(run.back().fY, run[0].fY);
    }
}

TEST_F(ContourPlotTest, TheTargetContourIsDrawnInsideTheRangeAndDroppedOutsideIt) {
  Study& s = SampleStudy("CentralComposite");
  s.CONTOUR_flags = CONTOUR_RAINBOW | CONTOUR_TARGET;
  sample->RespVars(1).fTarget = 78.5f;
  ASSERT_TRUE(SetupContourPlot(s, ""));
  int target = 0, seeds = 0;
  for (const DataPoint& p : Charts()[0].DataPoints) {
    if (p.sId == "T") {
      ++target;
      EXPECT_EQ(p.fZ, 78.5f);
    }
    if (p.sId == "COL") {
      ++seeds;
      EXPECT_GE(p.fZ, 0);
      EXPECT_LE(p.fZ, 100);
      EXPECT_GT(p.fX, 80);
      EXPECT_LT(p.fX, 90);
    }
  }
  EXPECT_GT(target, 10);
  EXPECT_GT(seeds, 0);
  // The print log takes the lines' values, the target marked.
  test::TempDir dir;
  gSettings.PrintLog = dir / "log.txt";
  ASSERT_TRUE(OpenLog(true));
  LogCharts(gPage);
  CloseLog();
  const std::string log = test::ReadFile(gSettings.PrintLog);
  EXPECT_NE(log.find("Yield contour plot\n"), std::string::npos);
  ui->messages.clear();  // the count of lines written
  // 76.5 cuts the corner (-1, -1) in the outer ring of cells alone, where no
  // walk starts: it has no line.
  EXPECT_NE(log.find("Contours at 77, 77.5, 78, 78.5, 79, 79.5, 80\nTarget contour at 78.5\n"), std::string::npos) << log;

  gphStart();
  sample->RespVars(1).fTarget = 95;  // no point of the plot reaches it
  ASSERT_TRUE(SetupContourPlot(s, ""));
  for (const DataPoint& p : Charts()[0].DataPoints) EXPECT_NE(p.sId, "T");
  EXPECT_TRUE(ui->messages.empty());

  gphStart();
  s.CONTOUR_flags = 0;  // no fill: no seeds
  ASSERT_TRUE(SetupContourPlot(s, ""));
  for (const DataPoint& p : Charts()[0].DataPoints) EXPECT_NE(p.sId, "COL");
}

// z = x on 10 to 30 in cells of 1: the levels 12.5, 15, ... 27.5 (the step
// 5 gives three, halved it gives seven more, 15, 20 and 25 twice). A level
// on a column of corners counts them as below it, and its line runs whole
// from the bottom edge to the top through the outer ring of cells.
TEST_F(ContourPlotTest, ALevelThroughCornersIsTracedWholeAlongThem) {
  Study& s = StudyOf(2, 3);
  Model(s, {{"0", 0}, {"1", 1}, {"2", 0}});
  ASSERT_TRUE(SetupContourPlot(s, ""));
  const Chart& c = Charts()[0];
  std::vector<std::string> levels;
  for (const auto& run : Runs(c)) {
    levels.push_back(run[0].sId2);
    EXPECT_EQ(run.size(), 21u) << run[0].sId2;
    for (const DataPoint& p : run) EXPECT_EQ(p.fX, p.fZ);
    float low = 1e9f, high = -1e9f;
    for (const DataPoint& p : run) low = std::min(low, p.fY), high = std::max(high, p.fY);
    EXPECT_EQ(low, 10);
    EXPECT_EQ(high, 30);
  }
  EXPECT_EQ(levels, (std::vector<std::string>{"15", "20", "25", "12.5", "15", "17.5", "20", "22.5", "25", "27.5"}));
}

// z = x1 x2 in coded units: the level 0 crosses itself at the saddle, a
// corner of four cells. Every walk ends, and every point lies on its level
// (the surface is linear along each edge).
TEST_F(ContourPlotTest, ASaddleIsTracedWithoutAWalkThatNeverEnds) {
  Study& s = StudyOf(2, 3);
  Model(s, {{"0", 0}, {"1", 0}, {"2", 0}, {"1,2", 1}}, REGRESS_CODED);
  ASSERT_TRUE(SetupContourPlot(s, "")) << ui->messages.back().text;
  int zero = 0;
  for (const auto& run : Runs(Charts()[0])) {
    zero += run[0].fZ == 0 ? 1 : 0;
    for (const DataPoint& p : run) EXPECT_NEAR((p.fX - 20) / 10 * (p.fY - 20) / 10, p.fZ, 1e-5);
  }
  EXPECT_GE(zero, 2);  // the arms of the cross
}

TEST_F(ContourPlotTest, AFlatSurfaceIsToldWithTheTagAndDrawsNoLine) {
  Study& s = StudyOf(2, 3);
  Model(s, {{"0", 42}, {"1", 0}, {"2", 0}});
  EXPECT_FALSE(SetupContourPlot(s, ""));
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_NE(ui->messages[0].text.find("flat"), std::string::npos);
  EXPECT_NE(ui->messages[0].text.find("[SetupContourPlot]"), std::string::npos);
  ASSERT_EQ(Charts().size(), 1u);
  EXPECT_TRUE(Charts()[0].DataPoints.empty());
  // Flat at zero, where a halving step would take a hundred rounds to underflow.
  std::vector<float> levels;
  std::string complaint;
  EXPECT_FALSE(ContourLevels(0, 0, MISSING_VALUE, levels, complaint));
  EXPECT_TRUE(levels.empty());
}

// Factors A, B, C at 10, 20, 30; z = A + B C in actual units, C the key.
TEST_F(ContourPlotTest, ASeriesOverTheKeyFactorHoldsEachValueInTurn) {
  Study& s = StudyOf(3, 3);
  Model(s, {{"0", 0}, {"1", 1}, {"2", 0}, {"3", 0}, {"2,3", 0.1f}});
  MultiConForm form(s, stats);
  ASSERT_EQ(form.rows.size(), 3u);
  form.rows[0].plotted = form.rows[1].plotted = true;
  form.SetKey(2, true);
  form.rows[2].values = {"10", " 30", "", "", "", "", "", ""};
  std::string message;
  ASSERT_EQ(form.OK(message), FormOutcome::Accepted) << message;
  EXPECT_EQ(s.CONTOUR_KeyValues, "Factor f3 = 10|10|Factor f3 = 30|30");
  ASSERT_TRUE(SetupContourPlot(s, s.CONTOUR_KeyValues));
  ASSERT_EQ(Charts().size(), 2u);
  const float held[2] = {10, 30};
  for (int k = 0; k < 2; ++k) {
    const Chart& c = Charts()[static_cast<std::size_t>(k)];
    EXPECT_NE(c.sTitle.find("= " + ShortestText(held[k])), std::string::npos) << c.sTitle;
    EXPECT_EQ(c.sText1, "Subject to: Factor f3 = " + ShortestText(held[k]));
    for (const DataPoint& p : c.DataPoints)
      if (p.sId != "COL") EXPECT_NEAR(p.fX + 0.1 * p.fY * held[k], p.fZ, 1e-3);
  }
  // The term keeps the value it held before the series.
  EXPECT_EQ(s.REGRESS_Rterms(4).fValue, 10);
}

TEST_F(ContourPlotTest, PlotsThatCannotBeMadeAreRefusedByName) {
  Study& s = StudyOf(3, 3);
  Model(s, {{"0", 1}, {"1", 1}, {"2", 1}, {"3", 1}});
  EXPECT_FALSE(SetupContourPlot(s, ""));  // three factors free, none held
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_EQ(ui->messages[0].text, "Give a value to hold Factor f3 at");
  stats.Compute(s);
  EXPECT_FALSE(IsAnalysisSetUp(s, stats, ANALYSIS_CONPLOT));

  // A factor only in a product has nothing to be held at.
  ui->messages.clear();
  Model(s, {{"0", 1}, {"1", 1}, {"2", 1}, {"1,3", 1}});
  EXPECT_FALSE(SetupContourPlot(s, ""));
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_EQ(ui->messages[0].text, "Logic error #1 [SetupFastConstants]");
  EXPECT_TRUE(Charts().empty());

  Study& cc = SampleStudy("CentralComposite");
  stats.Compute(cc);
  EXPECT_TRUE(IsAnalysisSetUp(cc, stats, ANALYSIS_CONPLOT));  // the two factors marked free in the file
  cc.REGRESS_Rterms.Clear();
  EXPECT_EQ(AnalysisUnavailableReason(cc, stats, ANALYSIS_CONPLOT), "You must compute a Regression Equation first");
  EXPECT_EQ(AnalysisUnavailableReason(cc, stats, ANALYSIS_RESPSURF), "You must compute a Regression Equation first");
}

TEST_F(ContourPlotTest, TheDialogsCheckTheirChoicesBeforeTheyStoreAny) {
  Study& s = SampleStudy("CentralComposite");
  Contour2Form two(s, stats);
  EXPECT_EQ(two.img1(), "conFilled");
  two.chkTgtContour = true;
  EXPECT_EQ(two.img1(), "conFilledTgt");
  two.TakeFilters("");
  std::string message;
  EXPECT_EQ(two.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("CONerr1"));
  EXPECT_EQ(s.CONTOUR_flags, 1);
  two.TakeFilters("0;0");
  ASSERT_EQ(two.OK(message), FormOutcome::Accepted);
  EXPECT_EQ(s.CONTOUR_flags, 3);
  EXPECT_EQ(s.sRSM_f1Key, "f1");
  EXPECT_EQ(s.sRSM_f2Key, "f2");
  EXPECT_TRUE(two.stored);

  Study& t = StudyOf(3, 3);
  Model(t, {{"0", 0}, {"1", 1}, {"2", 1}, {"3", 1}});
  MultiConForm multi(t, stats);
  const auto before = t.REGRESS_Rterms(4).fValue;
  multi.rows[0].plotted = true;
  EXPECT_EQ(multi.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("MCONerr2"));
  multi.rows[1].plotted = true;
  multi.rows[2].values[0] = "abc";
  EXPECT_EQ(multi.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("MCONerr3"));
  EXPECT_EQ(t.REGRESS_Rterms(4).fValue, before);
  multi.rows[2].values[0] = "25";
  ASSERT_EQ(multi.OK(message), FormOutcome::Accepted) << message;
  EXPECT_EQ(t.REGRESS_Rterms(4).fValue, 25);
  EXPECT_EQ(t.REGRESS_Rterms(2).fValue, FREE_AXIS);
  EXPECT_EQ(t.CONTOUR_KeyFactor, "");
  stats.Compute(t);
  EXPECT_TRUE(IsAnalysisSetUp(t, stats, ANALYSIS_CONPLOT));

  // A factor without numeric levels cannot be plotted.
  gProblem->Factors.Find(t.GetFactorKey(3))->iFlag = FACTOR_DISCRETE;
  MultiConForm discrete(t, stats);
  discrete.rows[0].plotted = false;
  discrete.rows[2].plotted = true;
  EXPECT_EQ(discrete.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("MCONerr1"));
}

}  // namespace
}  // namespace kestrow
