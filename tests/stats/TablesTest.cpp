// The statistical tables as the build computes them, read through the
// readers: printed values at sample points, and the readers' walking and
// interpolation rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>
#include <vector>

#include "core/Paths.h"
#include "core/Sentinels.h"
#include "stats/TableReaders.h"
#include "core/TestSupport.h"

namespace kestrow {
namespace {

class TableTest : public ::testing::Test {
 protected:
  void SetUp() override { SetProgramFolder(KESTROW_BIN); }
  // A lookup that succeeds shows nothing; every test takes the messages it expects.
  void TearDown() override {
    EXPECT_TRUE(ui->messages.empty()) << ui->messages.front().text;
    SetProgramFolder("");
  }

  // The one message shown since the last call, or "" when there was none or
  // more than one; the messages are cleared.
  std::string TakeMessage() {
    std::string text = ui->messages.size() == 1 ? ui->messages[0].text : "";
    ui->messages.clear();
    return text;
  }

  test::ScopedUi ui;
};

TEST_F(TableTest, FPointsAsPrinted) {
  EXPECT_NEAR(ReadTableF(0.05f, 1, 10), 4.96f, 1e-4);
  EXPECT_NEAR(ReadTableF(0.01f, 5, 20), 4.10f, 1e-4);
  EXPECT_NEAR(ReadTableF(0.1f, 3, 30), 2.28f, 1e-4);
  EXPECT_NEAR(ReadTableF(0.05f, 1, 10000), 3.84f, 1e-4);  // the row for infinity: chi-square / v1
}

TEST_F(TableTest, FInterpolatesInV1ThenInV2) {
  // v1 = 11 lies halfway between the columns 10 and 12, v2 = 35 halfway
  // between the rows 30 and 40.
  float lowRow = (ReadTableF(0.05f, 10, 30) + ReadTableF(0.05f, 12, 30)) / 2;
  float highRow = (ReadTableF(0.05f, 10, 40) + ReadTableF(0.05f, 12, 40)) / 2;
  EXPECT_NEAR(ReadTableF(0.05f, 11, 30), lowRow, 1e-5);
  EXPECT_NEAR(ReadTableF(0.05f, 11, 35), (lowRow + highRow) / 2, 1e-5);
  EXPECT_NEAR(ReadTableF(0.05f, 10, 32), ReadTableF(0.05f, 10, 30) * 0.8f + ReadTableF(0.05f, 10, 40) * 0.2f, 1e-5);
}

TEST_F(TableTest, FRefusesOtherLevelsAndRequestsBeyondTheTable) {
  EXPECT_EQ(ReadTableF(0.02f, 1, 10), MISSING_VALUE);
  EXPECT_EQ(TakeMessage(), "Invalid alpha level for ANOVA");
  EXPECT_EQ(ReadTableF(0.05f, 200, 10), MISSING_VALUE);  // past the last column, 120
  EXPECT_NE(TakeMessage().find(" [ReadTableF]"), std::string::npos);
}

TEST_F(TableTest, tPercentIsTheUpperTailPoint) {
  EXPECT_NEAR(ReadtPercent(10, 0.025f), 2.228f, 1e-4);
  EXPECT_NEAR(ReadtPercent(20, 0.05f), 1.725f, 1e-4);
  EXPECT_NEAR(ReadtPercent(10000, 0.005f), 2.576f, 1e-4);
  // v = 33 between the rows 30 and 35, linearly.
  float t30 = ReadtPercent(30, 0.025f), t35 = ReadtPercent(35, 0.025f);
  EXPECT_NEAR(t30, 2.042f, 1e-4);
  EXPECT_NEAR(ReadtPercent(33, 0.025f), t30 + (t35 - t30) * 0.6f, 1e-5);
  // No such column: the message, and the result left as it was.
  float t = 7.5f;
  EXPECT_FALSE(ReadtPercent(10, 0.3f, t));
  EXPECT_EQ(t, 7.5f);
  EXPECT_NE(TakeMessage().find(" [ReadtPercent]"), std::string::npos);
  EXPECT_EQ(ReadtPercent(10, 0.3f), 0.0f);
  EXPECT_NE(TakeMessage().find(" [ReadtPercent]"), std::string::npos);
}

TEST_F(TableTest, ChartConstantsAndAbsentLowerLimits) {
  EXPECT_NEAR(ReadTableC(5, "d2"), 2.326f, 1e-4);
  EXPECT_NEAR(ReadTableC(5, "D4"), 2.114f, 1e-4);
  EXPECT_NEAR(ReadTableC(7, "D3"), 0.076f, 1e-4);
  EXPECT_NEAR(ReadTableC(5, "A2"), 0.577f, 1e-4);
  EXPECT_NEAR(ReadTableC(6, "B3"), 0.030f, 1e-4);
  EXPECT_NEAR(ReadTableC(25, "D4"), 1.541f, 1e-4);
  for (std::int16_t n = 2; n <= 6; ++n) EXPECT_EQ(ReadTableC(n, "D3"), MISSING_VALUE) << n;
  EXPECT_EQ(ReadTableC(5, "B3"), MISSING_VALUE);
  EXPECT_EQ(ReadTableC(5, "E9"), MISSING_VALUE);
  EXPECT_NE(TakeMessage().find(" [ReadTableC]"), std::string::npos);
}

TEST_F(TableTest, DuncansD2StarAsPrintedAndExtrapolatedBeyondTheTabledSubgroups) {
  float v = 0, d2 = 0, v30 = 0, d30 = 0;
  ReadTableB(5, 1, v, d2);  // Duncan: 3.8 and 2.48
  EXPECT_NEAR(v, 3.8f, 0.05);
  EXPECT_NEAR(d2, 2.48f, 0.005);
  ReadTableB(2, 1, v, d2);  // the range of two is sqrt 2 sigma chi_1: exact
  EXPECT_NEAR(v, 1.0f, 1e-3);
  EXPECT_NEAR(d2, std::sqrt(2.0f), 1e-3);
  ReadTableB(2, 10, v, d2);
  EXPECT_NEAR(d2, 1.16f, 0.005);

  ReadTableB(5, 30, v30, d30);
  // The closing row for n = 5: 3.623 more degrees of freedom per subgroup
  // (Duncan's 3.62) and the limit d2 = 2.326.
  ReadTableB(5, 31, v, d2);
  EXPECT_FLOAT_EQ(v, v30 + 3.623f);
  EXPECT_FLOAT_EQ(d2, 2.326f + 2.326f / (4 * v));
  // It stays close to d2* = sqrt(d2^2 + d3^2 / k) itself (d3 = 0.864).
  EXPECT_NEAR(d2, std::sqrt(2.326f * 2.326f + 0.864f * 0.864f / 31), 5e-4);
  ReadTableB(5, 500, v, d2);
  EXPECT_NEAR(v, v30 + 470 * 3.623f, 1e-2);

  v = d2 = -1;
  ReadTableB(31, 4, v, d2);  // no such subgroup size
  EXPECT_EQ(v, -1);
  EXPECT_EQ(d2, -1);
  EXPECT_NE(TakeMessage().find(" [ReadTableB]"), std::string::npos);
}

TEST_F(TableTest, DuncanRowsAndTheirInterpolation) {
  DuncanRows t{};
  // Harter's exact values at f = 10: 3.151, 3.293; at f = 20, p = 4: 3.189.
  ReadDuncanRow(10, 0.05f, t);
  EXPECT_EQ(t[0][2], 10);
  EXPECT_EQ(t[1][1], 2);
  EXPECT_EQ(t[13][1], 14);
  EXPECT_NEAR(t[1][2], 3.15f, 1e-4);
  EXPECT_NEAR(t[2][2], 3.29f, 1e-4);
  DuncanRows ten = t;
  ReadDuncanRow(10, 0.10f, t);  // any level but 0.01 reads the 5% table
  EXPECT_EQ(t, ten);
  ReadDuncanRow(10, 0.01f, t);
  EXPECT_NEAR(t[1][2], 4.48f, 1e-4);  // q(0.99; 2, 10) = 4.482
  ReadDuncanRow(1, 0.05f, t);        // never falling with p: all 17.97
  for (int i = 1; i <= 13; ++i) EXPECT_NEAR(t[i][2], 17.97f, 1e-4) << i;

  DuncanRows twenty{}, twentyTwo{};
  ReadDuncanRow(20, 0.05f, twenty);
  EXPECT_NEAR(twenty[3][2], 3.19f, 1e-4);
  ReadDuncanRow(22, 0.05f, twentyTwo);
  ReadDuncanRow(21, 0.05f, t);  // halfway between the rows 20 and 22
  EXPECT_EQ(t[0][2], 22);
  EXPECT_EQ(t[0][3], 20);
  for (int i = 1; i <= 13; ++i) EXPECT_NEAR(t[i][2], (twenty[i][2] + twentyTwo[i][2]) / 2, 1e-5) << i;
}

// The analysis-of-means factor h, or -1 when the reader left it alone.
float AnomH(float alpha, float v, int k) {
  float h = -1;
  ReadTableD(alpha, v, static_cast<std::int16_t>(k), h);
  return h;
}

TEST_F(TableTest, AnomFactorsAsPrinted) {
  // Two means: the deviations are +-(x1 - x2) / 2, so h is t(alpha / 2, v) / sqrt 2.
  EXPECT_NEAR(AnomH(0.05f, 5, 2), 1.82f, 1e-4);    // 2.571 / sqrt 2
  EXPECT_NEAR(AnomH(0.01f, 1, 2), 45.01f, 1e-4);   // 63.657 / sqrt 2
  EXPECT_NEAR(AnomH(0.1f, 32767, 2), 1.16f, 1e-4);  // 1.645 / sqrt 2
  // Ott's factors for three means with sigma known, and for larger counts.
  EXPECT_NEAR(AnomH(0.05f, 32767, 3), 1.91f, 1e-4);
  EXPECT_NEAR(AnomH(0.01f, 32767, 3), 2.38f, 1e-4);
  EXPECT_NEAR(AnomH(0.05f, 32767, 500), 3.88f, 1e-4);
}

// An independent check of the method: the share of simulated experiments
// whose averages all fall inside the decision lines is 1 - alpha.
TEST_F(TableTest, AnomFactorsHoldTheirLevelBySimulation) {
  std::mt19937_64 random(20261121);
  std::normal_distribution<double> normal;
  for (auto [alpha, v, k] : {std::tuple{0.05f, 10.0f, 5}, {0.01f, 4.0f, 3}, {0.1f, 20.0f, 12}, {0.05f, 32767.0f, 40}}) {
    const float h = AnomH(alpha, v, k);
    std::chi_squared_distribution<double> chi(v);
    const int trials = 100000;
    int inside = 0;
    std::vector<double> z(static_cast<std::size_t>(k));
    for (int n = 0; n < trials; ++n) {
      double mean = 0;
      for (double& x : z) mean += (x = normal(random));
      mean /= k;
      double s = v > 10000 ? 1 : std::sqrt(chi(random) / v), widest = 0;
      for (double x : z) widest = std::max(widest, std::fabs(x - mean));
      inside += widest <= h * s;
    }
    // Four standard errors of the share, and the rounding of h to two decimals.
    double share = static_cast<double>(inside) / trials, level = 1 - alpha;
    EXPECT_NEAR(share, level, 4 * std::sqrt(level * (1 - level) / trials) + 0.002)
        << "alpha " << alpha << " v " << v << " k " << k;
  }
}

TEST_F(TableTest, AnomInterpolatesInKThenInV) {
  auto at = [](float v, int k) { return AnomH(0.05f, v, k); };
  // k = 57 lies between the columns 55 and 60, v = 33 between the rows 30 and 35.
  float low = at(30, 55) + (at(30, 60) - at(30, 55)) * 2 / 5;
  float high = at(35, 55) + (at(35, 60) - at(35, 55)) * 2 / 5;
  EXPECT_NEAR(at(30, 57), low, 1e-5);
  EXPECT_NEAR(at(33, 57), low + (high - low) * 3 / 5, 1e-5);
  // A fractional v, as the range estimate of sigma gives it.
  EXPECT_NEAR(at(7.5f, 3), (at(7, 3) + at(8, 3)) / 2, 1e-5);
}

TEST_F(TableTest, AnomRequestBeyondTheTableEndsThere) {
  EXPECT_EQ(AnomH(0.05f, 10, 501), -1);  // past the last column, 500
  EXPECT_NE(TakeMessage().find(" [ReadTableD]"), std::string::npos);
  EXPECT_EQ(AnomH(0.02f, 10, 3), -1);  // no rows for this alpha
  EXPECT_NE(TakeMessage().find(" [ReadTableD]"), std::string::npos);
}

TEST_F(TableTest, ReadersWithoutTheDatabase) {
  SetProgramFolder("/nonexistent");
  float v = -1, d2 = -1;
  EXPECT_EQ(ReadTableC(5, "D4"), MISSING_VALUE);
  EXPECT_EQ(ReadTableF(0.05f, 1, 10), MISSING_VALUE);
  ReadTableB(5, 1, v, d2);
  EXPECT_EQ(v, -1);
  ASSERT_EQ(ui->messages.size(), 3u);
  for (const auto& m : ui->messages) EXPECT_NE(m.text.find(" [Open Db]"), std::string::npos) << m.text;
  ui->messages.clear();
}

}  // namespace
}  // namespace kestrow
