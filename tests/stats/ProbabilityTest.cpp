// The probability routines against published values (the standard normal,
// F and t tables of Abramowitz & Stegun, chapters 26.2, 26.6 and 26.7) and
// against their identities: symmetry, the closed forms of t for one and two
// degrees of freedom, and FValue as the inverse of FProbability.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "stats/FProbability.h"
#include "stats/FValue.h"
#include "stats/Normal.h"
#include "stats/tProbability.h"

namespace kestrow {
namespace {

TEST(NormalProbability, MatchesTheNormalTableAndIsSymmetric) {
  EXPECT_NEAR(NormalProbability(1.96f), 0.9750021, 1e-6);
  EXPECT_NEAR(NormalProbability(-2.5758f), 0.005, 1e-6);
  // z = 0 is the tail formula, whose polynomial gives 0.5 to its accuracy.
  EXPECT_NEAR(NormalProbability(0.0f), 0.5, 1e-7);
  for (float z : {0.1f, 0.5f, 1.0f, 1.645f, 3.0f, 5.0f})
    EXPECT_NEAR(NormalProbability(z) + NormalProbability(-z), 1.0f, 1.2e-7f) << z;
}

TEST(NormalValue, InvertsTheNormalTableWithinTheApproximationError) {
  EXPECT_EQ(NormalValue(0.5f), 0.0f);
  EXPECT_NEAR(NormalValue(0.975f), 1.959964, 4.5e-4);
  EXPECT_NEAR(NormalValue(0.995f), 2.575829, 4.5e-4);
  EXPECT_EQ(NormalValue(0.25f), -NormalValue(0.75f));  // both exact in binary
}

TEST(FProbability, GivesTheLevelsOfTheFTablesCriticalValues) {
  // F(0.95) and F(0.99) points, A&S table 26.9.
  EXPECT_NEAR(FProbability(4.96f, 1, 10), 0.95, 2e-4);
  EXPECT_NEAR(FProbability(4.10f, 5, 20), 0.99, 1e-3);
  EXPECT_NEAR(FProbability(19.25f, 4, 2), 0.95, 1e-3);
  EXPECT_NEAR(FProbability(0.0f, 3, 12), 0.0, 1e-6);
  EXPECT_NEAR(FProbability(1.0e6f, 3, 12), 1.0, 1e-6);
}

TEST(FValue, GivesTheFTableAndInvertsFProbability) {
  EXPECT_NEAR(FValue(0.95f, 1, 10), 4.965, 0.005);
  EXPECT_NEAR(FValue(0.95f, 5, 20), 2.711, 0.01);
  EXPECT_NEAR(FValue(0.99f, 2, 3), 30.82, 0.05);  // v2 at most 3: the corrected start
  for (float p : {0.75f, 0.9f, 0.95f, 0.99f})
    for (float v1 : {1.0f, 2.0f, 4.0f})
      for (float v2 : {2.0f, 6.0f, 24.0f}) EXPECT_NEAR(FProbability(FValue(p, v1, v2), v1, v2), p, 1e-3);
}

// The exact F distribution, worked here in long double apart from the
// routine under test: the regularized incomplete beta I_x(a, b) by its
// continued fraction (Abramowitz & Stegun 26.5.8, evaluated by Lentz's
// method as in Numerical Recipes' betacf), taken on the side where it
// converges fast, and P(F <= f) = I_{v1 f / (v1 f + v2)}(v1/2, v2/2)
// (A&S 26.6.2).
long double BetaFraction(long double a, long double b, long double x) {
  const long double tiny = 1e-300L;
  long double c = 1, d = 1 - (a + b) * x / (a + 1);
  d = 1 / (std::fabs(d) < tiny ? tiny : d);
  long double h = d;
  for (int m = 1; m <= 100000; ++m) {
    for (long double numerator : {m * (b - m) * x / ((a + 2 * m - 1) * (a + 2 * m)),
                                  -(a + m) * (a + b + m) * x / ((a + 2 * m) * (a + 2 * m + 1))}) {
      d = 1 + numerator * d;
      c = 1 + numerator / c;
      d = 1 / (std::fabs(d) < tiny ? tiny : d);
      c = std::fabs(c) < tiny ? tiny : c;
      h *= d * c;
    }
    if (std::fabs(d * c - 1) < 1e-18L) break;
  }
  return h;
}

long double IncompleteBeta(long double a, long double b, long double x) {
  if (x <= 0) return 0;
  if (x >= 1) return 1;
  long double front = std::exp(std::lgamma(a + b) - std::lgamma(a) - std::lgamma(b) + a * std::log(x) + b * std::log1p(-x));
  return x < (a + 1) / (a + b + 2) ? front * BetaFraction(a, b, x) / a : 1 - front * BetaFraction(b, a, 1 - x) / b;
}

// The quantile by bisection on that distribution: the bracket [0, 1] is
// doubled until it holds p, then halved until it is as narrow as a double.
double ExactF(double p, double v1, double v2) {
  auto below = [&](long double x) { return IncompleteBeta(v1 / 2, v2 / 2, v1 * x / (v1 * x + v2)) < p; };
  long double lo = 0, hi = 1;
  while (below(hi)) lo = hi, hi *= 2;
  for (int round = 0; round < 200 && hi - lo > 1e-16L * hi; ++round) {
    long double mid = (lo + hi) / 2;
    (below(mid) ? lo : hi) = mid;
  }
  return static_cast<double>((lo + hi) / 2);
}

TEST(FValue, TheReferenceQuantileGivesThePrintedTables) {
  // Biometrika Tables for Statisticians I (Pearson & Hartley), table 18:
  // upper 5, 1 and 0.1 per cent points of F.
  EXPECT_NEAR(ExactF(0.95, 1, 10), 4.96, 0.005);
  EXPECT_NEAR(ExactF(0.99, 1, 1), 4052, 0.5);
  EXPECT_NEAR(ExactF(0.999, 2, 4), 61.25, 0.005);
  EXPECT_NEAR(ExactF(0.99, 5, 20), 4.10, 0.005);
  EXPECT_NEAR(ExactF(0.5, 7, 7), 1.0, 1e-12);  // F and 1/F alike when v1 = v2
}

// Over the levels and degrees of freedom that tables and analyses use.
// Newton's steps alone missed 62 of these by more than 1%: NaN at P = 0.5,
// FValue(0.99, 1, 1) = 2652 for 4052, FValue(0.999, 2, 4) = -4.22 for 61.25.
// What remains is FProbability's own coarse tolerance, largest at large v2.
TEST(FValue, AgreesWithTheExactQuantileWithinOnePercentOverTheTableGrid) {
  int cases = 0;
  for (double p : {0.5, 0.75, 0.9, 0.95, 0.99, 0.999})
    for (double v1 : {1, 2, 3, 4, 5, 6, 8, 10, 20, 60, 500})
      for (double v2 : {1, 2, 3, 4, 5, 6, 8, 10, 12, 20, 30, 60, 120, 500}) {
        double exact = ExactF(p, v1, v2);
        float f = FValue(static_cast<float>(p), static_cast<float>(v1), static_cast<float>(v2));
        EXPECT_NEAR(f / exact, 1.0, 0.01) << "FValue(" << p << ", " << v1 << ", " << v2 << ") = " << f;
        ++cases;
      }
  EXPECT_EQ(cases, 924);
}

// Where Newton's steps already land within 1e-4 of P their result stands as
// it always has, to the bit: these are the values the steps alone gave, in
// every level of the grid.
TEST(FValue, KeepsTheNewtonResultWhereItHolds) {
  EXPECT_EQ(FValue(0.95f, 1, 10), 4.9646254f);
  EXPECT_EQ(FValue(0.9f, 1, 8), 3.45789f);
  EXPECT_EQ(FValue(0.9f, 3, 12), 2.6053846f);
  EXPECT_EQ(FValue(0.99f, 4, 20), 4.43069601f);
  EXPECT_EQ(FValue(0.999f, 10, 30), 4.23879957f);
  EXPECT_EQ(FValue(0.75f, 3, 5), 1.88453674f);
  EXPECT_EQ(FValue(0.5f, 1, 10), 0.489736974f);
  EXPECT_EQ(FValue(0.95f, 500, 500), 1.15862894f);
}

// Both would otherwise loop for ever: the series on NaN, Newton on its steps.
TEST(FValue, AndFProbabilityGiveNaNOutsideTheirDomain) {
  EXPECT_TRUE(std::isnan(FProbability(-1.0f, 3, 10)));
  EXPECT_TRUE(std::isnan(FProbability(std::nanf(""), 3, 10)));
  EXPECT_TRUE(std::isnan(FProbability(2.0f, 0, 10)));
  EXPECT_TRUE(std::isnan(FValue(1.0f, 3, 10)));
  EXPECT_TRUE(std::isnan(FValue(0.95f, 0, 10)));
}

TEST(tProbability, GivesTheTTableAndItsClosedForms) {
  EXPECT_NEAR(tProbability(2.228, 10), 0.975, 1e-4);
  EXPECT_NEAR(tProbability(3.182, 3), 0.975, 1e-4);
  for (int v = 1; v <= 9; ++v) {
    EXPECT_EQ(tProbability(0, v), 0.5) << v;
    EXPECT_NEAR(tProbability(-1.7, v), 1.0 - tProbability(1.7, v), 1e-15) << v;
  }
  // v = 1 is the Cauchy distribution; the 2/pi of the series is held in 32 bits.
  for (double t : {-3.0, 0.5, 1.0, 12.0}) {
    EXPECT_NEAR(tProbability(t, 1), std::atan(t) / std::numbers::pi + 0.5, 1e-7) << t;
    EXPECT_NEAR(tProbability(t, 2), 0.5 + t / (2.0 * std::sqrt(2.0 + t * t)), 1e-15) << t;
  }
}

}  // namespace
}  // namespace kestrow
