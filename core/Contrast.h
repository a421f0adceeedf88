// One estimable column of a design. Its coefficient at each run is packed in
// two characters of sLevels: whole coefficients within +-99, and fractions to
// three decimals. A whole coefficient of 100 or more cannot be held: it would
// read back divided by 1000. That limit is the file format's own.
#pragma once

#include <cstdint>
#include <string>

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

  void Clear() { *this = Contrast(); }

  // The letter of index i of the contrast alphabet (empty beyond the 52nd).
  static std::string GetName(int i);
  void SetName(int i) { sName = GetName(i); }

  void InitLevels(int n);
  void fSetLevel(int run, float x);
  float fGetLevel(int run) const;

  // sMain in words: each digit the name of that level of factor iMain of the
  // study, ", " between two names, "v" as " v ".
  std::string GetMainInteraction(const Study& study) const;
};

}  // namespace kestrow
