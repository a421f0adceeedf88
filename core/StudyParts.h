// The small records a study is made of.
#pragma once

#include <cstdint>
#include <string>

namespace kestrow {

// A factor as a study uses it: the key of the problem's factor.
struct Item {
  std::string sKey;
};

// A response variable as a study uses it, with its transform.
struct StudyRespVar {
  std::string sKey;       // key of the problem's response variable
  std::int16_t iType = 0; // transform code, 0 none
  float fParam1 = 0;      // transform parameters
  float fParam2 = 0;
  void Clear() { *this = StudyRespVar(); }
};

// A note on the data cell of a run and replication.
struct Note {
  std::int16_t iRun = 0;
  std::int16_t iRep = 0;
  std::string sText;
};

// One term of a regression model.
struct Rterm {
  std::string sTerm;
  float fBeta = 0;
  float fValue = 0;
};

}  // namespace kestrow
