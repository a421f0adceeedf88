// The effects, marginal means and response plots and the IPO diagram, on
// Montgomery's 2^2 yield experiment (Design and Analysis of Experiments,
// chapter 6): every plotted mean against the one worked out in the test from
// the raw observations, the main effect against the ANOVA's, and the edge
// cases of filters, missing combinations, three factors and one replicate.
#include <gtest/gtest.h>

#include <map>

#include "analyses/ANOVA.h"
#include "analyses/ChartFixture.h"
#include "analyses/EffectsPlot.h"
#include "analyses/MarginalMeans.h"
#include "analyses/ResponsePlot.h"
#include "core/Formatters.h"
#include "core/Grid.h"
#include "core/Language.h"

namespace kestrow {
namespace {

// The yield by A (reactant) and B (catalyst) level, three replicates each.
const std::map<std::pair<int, int>, std::vector<float>> YIELD = {
    {{1, 1}, {28, 25, 27}}, {{2, 1}, {36, 32, 32}}, {{1, 2}, {18, 19, 23}}, {{2, 2}, {31, 30, 29}}};

float MeanOf(const std::vector<std::pair<int, int>>& cells) {
  float sum = 0, n = 0;
  for (auto cell : cells)
    for (float y : YIELD.at(cell)) {
      sum += y;
      n += 1;
    }
  return sum / n;
}

class FactorPlotsTest : public test::ChartFixture {};

// One factor: the run averages at each level as crosses labelled by their
// runs, then the level means joined; their difference is the ANOVA's effect.
TEST_F(FactorPlotsTest, TheEffectsPlotOfOneFactorHoldsTheLevelMeansAndTheRuns) {
  Study& s = SampleStudy("ChemicalYield");
  s.FXPLOT_sF2Key.clear();
  ASSERT_TRUE(SetupFXPlot(s, stats, "0;0"));
  ASSERT_EQ(Charts().size(), 1u);
  const Chart& c = Charts()[0];
  EXPECT_EQ(c.chtType, CHT_EFFECT);
  EXPECT_EQ(c.xAxisCount, 4);
  EXPECT_EQ(c.sText1, GetText("AllData"));
  std::vector<DataPoint> runs, means;
  for (const DataPoint& p : c.DataPoints) (p.iDotType == 9 ? runs : means).push_back(p);
  ASSERT_EQ(runs.size(), 4u);
  ASSERT_EQ(means.size(), 2u);
  EXPECT_FLOAT_EQ(means[0].fY, MeanOf({{1, 1}, {1, 2}}));
  EXPECT_FLOAT_EQ(means[1].fY, MeanOf({{2, 1}, {2, 2}}));
  EXPECT_EQ(means[0].fX, 1);
  EXPECT_EQ(means[1].fX, 3);
  EXPECT_FALSE(means[0].bJoined);
  EXPECT_TRUE(means[1].bJoined);
  for (const DataPoint& p : runs) {
    int run = std::stoi(p.sId2);
    EXPECT_EQ(p.fX, 2 * s.GetTreatmentLevel(1, run) - 1);
    EXPECT_FLOAT_EQ(p.fY, MeanOf({{s.GetTreatmentLevel(1, run), s.GetTreatmentLevel(2, run)}}));
  }
  // The ANOVA's effect of A is the difference of the two means: 8.333.
  Grid grid;
  ASSERT_TRUE(DrawANOVA(s, stats, grid));
  int effectCol = -1;
  for (int col = 0; col < grid.Cols(); ++col)
    if (grid.Text(0, col) == "Effect") effectCol = col;
  ASSERT_GE(effectCol, 0);
  std::string effect;
  for (int r = 1; r < grid.Rows(); ++r)
    if (grid.Text(r, 0) == "A") effect = grid.Text(r, effectCol);
  EXPECT_EQ(effect, FormatNumSF(means[1].fY - means[0].fY));
  EXPECT_NEAR(means[1].fY - means[0].fY, 8.3333f, 1e-4);
}

TEST_F(FactorPlotsTest, TheInteractionPlotHasALineForEachLevelOfTheSecondFactor) {
  Study& s = SampleStudy("ChemicalYield");
  ASSERT_TRUE(SetupFXPlot(s, stats, s.FXPLOT_sFilter));
  const Chart& c = Charts()[0];
  EXPECT_EQ(c.chtType, CHT_INTERACTION);
  EXPECT_EQ(c.sText2, "B");
  ASSERT_EQ(c.DataPoints.size(), 4u);
  int i = 0;
  for (int b = 1; b <= 2; ++b)
    for (int a = 1; a <= 2; ++a, ++i) {
      const DataPoint& p = c.DataPoints[static_cast<std::size_t>(i)];
      EXPECT_FLOAT_EQ(p.fY, MeanOf({{a, b}})) << a << b;
      EXPECT_EQ(p.bJoined, a == 2);
      EXPECT_EQ(p.iDotType, b);
      EXPECT_EQ(p.idf, (b == 1 ? 1 : 0) + (a == 2 ? 2 : 0));
    }
}

// Each filter makes a chart; a level no run has leaves an empty chart with
// its title and texts.
TEST_F(FactorPlotsTest, FiltersMakeAChartEachAndAnEmptyOneWhereNoRunQualifies) {
  Study& s = SampleStudy("ChemicalYield");
  s.FXPLOT_sF2Key.clear();
  ASSERT_TRUE(SetupFXPlot(s, stats, "0;0,2;1,2;3"));
  ASSERT_EQ(Charts().size(), 3u);
  EXPECT_EQ(Charts()[0].sTitle, Charts()[1].sTitle);
  EXPECT_EQ(Charts()[1].sText1, SubstituteCopy(GetText("Filterby"), "Catalyst = 1"));
  std::vector<float> filtered;
  for (const DataPoint& p : Charts()[1].DataPoints)
    if (p.iDotType == 1) filtered.push_back(p.fY);
  EXPECT_EQ(filtered, (std::vector<float>{MeanOf({{1, 1}}), MeanOf({{2, 1}})}));
  EXPECT_TRUE(Charts()[2].DataPoints.empty());
  EXPECT_FALSE(Charts()[2].sTitle.empty());
}

// The level means of every factor side by side, of the run averages and of
// the run standard deviations; the factor's name over its levels does not
// stretch the chart of means.
TEST_F(FactorPlotsTest, MarginalMeansOfTheAveragesAndTheStandardDeviations) {
  Study& s = SampleStudy("ChemicalYield");
  ASSERT_EQ(MMPChartList(s), "X,S");
  ASSERT_TRUE(SetupMMP(s, stats, MMPChartList(s)));
  ASSERT_EQ(Charts().size(), 2u);
  const Chart& means = Charts()[0];
  EXPECT_EQ(means.sTextType, "Mean");
  EXPECT_EQ(means.xAxisCount, 5);
  std::vector<float> got;
  for (const DataPoint& p : means.DataPoints)
    if (p.iDotType == 1) got.push_back(p.fY);
  const float expected[4] = {MeanOf({{1, 1}, {1, 2}}), MeanOf({{2, 1}, {2, 2}}), MeanOf({{1, 1}, {2, 1}}),
                             MeanOf({{1, 2}, {2, 2}})};
  ASSERT_EQ(got.size(), 4u);
  for (int i = 0; i < 4; ++i) EXPECT_NEAR(got[static_cast<std::size_t>(i)], expected[i], 1e-5) << i;
  auto sd = [](std::pair<int, int> cell) {
    const std::vector<float>& y = YIELD.at(cell);
    double m = (y[0] + y[1] + y[2]) / 3.0, ss = 0;
    for (float v : y) ss += (v - m) * (v - m);
    return std::sqrt(ss / 2);
  };
  const Chart& sds = Charts()[1];
  EXPECT_EQ(sds.sTextType, "SD");
  std::vector<float> sdMeans;
  for (const DataPoint& p : sds.DataPoints)
    if (p.iDotType == 1) sdMeans.push_back(p.fY);
  ASSERT_EQ(sdMeans.size(), 4u);
  EXPECT_NEAR(sdMeans[0], (sd({1, 1}) + sd({1, 2})) / 2, 1e-5);
  EXPECT_NEAR(sdMeans[3], (sd({1, 2}) + sd({2, 2})) / 2, 1e-5);
  // The name points: no marker, the factor's name above, centred on its levels.
  int names = 0;
  for (const DataPoint& p : means.DataPoints)
    if (p.idf == 2) {
      ++names;
      EXPECT_EQ(p.iDotType, 0);
      EXPECT_EQ(p.fX, names == 1 ? 1.5f : 3.5f);
    }
  EXPECT_EQ(names, 2);
  float low = *std::min_element(got.begin(), got.end());
  EXPECT_EQ(means.yMin, low);  // the names did not stretch the scale
}

// By contrast: the means at each coefficient, rising; AB's -1 holds (1) and ab.
TEST_F(FactorPlotsTest, MarginalMeansByContrast) {
  Study& s = SampleStudy("ChemicalYield");
  s.MMP_flags = 0;
  ASSERT_TRUE(SetupMMP(s, stats, "X"));
  std::vector<std::pair<std::string, float>> got;
  for (const DataPoint& p : Charts()[0].DataPoints)
    if (p.iDotType == 1) got.emplace_back(p.sId2 + p.sId, p.fY);
  ASSERT_EQ(got.size(), 6u);
  EXPECT_EQ(got[4].first, "AB-1");
  EXPECT_FLOAT_EQ(got[4].second, MeanOf({{2, 1}, {1, 2}}));
  EXPECT_EQ(got[5].first, "AB1");
  EXPECT_FLOAT_EQ(got[5].second, MeanOf({{1, 1}, {2, 2}}));
  EXPECT_EQ(Charts()[0].sXlabel, GetText("Contrasts"));
}

// Cells of A by B, each line a level of B; with a third factor one block of
// lines per level of it, parted by a line; a combination without a run is a
// gap in its line.
TEST_F(FactorPlotsTest, TheResponsePlotOfTwoAndThreeFactors) {
  Study& s = SampleStudy("ChemicalYield");
  ASSERT_TRUE(SetupResponsePlot(s, stats));
  const Chart& two = Charts()[0];
  EXPECT_EQ(two.chtType, CHT_RESPONSE2);
  EXPECT_EQ(two.sYlabel, "Yield (Avg)");
  std::vector<DataPoint> cells = Valued(two);
  ASSERT_EQ(cells.size(), 4u);
  EXPECT_EQ(cells[0].sId, "A = 15, B = 1");
  EXPECT_FLOAT_EQ(cells[0].fY, MeanOf({{1, 1}}));
  EXPECT_FLOAT_EQ(cells[3].fY, MeanOf({{2, 2}}));
  EXPECT_TRUE(cells[1].bJoined);
  EXPECT_FALSE(cells[2].bJoined);

  Study& three = TwoLevel(3, 1);
  FillYates(three, {{1}, {2}, {3}, {4}, {5}, {6}, {7}, {8}});
  three.SetData(1, 2, 1, MISSING_VALUE);
  three.RESPONSE_sRVkey = "v1";
  three.RESPONSE_sF1Key = three.GetFactorKey(1);
  three.RESPONSE_sF2Key = three.GetFactorKey(2);
  three.RESPONSE_sF3Key = three.GetFactorKey(3);
  gphStart();
  ASSERT_TRUE(SetupResponsePlot(three, stats));
  const Chart& c = Charts()[0];
  EXPECT_EQ(c.chtType, CHT_RESPONSE3);
  EXPECT_EQ(c.xAxisCount, 6);
  ASSERT_EQ(c.LinePoints.size(), 1u);  // one divider between the two blocks
  EXPECT_EQ(c.LinePoints[0].fX, 3);
  std::vector<DataPoint> v = Valued(c);
  EXPECT_EQ(v.size(), 7u);
  int run2 = 2;
  int a = three.GetTreatmentLevel(1, run2), b = three.GetTreatmentLevel(2, run2), k = three.GetTreatmentLevel(3, run2);
  float gapX = static_cast<float>((k - 1) * 3 + a);
  for (const DataPoint& p : v) {
    if (p.iDotType != b) continue;
    EXPECT_FALSE(p.fX == gapX) << "the missing combination has a point";
    if (p.fX == gapX + 1 || p.fX == gapX - 1) EXPECT_FALSE(p.bJoined && p.fX == gapX + 1);
  }
}

// Standard deviations need replicates: with one, no cell has a figure.
TEST_F(FactorPlotsTest, AResponsePlotOfStandardDeviationsWithOneReplicateIsEmpty) {
  Study& s = TwoLevel(2, 1);
  Fill(s, {{1}, {2}, {3}, {4}});
  s.RESPONSE_sRVkey = "v1";
  s.RESPONSE_sF1Key = s.GetFactorKey(1);
  s.RESPONSE_sF2Key = s.GetFactorKey(2);
  s.RESPONSE_iVariable = 1;
  ASSERT_TRUE(SetupResponsePlot(s, stats));
  EXPECT_TRUE(Valued(Charts()[0]).empty());
  EXPECT_TRUE(ui->messages.empty());
}

// Moved by 10,000 or scaled to 1e-6, every plotted mean is still the mean of
// its observations to the printed digits.
TEST_F(FactorPlotsTest, MeansHoldFarFromZeroAndAtTinyScales) {
  for (auto [shift, scale] : {std::pair{10000.0, 1.0}, {0.0, 1e-6}}) {
    Study& s = SampleStudy("ChemicalYield");
    for (int run = 1; run <= s.iNumRuns; ++run)
      for (int rep = 1; rep <= s.iReps; ++rep)
        s.SetData(1, run, rep, static_cast<float>(s.GetData(1, run, rep) * scale + shift));
    gphStart();
    ASSERT_TRUE(SetupMMP(s, stats, "X"));
    ASSERT_TRUE(SetupFXPlot(s, stats, "0;0"));
    ASSERT_TRUE(SetupResponsePlot(s, stats));
    auto expected = [&](const std::vector<std::pair<int, int>>& cells) {
      double sum = 0, n = 0;
      for (auto cell : cells)
        for (float y : YIELD.at(cell)) {
          sum += y * scale + shift;
          n += 1;
        }
      return static_cast<float>(sum / n);
    };
    std::vector<float> mmp, fx, response;
    for (const DataPoint& p : Charts()[0].DataPoints)
      if (p.iDotType == 1) mmp.push_back(p.fY);
    for (const DataPoint& p : Valued(Charts()[1])) fx.push_back(p.fY);
    for (const DataPoint& p : Valued(Charts()[2])) response.push_back(p.fY);
    ASSERT_EQ(mmp.size(), 4u);
    ASSERT_EQ(fx.size(), 4u);
    ASSERT_EQ(response.size(), 4u);
    EXPECT_EQ(FormatSF(4, mmp[0]), FormatSF(4, expected({{1, 1}, {1, 2}}))) << shift << " " << scale;
    EXPECT_EQ(FormatSF(4, mmp[3]), FormatSF(4, expected({{1, 2}, {2, 2}}))) << shift << " " << scale;
    EXPECT_EQ(FormatSF(4, fx[0]), FormatSF(4, expected({{1, 1}}))) << shift << " " << scale;  // A 15, B 1
    EXPECT_EQ(FormatSF(4, response[3]), FormatSF(4, expected({{2, 2}}))) << shift << " " << scale;
  }
}

TEST_F(FactorPlotsTest, TheIPODiagramHasTheFactorsInAndTheResponsesOut) {
  Study& s = MakeStudy({AddFactor(3), AddFactor(2, FACTOR_NOISE), AddFactor(4)});
  SetupIPO(s);
  const Chart& c = Charts()[0];
  EXPECT_EQ(c.chtType, CHT_IPO);
  EXPECT_EQ(c.sTitle, GetText("Cht8"));
  EXPECT_EQ(c.yAxisCount, 5);
  ASSERT_EQ(c.DataPoints.size(), 4u);
  EXPECT_EQ(c.DataPoints[0].sId, "A\r\n\r\n3");
  EXPECT_EQ(c.DataPoints[1].sId, "B*\r\n\r\n2");
  EXPECT_EQ(c.DataPoints[1].fX, 2);  // from below
  EXPECT_EQ(c.DataPoints[2].fY, 2);  // the second input
  EXPECT_EQ(c.DataPoints[3].fX, 1);
  EXPECT_EQ(c.sText2, GetText("MNmsgi"));
}

}  // namespace
}  // namespace kestrow
