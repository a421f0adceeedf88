// Pairwise comparison against an independent computation from the raw data
// of Montgomery's cotton tensile strength experiment (Design and Analysis of
// Experiments, chapter 3): the error mean square, the least significant
// difference with Student's t by Boost, and Duncan's groups with the ranges
// of Duncan's table (r at f = 20: 2.95, 3.10, 3.18, 3.25 as printed;
// Harter's exact 3.189 for four means). And the edge cases: equal averages,
// more means than Duncan's table has columns, overlapping bars, a missing
// observation, data far from zero.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "analyses/ChartFixture.h"
#include "analyses/Pairwise.h"
#include "core/Formatters.h"
#include "core/Language.h"

namespace kestrow {
namespace {

class PairwiseTest : public test::ChartFixture {
 protected:
  PairwiseGroups groups;
  bool Run(Study& s) { return Pairwise(s, stats, &groups); }
};

const double COTTON[5][5] = {
    {7, 7, 15, 11, 9}, {12, 17, 12, 18, 18}, {14, 18, 18, 19, 19}, {19, 25, 22, 19, 23}, {7, 10, 11, 15, 11}};

double CottonMSE() {
  double sse = 0;
  for (const auto& level : COTTON) {
    double mean = 0;
    for (double y : level) mean += y / 5;
    for (double y : level) sse += (y - mean) * (y - mean);
  }
  return sse / 20;
}

TEST_F(PairwiseTest, TheLeastSignificantDifferenceOfTheCottonExperiment) {
  Study& s = SampleStudy("CottonTensile");
  s.PAIRWISE_iAlgorithm = 0;
  ASSERT_TRUE(Run(s));
  EXPECT_EQ(groups.df, 20);
  EXPECT_NEAR(groups.mse, CottonMSE(), 1e-4);  // 8.06
  double lsd = test::StudentT(0.025, 20) * std::sqrt(2 * CottonMSE() / 5);
  EXPECT_NEAR(groups.critical, lsd, 2e-3);  // 3.75; the t table holds three decimals
  EXPECT_EQ(FormatSF(3, groups.critical), "3.75");
  EXPECT_EQ(groups.sorted, (std::vector<float>{9.8f, 10.8f, 15.4f, 17.6f, 21.6f}));
  // 15 % with 35 %, 20 % with 25 %; 30 % alone.
  EXPECT_EQ(groups.groupEnd, (std::vector<int>{2, 0, 4, 0, 0}));
  const Chart& c = Charts()[0];
  EXPECT_EQ(c.sText2, GetText("LSD") + " = 3.746");  // t of the table 2.086 (exact 2.08596)
  ASSERT_EQ(c.LinePoints.size(), 4u);
  EXPECT_EQ(c.LinePoints[0].fX, 9.8f);
  EXPECT_EQ(c.LinePoints[1].fX, 10.8f);
  EXPECT_FALSE(c.LinePoints[0].bJoined);
  EXPECT_TRUE(c.LinePoints[1].bJoined);
}

TEST_F(PairwiseTest, DuncansGroupsOfTheCottonExperiment) {
  Study& s = SampleStudy("CottonTensile");
  ASSERT_EQ(s.PAIRWISE_iAlgorithm, 1);
  ASSERT_TRUE(Run(s));
  const double se = std::sqrt(CottonMSE() / 5);  // 1.27
  EXPECT_NEAR(groups.critical, se, 1e-5);
  const double printed[] = {0, 0, 2.95, 3.10, 3.18, 3.25};
  for (int p = 2; p <= 5; ++p)
    EXPECT_NEAR(groups.ranges[static_cast<std::size_t>(p)], printed[p] * se, 0.011 * se) << p;
  EXPECT_EQ(groups.groupEnd, (std::vector<int>{2, 0, 4, 0, 0}));
  EXPECT_EQ(Charts()[0].sText2, GetText("AvgStdE") + " = 1.27");
  // The dots: the run averages on the axis, each labelled by its run.
  const Chart& c = Charts()[0];
  ASSERT_EQ(c.DataPoints.size(), 5u);
  for (const DataPoint& p : c.DataPoints) {
    EXPECT_EQ(p.fY, 0);
    EXPECT_EQ(p.idf, 1);
  }
}

// Twenty runs, more than the fourteen means of Duncan's table: the last
// column stands for every larger group.
TEST_F(PairwiseTest, MoreMeansThanDuncansTableTakeItsLastColumn) {
  Study& both = MakeStudy({AddFactor(5), AddFactor(4)});
  ASSERT_EQ(GetFullyCrossed(both, Design{}), -1);
  Ready(both, 2);
  for (int run = 1; run <= both.iNumRuns; ++run) {
    both.SetData(1, run, 1, static_cast<float>(run) * 0.1f);
    both.SetData(1, run, 2, static_cast<float>(run) * 0.1f + 3);
  }
  both.PAIRWISE_sRVkey = "v1";
  both.PAIRWISE_iAlgorithm = 1;
  ASSERT_TRUE(Run(both));
  ASSERT_EQ(groups.sorted.size(), 20u);
  for (int p = 15; p <= 20; ++p) EXPECT_EQ(groups.ranges[static_cast<std::size_t>(p)], groups.ranges[14]) << p;
  // The averages lie 0.1 apart and the error is large: one group of all.
  EXPECT_EQ(groups.groupEnd[0], 20);
}

TEST_F(PairwiseTest, EqualAveragesAreSaidAndNoTableIsRead) {
  Study& s = TwoLevel(2, 2);
  Fill(s, {{5, 7}, {6, 6}, {4, 8}, {7, 5}});
  s.PAIRWISE_sRVkey = "v1";
  EXPECT_FALSE(Run(s));
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_NE(ui->messages[0].text.find("All run averages are equal"), std::string::npos);
  EXPECT_NE(ui->messages[0].text.find("[Pairwise]"), std::string::npos);
}

// With no error at all the difference is 0: two equal averages lie exactly
// at it and are one group, "at most" being inclusive; any other pair differs.
TEST_F(PairwiseTest, APairExactlyAtTheDifferenceIsOneGroup) {
  Study& s = TwoLevel(2, 2);
  Fill(s, {{5, 5}, {5, 5}, {7, 7}, {9, 9}});
  s.PAIRWISE_sRVkey = "v1";
  ASSERT_TRUE(Run(s));
  EXPECT_EQ(groups.critical, 0);
  EXPECT_EQ(groups.groupEnd, (std::vector<int>{2, 0, 0, 0}));
}

// Groups that overlap take lanes of their own, each under the one before.
TEST_F(PairwiseTest, OverlappingGroupsTakeLanesBelowTheDots) {
  Study& s = TwoLevel(2, 2);
  Fill(s, {{10, 10.2f}, {10.5f, 10.7f}, {11, 11.2f}, {20, 20.2f}});
  s.PAIRWISE_sRVkey = "v1";
  s.PAIRWISE_fAlpha = 0.01f;
  ASSERT_TRUE(Run(s));
  // LSD = t(0.005, 4) sqrt(2 x 0.02 / 2) = 4.604 x 0.1414 = 0.651: 10.1 with
  // 10.6, 10.6 with 11.1; 20.1 alone.
  EXPECT_EQ(groups.groupEnd, (std::vector<int>{2, 3, 0, 0}));
  const Chart& c = Charts()[0];
  ASSERT_EQ(c.LinePoints.size(), 4u);
  EXPECT_GT(c.LinePoints[0].fY, c.LinePoints[2].fY);  // the second bar a lane lower
  for (const LinePoint& p : c.LinePoints) EXPECT_LT(p.fY, 0);
}

// A missing observation is left out of the error, whose degrees of freedom
// drop by one, instead of entering it as the no-value mark.
TEST_F(PairwiseTest, AMissingObservationLeavesTheErrorTerm) {
  Study& s = SampleStudy("CottonTensile");
  s.PAIRWISE_iAlgorithm = 0;
  s.SetData(1, 1, 3, MISSING_VALUE);  // the 15 in the first level
  ASSERT_TRUE(Run(s));
  EXPECT_EQ(groups.df, 19);
  double mean = (7 + 7 + 11 + 9) / 4.0, sse = 0;
  for (double y : {7.0, 7.0, 11.0, 9.0}) sse += (y - mean) * (y - mean);
  for (int level = 1; level < 5; ++level) {
    double m = 0;
    for (double y : COTTON[level]) m += y / 5;
    for (double y : COTTON[level]) sse += (y - m) * (y - m);
  }
  EXPECT_NEAR(groups.mse, sse / 19, 1e-4);
}

// 512 runs of 21: 10,240 degrees of freedom, past the tables' last row of
// 10,000 that stands for infinity, which both tests then read.
TEST_F(PairwiseTest, AnErrorOfMoreThanTenThousandDegreesOfFreedomReadsTheInfiniteRow) {
  Study& s = StudyOf(3, 8);
  ASSERT_EQ(GetFullyCrossed(s, Design{}), -1);
  Ready(s, 21);
  for (int run = 1; run <= s.iNumRuns; ++run)
    for (int rep = 1; rep <= 21; ++rep) s.SetData(1, run, rep, static_cast<float>(run + (rep % 3)));
  s.PAIRWISE_sRVkey = "v1";
  for (int algorithm : {0, 1}) {
    s.PAIRWISE_iAlgorithm = static_cast<std::int16_t>(algorithm);
    gphStart();
    ASSERT_TRUE(Run(s)) << algorithm;
    EXPECT_EQ(groups.df, 512 * 20);
    EXPECT_TRUE(ui->messages.empty());
  }
  EXPECT_NEAR(groups.ranges[2], 2.77f * groups.critical, 1e-4);  // q(0.95; 2, infinity) = 2.772
}

TEST_F(PairwiseTest, FarFromZeroTheGroupsAndTheDifferenceStay) {
  Study& s = SampleStudy("CottonTensile");
  s.PAIRWISE_iAlgorithm = 0;
  for (int run = 1; run <= s.iNumRuns; ++run)
    for (int rep = 1; rep <= s.iReps; ++rep) s.SetData(1, run, rep, s.GetData(1, run, rep) + 10000);
  ASSERT_TRUE(Run(s));
  EXPECT_EQ(groups.groupEnd, (std::vector<int>{2, 0, 4, 0, 0}));
  EXPECT_EQ(FormatSF(4, groups.critical), "3.746");
}

}  // namespace
}  // namespace kestrow
