// What a click says: the tolerance round a point, the text of each kind of
// chart with the run's levels after it, the bars of a Pareto chart, the
// surface value of a contour plot; and the line of best fit through a box.
#include <gtest/gtest.h>

#include <cmath>

#include "charts/Chart.h"
#include "core/Settings.h"
#include "stats/Normal.h"

namespace kestrow {
namespace {

class Click : public ::testing::Test {
 protected:
  void SetUp() override {
    gSettings = Settings();
    gSettings.NumSF = 4;
  }
  void TearDown() override {
    gSettings = Settings();
    gRunLevelsText = nullptr;
  }
  // A chart of one point drawn at (100, 100), in a cell 300 pixels wide.
  Chart& One(std::int16_t type, float x, float y, const std::string& id, const std::string& id2 = "") {
    c.Init(type);
    c.SetWidth(300);
    c.SetHeight(200);
    DataPoint p;
    p.fX = x;
    p.fY = y;
    p.sId = id;
    p.sId2 = id2;
    p.iWhereX = 100;
    p.iWhereY = 100;
    c.AddData(p);
    return c;
  }
  Chart c;
};

// Half of one percent of 300 pixels is 1.5, which rounds to 2; four times
// that with AllowNear, and four times again on a response plot.
TEST_F(Click, ToleranceIsHalfAPercentOfTheWidth) {
  One(CHT_RES_RUN, 3, 1.25f, "4/2");
  EXPECT_NE(c.Click(102, 98, false), "");
  EXPECT_EQ(c.Click(103, 100, false), "");
  EXPECT_EQ(c.Click(100, 97, false), "");
  gSettings.AllowNear = true;
  EXPECT_NE(c.Click(108, 92, false), "");
  EXPECT_EQ(c.Click(109, 100, false), "");
  One(CHT_RESPONSE2, 1, 5, "A = 1, B = 2");
  EXPECT_NE(c.Click(132, 68, false), "");
  EXPECT_EQ(c.Click(133, 100, false), "");
  EXPECT_EQ(c.lastClickX, 133);
  // The first point in list order wins where two are near.
  DataPoint second;
  second.fY = 9;
  second.sId = "other";
  second.iWhereX = 101;
  second.iWhereY = 100;
  c.AddData(second);
  EXPECT_EQ(c.Click(101, 100, false).find("other"), std::string::npos);
}

TEST_F(Click, TextsOfEachKindOfChart) {
  struct Case {
    std::int16_t type;
    float x, y;
    const char* id;
    const char* id2;
    const char* textType;
    bool ctrl;
    const char* text;
  };
  const Case cases[] = {
      {CHT_RES_RUN, 3, 1.25f, "4/2", "", "", false, "1.25, Run/Rep = 4/2"},
      {CHT_RES_FACTOR, 1, -0.5f, "7/1", "", "", false, "-0.5, Run/Rep = 7/1"},
      {CHT_RES_FITTED, 10, 2.5f, "3", "0", "", false, "2.5, Run = 3"},
      {CHT_REG_NPP, 10, 0.3f, "3", "2", "", false, "10, Run = 3, Rep = 2"},
      {CHT_RES_NPP, -1.5f, 0.2f, "5/3", "", "", false, "-1.5, Run = 5, Rep = 3"},
      {CHT_RES_NPP, -1.5f, 0.2f, "5/3", "", "", true, ""},
      {CHT_NPP, 12.25f, 0.9f, "AB", "Temp x Time", "", false, "12.25, Effect = AB"},
      {CHT_PAIRWISE, 41.5f, -0.4f, "3 - 1", "", "", false, "41.5 = 3 - 1"},
      {CHT_RUN, 4, 17.5f, "Yield", "", "Range", false, "Yield (range) = 17.5, Run = 4"},
      {CHT_RUN, 4, 17.5f, "Yield", "", "", false, "Yield = 17.5, Run = 4"},
  };
  for (const Case& k : cases) {
    SCOPED_TRACE(k.text);
    One(k.type, k.x, k.y, k.id, k.id2);
    c.sTextType = k.textType;
    std::string text = c.Click(100, 100, k.ctrl);
    EXPECT_EQ(text.substr(0, text.find('\n')), k.text);
  }
  One(CHT_RES_VARIABLE, 2.75f, 0.5f, "6");
  c.sXlabel = "Pressure";
  EXPECT_EQ(c.Click(100, 100, false), "Pressure = 2.75, Run = 6");
  One(CHT_SCATTER, 2, 3, "");
  c.sXlabel = "x";
  c.sYlabel = "y";
  EXPECT_EQ(c.Click(100, 100, false), "x = 2, y = 3");
  // A point without a value says nothing.
  One(CHT_RES_RUN, 3, MISSING_VALUE, "4/2");
  EXPECT_EQ(c.Click(100, 100, false), "");
}

// A hit on a point of a run is followed by that run's factor levels.
TEST_F(Click, APointOfARunIsFollowedByTheRunsLevels) {
  gRunLevelsText = [](int run) { return "A = " + std::to_string(run * 10) + "\nB = high"; };
  One(CHT_RES_RUN, 3, 1.25f, "4/2");
  EXPECT_EQ(c.Click(100, 100, false), "1.25, Run/Rep = 4/2\nA = 40\nB = high");
  One(CHT_RUN, 4, 17.5f, "Yield");
  EXPECT_EQ(c.Click(100, 100, false), "Yield = 17.5, Run = 4\nA = 40\nB = high");
  One(CHT_NPP, 12.25f, 0.9f, "AB");
  EXPECT_EQ(c.Click(100, 100, false), "12.25, Effect = AB");  // a contrast has no run
}

TEST_F(Click, AParetoBarIsHitAnywhereBelowItsTop) {
  c.Init(CHT_PARETO);
  c.xMin = 0;
  c.xMax = 4;
  c.PlotLeft = 0;
  c.PlotRight = 400;
  c.PlotBottom = 300;
  for (int i = 1; i <= 3; ++i) {
    DataPoint p;
    p.fX = static_cast<float>(i);
    p.fY = 10.0f / i;
    p.sId = "C" + std::to_string(i);
    p.iWhereX = static_cast<std::int16_t>(c.XToPixel(p.fX));
    p.iWhereY = static_cast<std::int16_t>(50 * i);  // tops at 50, 100, 150
    c.AddData(p);
  }
  EXPECT_EQ(c.Click(200 + 49, 250, false), "C2");
  EXPECT_EQ(c.Click(200, 99, false), "");  // above the bar's top
  EXPECT_EQ(c.Click(300, 290, false), "C3");
}

// Inside the plot the position in data units and the quadratic part of the
// packed surface: in coded units the plot's edges are -1 and +1.
TEST_F(Click, AContourPlotGivesThePositionAndTheSurfaceValue) {
  c.Init(CHT_CONTOUR);
  c.xMin = 100;
  c.xMax = 200;
  c.yMin = 0;
  c.yMax = 10;
  c.PlotLeft = 50;
  c.PlotRight = 250;
  c.PlotTop = 20;
  c.PlotBottom = 220;
  c.sXlabel = "Temp";
  c.sYlabel = "Time";
  c.sText2 = "Yield";
  c.sText3 = "1|10|2|-3|0.4|1|1|99";  // K0..K5, and a cubic term not summed
  // At (200, 70): x coded 0.5, y coded 0.5: 10 + 1 - 1.5 + 0.1 + 0.25 + 0.25.
  EXPECT_EQ(c.Click(200, 70, false), "Temp = 175, Time = 7.5, Yield = 10.1");
  c.sText3 = "0|1|0.01|0|0|0|0";  // actual units: 1 + 0.01 x
  EXPECT_EQ(c.Click(200, 70, false), "Temp = 175, Time = 7.5, Yield = 2.75");
  EXPECT_EQ(c.Click(40, 70, false), "");  // outside the plot
}

class LineOfBestFit : public ::testing::Test {
 protected:
  // A probability plot of n effects on a plot from (0, 0) to (400, 400),
  // x 0..10; effect i is at x = i + 0.5.
  void Make(int n) {
    c.Init(CHT_NPP);
    for (int i = 0; i < n; ++i) {
      DataPoint p;
      p.fX = static_cast<float>(i) + 0.5f;
      c.AddData(p);
    }
    c.RankForNPP();
    c.xMin = 0;
    c.xMax = 10;
    c.PlotLeft = 0;
    c.PlotRight = 400;
    c.PlotTop = 0;
    c.PlotBottom = 400;
  }
  Chart c;
};

TEST_F(LineOfBestFit, ThreePointsInTheBoxAreTooFewAndStayMarked) {
  Make(8);
  EXPECT_FALSE(c.ComputeLOBF(0, 0, 130, 400));  // x 0..3.25 holds three
  int inside = 0, outside = 0;
  for (const DataPoint& p : c.DataPoints) (p.iDotType == 1 ? inside : outside) += 1;
  EXPECT_EQ(inside, 3);
  EXPECT_EQ(outside, 5);
  EXPECT_EQ(c.fLOBFAtTop, MISSING_VALUE);
  Make(3);
  EXPECT_FALSE(c.ComputeLOBF(0, 0, 400, 400));  // three points in all
}

// The least-squares line of x on the normal score through the points in
// the box, given by its x at the plot's top and bottom; the box may be
// dragged either way.
TEST_F(LineOfBestFit, FitsXOnTheNormalScoreOfThePointsInTheBox) {
  Make(8);
  ASSERT_TRUE(c.ComputeLOBF(400, 400, 0, 0));
  double n = 8, sx = 0, sz = 0, sxz = 0, sxx = 0;
  for (const DataPoint& p : c.DataPoints) {
    double z = NormalValue(p.fY);
    sx += p.fX;
    sz += z;
    sxz += p.fX * z;
    sxx += static_cast<double>(p.fX) * p.fX;
  }
  double b = (n * sxz - sx * sz) / (n * sxx - sx * sx), a = sz / n - b * sx / n;
  double zTop = NormalValue(0.999f), zBottom = NormalValue(0.001f);
  EXPECT_NEAR(c.fLOBFAtTop, (zTop - a) / b, 1e-4);
  EXPECT_NEAR(c.fLOBFAtBottom, (zBottom - a) / b, 1e-4);
  for (const DataPoint& p : c.DataPoints) EXPECT_EQ(p.iDotType, 1);
}

}  // namespace
}  // namespace kestrow
