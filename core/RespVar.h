// A response variable: a measured output of the problem.
#pragma once

#include <ostream>
#include <string>

#include "core/Sentinels.h"

namespace kestrow {

class FileIO;

class RespVar {
 public:
  std::string sKey;   // "v2"
  std::string sName;
  std::string sAbbr;
  std::string sDesc;
  std::string sUnits;
  float fTarget = MISSING_VALUE;  // a number, TARGET_MAX, TARGET_MIN, or MISSING_VALUE: no target

  void Clear() { *this = RespVar(); }

  static constexpr std::size_t MIN_FILE_BYTES = 5 * 2 + 4;  // five strings and the target
  static constexpr std::size_t TAIL_BYTES = 4;              // the target, behind the last string
  bool fRead(FileIO& io);
  void fWrite(FileIO& io) const;
  void Export(std::ostream& out, int i) const;
};

}  // namespace kestrow
