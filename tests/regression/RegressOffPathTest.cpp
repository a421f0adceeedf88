// The regression engine away from the textbook: factors around 9,000 and
// around 0.001 in actual units, responses far from zero, terms that are
// nearly collinear, saturated and exact fits. Each printed figure agrees
// with an independent least squares (Householder, long double) to its
// printed digits, or the fit is refused with a message.
#include <gtest/gtest.h>

#include <cmath>

#include "RegressionFixture.h"
#include "core/Formatters.h"
#include "core/Text.h"
#include "regression/Regress.h"

namespace kestrow {
namespace {

class RegressOffPath : public test::RegressionFixture {
 protected:
  // Every printed figure of the fit against the independent one: the
  // coefficients and t to four significant digits, R-squared and the mean
  // square likewise.
  static void ExpectPrinted(Regress& r, const test::Fit& fit, const test::Fit& codedFit) {
    ASSERT_TRUE(fit.ok && codedFit.ok);
    for (int j = 1; j <= r.NumTerms(); ++j) {
      EXPECT_EQ(FormatSF(4, r.Term(j).fBeta), FormatSF(4, static_cast<float>(fit.beta[j - 1]))) << "coefficient " << j;
      EXPECT_EQ(FormatSF(4, r.GetStat(j, 3)), FormatSF(4, static_cast<float>(codedFit.t[j - 1]))) << "t " << j;
    }
    EXPECT_EQ(FormatSF(4, r.fRSquared), FormatSF(4, static_cast<float>(codedFit.rsq)));
    EXPECT_EQ(FormatSF(4, r.fMSE), FormatSF(4, static_cast<float>(codedFit.mse)));
  }

  const std::vector<std::string> QUADRATIC = {"0", "1", "2", "1,1", "2,2", "1,2"};
  Regress r;
};

// A face-centred grid and four inner points: 13 runs.
const std::vector<std::pair<double, double>> GRID = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}, {0, 0}, {1, 0}, {-1, 1},
                                                     {0, 1},   {1, 1},  {-0.5, -0.5}, {0.5, -0.5}, {-0.5, 0.5}, {0.5, 0.5}};

// Speed around 9,000, gap around 0.001, yield around 250,000: in actual
// units the squares of the two factors differ by fourteen orders of
// magnitude, and the response keeps four of its seven digits for the noise.
TEST_F(RegressOffPath, ActualUnitsFarFromTheOriginKeepTheirDigits) {
  Study& s = Custom({"8990", "9000", "9010"}, {"0.0009", "0.001", "0.0011"}, GRID, 2);
  Respond(s, GRID, [](double a, double b) { return 250000 + 12 * a + 7 * b - 3 * a * a + 2 * b * b + 1.5 * a * b; }, 0.8);
  Model(s, QUADRATIC, 0);
  r.Init(s);
  ASSERT_TRUE(r.Compute("v1")) << ui->messages.back().text;
  ExpectPrinted(r, Independent(s, false), Independent(s, true));
  // The same model in coded units prints the same statistics.
  Model(s, QUADRATIC, 2);
  Regress coded;
  coded.Init(s);
  ASSERT_TRUE(coded.Compute("v1"));
  ExpectPrinted(coded, Independent(s, true), Independent(s, true));
  EXPECT_EQ(coded.fRSquared, r.fRSquared);
  // The residuals are those of the data, not of the rounding of 250,000.
  test::Fit fit = Independent(s, true);
  EXPECT_NEAR(r.fSSE, static_cast<double>(fit.sse), 1e-5 * static_cast<double>(fit.sse));
}

// A cubic at 9,000 plus or minus 10 leaves the normal equations in actual
// units with no digit to print: refused, by name; coded, it fits.
TEST_F(RegressOffPath, ACubicInActualUnitsFarOutIsRefused) {
  Study& s = Custom({"8990", "9000", "9010"}, {"0.0009", "0.001", "0.0011"}, GRID, 2);
  Respond(s, GRID, [](double a, double b) { return 40 + 2 * a + b + a * a * a; }, 0.3);
  Model(s, {"0", "1", "2", "1,1", "1,1,1"}, 0);
  r.Init(s);
  EXPECT_FALSE(r.Compute("v1"));
  EXPECT_EQ(ui->messages.back().text,
            "The model cannot be fitted in actual units: at these factor values the terms Speed x Speed and "
            "Speed x Speed x Speed are too nearly collinear to be told apart. Use data coding [ComputeRegression]");
  Model(s, {"0", "1", "2", "1,1", "1,1,1"}, 2);
  Regress coded;
  coded.Init(s);
  ASSERT_TRUE(coded.Compute("v1"));
  ExpectPrinted(coded, Independent(s, true), Independent(s, true));
}

// Two factors set almost alike: a little apart they are estimated to the
// printed digits; all but identical they are refused by name.
TEST_F(RegressOffPath, NearlyCollinearTermsFitOrAreRefused) {
  for (double apart : {2e-3, 1e-6}) {
    std::vector<std::pair<double, double>> points;
    for (int i = 0; i < 12; ++i) {
      double a = -1 + 2.0 * i / 11;
      points.emplace_back(a, a + apart * ((i * 7) % 5 - 2));
    }
    Study& s = Custom({"10", "20"}, {"10", "20"}, points, 1);
    Respond(s, points, [](double a, double b) { return 50 + 3 * a - 2 * b; }, 0.5);
    Model(s, {"0", "1", "2"}, 2);
    Regress fit;
    fit.Init(s);
    if (apart > 1e-4) {
      ASSERT_TRUE(fit.Compute("v1")) << ui->messages.back().text;
      ExpectPrinted(fit, Independent(s, true), Independent(s, true));
    } else {
      EXPECT_FALSE(fit.Compute("v1"));
      EXPECT_EQ(ui->messages.back().text,
                "The model cannot be fitted: the terms Speed and Gap are too nearly collinear to be told apart "
                "[ComputeRegression]");
    }
  }
}

// A saturated model and one short of it leave no degree of freedom to test
// with; data on a plane leave no error; a constant response nothing to fit.
TEST_F(RegressOffPath, FitsWithNothingLeftToTestAreRefused) {
  const std::vector<std::pair<double, double>> six(GRID.begin(), GRID.begin() + 6), seven(GRID.begin(), GRID.begin() + 7);
  for (const auto& points : {six, seven}) {
    Study& s = Custom({"8990", "9010"}, {"0.0009", "0.0011"}, points, 1);
    Respond(s, points, [](double a, double b) { return a * b + a; }, 1);
    Model(s, QUADRATIC, 0);
    Regress fit;
    fit.Init(s);
    EXPECT_FALSE(fit.Compute("v1"));
    EXPECT_EQ(ui->messages.back().text, "Insufficent D.O.F. to compute this equation");
  }
  Study& plane = Custom({"10", "20"}, {"10", "20"}, GRID, 1);
  Respond(plane, GRID, [](double a, double b) { return 1e5 + 3 * a - 2 * b; }, 0);
  Model(plane, {"0", "1", "2"}, 2);
  r.Init(plane);
  EXPECT_FALSE(r.Compute("v1"));
  EXPECT_EQ(ui->messages.back().text,
            "The model fits every observation exactly: no error is left to test its terms against [ComputeRegression]");
  Respond(plane, GRID, [](double, double) { return 7.5; }, 0);
  Regress flat;
  flat.Init(plane);
  EXPECT_FALSE(flat.Compute("v1"));
  EXPECT_EQ(ui->messages.back().text, "The response does not vary: there is nothing to fit [ComputeRegression]");
}

}  // namespace
}  // namespace kestrow
