// The bench of the routines, in process: the arguments it refuses, with its
// message, before any routine is called. The table readers' counts are 16-bit
// integers, and a count with no such integer is refused before any lookup.
#include <gtest/gtest.h>

#include "core/Paths.h"
#include "core/TestSupport.h"
#include "workbench/StatBench.h"

namespace kestrow {
namespace {

TEST(StatBench, CountsThatAreNoWholeNumberOrBeyondASixteenBitIntegerAreRefused) {
  test::ScopedUi ui;
  SetProgramFolder(KESTROW_BIN);
  struct Case {
    const char* routine;
    std::vector<std::string> args;
    const char* error;
  };
  for (const Case& c : {Case{"ReadTableB", {"32768", "1"}, "ReadTableB: 32768 is out of range"},
                        Case{"ReadTableB", {"5", "-1e30"}, "ReadTableB: -1e30 is out of range"},
                        Case{"ReadTableC", {"1e39", "D4"}, "ReadTableC: 1e39 is out of range"},
                        Case{"ReadTableD", {"0.1", "10", "40000"}, "ReadTableD: 40000 is out of range"},
                        Case{"ReadtPercent", {"-32769", "0.05"}, "ReadtPercent: -32769 is out of range"},
                        Case{"ReadDuncanRow", {"1e9", "0.05"}, "ReadDuncanRow: 1e9 is out of range"},
                        Case{"FormatSF", {"2.5", "3"}, "FormatSF: 2.5 is not a whole number from 0 to 20"},
                        Case{"tProbability", {"1", "0"}, "tProbability: v is a whole number from 1"},
                        // A column is a name of the table, never text for the query.
                        Case{"ReadTableC", {"5", "D4] FROM TableC; --"},
                             "ReadTableC: the column is one of d2, c4, A2, A3, B3, B4, D3, D4"}}) {
    std::string out = "stale", error;
    EXPECT_EQ(RunBenchRoutine(c.routine, c.args, out, error), BenchResult::BadArguments) << c.routine;
    EXPECT_EQ(error, c.error);
    EXPECT_TRUE(out.empty());
  }
  EXPECT_TRUE(ui->messages.empty());  // no reader was reached

  // Within the range a fraction is dropped, as the readers always took it.
  std::string whole, fraction, error;
  ASSERT_EQ(RunBenchRoutine("ReadTableB", {"5", "1"}, whole, error), BenchResult::Done) << error;
  ASSERT_EQ(RunBenchRoutine("ReadTableB", {"5.9", "1"}, fraction, error), BenchResult::Done) << error;
  EXPECT_EQ(fraction, whole);

  // A lookup without a value is said, not printed as the missing-value mark:
  // D3 of a subgroup of 2 has no lower limit; F has no table at alpha 0.02.
  std::string out;
  EXPECT_EQ(RunBenchRoutine("ReadTableC", {"2", "D3"}, out, error), BenchResult::NoValue);
  EXPECT_NE(error.find("no value"), std::string::npos);
  EXPECT_TRUE(out.empty());
  EXPECT_EQ(RunBenchRoutine("ReadTableF", {"0.02", "1", "10"}, out, error), BenchResult::NoValue);
  ui->messages.clear();
  SetProgramFolder("");
}

}  // namespace
}  // namespace kestrow
