// FValue: the start is E. Paulson's normal approximation to F ("An
// approximate normalization of the analysis of variance distribution",
// Ann. Math. Statist. 13, 1942), the cube of the root of the quadratic that
// his Wilson-Hilferty form gives (Abramowitz & Stegun 26.6.15). With v2 at
// most 3 that form is poor in the tail, so the deviate is first shrunk by a
// polynomial in z / v2^0.75. Newton steps on FProbability, with a
// central-difference slope over 0.01, then refine the start.
//
// The steps fail in places: at P = 0.5 the slope can vanish, far in a heavy
// tail the density is too small for the 0.01 difference to see, and a step
// can leave the domain (FValue(0.999, 2, 4) stepped to -4.2, FValue(0.99, 1,
// 1) stopped at 2652 for 4052). A result is kept only when FProbability of
// it is within 1e-4 of P; otherwise FProbability(x) = P is solved by
// bisection on a bracket, which cannot leave the domain and needs no slope.
// All figures are 32-bit.
#include "stats/FValue.h"

#include <cmath>
#include <limits>

#include "stats/FProbability.h"
#include "stats/Normal.h"

namespace kestrow {
namespace {

// The Newton loop stops when a step is at most 0.0001. Non-finite input (a p
// of 1, a degree of freedom of 0) would step forever on NaN, so a step that
// is not finite, or the thousandth round, ends the loop with the x reached.
constexpr int MAX_NEWTON_ROUNDS = 1000;

// How far FProbability of a kept Newton result may miss P.
constexpr float NEWTON_TOLERANCE = 1e-4f;

// Paulson's start and the Newton steps; converged says a step came within
// 0.0001.
float PaulsonNewton(float p, float v1, float v2, bool& converged) {
  converged = false;
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
    if (std::fabs(next - x) <= 0.0001f) {
      converged = true;
      return next;
    }
    x = next;
  }
  return x;
}

// The x with FProbability(x) = p by bisection: FProbability rises with x
// from 0 at x = 0, so the bracket starts at 0 and doubles its upper end
// until it holds p. When not even the largest float reaches p (the series'
// own rounding near 1), no finite F is the answer, and infinity keeps any
// test against it from passing.
float Bisect(float p, float v1, float v2) {
  float lo = 0.0f, hi = 1.0f;
  while (FProbability(hi, v1, v2) < p) {
    lo = hi;
    hi *= 2.0f;
    if (!std::isfinite(hi)) return std::numeric_limits<float>::infinity();
  }
  for (int round = 0; round < 200; ++round) {
    float mid = lo + (hi - lo) / 2.0f;
    if (mid <= lo || mid >= hi) break;  // as near as floats can come
    if (FProbability(mid, v1, v2) < p)
      lo = mid;
    else
      hi = mid;
  }
  return hi;
}

}  // namespace

float FValue(float p, float v1, float v2) {
  bool converged = false;
  float x = PaulsonNewton(p, v1, v2, converged);
  // Outside the domain there is nothing to solve; the steps give NaN there.
  if (!(p > 0.0f && p < 1.0f && v1 > 0.0f && v2 > 0.0f && std::isfinite(v1) && std::isfinite(v2))) return x;
  if (converged && x > 0.0f && std::fabs(FProbability(x, v1, v2) - p) <= NEWTON_TOLERANCE) return x;
  return Bisect(p, v1, v2);
}

}  // namespace kestrow
