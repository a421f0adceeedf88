// The regression engine against published fits and an independent least
// squares in long double: Montgomery's central composite example (Design
// and Analysis of Experiments, chapter 11: y = 79.94 + 0.995 x1 + 0.515 x2
// - 1.376 x1^2 - 1.001 x2^2 + 0.250 x1 x2 in coded units), the interactions
// model of his 2^3 etch rate experiment, and the Part's edge cases.
#include <gtest/gtest.h>

#include <cmath>

#include "RegressionFixture.h"
#include "core/Formatters.h"
#include "regression/Regress.h"
#include "stats/tProbability.h"

namespace kestrow {
namespace {

class RegressTest : public test::RegressionFixture {
 protected:
  Regress r;
};

const std::vector<std::string> QUADRATIC = {"0", "1", "2", "1,2", "1,1", "2,2"};

TEST_F(RegressTest, TheCentralCompositeFitAsPublished) {
  Study& s = SampleStudy("CentralComposite");
  r.Init(s);
  ASSERT_TRUE(r.Compute(s.REGRESS_sRVkey)) << (ui->messages.empty() ? "" : ui->messages.back().text);
  const double printed[] = {79.94, 0.995, 0.515, 0.250, -1.376, -1.001};  // order of the terms
  for (int j = 1; j <= 6; ++j) EXPECT_NEAR(r.Term(j).fBeta, printed[j - 1], 0.0051) << j;
  test::Fit fit = Independent(s, true);
  ASSERT_TRUE(fit.ok);
  for (int j = 1; j <= 6; ++j) {
    EXPECT_NEAR(r.Term(j).fBeta, static_cast<double>(fit.beta[j - 1]), 1e-4) << j;
    EXPECT_NEAR(r.GetStat(j, 3), static_cast<double>(fit.t[j - 1]), 1e-3 * fit.t[j - 1]) << j;
  }
  EXPECT_NEAR(r.fSSE, static_cast<double>(fit.sse), 1e-4);
  EXPECT_NEAR(r.fRSquared, static_cast<double>(fit.rsq), 1e-5);
  EXPECT_EQ(FormatSF(4, r.fRSquared), "0.9827");
  EXPECT_EQ(r.NumObs(), 13);
  EXPECT_TRUE(r.Coded());
}

// In actual units the fit statistics are those of the coded fit and the
// coefficients those of the actual values; the flag reads coded after.
TEST_F(RegressTest, ActualUnitsKeepTheCodedStatistics) {
  Study& s = SampleStudy("CentralComposite");
  r.Init(s);
  ASSERT_TRUE(r.Compute("v1"));
  const float mse = r.fMSE, rsq = r.fRSquared, t1 = r.GetStat(2, 3), p1 = r.GetStat(2, 2);
  s.REGRESS_iFlag = 0;
  Regress actual;
  actual.Init(s);
  EXPECT_FALSE(actual.Coded());
  ASSERT_TRUE(actual.Compute("v1"));
  EXPECT_TRUE(actual.Coded());
  EXPECT_EQ(actual.fMSE, mse);
  EXPECT_EQ(actual.fRSquared, rsq);
  EXPECT_EQ(actual.GetStat(2, 3), t1);
  EXPECT_EQ(actual.GetStat(2, 2), p1);
  test::Fit fit = Independent(s, false);
  for (int j = 1; j <= 6; ++j) {
    double b = static_cast<double>(fit.beta[j - 1]);
    EXPECT_NEAR(actual.Term(j).fBeta, b, 1e-3 * std::fabs(b)) << j;
  }
}

// The 2^3 etch rate experiment in two replicates with all two-factor
// interactions: coefficients, t and R-squared to four figures.
TEST_F(RegressTest, AnInteractionsModelAgreesWithIndependentLeastSquares) {
  Study& s = SampleStudy("EtchRate");
  Model(s, {"0", "1", "2", "3", "1,2", "1,3", "2,3"});
  r.Init(s);
  ASSERT_TRUE(r.Compute("v1"));
  test::Fit fit = Independent(s, true);
  for (int j = 1; j <= 7; ++j) {
    EXPECT_EQ(FormatSF(4, r.Term(j).fBeta), FormatSF(4, static_cast<float>(fit.beta[j - 1]))) << j;
    EXPECT_EQ(FormatSF(4, r.GetStat(j, 3)), FormatSF(4, static_cast<float>(fit.t[j - 1]))) << j;
  }
  EXPECT_EQ(FormatSF(4, r.fRSquared), FormatSF(4, static_cast<float>(fit.rsq)));
  // The p value of a coefficient is read at one degree of freedom less than
  // the error's: 16 - 7 = 9, less 1.
  EXPECT_NEAR(r.GetStat(2, 2), 2 - 2 * tProbability(r.GetStat(2, 3), 8), 1e-6);
}

TEST_F(RegressTest, TheConstantAloneNeedsThreeObservations) {
  Study& s = TwoLevel(1, 1);
  Fill(s, {{4}, {6}});
  Model(s, {"0"});
  r.Init(s);
  EXPECT_FALSE(r.Compute("v1"));  // n = 2: one degree of freedom is refused
  EXPECT_EQ(ui->messages.back().text, "Insufficent D.O.F. to compute this equation");
  Study& three = TwoLevel(1, 2);
  Fill(three, {{4, 5}, {6, 0}});
  three.SetData(1, 2, 2, MISSING_VALUE);  // a missing observation drops its row
  Model(three, {"0"});
  Regress c;
  c.Init(three);
  ASSERT_TRUE(c.Compute("v1"));
  EXPECT_EQ(c.NumObs(), 3);
  EXPECT_FLOAT_EQ(c.Term(1).fBeta, 5);
  EXPECT_NEAR(c.GetStat(1, 2), 2 - 2 * tProbability(c.GetStat(1, 3), 1), 1e-6);
}

// The same term twice: the second pivot becomes 0, is taken as 0.0001, and
// the result is finite.
TEST_F(RegressTest, ADuplicatedColumnGivesAFiniteFit) {
  Study& s = SampleStudy("CentralComposite");
  Model(s, {"0", "1", "1", "2"});
  r.Init(s);
  ASSERT_TRUE(r.Compute("v1"));
  for (int j = 1; j <= 4; ++j) EXPECT_TRUE(std::isfinite(r.Term(j).fBeta)) << j;
  EXPECT_TRUE(std::isfinite(r.fRSquared));
}

// The equation leaves a zero coefficient out; products read "A x B".
TEST_F(RegressTest, TheEquationText) {
  Study& s = SampleStudy("CentralComposite");
  r.Init(s);
  ASSERT_TRUE(r.Compute("v1"));
  EXPECT_EQ(r.GetRegressionEquation(),
            "Yield = 79.9 + 0.995Time + 0.515Temp + 0.25Time x Temp - 1.38Time x Time - 1Temp x Temp");
  r.Term(4).fBeta = 0;
  EXPECT_EQ(r.GetRegressionEquation().find("Time x Temp"), std::string::npos);
  EXPECT_EQ(r.GetFactorString(), "Time,1,Temperature,2");
}

// The slice polynomial gives the equation's value at every point; a held
// factor shows in the conditions; a product without its factor's own term
// cannot be sliced.
TEST_F(RegressTest, TheSliceAgreesWithTheEquation) {
  Study& s = SampleStudy("CentralComposite");
  r.Init(s);
  ASSERT_TRUE(r.Compute("v1"));
  ASSERT_TRUE(r.SetupFastConstants());
  std::array<float, MAX_EVAL_FACTORS + 1> values;
  values.fill(MISSING_VALUE);
  for (float a : {-1.0f, 0.3f, 1.414f})
    for (float b : {-1.2f, 0.0f, 0.7f}) {
      values[1] = a;
      values[2] = b;
      EXPECT_NEAR(r.FastEvaluate(a, b), r.EvaluateRegressionEquation(values), 1e-4) << a << " " << b;
    }
  EXPECT_EQ(r.SetmRTerm(2, 175), FREE_AXIS);  // temperature held at 175: coded 0
  ASSERT_TRUE(r.SetupFastConstants());
  EXPECT_NEAR(r.FastEvaluate(0.5f, 99), r.Term(1).fBeta + 0.5f * r.Term(2).fBeta + 0.25f * r.Term(5).fBeta, 1e-4);
  EXPECT_EQ(r.GetConditions(1), "Subject to: Temperature = 175");
  EXPECT_EQ(r.PackConstants().substr(0, 2), "1|");
  Model(s, {"0", "1", "1,2"});
  Regress product;
  product.Init(s);
  ASSERT_TRUE(product.Compute("v1"));
  EXPECT_FALSE(product.SetupFastConstants());
  EXPECT_EQ(ui->messages.back().text, "Logic error #1 [SetupFastConstants]");
  EXPECT_NE(product.EvaluateRE(1), BAD_NUMBER);  // the run has every factor
}

}  // namespace
}  // namespace kestrow
