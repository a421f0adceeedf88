// The bench of the statistical routines: one routine called by name with its
// arguments as text, its result(s) given back as text. kestrow-cli stat and
// the developers' test dialog of the workbench both go through it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kestrow {

struct BenchRoutine {
  const char* name;       // the routine's own name ("FValue")
  std::size_t count;      // how many arguments it takes
  const char* arguments;  // their names in call order, blank-separated ("P v1 v2")
};

// Every routine of the bench, each once.
const std::vector<BenchRoutine>& BenchRoutines();
// The routine of that name, or nullptr.
const BenchRoutine* FindBenchRoutine(const std::string& name);

// The columns of TableC that ReadTableC may be asked for.
const std::vector<std::string>& TableCColumns();

enum class BenchResult {
  Done,          // out holds the result(s)
  BadArguments,  // error says which argument is wrong; nothing was called
  NoValue,       // a table holds no value there; error says so
};

// Calls the routine with the arguments. Each argument is a number, except the
// column name of ReadTableC, one of TableCColumns(); a count of digits or
// decimals and the degrees of freedom of t are whole numbers. On success
// `out` holds the result(s), one per line with no closing newline, each
// number as the shortest text of its float (ReadTableB: v, then d2;
// ReadDuncanRow: p, a tab and the range, for each of its 13 columns).
// Otherwise `error` says what was wrong ("FValue: x is not a number"). The
// table readers need TABLES.MDB in the program folder; they report their own
// failures through Ui, and a lookup that gives no value is NoValue, never the
// missing-value mark printed as a number.
BenchResult RunBenchRoutine(const std::string& name, const std::vector<std::string>& args, std::string& out,
                            std::string& error);

}  // namespace kestrow
