#include "workbench/StatBench.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "charts/Canvas.h"
#include "charts/GetScale.h"
#include "core/Formatters.h"
#include "core/Sentinels.h"
#include "core/Text.h"
#include "stats/FProbability.h"
#include "stats/FValue.h"
#include "stats/Normal.h"
#include "stats/TableReaders.h"
#include "stats/tProbability.h"

namespace kestrow {

const std::vector<BenchRoutine>& BenchRoutines() {
  static const std::vector<BenchRoutine> ROUTINES = {
      {"FValue", 3, "P v1 v2"},           {"FProbability", 3, "F v1 v2"}, {"tProbability", 2, "t v"},
      {"NormalProbability", 1, "z"},      {"NormalValue", 1, "P"},        {"FormatSF", 2, "digits value"},
      {"FormatP", 2, "decimals p"},       {"FormatDecimals", 2, "decimals value"},
      {"ReadTableB", 2, "n k"},           {"ReadTableC", 2, "n column"},  {"ReadTableD", 3, "alpha v k"},
      {"ReadTableF", 3, "alpha v1 v2"},   {"ReadtPercent", 2, "v alpha"}, {"ReadDuncanRow", 2, "f alpha"},
      {"GetScale", 2, "fmin fmax"},       {"RainbowColour", 1, "P"}};
  return ROUTINES;
}

const std::vector<std::string>& TableCColumns() {
  static const std::vector<std::string> COLUMNS = {"d2", "c4", "A2", "A3", "B3", "B4", "D3", "D4"};
  return COLUMNS;
}

const BenchRoutine* FindBenchRoutine(const std::string& name) {
  for (const BenchRoutine& r : BenchRoutines())
    if (name == r.name) return &r;
  return nullptr;
}

namespace {

// A count of digits or degrees of freedom: a whole number in a sane range.
bool Whole(float value, float low, float high) { return value == std::floor(value) && value >= low && value <= high; }

// The table readers take their counts as 16-bit integers and drop any
// fraction, as they always have; a value with no such integer (or NaN) is
// refused rather than converted.
bool ToInt16(double value, std::int16_t& n) {
  if (!(value > -32769.0 && value < 32768.0)) return false;
  n = static_cast<std::int16_t>(value);
  return true;
}

}  // namespace

BenchResult RunBenchRoutine(const std::string& name, const std::vector<std::string>& args, std::string& out,
                            std::string& error) {
  out.clear();
  error.clear();
  const BenchRoutine* routine = FindBenchRoutine(name);
  if (!routine) {
    error = "no routine " + name;
    return BenchResult::BadArguments;
  }
  if (args.size() != routine->count) {
    error = name + " takes " + routine->arguments;
    return BenchResult::BadArguments;
  }
  auto refuse = [&](const std::string& why) {
    error = name + ": " + why;
    return BenchResult::BadArguments;
  };
  auto none = [&](const std::string& why) {
    out.clear();
    error = name + ": " + why;
    return BenchResult::NoValue;
  };
  const std::string NO_VALUE = "the table holds no value for these arguments";
  if (name == "ReadTableC") {
    std::int16_t n = 0;
    if (!IsNumeric(args[0])) return refuse(args[0] + " is not a number");
    if (!ToInt16(Val(args[0]), n)) return refuse(args[0] + " is out of range");
    // The column is a name of the table, never text put into the query.
    const auto& columns = TableCColumns();
    if (std::find(columns.begin(), columns.end(), args[1]) == columns.end()) {
      std::string list;
      for (const std::string& c : columns) list += (list.empty() ? "" : ", ") + c;
      return refuse("the column is one of " + list);
    }
    float value = ReadTableC(n, args[1]);
    if (value == MISSING_VALUE) return none("no value: the table holds none (0, no such limit) or cannot be read");
    out = ShortestText(value);
    return BenchResult::Done;
  }
  std::vector<float> x;
  for (const std::string& a : args) {
    float value = ParseFloat(a);
    if (value == BAD_NUMBER) return refuse(a + " is not a number");
    x.push_back(value);
  }
  // The counts of the table readers, argument by argument.
  std::int16_t n[3] = {0, 0, 0};
  auto count = [&](std::size_t i) { return ToInt16(x[i], n[i]); };

  if (name == "GetScale") {
    float low = x[0], high = x[1], major = 0, minor = 0;
    std::string format = GetScale(low, high, major, minor);
    out = ShortestText(low) + "\n" + ShortestText(high) + "\n" + ShortestText(major) + "\n" + ShortestText(minor) +
          "\n" + format;
  } else if (name == "RainbowColour") {
    if (!Whole(x[0], -32768, 32767)) return refuse(args[0] + " is not a whole number");
    out = ColourText(RainbowColour(static_cast<int>(x[0])));
  } else if (name == "FValue") {
    out = ShortestText(FValue(x[0], x[1], x[2]));
  } else if (name == "FProbability") {
    out = ShortestText(FProbability(x[0], x[1], x[2]));
  } else if (name == "tProbability") {
    if (!Whole(x[1], 1, 1.0e6f)) return refuse("v is a whole number from 1");
    out = ShortestText(tProbability(x[0], static_cast<int>(x[1])));
  } else if (name == "NormalProbability") {
    out = ShortestText(NormalProbability(x[0]));
  } else if (name == "NormalValue") {
    out = ShortestText(NormalValue(x[0]));
  } else if (name == "ReadTableB") {
    if (!count(0)) return refuse(args[0] + " is out of range");
    if (!count(1)) return refuse(args[1] + " is out of range");
    float v = MISSING_VALUE, d2 = MISSING_VALUE;
    ReadTableB(n[0], n[1], v, d2);
    if (v == MISSING_VALUE || d2 == MISSING_VALUE) return none(NO_VALUE);
    out = ShortestText(v) + "\n" + ShortestText(d2);
  } else if (name == "ReadTableD") {
    if (!count(2)) return refuse(args[2] + " is out of range");
    float h = MISSING_VALUE;
    ReadTableD(x[0], x[1], n[2], h);
    if (h == MISSING_VALUE) return none(NO_VALUE);
    out = ShortestText(h);
  } else if (name == "ReadTableF") {
    float f = ReadTableF(x[0], x[1], x[2]);
    if (f == MISSING_VALUE) return none(NO_VALUE);
    out = ShortestText(f);
  } else if (name == "ReadtPercent") {
    if (!count(0)) return refuse(args[0] + " is out of range");
    float t = 0;
    if (!ReadtPercent(n[0], x[1], t)) return none(NO_VALUE);
    out = ShortestText(t);
  } else if (name == "ReadDuncanRow") {
    if (!count(0)) return refuse(args[0] + " is out of range");
    DuncanRows table{};
    table[0][2] = MISSING_VALUE;  // the f of the row read, when one was
    ReadDuncanRow(n[0], x[1], table);
    if (table[0][2] == MISSING_VALUE) return none(NO_VALUE);
    // p and the significant range of each of the 13 columns.
    for (int i = 1; i <= 13; ++i) out += (i > 1 ? "\n" : "") + ShortestText(table[i][1]) + "\t" + ShortestText(table[i][2]);
  } else {
    if (!Whole(x[0], 0, 20)) return refuse(args[0] + " is not a whole number from 0 to 20");
    int digits = static_cast<int>(x[0]);
    if (name == "FormatSF") out = FormatSF(digits, x[1]);
    else if (name == "FormatP") out = FormatP(digits, x[1]);
    else out = FormatDecimals(digits, x[1]);
  }
  return BenchResult::Done;
}

}  // namespace kestrow
