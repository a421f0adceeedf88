// Analysis of means against figures worked out from the raw data: the
// decision limits of Montgomery's 2^2 yield experiment and of his cotton
// tensile strength experiment, with the constants computed independently
// (Student's t by Boost, d2* and its degrees of freedom by Patnaik's
// equations from the range constants), and the Part's edge cases: no
// replicates, the exclusion of runs with a range out of control, every
// fifth label, runs ordered by a factor, a table lookup out of range.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

#include "analyses/ANOM.h"
#include "analyses/ChartFixture.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "stats/TableReaders.h"

namespace kestrow {
namespace {

class ANOMTest : public test::ChartFixture {
 protected:
  bool Run(Study& s, const std::string& charts) { return SetupANOM(s, stats, charts); }
};

// The 2^2 yield experiment in three replicates (Montgomery, Design and
// Analysis of Experiments, the first example of chapter 6). Two levels: h
// is t(alpha / 2, v) / sqrt 2, the k = 2 form of the analysis of means; the
// average range of four runs of three has d2* and v from Patnaik with the
// exact range constants of three normals; sigma of a level mean of six
// observations is R-bar / d2* / sqrt 6.
TEST_F(ANOMTest, MainEffectLimitsOfATwoLevelFactorialAgreeWithTAndPatnaik) {
  Study& s = SampleStudy("ChemicalYield");
  ASSERT_TRUE(Run(s, "f1,f2"));
  ASSERT_EQ(Charts().size(), 2u);
  const double y[4][3] = {{28, 25, 27}, {36, 32, 32}, {18, 19, 23}, {31, 30, 29}};  // (1), a, b, ab
  double grand = 0, rBar = 0;
  for (const auto& run : y) {
    grand += run[0] + run[1] + run[2];
    rBar += *std::max_element(run, run + 3) - *std::min_element(run, run + 3);
  }
  grand /= 12;
  rBar /= 4;
  double d2star, v;
  test::Patnaik(test::D2_OF_3, test::D3_OF_3, 4, d2star, v);
  const double alpha = 0.05, h = test::StudentT(alpha / 2, v) / std::sqrt(2.0);
  const double sigma = rBar / d2star / std::sqrt(6.0), half = h * sigma;
  EXPECT_NEAR(v, 7.49, 0.01);  // the chart says v=7.49
  for (const Chart& c : Charts()) {
    SCOPED_TRACE(c.sTitle);
    EXPECT_EQ(c.chtType, CHT_ANOM);
    EXPECT_EQ(c.sTextType, "Main");
    EXPECT_EQ(c.xAxisCount, 4);
    EXPECT_FLOAT_EQ(c.MeanLimit, static_cast<float>(grand));
    // The printed tables carry h to two decimals and d2* to three.
    EXPECT_NEAR(c.LowLimit, grand - half, 0.005);
    EXPECT_NEAR(c.HighLimit, grand + half, 0.005);
    EXPECT_EQ(c.sText2.substr(0, 7), "v=7.49,");
  }
  // The level means: A low (1), b; A high a, ab; B low (1), a; B high b, ab.
  auto means = [](const Chart& c) {
    std::vector<float> m;
    for (const DataPoint& p : c.DataPoints) m.push_back(p.fY);
    return m;
  };
  EXPECT_EQ(means(Charts()[0]), (std::vector<float>{140.0f / 6, 190.0f / 6}));
  EXPECT_EQ(means(Charts()[1]), (std::vector<float>{180.0f / 6, 150.0f / 6}));
  EXPECT_EQ(Charts()[0].sTitle, "Reactant concentration " + GetText("MEANOM"));
  EXPECT_EQ(Charts()[0].DataPoints[1].sId, "25");
  EXPECT_EQ(FormatNumSF(Charts()[0].LowLimit), "26.15");
  EXPECT_EQ(FormatNumSF(Charts()[0].HighLimit), "28.85");
}

// The cotton experiment (Montgomery, chapter 3) as one-way charts: the
// X-bar chart's centre is the mean of the run averages, its limits come from
// the average range with d2* and v of five subgroups of five (Patnaik with
// the printed range constants d2 = 2.326, d3 = 0.864) and h of Ott's table
// for five means, itself checked against the printed table; the range chart
// has D4 R-bar above (D4 = 2.114) and no lower limit (D3 = 0).
TEST_F(ANOMTest, OneWayChartsOfTheCottonExperiment) {
  Study& s = SampleStudy("CottonTensile");
  ASSERT_TRUE(Run(s, "1WX,1WR"));
  ASSERT_EQ(Charts().size(), 2u);
  const Chart& xbar = Charts()[0];
  const Chart& range = Charts()[1];
  EXPECT_EQ(xbar.sTitle, GetText("Cht1"));
  EXPECT_EQ(range.sTitle, GetText("Cht2"));
  EXPECT_EQ(xbar.xAxisCount, 6);
  EXPECT_EQ(xbar.sText1, GetText("RunOrder"));
  const double rBar = (8 + 6 + 5 + 6 + 8) / 5.0, grand = 15.04;
  double d2star, v;
  test::Patnaik(2.326, 0.864, 5, d2star, v);
  float h = -1;
  ReadTableD(0.05f, static_cast<float>(v), 5, h);
  const double half = h * rBar / d2star / std::sqrt(5.0);
  EXPECT_NEAR(xbar.MeanLimit, grand, 1e-5);
  EXPECT_NEAR(xbar.LowLimit, grand - half, 0.01);
  EXPECT_NEAR(xbar.HighLimit, grand + half, 0.01);
  EXPECT_NEAR(range.MeanLimit, rBar, 1e-5);
  EXPECT_NEAR(range.HighLimit, 2.114 * rBar, 0.005);
  EXPECT_EQ(range.LowLimit, MISSING_VALUE);
  const float averages[5] = {9.8f, 15.4f, 17.6f, 21.6f, 10.8f};
  for (int run = 1; run <= 5; ++run) {
    const DataPoint& p = xbar.DataPoints[static_cast<std::size_t>(run - 1)];
    EXPECT_EQ(p.sId, std::to_string(run));
    EXPECT_NEAR(p.fY, averages[run - 1], 1e-5);
    EXPECT_EQ(p.iDotType, 1);
  }
}

// One replicate: no ranges, so the charts have a centre line only and no
// table is read.
TEST_F(ANOMTest, WithoutReplicatesTheChartsHaveACentreLineOnly) {
  Study& s = TwoLevel(2, 1);
  Fill(s, {{10}, {14}, {11}, {17}});
  s.ANOM_sRVkey = "v1";
  ASSERT_TRUE(Run(s, "f1,1WX"));
  ASSERT_EQ(Charts().size(), 2u);
  for (const Chart& c : Charts()) {
    EXPECT_EQ(c.LowLimit, MISSING_VALUE);
    EXPECT_EQ(c.HighLimit, MISSING_VALUE);
    EXPECT_FLOAT_EQ(c.MeanLimit, 13);
    EXPECT_EQ(c.sText2, "");
  }
  for (const DataPoint& p : Charts()[1].DataPoints) EXPECT_EQ(p.iDotType, 1);
  EXPECT_TRUE(ui->messages.empty());
}

// With the exclusion flag, a run whose range passes D4 R-bar is marked and
// left out of the averages; h is read for the smaller count of means while v
// stays that of all runs.
TEST_F(ANOMTest, ExcludedRunsAreMarkedAndLeaveTheSums) {
  Study& s = TwoLevel(3, 2);
  // Seven runs of range 1 and one of range 40: R-bar 5.875, D4 R-bar 19.2.
  Fill(s, {{10, 11}, {12, 13}, {11, 12}, {13, 14}, {10, 11}, {12, 13}, {11, 12}, {30, 70}});
  s.ANOM_sRVkey = "v1";
  s.ANOM_fAlpha = 0.05f;
  s.ANOM_flags = 1;
  ASSERT_TRUE(Run(s, "1WX,1WR"));
  const Chart& xbar = Charts()[0];
  EXPECT_EQ(xbar.DataPoints[7].iDotType, 6);
  for (int i = 0; i < 7; ++i) EXPECT_EQ(xbar.DataPoints[static_cast<std::size_t>(i)].iDotType, 1);
  EXPECT_FLOAT_EQ(xbar.MeanLimit, (10.5f + 12.5f + 11.5f + 13.5f + 10.5f + 12.5f + 11.5f) / 7);
  EXPECT_FLOAT_EQ(Charts()[1].MeanLimit, 1);  // the range chart's R-bar of the seven
  float v = 0, d2 = 0, h7 = 0;
  ReadTableB(2, 8, v, d2);
  ReadTableD(0.05f, v, 7, h7);
  EXPECT_NE(xbar.sText2.find("H=" + FormatNumSF(h7)), std::string::npos) << xbar.sText2;
  EXPECT_NEAR(xbar.HighLimit - xbar.MeanLimit, h7 * 1.0f / d2 / std::sqrt(2.0f), 1e-4);
}

TEST_F(ANOMTest, EveryFifthLabelAndRunsOrderedByAFactor) {
  Study& s = TwoLevel(3, 2);
  Fill(s, {{1, 2}, {3, 4}, {5, 6}, {7, 8}, {9, 10}, {11, 12}, {13, 14}, {15, 16}});
  s.ANOM_sRVkey = "v1";
  s.ANOM_flags = 2;
  s.ANOM_iSubgrouping = 2;
  ASSERT_TRUE(Run(s, "1WX"));
  const Chart& c = Charts()[0];
  EXPECT_EQ(c.sText1, SubstituteCopy(GetText("FacOrder"), s.GetFactorName(2)));
  int position = 0;
  for (const DataPoint& p : c.DataPoints) {
    ++position;
    int run = std::stoi(p.sId);
    // The runs at the first level of the second factor come first.
    EXPECT_EQ(s.GetTreatmentLevel(2, run), position <= 4 ? 1 : 2) << position;
    bool startsLevel = position == 1 || position == 5;
    EXPECT_EQ(p.idf, (position % 5 == 0 ? 1 : 0) + (startsLevel ? 2 : 0)) << position;
    EXPECT_EQ(p.sId2, startsLevel ? s.GetPFactorLevelName(s.GetFactorKey(2), position == 1 ? 1 : 2) : "");
  }
}

// More means than the table of h holds ends the analysis with the reader's
// message; the charts made before stay.
TEST_F(ANOMTest, ALookupBeyondTheTableEndsTheAnalysis) {
  Study& s = SampleStudy("ChemicalYield");
  s.ANOM_fAlpha = 0.02f;  // no table at this level
  EXPECT_FALSE(Run(s, "1WR,f1"));
  EXPECT_EQ(Charts().size(), 2u);
  ASSERT_FALSE(ui->messages.empty());
  EXPECT_NE(ui->messages.back().text.find("[ReadTableD]"), std::string::npos);
  gphStart();
  s.ANOM_sRVkey = "v9";
  EXPECT_FALSE(Run(s, "f1"));
  EXPECT_NE(ui->messages.back().text.find("[SetupANOM]"), std::string::npos);
  EXPECT_TRUE(Charts().empty());
}

// Far from the textbook: the data moved by 10,000, scaled to 1e-6, and a
// study of 30 replicates and 8 levels. The limits move and scale with the
// data to the printed digits.
TEST_F(ANOMTest, LimitsFollowTheDataFarFromZeroAndAtTinyScales) {
  Study& s = SampleStudy("ChemicalYield");
  ASSERT_TRUE(Run(s, "f1,1WX"));
  std::vector<float> base, published;
  for (const Chart& c : Charts()) base.insert(base.end(), {c.LowLimit, c.MeanLimit, c.HighLimit});
  for (int run = 1; run <= s.iNumRuns; ++run)
    for (int rep = 1; rep <= s.iReps; ++rep) published.push_back(s.GetData(1, run, rep));
  for (auto [shift, scale] : {std::pair{10000.0f, 1.0f}, {0.0f, 1e-6f}}) {
    std::size_t at = 0;
    for (int run = 1; run <= s.iNumRuns; ++run)
      for (int rep = 1; rep <= s.iReps; ++rep) s.SetData(1, run, rep, published[at++] * scale + shift);
    gphStart();
    ASSERT_TRUE(Run(s, "f1,1WX"));
    std::size_t i = 0;
    for (const Chart& c : Charts())
      for (float limit : {c.LowLimit, c.MeanLimit, c.HighLimit}) {
        float expected = base[i++] * scale + shift;
        EXPECT_EQ(FormatSF(4, limit), FormatSF(4, expected)) << shift << " " << scale;
      }
  }
}

TEST_F(ANOMTest, ThirtyReplicatesAndEightLevels) {
  Study& s = StudyOf(1, 8);
  ASSERT_EQ(GetFullyCrossed(s, Design{}), -1);
  Ready(s, 30);
  s.ANOM_sRVkey = "v1";
  for (int run = 1; run <= s.iNumRuns; ++run)
    for (int rep = 1; rep <= 30; ++rep) s.SetData(1, run, rep, static_cast<float>(run * 3 + (rep * 7) % 11));
  ASSERT_TRUE(Run(s, "1WX,1WR,f1"));
  ASSERT_EQ(Charts().size(), 3u);
  for (const Chart& c : Charts()) {
    EXPECT_NE(c.LowLimit, MISSING_VALUE) << c.sTitle;
    EXPECT_LT(c.LowLimit, c.MeanLimit);
    EXPECT_LT(c.MeanLimit, c.HighLimit);
  }
  EXPECT_TRUE(ui->messages.empty());
}

}  // namespace
}  // namespace kestrow
