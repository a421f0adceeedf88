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
  sLevels.clear();
  for (int r = 0; r < n; ++r) {
    sLevels += ZERO_LOW;
    sLevels += ZERO_HIGH;
  }
}

void Contrast::fSetLevel(int run, float x) {
  // A value beyond a 16-bit code cannot be packed at all.
  if (run < 1 || !(std::fabs(x) < 24000.0f)) return;
  int code;
  if (x == std::trunc(x)) {
    code = static_cast<int>(x) + 8192;
  } else {
    // Rounded half to even, as the conversion to a 16-bit integer does.
    float scaled = x * 1000.0f + 8192.0f;
    code = static_cast<int>(std::nearbyint(scaled));
  }
  while (sLevels.size() < static_cast<std::size_t>(2 * run)) {
    sLevels += ZERO_LOW;
    sLevels += ZERO_HIGH;
  }
  sLevels[static_cast<std::size_t>(2 * run - 2)] = static_cast<char>(code & 127);
  sLevels[static_cast<std::size_t>(2 * run - 1)] = static_cast<char>(code / 128);
}

float Contrast::fGetLevel(int run) const {
  if (run < 1 || sLevels.size() < static_cast<std::size_t>(2 * run)) return 0.0f;
  int low = static_cast<unsigned char>(sLevels[static_cast<std::size_t>(2 * run - 2)]);
  int high = static_cast<unsigned char>(sLevels[static_cast<std::size_t>(2 * run - 1)]);
  int v = low + high * 128 - 8192;
  if (std::abs(v) < 100) return static_cast<float>(v);
  return static_cast<float>(v) / 1000.0f;
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
