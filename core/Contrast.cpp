#include "core/Contrast.h"

#include <cmath>

#include "core/Sentinels.h"
#include "core/Study.h"

namespace kestrow {

namespace {
constexpr char ZERO_LOW = 0;    // the coefficient 0 packs as the codes 0 and 64
constexpr char ZERO_HIGH = 64;
}  // namespace

std::string Contrast::GetName(int i) {
  if (i < 1 || i > 52) return "";
  return std::string(1, CONTRAST_ALPHABET[i - 1]);
}

void Contrast::InitLevels(int n) {
  sLevels.assign(static_cast<std::size_t>(n < 0 ? 0 : 2 * n), ZERO_LOW);
  for (std::size_t i = 1; i < sLevels.size(); i += 2) sLevels[i] = ZERO_HIGH;
}

float Contrast::NearestPackable(double x) {
  double best = 0;
  auto consider = [&](double candidate) {
    if (std::fabs(candidate - x) < std::fabs(best - x)) best = candidate;
  };
  double whole = std::nearbyint(x);
  if (std::fabs(whole) <= 99) consider(whole);
  // A fraction's code is its thousandths plus 8192, which must stay a 16-bit
  // code from 0 and read back as thousandths: 100 at least in magnitude.
  double thousandths = std::nearbyint(x * 1000);
  for (double k : {thousandths, std::copysign(100.0, x), -8192.0, 24575.0})
    if (std::fabs(k) >= 100 && k >= -8192 && k <= 24575) consider(k / 1000);
  return static_cast<float>(best);
}

std::string Contrast::GetMainInteraction(const Study& study) const {
  std::string out;
  bool lastWasName = false;
  std::string factorKey = study.GetFactorKey(iMain);
  for (char c : sMain) {
    if (c == 'v') {
      out += " v ";
      lastWasName = false;
    } else if (c >= '0' && c <= '9') {
      if (lastWasName) out += ", ";
      out += study.GetPFactorLevelName(factorKey, c - '0');
      lastWasName = true;
    }
  }
  return out;
}

}  // namespace kestrow
