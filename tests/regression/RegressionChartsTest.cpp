// The regression's charts on Montgomery's central composite (Design and
// Analysis of Experiments, chapter 11, the stored quadratic model): the
// residuals against an independent least squares of the same model, plain
// and studentised (e / sqrt(MSE (1 - h)), h the leverage from the hat
// matrix worked out here), the dialog's stored list, and the scattergram's
// polynomial of one factor against its own independent fit.
#include <gtest/gtest.h>

#include <cmath>

#include "LeastSquares.h"
#include "analyses/ChartFixture.h"
#include "charts/ChartPage.h"
#include "core/Formatters.h"
#include "regression/Regress.h"
#include "regression/RegressionChartForms.h"
#include "regression/RegressionResiduals.h"
#include "regression/Scattergram.h"

namespace kestrow {
namespace {

class RegressionChartsTest : public test::ChartFixture {
 protected:
  // Coded x1 and x2 of each run, and the quadratic's columns.
  void Columns(Study& s) {
    x.assign(6, {});
    y.clear();
    for (int run = 1; run <= s.iNumRuns; ++run) {
      double a = s.FValueToCode(s.GetFactorKey(1), s.GetTreatmentLevelValue(1, run));
      double b = s.FValueToCode(s.GetFactorKey(2), s.GetTreatmentLevelValue(2, run));
      const double row[] = {1, a, b, a * b, a * a, b * b};
      for (int j = 0; j < 6; ++j) x[static_cast<std::size_t>(j)].push_back(row[j]);
      y.push_back(s.GetData(1, run, 1));
    }
  }
  // The leverages: the diagonal of X (X'X)^-1 X', by Gauss-Jordan here.
  std::vector<double> Leverages() const {
    const std::size_t p = x.size(), n = y.size();
    std::vector<std::vector<double>> a(p, std::vector<double>(2 * p, 0));
    for (std::size_t i = 0; i < p; ++i) {
      for (std::size_t j = 0; j < p; ++j)
        for (std::size_t k = 0; k < n; ++k) a[i][j] += x[i][k] * x[j][k];
      a[i][p + i] = 1;
    }
    for (std::size_t c = 0; c < p; ++c) {
      std::size_t piv = c;
      for (std::size_t r = c + 1; r < p; ++r)
        if (std::abs(a[r][c]) > std::abs(a[piv][c])) piv = r;
      std::swap(a[c], a[piv]);
      const double d = a[c][c];
      for (double& v : a[c]) v /= d;
      for (std::size_t r = 0; r < p; ++r)
        if (r != c) {
          const double f = a[r][c];
          for (std::size_t j = 0; j < 2 * p; ++j) a[r][j] -= f * a[c][j];
        }
    }
    std::vector<double> h(n, 0);
    for (std::size_t k = 0; k < n; ++k)
      for (std::size_t i = 0; i < p; ++i)
        for (std::size_t j = 0; j < p; ++j) h[k] += x[i][k] * a[i][p + j] * x[j][k];
    return h;
  }
  std::vector<std::vector<double>> x;
  std::vector<double> y;
};

TEST_F(RegressionChartsTest, ResidualsPlainAndStudentisedAgreeWithAnIndependentFit) {
  Study& s = SampleStudy("CentralComposite");
  Columns(s);
  test::Fit fit = test::LeastSquares(x, y);
  ASSERT_TRUE(fit.ok);
  const std::vector<double> h = Leverages();
  std::vector<double> e(y.size()), fitted(y.size());
  for (std::size_t k = 0; k < y.size(); ++k) {
    for (std::size_t j = 0; j < 6; ++j) fitted[k] += static_cast<double>(fit.beta[j]) * x[j][k];
    e[k] = y[k] - fitted[k];
  }
  const double mse = static_cast<double>(fit.mse);

  for (bool studentised : {false, true}) {
    gphStart();
    ASSERT_TRUE(SetupResiduals2(s, stats, "-3,-1,1", studentised));
    ASSERT_EQ(Charts().size(), 3u);
    EXPECT_EQ(Charts()[0].chtType, CHT_REG_NPP);
    const std::vector<DataPoint> byFit = Valued(Charts()[1]), byTime = Valued(Charts()[2]);
    ASSERT_EQ(byFit.size(), 13u);
    ASSERT_EQ(byTime.size(), 13u);
    for (std::size_t k = 0; k < 13; ++k) {
      const double want = studentised ? e[k] / std::sqrt(mse * (1 - h[k])) : e[k];
      EXPECT_NEAR(byFit[k].fX, fitted[k], 1e-3) << k;
      EXPECT_NEAR(byFit[k].fY, want, 2e-4 * (1 + std::abs(want))) << k;
      EXPECT_EQ(byTime[k].fX, static_cast<float>(s.GetTreatmentLevelValue(1, static_cast<int>(k) + 1))) << k;
      EXPECT_EQ(byTime[k].fY, byFit[k].fY) << k;
    }
  }
}

TEST_F(RegressionChartsTest, TheResidualsDialogStoresItsListAndTheStudentisedChoice) {
  Study& s = SampleStudy("CentralComposite");
  Residuals2Form f(s, stats);
  // The probability plot, the run order, the fitted values, then Time and Temperature.
  ASSERT_EQ(f.rows.size(), 5u);
  EXPECT_EQ(f.rows[4].token, 2);
  for (ResidualChartRow& r : f.rows) r.checked = r.token == -3 || r.token == 2;
  f.chkStudent = true;
  std::string message;
  ASSERT_EQ(f.OK(message), FormOutcome::Accepted) << message;
  EXPECT_EQ(s.REGRESS_RES_sCharts, "-3,2");
  EXPECT_TRUE(s.REGRESS_iFlag & REGRESS_STUDENTISED);
  EXPECT_TRUE(s.REGRESS_iFlag & REGRESS_CODED);  // the model's own bits untouched

  Residuals2Form none(s, stats);
  for (ResidualChartRow& r : none.rows) r.checked = false;
  EXPECT_EQ(none.OK(message), FormOutcome::Refused);
  EXPECT_EQ(s.REGRESS_RES_sCharts, "-3,2");
}

TEST_F(RegressionChartsTest, TheScattergramDrawsThePolynomialOfOneFactor) {
  Study& s = SampleStudy("CentralComposite");
  ScatterChoice c = DefaultScatterChoice(s, stats);
  EXPECT_EQ(c.rvKey, "v1");
  EXPECT_EQ(c.factorKey, s.GetFactorKey(1));
  EXPECT_EQ(c.degree, 2);  // the stored model is a quadratic
  std::string complaint;
  ASSERT_TRUE(ParseScatterChoice(s, stats, s.GetFactorKey(2) + "||3", c, complaint)) << complaint;
  EXPECT_EQ(c.factorKey, s.GetFactorKey(2));
  EXPECT_EQ(c.degree, 3);
  EXPECT_FALSE(ParseScatterChoice(s, stats, "nosuch", c, complaint));
  EXPECT_FALSE(ParseScatterChoice(s, stats, "||4", c, complaint));
  EXPECT_FALSE(ParseScatterChoice(s, stats, "|v9", c, complaint));

  // y on x2 and x2^2 alone (coded), fitted here; the drawn line against it.
  ASSERT_TRUE(ParseScatterChoice(s, stats, s.GetFactorKey(2) + "||2", c, complaint));
  ASSERT_TRUE(SetupScattergram(s, stats, c));
  ASSERT_EQ(Charts().size(), 1u);
  const Chart& chart = Charts()[0];
  EXPECT_EQ(Valued(chart).size(), 13u);
  Columns(s);
  test::Fit fit = test::LeastSquares({x[0], x[2], x[5]}, y);
  ASSERT_TRUE(fit.ok);
  ASSERT_GT(chart.LinePoints.size(), 10u);
  for (const LinePoint& p : chart.LinePoints) {
    const double coded = s.FValueToCode(c.factorKey, p.fX);
    const double want = static_cast<double>(fit.beta[0] + fit.beta[1] * coded + fit.beta[2] * coded * coded);
    EXPECT_NEAR(p.fY, want, 1e-3) << p.fX;
  }
  EXPECT_EQ(chart.sText1, "R squared = " + FormatSF(4, static_cast<float>(fit.rsq)));
}

}  // namespace
}  // namespace kestrow
