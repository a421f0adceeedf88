// kestrow-cli stat: one routine per call, its result on a line of its own,
// and bad usage refused with exit code 2.
#include <gtest/gtest.h>

#include <utility>

#include "core/TestSupport.h"

namespace kestrow {
namespace {

using test::CliResult;

CliResult Stat(const test::TempDir& dir, const std::string& args) { return test::RunCli(dir, "stat " + args); }

// A routine, a formatter and a table reader (two results); the values
// themselves are checked in process beside each routine. A constant with no
// lower limit is no value, which is said (exit 1), not printed as a number.
TEST(StatCli, PrintsEachRoutinesResultOnALineOfItsOwn) {
  test::TempDir dir;
  for (auto [args, out] : {std::pair{"tProbability 0 7", "0.5\n"}, {"FormatP 3 0.0004", "<0.001\n"},
                           {"ReadTableB 5 1", "3.83\n2.481\n"}}) {
    CliResult r = Stat(dir, args);
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, out) << args;
  }
  CliResult none = Stat(dir, "ReadTableC 4 D3");
  EXPECT_EQ(none.code, 1);
  EXPECT_EQ(none.out, "");
  EXPECT_NE(none.err.find("no value"), std::string::npos) << none.err;
}

// The routine and its argument count are the command line's to check; the
// arguments themselves the bench's, whose refusals come out as usage errors.
TEST(StatCli, RefusesUnknownRoutinesWrongCountsAndNonNumbers) {
  test::TempDir dir;
  for (const char* args : {"", "Gamma 3", "FValue 0.95 1", "NormalProbability x"}) {
    CliResult r = Stat(dir, args);
    EXPECT_EQ(r.code, 2) << args;
    EXPECT_TRUE(r.out.empty()) << args;
    EXPECT_EQ(r.err.rfind("kestrow-cli: stat", 0), 0u) << args;
  }
}

}  // namespace
}  // namespace kestrow
