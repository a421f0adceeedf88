// What a click tells on the charts of the analyses, shown as the tree shows
// them: the level and its mean on an analysis of means, a run's average with
// the run's levels on an effects plot, a cell's levels on a response plot.
#include <gtest/gtest.h>

#include "charts/ChartPage.h"
#include "charts/RecordingCanvas.h"
#include "core/Formatters.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "core/TestSupport.h"
#include "data/Statistics.h"
#include "workbench/Availability.h"
#include "workbench/ShowAnalysis.h"

namespace kestrow {
namespace {

class ChartClicks : public ::testing::Test {
 protected:
  void SetUp() override {
    SetProgramFolder(KESTROW_BIN);
    OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
    problem = test::Sample("ChemicalYield");
    gSettings.HeadersFlag = 0;
  }
  void TearDown() override {
    gphStart();
    gRunLevelsText = nullptr;
    CloseLanguage();
  }
  // Shows the analysis and lays its page out; the text of a click on a point.
  void Show(int code) {
    Study& s = problem->Studies(1);
    stats.Compute(s);
    gphStart();
    ASSERT_TRUE(DrawAnalysis(code, s, stats, grid));
    RecordingCanvas canvas;
    gphDrawAll(canvas, 1200, 800, PAGE_SCREEN);
  }
  std::string ClickOn(const DataPoint& p) { return gPage.Click(p.iWhereX, p.iWhereY, false); }

  test::ScopedUi ui;
  std::unique_ptr<Problem> problem;
  Statistics stats;
  Grid grid;
};

TEST_F(ChartClicks, AnAnalysisOfMeansPointIsItsLevelAndMean) {
  Show(ANALYSIS_ANOM);
  const Chart& main = gPage.Charts[0];
  EXPECT_EQ(ClickOn(main.DataPoints[1]), "25 Yield (Mean) = 31.67");
  const Chart& xbar = gPage.Charts[2];
  EXPECT_EQ(ClickOn(xbar.DataPoints[0]), "Yield (1) = 26.67\nA = 15\nB = 1");
}

TEST_F(ChartClicks, AnEffectsPlotPointIsItsCellOrItsRun) {
  Study& s = problem->Studies(1);
  s.FXPLOT_sF2Key.clear();
  Show(ANALYSIS_FXPLOT);
  const Chart& c = gPage.Charts[0];
  for (const DataPoint& p : c.DataPoints) {
    std::string text = ClickOn(p);
    // The value as a target is written: its whole float.
    if (p.iDotType == 9)
      EXPECT_EQ(text.substr(0, text.find(", Run = ")), "A = " + p.sId + ": " + TargetToText(p.fY)) << text;
    else
      EXPECT_EQ(text, "A = " + p.sId + ": " + TargetToText(p.fY));
  }
  const DataPoint& run = c.DataPoints[0];
  EXPECT_NE(ClickOn(run).find("\nA = 15\nB = "), std::string::npos) << ClickOn(run);
}

// A residual names its run and replicate, then the run's levels.
TEST_F(ChartClicks, AResidualNamesItsRunAndReplicateAndTheRunsLevels) {
  Study& s = problem->Studies(1);
  s.RESIDUAL_sCharts = "-3,-2,-1,1";
  Show(ANALYSIS_RESIDUALS);
  ASSERT_EQ(gPage.Charts.size(), 4u);
  const DataPoint& npp = gPage.Charts[0].DataPoints[4];  // run 2, replicate 2
  EXPECT_EQ(npp.sId, "2/2");
  EXPECT_EQ(ClickOn(npp), FormatNumSF(npp.fX) + ", Run = 2, Rep = 2\nA = 15\nB = 2");
  for (const DataPoint& p : gPage.Charts[1].DataPoints) {
    std::string text = ClickOn(p);
    EXPECT_EQ(text.substr(0, text.find('\n')), FormatNumSF(p.fY) + ", Run/Rep = " + p.sId);
    EXPECT_NE(text.find("\nA = "), std::string::npos);
  }
  const DataPoint& fitted = gPage.Charts[2].DataPoints[0];
  EXPECT_EQ(ClickOn(fitted).substr(0, ClickOn(fitted).find('\n')),
            FormatNumSF(fitted.fY) + ", Run = " + fitted.sId + ", Rep = " + fitted.sId2);
}

TEST_F(ChartClicks, AResponsePlotPointIsItsCell) {
  Show(ANALYSIS_RESPLOT);
  for (const DataPoint& p : gPage.Charts[0].DataPoints) {
    if (p.fY != MISSING_VALUE) {
      EXPECT_EQ(ClickOn(p), p.sId + " : " + FormatNumSF(p.fY));
    }
  }
}

}  // namespace
}  // namespace kestrow
