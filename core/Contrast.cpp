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
