// One estimable column of a design. Its coefficient at each run is packed in
// two characters of sLevels: whole coefficients within +-99, and fractions to
// three decimals. A whole coefficient of 100 or more cannot be held: it would
// read back divided by 1000. That limit is the file format's own.
//
// Interactions of multi-level factors reach it (3 x 35 = 105 in a 4 x 8
// design, 35 x 35 in an 8 x 8). Such a column is packed divided by a common
// factor, as near as the packing allows, and ProductOf names the main
// contrasts whose product it is; Study::GetContrastEntry then gives the
// column exactly, unscaled, from those main contrasts.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace kestrow {

class Study;

class Contrast {
 public:
  std::string sName;     // the contrast's letter, or the word of an interaction
  std::string sMain;     // levels on the two sides of a main contrast, as "12v3"
  std::int16_t iMain = 0;  // factor of a main-effect contrast; 0 or below for an interaction
  std::string sLevels;   // packed coefficients, two characters a run; a byte string
  std::string sAliases;  // comma list of the words this contrast is aliased with
  bool bPooled = false;  // pooled into error
  float fCSS = 0;        // computed: sum of squares, effect, sum; not stored
  float fChat = 0;
  float fCSum = 0;
  // Not stored: the main contrasts (by position) whose product this column
  // is, when it holds too large a coefficient to be packed as it stands.
  std::vector<int> ProductOf;

  void Clear() { *this = Contrast(); }

  // The letter of index i of the contrast alphabet (empty beyond the 52nd).
  static std::string GetName(int i);
  void SetName(int i) { sName = GetName(i); }

  void InitLevels(int n);
  // Inline: a large design packs and reads millions of coefficients.
  void fSetLevel(int run, float x) {
    // A value beyond a 16-bit code cannot be packed at all.
    if (run < 1 || !(std::fabs(x) < 24000.0f)) return;
    int code;
    if (x == std::trunc(x)) {
      code = static_cast<int>(x) + 8192;
    } else {
      // Rounded half to even, as the conversion to a 16-bit integer does.
      code = static_cast<int>(std::nearbyint(x * 1000.0f + 8192.0f));
    }
    std::size_t at = static_cast<std::size_t>(2 * run - 2);
    while (sLevels.size() < at + 2) sLevels.append("\0@", 2);  // the coefficient 0
    sLevels[at] = static_cast<char>(code & 127);
    sLevels[at + 1] = static_cast<char>(code / 128);
  }
  float fGetLevel(int run) const {
    std::size_t at = static_cast<std::size_t>(2 * run - 2);
    if (run < 1 || sLevels.size() < at + 2) return 0.0f;
    int v = static_cast<unsigned char>(sLevels[at]) + static_cast<unsigned char>(sLevels[at + 1]) * 128 - 8192;
    if (std::abs(v) < 100) return static_cast<float>(v);
    return static_cast<float>(v) / 1000.0f;
  }

  // The nearest value to x that packs and reads back unchanged: a whole
  // number within +-99, a fraction of three decimals from 0.1 to 8.192 in
  // magnitude (to 24.575 above zero), or 0.
  static float NearestPackable(double x);

  // sMain in words: each digit the name of that level of factor iMain of the
  // study, ", " between two names, "v" as " v ".
  std::string GetMainInteraction(const Study& study) const;
};

}  // namespace kestrow
