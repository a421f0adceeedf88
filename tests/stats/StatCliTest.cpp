// kestrow-cli stat: one routine per call, its result on a line of its own,
// and bad usage refused with exit code 2.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <utility>

#include "core/TestSupport.h"

namespace kestrow {
namespace {

struct Result {
  int code;
  std::string out;
  std::string err;
};

Result Stat(const test::TempDir& dir, const std::string& args) {
  std::string command =
      std::string(KESTROW_CLI) + " stat " + args + " >" + dir / "out.txt" + " 2>" + dir / "err.txt";
  int status = std::system(command.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, test::ReadFile(dir / "out.txt"),
          test::ReadFile(dir / "err.txt")};
}

TEST(StatCli, PrintsEachRoutinesResultAsItsShortestText) {
  test::TempDir dir;
  for (auto [args, out] : {std::pair{"NormalValue 0.5", "0\n"}, {"tProbability 0 7", "0.5\n"},
                           {"FormatP 3 0.0004", "<0.001\n"}, {"FormatDecimals 3 2.5", "2.500\n"}}) {
    Result r = Stat(dir, args);
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, out) << args;
  }
  Result r = Stat(dir, "FValue 0.95 1 10");
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_NEAR(std::stod(r.out), 4.965, 0.005);
}

TEST(StatCli, RefusesUnknownRoutinesWrongCountsAndNonNumbers) {
  test::TempDir dir;
  for (const char* args : {"", "Gamma 3", "FValue 0.95 1", "NormalProbability x", "FormatSF 2.5 3",
                           "tProbability 1 0"}) {
    Result r = Stat(dir, args);
    EXPECT_EQ(r.code, 2) << args;
    EXPECT_TRUE(r.out.empty()) << args;
    EXPECT_EQ(r.err.rfind("kestrow-cli: stat", 0), 0u) << args;
  }
}

}  // namespace
}  // namespace kestrow

namespace kestrow {
namespace {

// The table readers through kestrow-cli stat, against printed values.
TEST(StatCliTables, TheReadersAnswerThroughTheCommandLine) {
  auto run = [](const std::string& args) {
    std::string out = ::testing::TempDir() + "/stat-tables.out";
    std::string command = std::string(KESTROW_CLI) + " stat " + args + " >" + out + " 2>/dev/null";
    int status = std::system(command.c_str());
    std::ifstream in(out);
    std::stringstream s;
    s << in.rdbuf();
    return std::make_pair(WIFEXITED(status) ? WEXITSTATUS(status) : -1, s.str());
  };
  EXPECT_EQ(run("ReadtPercent 10 0.025"), std::make_pair(0, std::string("2.228\n")));
  EXPECT_EQ(run("ReadTableF 0.05 1 10"), std::make_pair(0, std::string("4.96\n")));
  EXPECT_EQ(run("ReadTableC 5 D4"), std::make_pair(0, std::string("2.114\n")));
  EXPECT_EQ(run("ReadTableC 4 D3"), std::make_pair(0, std::string("-999999900\n")));  // no lower limit
  EXPECT_EQ(run("ReadTableB 5 1"), std::make_pair(0, std::string("3.83\n2.481\n")));
  EXPECT_EQ(run("ReadTableB").first, 2);
}

}  // namespace
}  // namespace kestrow
