// Residuals against an independent computation from the raw data: of
// Montgomery's vascular graft experiment (a randomised complete block,
// Design and Analysis of Experiments, Example 4.1), y less the treatment mean
// less the block mean plus the grand mean, summing to zero within every
// treatment and every block; of his rocket propellant Latin square, the
// additive model of three factors; and from the treatment means of a
// replicated study. And the edge cases: one replicate, a missing
// observation, the run order, the charts of a factor, far from zero.
#include <gtest/gtest.h>

#include <map>

#include "analyses/ChartFixture.h"
#include "analyses/Residuals.h"
#include "core/Formatters.h"
#include "core/Language.h"

namespace kestrow {
namespace {

class ResidualsTest : public test::ChartFixture {
 protected:
  // The residual of each observation of a chart, by its "run/rep".
  static std::map<std::string, float> ByRunRep(const Chart& c) {
    std::map<std::string, float> out;
    for (const DataPoint& p : c.DataPoints)
      if (p.fY != MISSING_VALUE || c.chtType == CHT_RES_NPP) out[p.sId] = c.chtType == CHT_RES_NPP ? p.fX : p.fY;
    return out;
  }
  // The additive model of factors f over the study's single observations.
  static std::map<std::string, double> Additive(const Study& s, const std::vector<int>& factors) {
    double grand = 0;
    std::map<std::pair<int, int>, std::pair<double, int>> level;  // (factor, level) -> sum, count
    for (int run = 1; run <= s.iNumRuns; ++run) {
      double y = s.GetData(1, run, 1);
      grand += y;
      for (int f : factors) {
        auto& cell = level[{f, s.GetTreatmentLevel(f, run)}];
        cell.first += y;
        cell.second += 1;
      }
    }
    grand /= s.iNumRuns;
    std::map<std::string, double> residual;
    for (int run = 1; run <= s.iNumRuns; ++run) {
      double fitted = grand * (1 - static_cast<double>(factors.size()));
      for (int f : factors) {
        auto& cell = level[{f, s.GetTreatmentLevel(f, run)}];
        fitted += cell.first / cell.second;
      }
      residual[std::to_string(run) + "/1"] = s.GetData(1, run, 1) - fitted;
    }
    return residual;
  }
};

TEST_F(ResidualsTest, ARandomisedBlockTakesTheAdditiveModel) {
  Study& s = SampleStudy("VascularGraft");
  s.RESIDUAL_sRVkey = "v1";
  ASSERT_TRUE(SetupResiduals1l(s, stats, "-3,1,2"));
  ASSERT_EQ(Charts().size(), 3u);
  std::map<std::string, double> expected = Additive(s, {1, 2});
  std::map<std::string, float> got = ByRunRep(Charts()[0]);
  ASSERT_EQ(got.size(), 24u);
  std::map<int, double> byTreatment, byBlock;
  for (auto [key, e] : got) {
    EXPECT_NEAR(e, expected[key], 1e-4) << key;
    int run = std::stoi(key);
    byTreatment[s.GetTreatmentLevel(1, run)] += e;
    byBlock[s.GetTreatmentLevel(2, run)] += e;
  }
  for (auto [level, sum] : byTreatment) EXPECT_NEAR(sum, 0, 1e-4) << "treatment " << level;
  for (auto [level, sum] : byBlock) EXPECT_NEAR(sum, 0, 1e-4) << "block " << level;
  // The charts of a factor: its levels on the axis, each residual at its level.
  const Chart& byFactor = Charts()[1];
  EXPECT_EQ(byFactor.chtType, CHT_RES_FACTOR);
  EXPECT_EQ(byFactor.xAxisCount, 5);
  EXPECT_EQ(ByRunRep(byFactor).size(), 24u);
}

TEST_F(ResidualsTest, ALatinSquareTakesTheModelOfItsThreeFactors) {
  Study& s = SampleStudy("RocketPropellant");
  s.RESIDUAL_sRVkey = "v1";
  ASSERT_TRUE(SetupResiduals1l(s, stats, "-1"));
  std::map<std::string, double> expected = Additive(s, {1, 2, 3});
  const Chart& c = Charts()[0];
  ASSERT_EQ(c.DataPoints.size(), 25u);
  for (const DataPoint& p : c.DataPoints) {
    std::string key = p.sId + "/" + p.sId2;
    EXPECT_NEAR(p.fY, expected[key], 1e-4) << key;
    EXPECT_NEAR(p.fX, s.GetData(1, std::stoi(p.sId), 1) - expected[key], 1e-3) << key;  // the fitted value
  }
}

// From the treatment means: each run's residuals sum to zero; the
// probability plot ranks them and carries sigma with count - 1.
TEST_F(ResidualsTest, ResidualsFromTheTreatmentMeansSumToZeroInEachRun) {
  Study& s = SampleStudy("ChemicalYield");
  s.RESIDUAL_sRVkey = "v1";
  ASSERT_TRUE(SetupResiduals1l(s, stats, "-3,-2"));
  std::map<std::string, float> e = ByRunRep(Charts()[0]);
  ASSERT_EQ(e.size(), 12u);
  double sumSq = 0;
  for (int run = 1; run <= 4; ++run) {
    double sum = 0, mean = 0;
    for (int rep = 1; rep <= 3; ++rep) mean += s.GetData(1, run, rep) / 3.0;
    for (int rep = 1; rep <= 3; ++rep) {
      float r = e[std::to_string(run) + "/" + std::to_string(rep)];
      EXPECT_NEAR(r, s.GetData(1, run, rep) - mean, 1e-5);
      sum += r;
      sumSq += r * r;
    }
    EXPECT_NEAR(sum, 0, 1e-5) << run;
  }
  EXPECT_EQ(Charts()[0].sText1, "sigma = " + FormatNumSF(static_cast<float>(std::sqrt(sumSq / 11))));
  // In run order: each replication's runs by their sequence, one after another.
  const Chart& order = Charts()[1];
  EXPECT_EQ(order.sXlabel, GetText(s.iSequence == 0 ? "Random" : "RunRep"));
  for (const DataPoint& p : order.DataPoints) {
    int run = std::stoi(p.sId), rep = std::stoi(p.sId.substr(p.sId.find('/') + 1));
    EXPECT_EQ(p.fX, (rep - 1) * 4 + s.GetSeq(run, rep)) << p.sId;
  }
}

// One replicate: every residual from the treatment means is 0, shown as it is.
TEST_F(ResidualsTest, WithOneReplicateEveryResidualIsZero) {
  Study& s = TwoLevel(2, 1);
  Fill(s, {{1}, {2}, {3}, {5}});
  s.RESIDUAL_sRVkey = "v1";
  ASSERT_TRUE(SetupResiduals1l(s, stats, "-3,-1"));
  for (const Chart& c : Charts())
    for (const DataPoint& p : c.DataPoints) EXPECT_EQ(c.chtType == CHT_RES_NPP ? p.fX : p.fY, 0);
  EXPECT_TRUE(ui->messages.empty());
}

// A missing observation adds no point; the probability plot counts one
// fewer; a study with one missing observation in every run still works.
TEST_F(ResidualsTest, MissingObservationsAddNoPoint) {
  Study& s = SampleStudy("ChemicalYield");
  s.RESIDUAL_sRVkey = "v1";
  s.SetData(1, 2, 2, MISSING_VALUE);
  ASSERT_TRUE(SetupResiduals1l(s, stats, "-3"));
  EXPECT_EQ(Charts()[0].DataPoints.size(), 11u);
  for (int run = 1; run <= 4; ++run) s.SetData(1, run, 1, MISSING_VALUE);
  gphStart();
  ASSERT_TRUE(SetupResiduals1l(s, stats, "-3,-2,-1,1,2"));
  EXPECT_EQ(Charts().size(), 5u);
  EXPECT_EQ(Charts()[0].DataPoints.size(), 7u);
  double sum = 0;
  for (const DataPoint& p : Charts()[0].DataPoints) sum += p.fX;
  EXPECT_NEAR(sum, 0, 1e-4);
}

TEST_F(ResidualsTest, FarFromZeroTheResidualsStay) {
  Study& s = SampleStudy("VascularGraft");
  s.RESIDUAL_sRVkey = "v1";
  std::map<std::string, double> expected = Additive(s, {1, 2});
  for (int run = 1; run <= s.iNumRuns; ++run) s.SetData(1, run, 1, s.GetData(1, run, 1) + 10000);
  ASSERT_TRUE(SetupResiduals1l(s, stats, "-3"));
  for (auto [key, e] : ByRunRep(Charts()[0])) EXPECT_NEAR(e, expected[key], 2e-3) << key;
}

}  // namespace
}  // namespace kestrow
