// The scale rule of every automatic axis, and the rainbow colours.
#include <gtest/gtest.h>

#include <cmath>

#include "charts/Canvas.h"
#include "charts/GetScale.h"
#include "core/Settings.h"

namespace kestrow {
namespace {

struct Scaled {
  float fmin, fmax, major, minor;
  std::string format;
};

Scaled Scale(float lo, float hi) {
  Scaled s{lo, hi, 0, 0, ""};
  s.format = GetScale(s.fmin, s.fmax, s.major, s.minor);
  return s;
}

// The worked cases of the rule: seven intervals aimed at, the mantissa of
// the interval tested against 5, 2 and 1 strictly, the range rounded out to
// whole steps, and as many decimals in the format as the step needs.
TEST(GetScale, NiceStepsMinorDivisionsAndFormatsOfTheWorkedCases) {
  Scaled a = Scale(0, 70);  // r = 10, m = 1 exactly: mantissa 1, two minors
  EXPECT_EQ(a.major, 10);
  EXPECT_EQ(a.minor, 5);
  EXPECT_EQ(a.fmax, 70);
  EXPECT_EQ(a.format, "#########0");

  Scaled b = Scale(0, 7);
  EXPECT_EQ(b.major, 1);
  EXPECT_EQ(b.minor, 0.5f);
  EXPECT_EQ(b.format, "#########0");

  Scaled c = Scale(0, 1);  // r = 0.143, m = 1.43: mantissa 2
  EXPECT_FLOAT_EQ(c.major, 0.2f);
  EXPECT_FLOAT_EQ(c.minor, 0.1f);
  EXPECT_EQ(c.format, "#########0.0");
  EXPECT_NEAR(c.fmax, 1, 1e-6);

  Scaled d = Scale(0, 36);  // r = 5.14, m above 5: mantissa 1 a decade up, five minors
  EXPECT_EQ(d.major, 10);
  EXPECT_EQ(d.minor, 2);
  EXPECT_EQ(d.fmin, 0);
  EXPECT_EQ(d.fmax, 40);

  Scaled e = Scale(3, 3);  // moved apart to 2..4 first: r = 0.286, mantissa 5
  EXPECT_EQ(e.fmin, 2);
  EXPECT_EQ(e.fmax, 4);
  EXPECT_EQ(e.major, 0.5f);
  EXPECT_FLOAT_EQ(e.minor, 0.1f);

  Scaled f = Scale(-3.2f, 1);  // a negative start rounds down
  EXPECT_EQ(f.fmin, -4);
  EXPECT_EQ(f.fmax, 1);
  EXPECT_EQ(f.major, 1);
  EXPECT_FLOAT_EQ(f.minor, 0.2f);

  EXPECT_EQ(FormatDecimalsOf(Scale(0, 0.05f).format), 2);  // m = 7.1: step 0.01
  EXPECT_EQ(FormatDecimalsOf("#########0"), 0);
}

// Far from zero, tiny, reversed, equal where 1 is below a float's spacing,
// and no number at all: every range comes back ordered, finite, with a step
// above 0 that the walk could add, and covering the data.
TEST(GetScale, RangesFarFromTheTextbookStillGiveAnOrderedFiniteAxis) {
  const float cases[][2] = {{1e9f, 1e9f + 640}, {1e9f, 1e9f}, {-1e9f, -1e9f}, {1e-9f, 1e-8f}, {5, -5},
                            {0, 0},           {3e38f, 3e38f}, {-1e-30f, 1e-30f}, {NAN, 1}, {0, INFINITY}};
  for (const auto& c : cases) {
    Scaled s = Scale(c[0], c[1]);
    SCOPED_TRACE(std::to_string(c[0]) + " .. " + std::to_string(c[1]));
    EXPECT_TRUE(std::isfinite(s.fmin) && std::isfinite(s.fmax) && std::isfinite(s.major));
    EXPECT_LT(s.fmin, s.fmax);
    EXPECT_GT(s.major, 0);
    EXPECT_GT(s.minor, 0);
    if (std::isfinite(c[0]) && std::isfinite(c[1])) {
      EXPECT_LE(s.fmin, std::min(c[0], c[1]));
      EXPECT_GE(s.fmax, std::max(c[0], c[1]));
    }
  }
  // Around 1e9 the step stays a nice one and the range whole steps of it.
  Scaled big = Scale(1e9f, 1e9f + 640);
  EXPECT_EQ(big.major, 100);
  EXPECT_EQ(big.fmin, 1e9f);
  EXPECT_EQ(big.fmax, 1e9f + 640);
  Scaled tiny = Scale(1e-9f, 1e-8f);
  EXPECT_EQ(FormatDecimalsOf(tiny.format), 9);
}

// The rainbow's bands at their edges, rounded components, and the reversed
// scheme.
TEST(RainbowColour, BandsAndTheReversedScheme) {
  gSettings = Settings();
  gSettings.RainbowScheme = false;
  EXPECT_EQ(RainbowColour(0), RGB(255, 0, 0));
  EXPECT_EQ(RainbowColour(10), RGB(255, 102, 0));
  EXPECT_EQ(RainbowColour(25), RGB(255, 255, 0));
  EXPECT_EQ(RainbowColour(30), RGB(204, 255, 0));
  EXPECT_EQ(RainbowColour(50), RGB(0, 255, 0));
  EXPECT_EQ(RainbowColour(60), RGB(0, 153, 102));
  EXPECT_EQ(RainbowColour(75), RGB(0, 0, 255));
  EXPECT_EQ(RainbowColour(100), RGB(255, 0, 255));
  EXPECT_EQ(RainbowColour(1), RGB(255, 10, 0));  // 10.2 rounds down
  gSettings.RainbowScheme = true;
  EXPECT_EQ(RainbowColour(100), RGB(255, 0, 0));
  EXPECT_EQ(RainbowColour(40), RGB(0, 153, 102));
  gSettings = Settings();
}

}  // namespace
}  // namespace kestrow
