// Significant-figure formatting: the value is scaled so that the wanted digits
// stand before the point, rounded half to even, and scaled back.
// Fixed-decimal formatting: the mask "########0.000", fixed notation with no
// grouping.
#include "core/Formatters.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

#include "core/Sentinels.h"
#include "core/Settings.h"
#include "core/Text.h"

namespace kestrow {

std::string FormatSF(int digits, float value) {
  if (value == MISSING_VALUE) return "";
  // No logarithm and no rounding for these: they print as they are.
  if (!std::isfinite(value)) return ShortestText(value);
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

// The mask rounds the number as it is written, the shortest text of the
// float, half away from zero: 2.675 prints as 2.68 with two decimals even
// though the nearest float lies just below 2.675. A value that rounds to
// zero prints without a sign.
std::string FormatDecimals(int decimals, float value) {
  if (value == MISSING_VALUE) return "";
  if (decimals < 0) decimals = 0;
  if (!std::isfinite(value)) return ShortestText(value);
  char buf[32];
  auto res = std::to_chars(buf, buf + sizeof buf, std::fabs(value), std::chars_format::scientific);
  std::string sci(buf, res.ptr);
  std::size_t e = sci.find('e');
  std::string digits;
  for (std::size_t i = 0; i < e; ++i)
    if (sci[i] != '.') digits += sci[i];
  int exponent = std::atoi(sci.c_str() + e + 1);

  // Lay the digits out on a fixed grid: `whole` digits before the point
  // (at least one) and `decimals` after it, plus one guard digit.
  int whole = exponent >= 0 ? exponent + 1 : 1;
  int lead = exponent >= 0 ? 0 : -exponent - 1;  // zeros between the point and the first digit
  std::string grid(static_cast<std::size_t>(whole + decimals + 1), '0');
  int start = exponent >= 0 ? 0 : whole + lead;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    std::size_t at = static_cast<std::size_t>(start) + i;
    if (at < grid.size()) grid[at] = digits[i];
  }
  bool roundUp = grid.back() >= '5';
  grid.pop_back();
  for (std::size_t i = grid.size(); roundUp && i-- > 0;) {
    if (grid[i] == '9') {
      grid[i] = '0';
    } else {
      ++grid[i];
      roundUp = false;
    }
  }
  if (roundUp) {
    grid.insert(grid.begin(), '1');
    ++whole;
  }

  std::string out = grid.substr(0, static_cast<std::size_t>(whole));
  if (decimals > 0) out += "." + grid.substr(static_cast<std::size_t>(whole));
  bool zero = grid.find_first_not_of('0') == std::string::npos;
  return (value < 0 && !zero ? "-" : "") + out;
}

std::string FormatP(int decimals, float p) {
  // Not a probability at all: nothing, rather than "<0.001".
  if (p == MISSING_VALUE || std::isnan(p)) return "";
  float smallest = static_cast<float>(std::pow(10.0, -decimals));
  if (p >= smallest) return FormatDecimals(decimals, p);
  return "<" + FormatDecimals(decimals, smallest);
}

}  // namespace kestrow
