// FValue: the start is E. Paulson's normal approximation to F ("An
// approximate normalization of the analysis of variance distribution",
// Ann. Math. Statist. 13, 1942), the cube of the root of the quadratic that
// his Wilson-Hilferty form gives (Abramowitz & Stegun 26.6.15). With v2 at
// most 3 that form is poor in the tail, so the deviate is first shrunk by a
// polynomial in z / v2^0.75. Newton steps on FProbability, with a
// central-difference slope over 0.01, then refine the start.
// All figures are 32-bit.
#include "stats/FValue.h"

#include <cmath>

#include "stats/FProbability.h"
#include "stats/Normal.h"

namespace kestrow {

// The Newton loop stops when a step is at most 0.0001. Non-finite input (a p
// of 1, a degree of freedom of 0) would step forever on NaN, so a step that
// is not finite, or the thousandth round, ends the loop with the x reached.
static constexpr int MAX_NEWTON_ROUNDS = 1000;

float FValue(float p, float v1, float v2) {
  float z = NormalValue(p);
  if (v2 <= 3.0f) {
    float t = static_cast<float>(z / std::pow(v2, 0.75));
    z = static_cast<float>(z * (1.1581 - t * (t * (0.0027 * t + 0.0042) + 0.2296)));
  }
  float a = 2.0f / (9.0f * v1);
  float b = 2.0f / (9.0f * v2);
  float s = z * z;
  float qa = (b - s - 2.0f) * b + 1.0f;
  float qb = a + b - a * b - 1.0f;
  float qc = (a - s - 2.0f) * a + 1.0f;
  float x = (std::sqrt(qb * qb - qa * qc) - qb) / qa;
  x = x * x * x;

  for (int round = 0; round < MAX_NEWTON_ROUNDS; ++round) {
    float p0 = FProbability(x, v1, v2) - p;
    float slope = (FProbability(x + 0.005f, v1, v2) - FProbability(x - 0.005f, v1, v2)) / 0.01f;
    float next = x - p0 / slope;
    if (!std::isfinite(next)) return x;
    if (std::fabs(next - x) <= 0.0001f) return next;
    x = next;
  }
  return x;
}

}  // namespace kestrow
