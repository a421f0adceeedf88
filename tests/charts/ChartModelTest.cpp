// The chart model: what points do to the y range, the plotting positions of
// a probability chart, the settings of a surface and of a contour plot, and
// the percent geometry of a cell.
#include <gtest/gtest.h>

#include <cmath>

#include "charts/Chart.h"

namespace kestrow {
namespace {

DataPoint At(float x, float y) {
  DataPoint p;
  p.fX = x;
  p.fY = y;
  return p;
}

TEST(ChartModel, OnlyConsideredValuesWidenTheYRange) {
  Chart c;
  c.Init(CHT_SCATTER);
  EXPECT_EQ(c.yMin, 1e9f);  // empty: the range is inside out
  EXPECT_EQ(c.yMax, -1e9f);
  c.AddData(At(1, 5));
  c.AddData(At(2, MISSING_VALUE));
  c.AddDataUnconsidered(At(3, 100));
  c.AddData(At(4, NAN));
  EXPECT_EQ(c.yMin, 5);
  EXPECT_EQ(c.yMax, 5);
  c.AddLinePoint(0, -2, 0, 1, false);
  c.SetLimits(MISSING_VALUE, 6, 9);
  EXPECT_EQ(c.yMin, -2);
  EXPECT_EQ(c.yMax, 9);
  EXPECT_EQ(c.LowLimit, MISSING_VALUE);
  EXPECT_EQ(c.DataPoints.size(), 4u);
}

// Ranks by value, the first of equal values first; the plotting position of
// rank r of n is (r - 0.5) / n. Values of 1e9 and beyond are ranked as well.
TEST(ChartModel, RankForNPPGivesPlottingPositionsWithTiesInListOrder) {
  Chart c;
  c.Init(CHT_NPP);
  for (float v : {3.0f, -1.0f, 3.0f, 2e9f, 0.5f}) {
    DataPoint p;
    p.fX = v;
    c.AddData(p);
  }
  c.RankForNPP();
  const int rank[] = {3, 1, 4, 5, 2};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(c.DataPoints[i].iSeqPtr, rank[i]) << i;
    EXPECT_FLOAT_EQ(c.DataPoints[i].fY, (rank[i] - 0.5f) / 5) << i;
  }
  Chart none;
  none.Init(CHT_RES_NPP);
  none.RankForNPP();  // no points: nothing to do
  EXPECT_TRUE(none.DataPoints.empty());
}

TEST(ChartModel, SurfaceAnglesUseTheTruncatedDegreeAndFlagsSplitIntoSwitches) {
  Chart c;
  c.Init(CHT_SURFACE);
  c.RSMsettings(30, -45, 20, 1 | 4 | 8);
  EXPECT_FLOAT_EQ(c.fAlphaRad, 30 * 0.01745f);
  EXPECT_FLOAT_EQ(c.fBetaRad, -45 * 0.01745f);
  EXPECT_EQ(c.iNet, 20);
  EXPECT_TRUE(c.bShade);
  EXPECT_FALSE(c.bFilled);
  EXPECT_TRUE(c.bRainbow);
  EXPECT_TRUE(c.bHideNet);
}

// A contour keeps its exact ranges and takes only the steps of the scale.
TEST(ChartModel, ContourScalesKeepTheRangeAndTakeTheSteps) {
  Chart c;
  c.Init(CHT_CONTOUR);
  c.SetupContourScales(-1.3f, 1.3f, 150, 190);
  EXPECT_EQ(c.xMin, -1.3f);
  EXPECT_EQ(c.xMax, 1.3f);
  EXPECT_EQ(c.yMin, 150);
  EXPECT_EQ(c.yMax, 190);
  EXPECT_FLOAT_EQ(c.xMajor, 0.5f);
  EXPECT_EQ(c.yMajor, 10);  // r = 5.7, above 5
  EXPECT_EQ(c.sXformat, "#########0.0");
}

// The plot rectangle from the margins of the type, in a cell of 400 x 300
// at (100, 50); pixels far outside are held as 16-bit integers.
TEST(ChartModel, PercentGeometryOfTheCell) {
  Chart c;
  c.Init(CHT_EFFECT);  // two lines top and bottom
  c.ox = 100;
  c.oy = 50;
  c.SetWidth(400);
  c.SetHeight(300);
  c.SetScaling();
  EXPECT_EQ(c.PlotLeft, 148);
  EXPECT_EQ(c.PlotRight, 468);
  EXPECT_EQ(c.PlotTop, 50 + 48);    // 16 percent
  EXPECT_EQ(c.PlotBottom, 50 + 270);  // 90 percent
  EXPECT_EQ(c.XAxisY, c.PlotBottom);
  c.xMin = 0;
  c.xMax = 10;
  c.yMin = 0;
  c.yMax = 1;
  EXPECT_EQ(c.XToPixel(5), 308);
  EXPECT_EQ(c.YToPixel(1), c.PlotTop);
  EXPECT_EQ(c.XToPixel(1e30f), 32767);
  EXPECT_EQ(c.YToPixel(1e30f), -32768);
  c.xMax = c.xMin;  // no range: everything at the left edge, no division
  EXPECT_EQ(c.XToPixel(3), c.PlotLeft);
}

}  // namespace
}  // namespace kestrow
