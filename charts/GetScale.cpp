// GetScale: an axis aims at seven intervals; the step is the interval's
// order of magnitude times 1, 2 or 5, whichever the interval's mantissa
// passes, each comparison strict. The upper limit is reached by adding the
// step to the rounded-down lower limit in 32 bits, so the rounding of that
// sum stays in the figure.
#include "charts/GetScale.h"

#include <cmath>
#include <utility>

#include "charts/Canvas.h"

namespace kestrow {

std::string GetScale(float& fmin, float& fmax, float& fMajor, float& fMinor) {
  // No number at all is no range: the unit interval stands in for it.
  if (!std::isfinite(fmin) || !std::isfinite(fmax)) {
    fmin = 0;
    fmax = 1;
  }
  if (fmin > fmax) std::swap(fmin, fmax);
  if (fmin == fmax) {
    fmin -= 1;
    fmax += 1;
    // Far from zero 1 is below a float's step: move by the step instead.
    if (fmin == fmax) {
      fmin = std::nextafter(fmin, -INFINITY);
      fmax = std::nextafter(fmax, INFINITY);
    }
  }
  float r = (fmax - fmin) / 7.0f;
  if (!std::isfinite(r) || r <= 0) r = std::nextafter(0.0f, 1.0f);
  int e = static_cast<int>(std::floor(std::log10(static_cast<double>(r))));
  auto m = static_cast<float>(static_cast<double>(r) / std::pow(10.0, e));
  float mantissa;
  int minors;
  if (m > 5) {
    mantissa = 1;
    minors = 5;
    ++e;
  } else if (m > 2) {
    mantissa = 5;
    minors = 5;
  } else if (m > 1) {
    mantissa = 2;
    minors = 2;
  } else {
    mantissa = 1;
    minors = 2;
  }
  auto step = static_cast<float>(mantissa * std::pow(10.0, e));
  float oldMax = fmax;
  fmin = std::floor(fmin / step) * step;
  float v = fmin;
  // At most a few steps as a rule; a step a float cannot add any more (far
  // from zero) ends the walk where it stands.
  for (int round = 0; v < oldMax && round < 1000; ++round) {
    float next = v + step;
    if (next == v) break;
    v = next;
  }
  fmax = v < oldMax ? oldMax : v;
  fMajor = step;
  fMinor = step / static_cast<float>(minors);
  std::string format = "#########0";
  if (e < 0) format += "." + std::string(static_cast<std::size_t>(-e), '0');
  return format;
}

int FormatDecimalsOf(const std::string& format) {
  std::size_t point = format.find('.');
  return point == std::string::npos ? 0 : static_cast<int>(format.size() - point - 1);
}

Colour RainbowColour(int iPercent) {
  double p = gSettings.RainbowScheme ? 100 - iPercent : iPercent;
  auto c = [](double v) { return static_cast<int>(std::nearbyint(v < 0 ? 0 : v > 255 ? 255 : v)); };
  if (p < 25) return RGB(255, c(255 * p / 25), 0);
  if (p < 50) return RGB(c(255 * (50 - p) / 25), 255, 0);
  if (p >= 75) return RGB(c(255 * (p - 75) / 25), 0, 255);
  return RGB(0, c(255 * (75 - p) / 25), c(255 * (p - 50) / 25));
}

}  // namespace kestrow
