#include "core/Factor.h"

#include <algorithm>
#include <utility>

#include "core/FileIO.h"
#include "core/Sentinels.h"
#include "core/Text.h"

namespace kestrow {

double Factor::GetMinLevel() const {
  double lowest = 1.0e9;
  for (const Level& l : Levels) lowest = std::min(lowest, Val(l.sName));
  return lowest;
}

double Factor::GetMaxLevel() const {
  double highest = -1.0e9;
  for (const Level& l : Levels) highest = std::max(highest, Val(l.sName));
  return highest;
}

double Factor::Mean() const {
  if (Levels.Empty()) return 0.0;
  double sum = 0.0;
  for (const Level& l : Levels) sum += Val(l.sName);
  return sum / Levels.Count();
}

float Factor::GetCoded(int i) const {
  if (!IsNumeric() || i < 1 || i > Levels.Count()) return MISSING_VALUE;
  return ValueToCode(Val(Levels(i).sName));
}

float Factor::ValueToCode(double x) const {
  if (!IsNumeric()) return MISSING_VALUE;
  double range = GetMaxLevel() - GetMinLevel();
  if (range == 0.0) return MISSING_VALUE;
  return static_cast<float>(2.0 * (x - Mean()) / range);
}

float Factor::GetDeCoded(double c) const {
  if (!IsNumeric()) return MISSING_VALUE;
  return static_cast<float>(DeCodedValue(c));
}

double Factor::DeCodedValue(double c) const { return (GetMaxLevel() - GetMinLevel()) * c / 2.0 + Mean(); }

void Factor::SortNumericLevels() {
  int n = Levels.Count();
  for (int i = 1; i < n; ++i) {
    double lowest = 1.0e9;
    int at = i;
    for (int j = i; j <= n; ++j) {
      double v = Val(Levels(j).sName);
      if (v < lowest) {
        lowest = v;
        at = j;
      }
    }
    if (at != i) std::swap(Levels(i), Levels(at));
  }
}

bool Factor::fRead(FileIO& io) {
  bool ok = true;
  for (std::string* field : {&sKey, &sName, &sAbbr, &sDesc}) {
    *field = io.GetString();
    if (IsReadFailure(*field)) ok = false;
  }
  iFlag = io.GetInt();
  std::int16_t count = io.GetInt();
  // Each level takes at least two empty strings and a float; the last one's
  // float may be cut off by the end of the file.
  if (!io.CanHold(count, 8, 4)) return false;
  for (int i = 0; i < count; ++i) {
    Level level;
    level.sName = io.GetString();
    if (IsReadFailure(level.sName)) return false;
    level.sDesc = io.GetString();
    if (IsReadFailure(level.sDesc)) return false;
    level.fCode = io.GetFloat();
    Levels.Add(std::move(level));
  }
  return ok;
}

void Factor::fWrite(FileIO& io) const {
  for (const std::string* field : {&sKey, &sName, &sAbbr, &sDesc}) io.PutString(*field);
  io.PutInt(iFlag);
  io.PutInt(static_cast<std::int16_t>(Levels.Count()));
  for (const Level& l : Levels) {
    io.PutString(l.sName);
    io.PutString(l.sDesc);
    io.PutFloat(l.fCode);
  }
}

void Factor::Export(std::ostream& out, int i) const {
  out << "  **Factor " << i << "\n";
  out << "    Name: " << sName << "\n";
  out << "    Abbreviation: " << sAbbr << "\n";
  out << "    Description: " << sDesc << "\n";
  out << "    Numeric: " << sIsNumeric() << "\n";
  out << "    Noise factor: " << sIsNuisance() << "\n";
  out << "    Number of levels: " << Levels.Count() << "\n";
  for (int j = 1; j <= Levels.Count(); ++j) out << "      " << j << ": " << Levels(j).sName << "\n";
}

}  // namespace kestrow
