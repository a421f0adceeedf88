// kestrow-cli analyse: the ANOVA report of a sample printed as JSON and as
// tab-separated rows, the same grid the report draws in the program, and
// the refusals of a study that is not set up and of bad usage.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "analyses/ANOVA.h"
#include "core/Grid.h"
#include "core/Json.h"
#include "core/Language.h"
#include "core/TestSupport.h"
#include "data/Statistics.h"

namespace kestrow {
namespace {

using test::TempDir;

struct Result {
  int code;
  std::string out;
  std::string err;
};

std::string Sampdata(const std::string& name) { return std::string(KESTROW_SAMPDATA) + "/" + name + ".KSW"; }

class AnalyseCliTest : public ::testing::Test {
 protected:
  void SetUp() override { OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English"); }
  void TearDown() override { CloseLanguage(); }

  // The settings folder is a fresh one, so the colours are the defaults.
  Result Cli(const std::string& args) const {
    std::string command = "KESTROW_CONFIG_DIR=" + dir.str() + " " + KESTROW_CLI + " " + args + " >" +
                          dir / "out.txt" + " 2>" + dir / "err.txt";
    int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, test::ReadFile(dir / "out.txt"),
            test::ReadFile(dir / "err.txt")};
  }
  // The report of a sample's study as the program draws it.
  Grid Report(const std::string& sample) {
    auto problem = test::Sample(sample);
    Statistics stats;
    Grid grid;
    EXPECT_TRUE(DrawANOVA(problem->Studies(1), stats, grid)) << sample;
    return grid;
  }
  // A sample changed by edit, saved where the command can read it.
  std::string Changed(const std::string& sample, const std::function<void(Study&)>& edit) {
    auto problem = test::Sample(sample);
    edit(problem->Studies(1));
    std::string path = dir / (sample + "-" + std::to_string(++changes) + ".KSW");
    EXPECT_TRUE(problem->Save(path));
    return path;
  }

  test::ScopedUi ui;
  TempDir dir;
  int changes = 0;
};

// A colour held as 0x00BBGGRR, as "#RRGGBB".
std::string Hex(Colour c) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02X%02X%02X", c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
  return text;
}

TEST_F(AnalyseCliTest, TheJsonHoldsTheReportsTextsAndColoursInThreeGridsOfOneShape) {
  // A report with all three tables, and a Latin square with its own table.
  for (const char* sample : {"PoisonSurvival", "RocketPropellant"}) {
    Result r = Cli(std::string("analyse ") + Sampdata(sample) + " --study s1 --code 2");
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.err, "");
    JsonValue doc;
    std::string error;
    ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
    const JsonValue* rows = doc.Member("rows");
    const JsonValue* back = doc.Member("back");
    const JsonValue* fore = doc.Member("fore");
    ASSERT_TRUE(rows && back && fore);
    Grid grid = Report(sample);
    ASSERT_EQ(rows->items.size(), static_cast<std::size_t>(grid.Rows())) << sample;
    ASSERT_EQ(back->items.size(), rows->items.size());
    ASSERT_EQ(fore->items.size(), rows->items.size());
    int highlighted = 0;
    for (int row = 0; row < grid.Rows(); ++row) {
      const auto& texts = rows->items[static_cast<std::size_t>(row)].items;
      const auto& backs = back->items[static_cast<std::size_t>(row)].items;
      const auto& fores = fore->items[static_cast<std::size_t>(row)].items;
      ASSERT_EQ(texts.size(), static_cast<std::size_t>(grid.Cols())) << sample << " row " << row;
      ASSERT_EQ(backs.size(), texts.size());
      ASSERT_EQ(fores.size(), texts.size());
      for (int col = 0; col < grid.Cols(); ++col) {
        auto at = static_cast<std::size_t>(col);
        EXPECT_EQ(texts[at].text, grid.Text(row, col)) << sample << " " << row << "," << col;
        EXPECT_EQ(backs[at].text, Hex(grid.Back(row, col))) << sample << " " << row << "," << col;
        EXPECT_EQ(fores[at].text, Hex(grid.Fore(row, col))) << sample << " " << row << "," << col;
        highlighted += backs[at].text == "#FFFF00";  // the default highlight of a significant F
      }
    }
    EXPECT_GT(highlighted, 0) << sample;
  }
}

TEST_F(AnalyseCliTest, TsvPrintsARowALineWithItsCellsJoinedByTabs) {
  Result r = Cli("analyse " + Sampdata("FiltrationRate") + " --study s1 --code 2 --tsv");
  ASSERT_EQ(r.code, 0) << r.err;
  Grid grid = Report("FiltrationRate");
  std::istringstream in(r.out);
  int row = 0;
  for (std::string line; std::getline(in, line); ++row) {
    ASSERT_LT(row, grid.Rows());
    std::string expected;
    for (int col = 0; col < grid.Cols(); ++col) expected += (col ? "\t" : "") + grid.Text(row, col);
    EXPECT_EQ(line, expected) << "row " << row;
  }
  EXPECT_EQ(row, grid.Rows());
  EXPECT_EQ(r.out.back(), '\n');
  EXPECT_NE(r.out.find("\tPooled (error)\t179.5\t8\t22.44\t"), std::string::npos);
}

// A study whose analysis is not set up, or cannot be done, is refused with
// exit code 1 and a message, and prints nothing.
TEST_F(AnalyseCliTest, AStudyWithoutUsableSettingsOrDataIsRefused) {
  struct Case {
    std::string file, expect;
  };
  std::vector<Case> cases = {
      {Sampdata("PlasmaEtch"), "has no settings yet"},  // no response chosen for the analysis
      {Changed("EtchRate", [](Study& s) { s.ANOVA_fAlpha = 0; }), "has no settings yet"},
      {Changed("EtchRate", [](Study& s) { s.ANOVA_sRVkey = "v9"; }), "has no settings yet"},
      {Changed("EtchRate",
               [](Study& s) {
                 for (int rep = 1; rep <= s.iReps; ++rep) s.SetData(1, 3, rep, MISSING_VALUE);
               }),
       "At least one full replication is missing"},
  };
  for (const Case& c : cases) {
    Result r = Cli("analyse " + c.file + " --study s1 --code 2");
    EXPECT_EQ(r.code, 1) << c.file;
    EXPECT_EQ(r.out, "") << c.file;
    EXPECT_NE(r.err.find(c.expect), std::string::npos) << c.file << ": " << r.err;
  }
  Result r = Cli("analyse " + Sampdata("EtchRate") + " --study s9 --code 2");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("no study with the key s9"), std::string::npos) << r.err;
}

TEST_F(AnalyseCliTest, BadUsageExitsTwo) {
  std::string file = Sampdata("EtchRate");
  const std::vector<std::string> usages = {
      "analyse " + file + " --study s1 --code two", "analyse " + file + " --study s1 --code 2.5",
      "analyse " + file + " --code 2",              "analyse " + file + " --study s1",
      "analyse --study s1 --code 2",                "analyse " + file + " --study s1 --code 2 --png x"};
  for (const std::string& args : usages) {
    Result r = Cli(args);
    EXPECT_EQ(r.code, 2) << args;
    EXPECT_EQ(r.out, "") << args;
    EXPECT_NE(r.err.find("usage: kestrow-cli"), std::string::npos) << args;
  }
}

}  // namespace
}  // namespace kestrow
