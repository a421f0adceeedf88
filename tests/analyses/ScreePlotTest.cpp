// The scree, normal probability and Pareto charts of the contrasts, on
// Montgomery's unreplicated 2^4 filtration rate experiment (Design and
// Analysis of Experiments, the 2^4 example of chapter 6, whose active
// effects are A, AC, AD, D and C): the effects are the ANOVA's, the plotting
// positions (r - 0.5) / n, the sums of squares the ANOVA's; and the cut-off,
// equal contrasts and data far from zero.
#include <gtest/gtest.h>

#include <map>

#include "analyses/ANOVA.h"
#include "analyses/ChartFixture.h"
#include "analyses/ScreePlot.h"
#include "core/Formatters.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/Settings.h"

namespace kestrow {
namespace {

class ScreePlotTest : public test::ChartFixture {
 protected:
  // A column of the single-degree-of-freedom table of the study's ANOVA, by contrast.
  std::map<std::string, std::string> AnovaColumn(Study& s, const std::string& heading) {
    Grid grid;
    EXPECT_TRUE(DrawANOVA(s, stats, grid));
    int col = -1;
    for (int c = 0; c < grid.Cols(); ++c)
      if (grid.Text(0, c) == heading) col = c;
    std::map<std::string, std::string> out;
    for (int r = 1; r < grid.Rows(); ++r)
      if (!grid.Text(r, 0).empty()) out[grid.Text(r, 0)] = grid.Text(r, col);
    return out;
  }
};

TEST_F(ScreePlotTest, TheProbabilityPlotHoldsTheANOVAsEffectsAtTheirPlottingPositions) {
  Study& s = SampleStudy("FiltrationRate");
  std::map<std::string, std::string> effects = AnovaColumn(s, "Effect");
  ASSERT_TRUE(SetupScreePlot(s, stats, "1"));
  const Chart& c = Charts()[0];
  ASSERT_EQ(c.DataPoints.size(), 15u);
  int compared = 0;
  for (const DataPoint& p : c.DataPoints) {
    // The effect from the raw data: 2 sum(c y) / sum |c| over the runs.
    int i = 0;
    for (int k = 1; k <= s.Contrasts.Count(); ++k)
      if (s.Contrasts(k).sName == p.sId2) i = k;
    double cy = 0, absC = 0;
    for (int run = 1; run <= s.iNumRuns; ++run) {
      double coefficient = s.GetContrastEntry(i, run);
      cy += coefficient * s.GetData(1, run, 1);
      absC += std::fabs(coefficient);
    }
    EXPECT_NEAR(p.fX, 2 * cy / absC, 1e-4) << p.sId2;
    // The ANOVA prints the effects of the contrasts it keeps out of the error.
    if (!effects[p.sId2].empty()) {
      EXPECT_EQ(FormatNumSF(p.fX), effects[p.sId2]) << p.sId2;
      ++compared;
    }
    EXPECT_FLOAT_EQ(p.fY, (p.iSeqPtr - 0.5f) / 15) << p.sId2;
  }
  EXPECT_GE(compared, 5);
  // A 21.625, AC -18.125 (Montgomery's table of effects).
  for (const DataPoint& p : c.DataPoints) {
    if (p.sId2 == "A") EXPECT_FLOAT_EQ(p.fX, 21.625f);
    if (p.sId2 == "AC") EXPECT_FLOAT_EQ(p.fX, -18.125f);
  }
}

TEST_F(ScreePlotTest, TheActiveEffectsLeadThePareto) {
  Study& s = SampleStudy("FiltrationRate");
  std::map<std::string, std::string> ss = AnovaColumn(s, "SS");
  ASSERT_TRUE(SetupScreePlot(s, stats, "0,2"));
  ASSERT_EQ(Charts().size(), 2u);
  const Chart& scree = Charts()[0];
  const Chart& pareto = Charts()[1];
  std::vector<std::string> order;
  for (const DataPoint& p : pareto.DataPoints) order.push_back(p.sId2);
  EXPECT_EQ(std::vector<std::string>(order.begin(), order.begin() + 5),
            (std::vector<std::string>{"A", "AC", "AD", "D", "C"}));
  // Ten singly and the other five averaged behind them.
  ASSERT_EQ(pareto.DataPoints.size(), 11u);
  EXPECT_EQ(pareto.DataPoints.back().sId, GetText("pooledt") + " 5");
  EXPECT_EQ(pareto.xAxisCount, 13);
  EXPECT_EQ(scree.xAxisCount, 12);
  for (std::size_t i = 0; i + 1 < scree.DataPoints.size(); ++i) {
    const DataPoint& p = scree.DataPoints[i];
    if (!ss[p.sId2].empty()) EXPECT_EQ(FormatSF(4, p.fY), ss[p.sId2]) << p.sId2;
    if (i > 0) EXPECT_GE(scree.DataPoints[i - 1].fY, p.fY);
    EXPECT_EQ(p.bJoined, i > 0);
  }
}

// With a cut-off of 4: four singly and a fifth, the average of the rest,
// labelled with their count; with as many contrasts as the cut-off, no fifth.
TEST_F(ScreePlotTest, TheCutOffAveragesTheRest) {
  Study& s = TwoLevel(3, 1);
  FillYates(s, {{10}, {14}, {11}, {17}, {12}, {16}, {13}, {21}});
  s.ANOVA_sCharts = "0";
  gSettings.ParetoCutoff = 4;
  ASSERT_TRUE(SetupScreePlot(s, stats, "0"));
  const Chart& c = Charts()[0];
  ASSERT_EQ(c.DataPoints.size(), 5u);
  EXPECT_EQ(c.DataPoints[4].sId, GetText("pooledt") + " 3");
  EXPECT_EQ(c.DataPoints[4].sId2, GetText("Other"));
  // Contrast sums A 22, B 10, C 10, AB 6, AC 2, BC 2, ABC 2: SS = sum^2 / 8.
  EXPECT_FLOAT_EQ(c.DataPoints[0].fY, 22.0f * 22 / 8);
  EXPECT_FLOAT_EQ(c.DataPoints[4].fY, 3 * (2.0f * 2 / 8) / 3);
  EXPECT_EQ(c.DataPoints[1].sId2, "B");  // B before C: equal, in collection order
  EXPECT_EQ(c.DataPoints[2].sId2, "C");
  gSettings.ParetoCutoff = 7;
  gphStart();
  ASSERT_TRUE(SetupScreePlot(s, stats, "0"));
  EXPECT_EQ(Charts()[0].DataPoints.size(), 7u);
}

// Every effect equal: the probability plot ranks them in collection order,
// and the ranks still give distinct plotting positions.
TEST_F(ScreePlotTest, TiesInEveryEffect) {
  Study& s = TwoLevel(2, 1);
  FillYates(s, {{1}, {1}, {1}, {1}});  // every effect 0
  ASSERT_TRUE(SetupScreePlot(s, stats, "1,2"));
  const Chart& npp = Charts()[0];
  for (std::size_t i = 0; i < npp.DataPoints.size(); ++i) {
    EXPECT_EQ(npp.DataPoints[i].fX, 0);
    EXPECT_EQ(npp.DataPoints[i].iSeqPtr, static_cast<int>(i) + 1);
  }
  EXPECT_EQ(Charts()[1].DataPoints[0].sId2, "A");
}

TEST_F(ScreePlotTest, EffectsHoldFarFromZeroAndAtTinyScales) {
  for (auto [shift, scale] : {std::pair{10000.0f, 1.0f}, {0.0f, 1e-6f}}) {
    Study& s = SampleStudy("FiltrationRate");
    for (int run = 1; run <= s.iNumRuns; ++run) s.SetData(1, run, 1, s.GetData(1, run, 1) * scale + shift);
    gphStart();
    ASSERT_TRUE(SetupScreePlot(s, stats, "1"));
    // Within the printed four figures (21.62 on 1e4, from sums of 16 such values).
    for (const DataPoint& p : Charts()[0].DataPoints) {
      if (p.sId2 == "A") EXPECT_NEAR(p.fX, 21.625 * scale, 21.625 * scale * 2e-4) << shift;
      if (p.sId2 == "AD") EXPECT_NEAR(p.fX, 16.625 * scale, 16.625 * scale * 2e-4) << shift;
    }
  }
}

}  // namespace
}  // namespace kestrow
