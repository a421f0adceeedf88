// Run statistics: per-run figures, the decimal route of the sums, and the
// completeness flags with their deliberate carry-over between responses.
#include <gtest/gtest.h>

#include <algorithm>
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

// A larger study far from zero with a small spread: every figure, per run and
// overall, against a two-pass computation in long double from the same
// readings (the decimal value for the per-run figures, the float for SigInd):
// per-run figures at 7 significant figures, the most the reports print, the
// grand average too; the other overall figures, which sum 40 runs' figures
// in 32-bit floats, at 6.
TEST(Statistics, EveryFigureOfALargeStudyFarFromZeroAgreesAtTheDigitsPrinted) {
  for (float base : {9999990.0f, 1234567.8f, 12345.67f}) {
    const int runs = 40, reps = 6;
    std::vector<std::vector<float>> data(runs);
    for (int run = 0; run < runs; ++run)
      for (int rep = 0; rep < reps; ++rep) {
        float step = base > 5e6f ? 1.0f : base > 5e5f ? 0.125f : 0.01f;
        data[static_cast<std::size_t>(run)].push_back(base + step * static_cast<float>((run * 7 + rep * 3) % 11));
      }
    Statistics st;
    ASSERT_TRUE(st.Compute(Make({data})));
    long double all = 0, allSq = 0, allMean = 0, rngSum = 0, sigSum = 0, n = runs * reps;
    for (const auto& r : data)
      for (float v : r) allMean += v;
    allMean /= n;
    long double decimalTotal = 0;
    for (int run = 1; run <= runs; ++run) {
      std::vector<long double> x;
      for (float v : data[static_cast<std::size_t>(run - 1)]) x.push_back(std::stold(ShortestText(v)));
      long double mean = 0, ss = 0;
      for (long double v : x) mean += v;
      decimalTotal += mean;
      mean /= reps;
      for (long double v : x) ss += (v - mean) * (v - mean);
      long double sig = std::sqrt(ss / (reps - 1));
      long double rng = *std::max_element(x.begin(), x.end()) - *std::min_element(x.begin(), x.end());
      rngSum += rng;
      sigSum += sig;
      EXPECT_EQ(FormatSF(7, st.SampAvg(run, 1)), FormatSF(7, static_cast<float>(mean))) << base << " run " << run;
      EXPECT_EQ(FormatSF(7, st.SampSig(run, 1)), FormatSF(7, static_cast<float>(sig))) << base << " run " << run;
      EXPECT_EQ(FormatSF(7, st.SampRng(run, 1)), FormatSF(7, static_cast<float>(rng))) << base << " run " << run;
    }
    for (const auto& r : data)
      for (float v : r) {
        all += v - allMean;
        allSq += (v - allMean) * (v - allMean);
      }
    EXPECT_EQ(FormatSF(7, st.AvgAvg(1)), FormatSF(7, static_cast<float>(decimalTotal / n))) << base;
    EXPECT_EQ(FormatSF(6, st.RngAvg(1)), FormatSF(6, static_cast<float>(rngSum / runs))) << base;
    EXPECT_EQ(FormatSF(6, st.SigAvg(1)), FormatSF(6, static_cast<float>(sigSum / runs))) << base;
    EXPECT_EQ(FormatSF(6, st.SigInd(1)), FormatSF(6, static_cast<float>(std::sqrt(allSq / (n - 1))))) << base;
  }
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
