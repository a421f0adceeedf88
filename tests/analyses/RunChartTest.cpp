// The run chart: one line for each response on its scale, a range chart
// where some response has ranges, labels of the first response only (every
// fifth with the flag), a missing run left out, the scales that cannot be
// formed said, and thirty replicates.
#include <gtest/gtest.h>

#include "analyses/ChartFixture.h"
#include "analyses/RunChart.h"
#include "core/Language.h"

namespace kestrow {
namespace {

class RunChartTest : public test::ChartFixture {
 protected:
  // A second response in the problem and the study.
  Study& TwoResponses(int reps) {
    RespVar rv;
    rv.sKey = "v2";
    rv.sName = "Z";
    gProblem->RespVars.Add(rv, "v2");
    Study& s = TwoLevel(2, reps);
    s.StudyRespVars.Add(StudyRespVar{"v2", 0, 0, 0});
    s.SetDataArray();
    for (int run = 1; run <= 4; ++run)
      for (int rep = 1; rep <= reps; ++rep) {
        s.SetData(1, run, rep, static_cast<float>(10 * run + rep));
        s.SetData(2, run, rep, static_cast<float>(100 - run * rep));
      }
    return s;
  }
};

TEST_F(RunChartTest, EachResponseIsALineOfItsOwnMarker) {
  Study& s = TwoResponses(2);
  ASSERT_TRUE(SetupRunChart(s, stats, "X"));
  const Chart& c = Charts()[0];
  EXPECT_EQ(c.sTitle, GetText("Cht6"));
  EXPECT_EQ(c.sText1, GetText("Actual"));
  EXPECT_EQ(c.xAxisCount, 5);
  ASSERT_EQ(c.DataPoints.size(), 8u);
  for (int i = 0; i < 8; ++i) {
    const DataPoint& p = c.DataPoints[static_cast<std::size_t>(i)];
    bool first = i < 4;
    EXPECT_EQ(p.iDotType, first ? 1 : 2);
    EXPECT_EQ(p.sId, first ? "Y" : "Z");
    EXPECT_EQ(p.idf, first ? 1 : 0);  // the run numbers once
    EXPECT_EQ(p.bJoined, i % 4 != 0);
    EXPECT_FLOAT_EQ(p.fY, first ? 10 * (i + 1) + 1.5f : 100 - 1.5f * (i - 3));
  }
  gphStart();
  s.StudyRespVars.Remove(2);
  ASSERT_TRUE(SetupRunChart(s, stats, "X"));
  EXPECT_EQ(Charts()[0].sTitle, GetText("Cht5"));
}

TEST_F(RunChartTest, CodedAndSigmaScales) {
  Study& s = TwoResponses(2);
  s.RUN_iScaling = 1;
  ASSERT_TRUE(SetupRunChart(s, stats, "X,R"));
  ASSERT_EQ(Charts().size(), 2u);
  for (const DataPoint& p : Charts()[0].DataPoints) {
    EXPECT_GE(p.fY, -1);
    EXPECT_LE(p.fY, 1);
  }
  EXPECT_FLOAT_EQ(Charts()[0].DataPoints[0].fY, -1);
  EXPECT_FLOAT_EQ(Charts()[0].DataPoints[3].fY, 1);
  EXPECT_EQ(Charts()[1].sTitle, GetText("Cht7"));
  EXPECT_EQ(Charts()[1].sTextType, "Range");
  // Sigma deviations: (average - grand average) / the response's spread.
  s.RUN_iScaling = 2;
  gphStart();
  ASSERT_TRUE(SetupRunChart(s, stats, "X"));
  stats.Compute(s);
  EXPECT_FLOAT_EQ(Charts()[0].DataPoints[0].fY, (stats.SampAvg(1, 1) - stats.AvgAvg(1)) / stats.SigInd(1));
}

TEST_F(RunChartTest, ScalesThatCannotBeFormedAreSaid) {
  Study& s = TwoLevel(2, 1);
  Fill(s, {{5}, {5}, {5}, {5}});
  s.RUN_iScaling = 1;
  EXPECT_FALSE(SetupRunChart(s, stats, "X"));
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_NE(ui->messages[0].text.find("[SetupRunChart]"), std::string::npos);
  s.RUN_iScaling = 2;  // one observation in all: no spread
  Fill(s, {{1}, {MISSING_VALUE}, {MISSING_VALUE}, {MISSING_VALUE}});
  gphStart();
  EXPECT_FALSE(SetupRunChart(s, stats, "X"));
  EXPECT_EQ(ui->messages.size(), 2u);
  // Without replicates there are no ranges: no range chart.
  Fill(s, {{1}, {2}, {3}, {4}});
  s.RUN_iScaling = 0;
  gphStart();
  ASSERT_TRUE(SetupRunChart(s, stats, "X,R"));
  EXPECT_EQ(Charts().size(), 1u);
}

// A run without data adds no point and the line joins its neighbours; every
// fifth run labelled with the flag; thirty replicates.
TEST_F(RunChartTest, MissingRunsFifthLabelsAndThirtyReplicates) {
  Study& s = StudyOf(1, 8);
  ASSERT_EQ(GetFullyCrossed(s, Design{}), -1);
  Ready(s, 30);
  for (int run = 1; run <= 8; ++run)
    for (int rep = 1; rep <= 30; ++rep) s.SetData(1, run, rep, run == 3 ? MISSING_VALUE : run + rep * 0.01f);
  s.RUN_flags = RUN_LABEL_FIFTH | RUN_SHOW_RANGE;
  ASSERT_EQ(RunChartList(s), "X,R");
  ASSERT_TRUE(SetupRunChart(s, stats, RunChartList(s)));
  const Chart& c = Charts()[0];
  ASSERT_EQ(c.DataPoints.size(), 7u);
  EXPECT_EQ(c.DataPoints[2].fX, 4);
  EXPECT_TRUE(c.DataPoints[2].bJoined);
  for (const DataPoint& p : c.DataPoints) EXPECT_EQ(p.idf, static_cast<int>(p.fX) % 5 == 0 ? 1 : 0);
  EXPECT_NEAR(Charts()[1].DataPoints[0].fY, 0.29f, 1e-5);  // the range of a run of thirty
}

}  // namespace
}  // namespace kestrow
