// The regression calculator on Montgomery's central composite (Design and
// Analysis of Experiments, chapter 11: the fitted quadratic has its maximum
// at x1 = 0.389, x2 = 0.306 in coded units, time 86.95 and temperature
// 176.53, with a predicted yield of 80.21), and on studies made to order:
// evaluation in coded and actual units, the two passes, restraints and
// their refusals, ties, a range too narrow for a float to step, Stop.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "RegressionFixture.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Text.h"
#include "regression/CalculatorForm.h"
#include "regression/ResponseSurface.h"

namespace kestrow {
namespace {

class CalculatorTest : public test::RegressionFixture {
 protected:
  static CalculatorForm::Restraint Restrain(const std::string& factor, const char* tag, const std::string& value) {
    return {factor, GetText(tag), value};
  }
};

// The stationary point of the published coefficients, solved here from
// b + 2 B x = 0, against the two-pass search of the fitted model.
TEST_F(CalculatorTest, MaximiseFindsThePublishedOptimum) {
  Study& s = SampleStudy("CentralComposite");
  const float stored = s.REGRESS_Rterms(5).fBeta;
  s.REGRESS_Rterms(5).fBeta = -999999900.0f;  // a model never computed is fitted first, on a copy
  CalculatorForm f(s);
  ASSERT_TRUE(f.HasModel());
  ASSERT_EQ(f.Factors().size(), 2u);
  const double b1 = 0.995, b2 = 0.515, b11 = -1.376, b22 = -1.001, b12 = 0.250;
  const double det = 4 * b11 * b22 - b12 * b12;
  const double x1 = (-2 * b22 * b1 + b12 * b2) / det, x2 = (-2 * b11 * b2 + b12 * b1) / det;
  EXPECT_NEAR(x1, 0.389, 5e-4);
  EXPECT_NEAR(x2, 0.306, 5e-4);
  f.txtTarget = "MAX";
  ASSERT_TRUE(f.cmdSolve_Click());
  EXPECT_EQ(f.Evaluations(), 20 * 20 + 21 * 21);
  // Within one cell of the first pass: the ranges run over the axial points.
  for (std::size_t i = 0; i < 2; ++i) {
    const CalculatorForm::Factor& factor = f.Factors()[i];
    const double cell = (s.FGetMaxLevel(factor.sKey) - s.FGetMinLevel(factor.sKey)) / 20;
    const double published = i == 0 ? 86.95 : 176.53;
    EXPECT_NEAR(factor.fBest, published, cell) << factor.sName;
  }
  EXPECT_EQ(FormatSF(4, f.BestValue()), "80.21");
  EXPECT_EQ(f.lblSolution.rfind("Best value 80.21 at: Time = ", 0), 0u) << f.lblSolution;

  // A target below the maximum is met closely; one above it is the maximum.
  f.txtTarget = "78";
  ASSERT_TRUE(f.cmdSolve_Click());
  EXPECT_LT(f.BestGap(), 0.01);
  f.txtTarget = "95";
  ASSERT_TRUE(f.cmdSolve_Click());
  EXPECT_NEAR(f.BestGap(), 95 - 80.21, 0.01);
  EXPECT_EQ(s.REGRESS_Rterms(5).fBeta, -999999900.0f);  // the stored model is read, never written
  EXPECT_EQ(stored, -1.3764497f);  // as the sample stores it
}

// The same equation in coded and in actual units gives the same response.
TEST_F(CalculatorTest, EvaluateAgreesInCodedAndActualUnits) {
  Study& s = SampleStudy("CentralComposite");
  CalculatorForm coded(s);
  coded.values = {"86.95", "176.53"};
  ASSERT_TRUE(coded.cmdEvaluate_Click());
  EXPECT_EQ(coded.lblValue, "Yield = 80.21");
  s.REGRESS_iFlag = 0;  // the same model fitted in actual units, as OK stores it
  Regress refit;
  refit.Init(s);
  ASSERT_TRUE(refit.Compute("v1"));
  CalculatorForm actual(s);
  actual.values = {"86.95", "176.53"};
  ASSERT_TRUE(actual.cmdEvaluate_Click());
  EXPECT_EQ(actual.lblValue, coded.lblValue);
  EXPECT_NE(actual.lblEquation, coded.lblEquation);
  const std::vector<std::string> lines = actual.LogLines(0);
  EXPECT_EQ(lines.back(), "Yield = 80.21");
  EXPECT_EQ(lines[4], "Time = 86.95");
}

TEST_F(CalculatorTest, RefusalsSayWhatAndWhere) {
  Study& s = SampleStudy("CentralComposite");
  CalculatorForm f(s);
  f.values = {"85", "hot"};
  EXPECT_FALSE(f.cmdEvaluate_Click());
  EXPECT_EQ(ui->messages.back().text, GetText("CALerr1"));
  EXPECT_EQ(f.errorRow, 1);
  f.values = {"85", "1e400"};  // beyond a float: no number either
  EXPECT_FALSE(f.cmdEvaluate_Click());

  f.txtTarget = "most";
  EXPECT_FALSE(f.cmdSolve_Click());
  EXPECT_EQ(ui->messages.back().text, GetText("CALerr2"));
  f.txtTarget = "MAX";
  f.restraints = {{}, Restrain("Time", "ISLT", "soon")};
  EXPECT_FALSE(f.cmdSolve_Click());
  EXPECT_EQ(ui->messages.back().text, GetText("CALerr3"));
  EXPECT_EQ(f.errorRow, 1);
  for (auto [tag, value] : {std::pair{"ISEQ", "100"}, {"ISLT", "50"}, {"ISGT", "100"}}) {
    f.restraints = {Restrain("Time", tag, value)};
    EXPECT_FALSE(f.cmdSolve_Click()) << tag;
    EXPECT_EQ(ui->messages.back().text, GetText("CALerr4")) << tag;
  }
  EXPECT_FALSE(f.Running());

  Study& bare = TwoLevel(2, 1);
  CalculatorForm none(bare);
  EXPECT_FALSE(none.HasModel());
  EXPECT_EQ(none.lblEquation, GetText("CALmsg1"));
  EXPECT_FALSE(none.cmdSolve_Click());
}

// Restraints narrow the search: a value pinned visits one point in the
// first pass; a bound beyond the range changes nothing.
TEST_F(CalculatorTest, RestraintsNarrowTheSearch) {
  Study& s = SampleStudy("CentralComposite");
  CalculatorForm f(s);
  f.txtTarget = "MAX";
  f.restraints = {Restrain("Time", "ISEQ", "80"), Restrain("Temperature", "ISEQ", "170")};
  ASSERT_TRUE(f.cmdSolve_Click());
  EXPECT_EQ(f.Evaluations(), 1 + 21 * 21);
  EXPECT_EQ(f.Factors()[0].fBest, 80.0f);
  EXPECT_EQ(f.Factors()[1].fBest, 170.0f);
  CalculatorForm at(s);
  at.values = {"80", "170"};
  ASSERT_TRUE(at.cmdEvaluate_Click());
  EXPECT_EQ("Yield = " + FormatNumSF(f.BestValue()), at.lblValue);

  f.restraints = {Restrain("Time", "ISLT", "84"), Restrain("Temperature", "ISGT", "10")};
  ASSERT_TRUE(f.cmdSolve_Click());
  EXPECT_LE(f.Factors()[0].fBest, 84.0f + (84.0f - 77.93f) / 40);  // pass 2 may step half a cell out
  EXPECT_NEAR(f.Factors()[1].fBest, 176.53, 0.71);
  const std::vector<std::string> log = f.LogLines(1);
  EXPECT_EQ(log[3], SubstituteCopy(GetText("CALlog3"), "MAX"));
  EXPECT_EQ(log[6], "Time " + GetText("ISLT") + " 84");
}

// Every point alike: the first point visited stays the best, which ends at
// the lower end of each range.
TEST_F(CalculatorTest, ATieKeepsTheEarliestPoint) {
  Study& s = SampleStudy("CentralComposite");
  for (int j = 2; j <= s.REGRESS_Rterms.Count(); ++j) s.REGRESS_Rterms(j).fBeta = 0;
  s.REGRESS_Rterms(1).fBeta = 5;
  CalculatorForm f(s);
  f.txtTarget = "MIN";
  ASSERT_TRUE(f.cmdSolve_Click());
  EXPECT_EQ(f.BestValue(), 5.0f);
  for (const CalculatorForm::Factor& factor : f.Factors())
    EXPECT_FLOAT_EQ(factor.fBest, static_cast<float>(s.FGetMinLevel(factor.sKey))) << factor.sName;
}

// A range of 0.01 at 9,000: the grid's step is below a float's resolution
// there, so the walk must end on the range, not on the step.
TEST_F(CalculatorTest, ANarrowRangeFarFromZeroEnds) {
  Study& s = Custom({"9000", "9000.01"}, {"0.001", "0.002"}, {{-1, -1}, {1, -1}, {-1, 1}, {1, 1}, {0, 0}}, 2);
  Respond(s, {{-1, -1}, {1, -1}, {-1, 1}, {1, 1}, {0, 0}}, [](double a, double b) { return 20 + 3 * a - b; }, 0.1);
  Model(s, {"0", "1", "2"}, 0);
  CalculatorForm f(s);
  ASSERT_TRUE(f.HasModel());
  f.txtTarget = "MAX";
  ASSERT_TRUE(f.cmdSolve_Click());
  EXPECT_LT(f.Evaluations(), 20 * 20 + 21 * 21 + 1);
  EXPECT_GE(f.Factors()[0].fBest, 9000.0f);
  EXPECT_LE(f.Factors()[0].fBest, 9000.011f);
  EXPECT_NEAR(f.Factors()[1].fBest, 0.001, 1e-4);  // y falls with the second factor
}

// A quadratic in actual units around 9,000 and 0.001: the stored 32-bit
// coefficients cancel in the fourth figure there, so the calculator works
// through the coded fit of the same model. Its value at each point against
// the independent double-precision fit of the same data.
TEST_F(CalculatorTest, ActualUnitsFarFromZeroKeepTheirDigits) {
  const std::vector<std::pair<double, double>> grid = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0}, {0, 0},
                                                       {1, 0},   {-1, 1}, {0, 1},  {1, 1}};
  Study& s = Custom({"8990", "9000", "9010"}, {"0.0009", "0.001", "0.0011"}, grid, 2);
  Respond(s, grid, [](double a, double b) { return 250 + 12 * a + 7 * b - 3 * a * a + 2 * b * b + 1.5 * a * b; }, 0.8);
  Model(s, {"0", "1", "2", "1,1", "2,2", "1,2"}, 0);
  Regress stored;
  stored.Init(s);
  ASSERT_TRUE(stored.Compute("v1"));
  const test::Fit fit = Independent(s, true);
  ASSERT_TRUE(fit.ok);
  CalculatorForm f(s);
  std::array<float, MAX_EVAL_FACTORS + 1> raw;
  raw.fill(MISSING_VALUE);
  int storedWrong = 0;
  for (double a : {-1.0, -0.3, 0.55, 1.0})
    for (double b : {-1.0, 0.2, 1.0}) {
      const double x = 9000 + 10 * a, y = 0.001 + 0.0001 * b;
      const double want = static_cast<double>(fit.beta[0] + fit.beta[1] * a + fit.beta[2] * b + fit.beta[3] * a * a +
                                              fit.beta[4] * b * b + fit.beta[5] * a * b);
      f.values = {ShortestText(x), ShortestText(y)};
      ASSERT_TRUE(f.cmdEvaluate_Click());
      EXPECT_EQ(f.lblValue, "Y = " + FormatNumSF(static_cast<float>(want))) << a << ", " << b;
      raw[1] = static_cast<float>(x), raw[2] = static_cast<float>(y);
      storedWrong += FormatNumSF(stored.EvaluateRegressionEquation(raw)) != FormatNumSF(static_cast<float>(want));
    }
  EXPECT_GT(storedWrong, 0);  // what the stored coefficients alone would print

  // The solver's best value is the fit's value at its best point.
  f.txtTarget = "MAX";
  ASSERT_TRUE(f.cmdSolve_Click());
  const double a = (f.Factors()[0].fBest - 9000.0) / 10, b = (f.Factors()[1].fBest - 0.001) / 0.0001;
  const double atBest = static_cast<double>(fit.beta[0] + fit.beta[1] * a + fit.beta[2] * b + fit.beta[3] * a * a +
                                            fit.beta[4] * b * b + fit.beta[5] * a * b);
  EXPECT_EQ(FormatNumSF(f.BestValue()), FormatNumSF(static_cast<float>(atBest)));

  // The response surface of the same model works through the same stand-in.
  s.REGRESS_RSM_iNetSize = 8;
  ASSERT_TRUE(SetupRSM(s));
  ASSERT_EQ(Charts().size(), 1u);
  for (const LinePoint& p : Charts()[0].LinePoints) {
    const double a = (p.fX - 9000.0) / 10, b = (p.fY - 0.001) / 0.0001;
    const double want = static_cast<double>(fit.beta[0] + fit.beta[1] * a + fit.beta[2] * b + fit.beta[3] * a * a +
                                            fit.beta[4] * b * b + fit.beta[5] * a * b);
    EXPECT_NEAR(p.fZ, want, 2e-3 * 250) << p.fX << ", " << p.fY;
  }
}

// The random search runs until stopped; its points stay within the limits.
TEST_F(CalculatorTest, MonteCarloRunsUntilStopped) {
  Study& s = SampleStudy("CentralComposite");
  CalculatorForm f(s);
  f.txtTarget = "MAX";
  f.cmbAlgorithm = CalculatorForm::MONTE_CARLO;
  f.restraints = {Restrain("Temperature", "ISLT", "172")};
  int looks = 0;
  f.keepGoing = [&looks] { return ++looks < 5; };
  ASSERT_TRUE(f.cmdSolve_Click());
  EXPECT_EQ(looks, 5);
  EXPECT_FALSE(f.Running());
  EXPECT_GT(f.Evaluations(), 4 * 1024);
  EXPECT_LE(f.Factors()[1].fBest, 172.0f);
  EXPECT_GE(f.Factors()[1].fBest, static_cast<float>(s.FGetMinLevel(f.Factors()[1].sKey)));
  EXPECT_NEAR(f.Factors()[0].fBest, 86.95, 1.5);
}

}  // namespace
}  // namespace kestrow
