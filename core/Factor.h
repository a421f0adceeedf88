// A factor: an input of the problem with 2 to 8 levels.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

#include "core/Collection.h"
#include "core/Level.h"

namespace kestrow {

class FileIO;

// Bits of Factor::iFlag.
inline constexpr std::int16_t FACTOR_DISCRETE = 1;  // "Factor is discrete / non-numeric"
inline constexpr std::int16_t FACTOR_NOISE = 2;     // "This is a known, controllable noise factor"

class Factor {
 public:
  std::string sKey;  // "f3"
  std::string sName;
  std::string sAbbr;
  std::string sDesc;
  std::int16_t iFlag = 0;
  Collection<Level> Levels;  // not keyed

  void Clear() { *this = Factor(); }

  bool IsNumeric() const { return (iFlag & FACTOR_DISCRETE) == 0; }

  // Lowest and highest level value; the scan starts from 1.0E+9 and -1.0E+9,
  // so a factor without levels gives those.
  double GetMinLevel() const;
  double GetMaxLevel() const;

  // Coding takes the mean of the level values as the centre (not the middle of
  // the range), so unevenly spaced levels do not code to -1 and +1. A
  // non-numeric factor gives MISSING_VALUE.
  float GetCoded(int i) const;
  float ValueToCode(double x) const;
  float GetDeCoded(double c) const;

  // Selection sort of the levels by value, ascending; the contents of the
  // levels are swapped, and a later equal value does not displace an earlier.
  void SortNumericLevels();

  std::string sIsNuisance() const { return (iFlag & FACTOR_NOISE) ? "Yes" : "No"; }
  std::string sIsNumeric() const { return (iFlag & FACTOR_DISCRETE) ? "No" : "Yes"; }

  // GetDeCoded without its rounding to a float.
  double DeCodedValue(double c) const;

  static constexpr std::size_t MIN_FILE_BYTES = 4 * 2 + 2 + 2;  // strings, flag, level count
  static constexpr std::size_t TAIL_BYTES = 2 + 2;               // flag and level count, behind the last string
  bool fRead(FileIO& io);
  void fWrite(FileIO& io) const;
  void Export(std::ostream& out, int i) const;

 private:
  double Mean() const;
};

}  // namespace kestrow
