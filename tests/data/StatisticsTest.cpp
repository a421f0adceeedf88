// Run statistics: per-run figures, the decimal route of the sums, and the
// completeness flags with their deliberate carry-over between responses.
#include <gtest/gtest.h>

#include <cmath>

#include "core/Formatters.h"
#include "core/Study.h"
#include "core/TestSupport.h"
#include "core/Text.h"
#include "data/Statistics.h"

namespace kestrow {
namespace {

// A study of one or more responses and the given runs of replications; each
// entry of `values` is a run's replicates, MISSING_VALUE for an empty cell.
Study Make(const std::vector<std::vector<std::vector<float>>>& values) {
  Study s;
  s.iNumRuns = static_cast<std::int16_t>(values[0].size());
  s.iReps = static_cast<std::int16_t>(values[0][0].size());
  for (std::size_t rv = 0; rv < values.size(); ++rv)
    s.StudyRespVars.Add(StudyRespVar{"v" + std::to_string(rv + 1), 0, 0, 0});
  s.SetDataArray();
  for (std::size_t rv = 0; rv < values.size(); ++rv)
    for (std::size_t run = 0; run < values[rv].size(); ++run)
      for (std::size_t rep = 0; rep < values[rv][run].size(); ++rep)
        s.SetData(int(rv + 1), int(run + 1), int(rep + 1), values[rv][run][rep]);
  return s;
}

const float M = MISSING_VALUE;

TEST(Statistics, PerRunFiguresOfAnOrdinaryStudy) {
  Statistics st;
  ASSERT_TRUE(st.Compute(Make({{{1, 3}, {2, 2}, {5, 9}}})));
  EXPECT_EQ(st.SampAvg(1, 1), 2.0f);
  EXPECT_EQ(st.SampRng(3, 1), 4.0f);
  EXPECT_FLOAT_EQ(st.SampSig(1, 1), std::sqrt(2.0f));
  EXPECT_EQ(st.SampSig(2, 1), 0.0f);  // two equal observations: 0, never a negative root
  EXPECT_EQ(st.GoodObs(1), 6);
  EXPECT_FLOAT_EQ(st.AvgAvg(1), 22.0f / 6);
  EXPECT_FLOAT_EQ(st.RngAvg(1), (2 + 0 + 4) / 3.0f);
  EXPECT_EQ(st.ObsMin(1), 1.0f);
  EXPECT_EQ(st.ObsMax(1), 9.0f);
  EXPECT_EQ(st.flag(1), STATS_COMPLETE | STATS_BALANCED);
  EXPECT_EQ(st.MaxAvg(1), 7.0f);
  EXPECT_EQ(st.MinAvg(1), 2.0f);
  EXPECT_EQ(st.MaxRng(1), 4.0f);
  EXPECT_FLOAT_EQ(st.SigInd(1), std::sqrt((124 - 22.0f * 22 / 6) / 5));  // over all six observations
}

TEST(Statistics, SumsTakeTheDecimalValueSoTenTimesPointOneAveragesToPointOne) {
  Statistics st;
  st.Compute(Make({{{0.1f, 0.1f, 0.1f, 0.1f, 0.1f, 0.1f, 0.1f, 0.1f, 0.1f, 0.1f}}}));
  EXPECT_EQ(st.SampAvg(1, 1), 0.1f);
}

TEST(Statistics, OneObservationGivesAnAverageButEnlargesTheDivisorOfTheAverageRange) {
  Statistics st;
  st.Compute(Make({{{1, 3}, {5, M}}}));
  EXPECT_EQ(st.SampAvg(2, 1), 5.0f);
  EXPECT_EQ(st.SampRng(2, 1), MISSING_VALUE);
  EXPECT_EQ(st.ObsGoodPerRun(2, 1), 1);
  EXPECT_EQ(st.RngAvg(1), 1.0f);  // 2 over two runs, not over one
  EXPECT_EQ(st.flag(1) & STATS_COMPLETE, 0);
}

TEST(Statistics, AllCellsMissingLeavesFlagSix) {
  Statistics st;
  st.Compute(Make({{{M, M}, {M, M}}}));
  EXPECT_EQ(st.flag(1), STATS_NO_DATA | STATS_BALANCED);
  EXPECT_EQ(st.ObsMin(1), TARGET_MAX);
  EXPECT_EQ(st.ObsMax(1), TARGET_MIN);
  EXPECT_EQ(st.AvgAvg(1), 0.0f);
  EXPECT_EQ(st.MaxRng(1), TARGET_MIN);
}

TEST(Statistics, BalanceIsClearedByAChangeOfCountUnlessTheRememberedCountWasZero) {
  Statistics st;
  st.Compute(Make({{{1, 1, 1, 1, 1}, {M, M, M, M, M}, {2, 2, 2, 2, 2}}}));  // 5, 0, 5: cleared at the 0
  EXPECT_EQ(st.flag(1) & STATS_BALANCED, 0);
  st.Compute(Make({{{M, M}, {1, 2}, {3, 4}}}));  // 0 then 2: the remembered count was 0
  EXPECT_NE(st.flag(1) & STATS_BALANCED, 0);
  // The last count of one response is compared with the first of the next.
  st.Compute(Make({{{1, 2}, {3, 4}}, {{5, M}, {6, M}}}));
  EXPECT_NE(st.flag(1) & STATS_BALANCED, 0);
  EXPECT_EQ(st.flag(2) & STATS_BALANCED, 0);  // 2 before it, 1 now
}

// Far from zero with a small spread: each figure against a two-pass
// computation in long double from the values as the study holds them (per
// run by their decimal text, overall by the float itself), compared to the
// four digits a report prints. Equal readings give exactly 0.
TEST(Statistics, SpreadsFarFromZeroAgreeWithATwoPassComputation) {
  auto twoPass = [](const std::vector<long double>& x) {
    long double mean = 0, ss = 0;
    for (long double v : x) mean += v;
    mean /= static_cast<long double>(x.size());
    for (long double v : x) ss += (v - mean) * (v - mean);
    return static_cast<double>(std::sqrt(ss / static_cast<long double>(x.size() - 1)));
  };
  const std::vector<std::vector<float>> runs = {{1000000.1f, 1000000.1f, 1000000.1f},
                                                {1e6f, 1e6f + 0.06f, 1e6f + 0.1f},
                                                {12345.67f, 12345.67f, 12345.67f},
                                                {9999999.0f, 1e7f, 10000002.0f},
                                                {-3456789.5f, -3456789.0f, -3456788.5f}};
  Statistics st;
  ASSERT_TRUE(st.Compute(Make({runs})));
  std::vector<long double> all;
  for (std::size_t r = 0; r < runs.size(); ++r) {
    std::vector<long double> decimal;
    for (float v : runs[r]) {
      decimal.push_back(std::stold(ShortestText(v)));
      all.push_back(v);
    }
    int run = static_cast<int>(r + 1);
    EXPECT_EQ(FormatSF(4, st.SampSig(run, 1)), FormatSF(4, static_cast<float>(twoPass(decimal)))) << run;
  }
  EXPECT_EQ(st.SampSig(1, 1), 0.0f);
  EXPECT_EQ(st.SampSig(3, 1), 0.0f);
  EXPECT_EQ(FormatSF(4, st.SampSig(2, 1)), "0.05033");
  // The five runs as one sample: a spread of millions, so 32-bit sums are
  // enough once taken about the first value.
  EXPECT_EQ(FormatSF(4, st.SigInd(1)), FormatSF(4, static_cast<float>(twoPass(all))));
  Statistics near;
  ASSERT_TRUE(near.Compute(Make({{{1e7f, 1e7f + 1, 1e7f + 3}, {1e7f + 2, 1e7f, 1e7f}}})));
  EXPECT_EQ(FormatSF(4, near.SigInd(1)), FormatSF(4, static_cast<float>(twoPass({1e7L, 1e7L + 1, 1e7L + 3, 1e7L + 2, 1e7L, 1e7L}))));
}

TEST(Statistics, ComputeRVReadsTheConfiguredResponseThroughItsTransform) {
  Study s = Make({{{9, 99}}, {{1, 2}}});
  s.StudyRespVars(1).iType = 1;
  s.StudyRespVars(1).fParam1 = 1;
  s.ConfigureRV("v1*");
  Statistics st;
  st.ComputeRV(s);
  EXPECT_FLOAT_EQ(st.SampAvgRV(1), 1.5f);  // log10(10) and log10(100)
  EXPECT_EQ(st.SigInd(1), 0.0f);  // not filled by ComputeRV
}

}  // namespace
}  // namespace kestrow
