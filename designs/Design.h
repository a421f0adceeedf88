// One row of the design selection table.
#pragma once

#include <cstdint>
#include <string>

namespace kestrow {

struct Design {
  std::string sName;          // the grid's first column
  std::string sRuns;          // the run count, " -", or the text of the 500-run limit
  std::int16_t iFlag = 0;     // the design flags the study will get
  std::int16_t idbFlags = 0;  // Flags of a catalogue row, else 0
  std::int16_t iResolution = 0;  // resolution of a regular fraction, else 0
  std::string sInteractions;  // always empty
  std::string sTag;           // family code, or the recipe of a catalogue row
  std::string sTag2;          // the builder's argument
  bool bShowRuns = false;     // the design name gets the run-count prefix
};

}  // namespace kestrow
