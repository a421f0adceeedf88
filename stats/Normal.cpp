// NormalProbability: Abramowitz & Stegun 26.2.17, the five-term polynomial in
//   t = 1 / (1 + 0.2316419 |z|) times the normal density.
// NormalValue: Abramowitz & Stegun 26.2.23, the rational approximation in
//   t = sqrt(-2 ln q) with q the smaller tail.
// The published constants are kept as printed; t of the tail and the two
// polynomials of the deviate are held in 32 bits, as the printed tables that
// users compare with were made that way.
#include "stats/Normal.h"

#include <cmath>

namespace kestrow {

float NormalProbability(float z) {
  float a = std::fabs(z);
  float t = static_cast<float>(1.0 / (1.0 + 0.2316419 * a));
  double density = 0.39894228 * std::exp(-a * a / 2.0);
  double tail =
      density * t * (0.31938153 + t * (-0.356563782 + t * (1.781477937 + t * (-1.821255978 + 1.330274429 * t))));
  // z = 0 takes the tail formula too: the polynomial gives 0.5 there only to
  // its own accuracy.
  return static_cast<float>(z <= 0 ? tail : 1.0 - tail);
}

float NormalValue(float p) {
  if (p == 0.5f) return 0.0f;
  double q = 0.5 - std::fabs(p - 0.5);
  double t = std::sqrt(-2.0 * std::log(q));
  float numerator = static_cast<float>(2.515517 + t * (0.802853 + 0.010328 * t));
  float denominator = static_cast<float>(1.0 + t * (1.432788 + t * (0.189269 + 0.001308 * t)));
  double deviate = t - static_cast<double>(numerator) / denominator;
  return static_cast<float>(p < 0.5f ? -deviate : deviate);
}

}  // namespace kestrow
