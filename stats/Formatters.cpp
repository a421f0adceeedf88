// Significant-figure formatting: the value is scaled so that the wanted digits
// stand before the point, rounded half to even, and scaled back.
#include "stats/Formatters.h"

#include <cmath>

#include "core/Sentinels.h"
#include "core/Settings.h"
#include "core/Text.h"

namespace kestrow {

std::string FormatSF(int digits, float value) {
  if (value == MISSING_VALUE) return "";
  double v = value;
  int e = 0;
  // Zero has no logarithm: e stays 0.
  if (v != 0.0) e = static_cast<int>(std::floor(std::log10(std::fabs(v))));
  double scale = std::pow(10.0, digits - e - 1);
  double rounded = std::nearbyint(v * scale) / scale;
  float result = static_cast<float>(rounded);
  if (std::fabs(result) < 0.00001f) return "0";
  return ShortestText(result);
}

std::string FormatNumSF(float value) { return FormatSF(gSettings.NumSF, value); }

}  // namespace kestrow
