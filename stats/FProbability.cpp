// FProbability: the F distribution as the incomplete beta ratio
//   I_x(v2/2, v1/2) with x = v2 / (v1 F + v2),
// summed by the series of K. L. Majumder and G. P. Bhattacharjee, "The
// incomplete beta integral", Applied Statistics algorithm AS 63 (1973),
// in 32-bit floats.
// LogGamma: the six-term series of C. Lanczos, "A precision approximation of
// the gamma function", SIAM J. Numer. Anal. B 1 (1964), with the
// coefficients of Numerical Recipes (gammln), good to about 2e-10 relative.
// The tolerances are deliberately coarse: the ANOVA tables that users compare
// with printed results were made with them.
#include "stats/FProbability.h"

#include <cmath>
#include <limits>

namespace kestrow {
namespace {

// ln Gamma(z) for z > 0.
float LogGamma(float z) {
  float x = z - 1.0f;
  float w = x + 5.5f;
  w = static_cast<float>((x + 0.5) * std::log(w) - w);
  // The series is summed term by term, each partial sum held in 32 bits.
  float s = 1.0f;
  s = static_cast<float>(s + 76.18009173 / (x + 1.0f));
  s = static_cast<float>(s - 86.50532033 / (x + 2.0f));
  s = static_cast<float>(s + 24.01409822 / (x + 3.0f));
  s = static_cast<float>(s - 1.231739516 / (x + 4.0f));
  s = static_cast<float>(s + 0.00120858 / (x + 5.0f));
  s = static_cast<float>(s - 0.000005364 / (x + 6.0f));
  return static_cast<float>(w + std::log(2.506628275 * s));
}

}  // namespace

float FProbability(float f, float v1, float v2) {
  // Domain: finite positive degrees of freedom and F at least 0 (a beta
  // variable in [0, 1]). Outside it the series would never end; NaN says so.
  if (!(f >= 0.0f && v1 > 0.0f && v2 > 0.0f && std::isfinite(v1) && std::isfinite(v2)))
    return std::numeric_limits<float>::quiet_NaN();

  const float acu = v1 == 1.0f ? 0.00001f : 0.001f;
  float p = v1 / 2.0f;
  float q = v2 / 2.0f;
  float psq = p + q;
  float beta = LogGamma(p) + LogGamma(q) - LogGamma(psq);
  float x = v2 / (v1 * f + v2);

  // The series converges fast only for the smaller tail of the beta
  // variable; the other tail is summed and taken from 1.
  float pp, qq, xx, cx;
  bool complement;
  if (psq * x <= q) {
    pp = q;
    qq = p;
    xx = x;
    cx = 1.0f - x;
    complement = true;
  } else {
    pp = p;
    qq = q;
    xx = 1.0f - x;
    cx = x;
    complement = false;
  }

  float term = 1.0f;
  float ai = 1.0f;
  float sum = 1.0f;
  int ns = static_cast<int>(std::floor(cx * psq + qq));
  float rx = xx / cx;
  float temp = qq - ai;
  if (ns == 0) rx = xx;
  // Soper's reduction: ns rounds use the ratio xx/cx, after which the
  // terms run on with psq growing by one each round.
  for (;;) {
    term = term * temp * rx / (pp + ai);
    sum = sum + term;
    temp = std::fabs(term);
    if (temp <= acu * sum && temp <= acu) break;
    ai = ai + 1.0f;
    ns = ns - 1;
    if (ns >= 0) {
      temp = qq - ai;
      if (ns == 0) rx = xx;
    } else {
      temp = psq;
      psq = psq + 1.0f;
    }
  }

  sum = static_cast<float>(sum * std::exp(pp * std::log(xx) + (qq - 1.0) * std::log(cx) - beta) / pp);
  return complement ? 1.0f - sum : sum;
}

}  // namespace kestrow
