// One level of a factor.
#pragma once

#include <string>

namespace kestrow {

struct Level {
  std::string sName;  // at most 6 characters; for a numeric factor the level's value as text
  std::string sDesc;  // description
  float fCode = 0;    // what was entered in the coding column, read as a target text
};

}  // namespace kestrow
