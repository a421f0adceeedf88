// tProbability: the finite series of Abramowitz & Stegun 26.7.3 (v odd) and
// 26.7.4 (v even) for A(t|v), the probability of |T| <= t, in the angle
//   theta = arctan(t / sqrt(v)),
// turned into the lower tail as (A + 1) / 2; a negative t gives a negative
// A and so the lower tail as well.
// All figures are 64-bit, but for the factor 2/pi of the odd series, which
// is written as 1 - 0.36338022 with that constant in 32 bits.
#include "stats/tProbability.h"

#include <cmath>

namespace kestrow {

double tProbability(double t, int v) {
  constexpr float COMPLEMENT_OF_TWO_OVER_PI = 0.36338022f;
  double th = std::atan(t / std::sqrt(static_cast<double>(v)));
  double s = std::sin(th);
  double c = std::cos(th);
  int odd = v - 2 * (v / 2);

  double sum = 0.0;
  double term = 0.0;
  double a = 0.0;
  double b = 0.0;
  int rounds = 0;
  if (odd == 1) {
    // theta + sin theta (cos theta + 2/3 cos^3 theta + ...)
    sum = th;
    if (v > 1) {
      term = c * s;
      sum = th + term;
      if (v > 3) {
        rounds = (v - 3) / 2;
        a = 0.0;
        b = 1.0;
      }
    }
  } else {
    // sin theta (1 + 1/2 cos^2 theta + 1.3/(2.4) cos^4 theta + ...)
    sum = s;
    if (v == 2) return (sum + 1.0) * 0.5;
    term = s;
    rounds = (v - 2) / 2;
    a = -1.0;
    b = 0.0;
  }
  for (int i = 0; i < rounds; ++i) {
    a = a + 2.0;
    b = b + 2.0;
    term = term * c * c * a / b;
    sum = sum + term;
  }
  sum = sum * (1.0 - odd * static_cast<double>(COMPLEMENT_OF_TWO_OVER_PI));
  return (sum + 1.0) * 0.5;
}

}  // namespace kestrow
