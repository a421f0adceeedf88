// kestrow-cli analyse: the ANOVA report of a sample printed as JSON and as
// tab-separated rows, the same grid the report draws in the program, and
// the refusals of a study that is not set up and of bad usage.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "analyses/ANOVA.h"
#include "charts/ChartJson.h"
#include "core/Formatters.h"
#include "core/Grid.h"
#include "core/Json.h"
#include "core/Language.h"
#include "core/TestSupport.h"
#include "data/Statistics.h"

namespace kestrow {
namespace {

std::string Sampdata(const std::string& name) { return std::string(KESTROW_SAMPDATA) + "/" + name + ".KSW"; }

// A colour held as 0x00BBGGRR, as "#RRGGBB".
std::string Hex(Colour c) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02X%02X%02X", c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
  return text;
}

class AnalyseCliTest : public ::testing::Test {
 protected:
  void SetUp() override { OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English"); }
  void TearDown() override { CloseLanguage(); }

  // The report of a sample's study as the program draws it.
  Grid Report(const std::string& sample) {
    auto problem = test::Sample(sample);
    Statistics stats;
    Grid grid;
    EXPECT_TRUE(DrawANOVA(problem->Studies(1), stats, grid)) << sample;
    return grid;
  }

  test::ScopedUi ui;
  test::TempDir dir;
};

// A report with all three tables: each of the grids of the JSON has the
// report's shape and holds its texts, backgrounds and foregrounds.
TEST_F(AnalyseCliTest, TheJsonHoldsTheReportsTextsAndColoursInThreeGridsOfOneShape) {
  test::CliResult r = test::RunCli(dir, "analyse " + Sampdata("PoisonSurvival") + " --study s1 --code 2");
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.err, "");
  JsonValue doc;
  std::string error;
  ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
  Grid grid = Report("PoisonSurvival");
  auto expect = [&](const char* member, const std::function<std::string(int, int)>& cell) {
    const JsonValue* rows = doc.Member(member);
    ASSERT_TRUE(rows) << member;
    ASSERT_EQ(rows->items.size(), static_cast<std::size_t>(grid.Rows())) << member;
    for (int row = 0; row < grid.Rows(); ++row) {
      const auto& cells = rows->items[static_cast<std::size_t>(row)].items;
      ASSERT_EQ(cells.size(), static_cast<std::size_t>(grid.Cols())) << member << " row " << row;
      for (int col = 0; col < grid.Cols(); ++col)
        EXPECT_EQ(cells[static_cast<std::size_t>(col)].text, cell(row, col)) << member << " " << row << "," << col;
    }
  };
  expect("rows", [&](int row, int col) { return grid.Text(row, col); });
  int highlighted = 0;  // cells in the default highlight of a significant F
  expect("back", [&](int row, int col) {
    highlighted += Hex(grid.Back(row, col)) == "#FFFF00";
    return Hex(grid.Back(row, col));
  });
  expect("fore", [&](int row, int col) { return Hex(grid.Fore(row, col)); });
  EXPECT_GT(highlighted, 0);
}

TEST_F(AnalyseCliTest, TsvPrintsARowALineWithItsCellsJoinedByTabs) {
  test::CliResult r = test::RunCli(dir, "analyse " + Sampdata("FiltrationRate") + " --study s1 --code 2 --tsv");
  ASSERT_EQ(r.code, 0) << r.err;
  Grid grid = Report("FiltrationRate");
  std::string expected;
  for (int row = 0; row < grid.Rows(); ++row)
    for (int col = 0; col < grid.Cols(); ++col) expected += grid.Text(row, col) + (col + 1 < grid.Cols() ? "\t" : "\n");
  EXPECT_EQ(r.out, expected);
  EXPECT_NE(r.out.find("\tPooled (error)\t179.5\t8\t22.44\t"), std::string::npos);
}

// Each charted analysis of the 2^2 sample prints the chart list the program
// makes, laid out on the page asked for, and draws it with --image; the IPO
// diagram is a report.
TEST_F(AnalyseCliTest, ChartAnalysesPrintTheirChartListAndDrawIt) {
  struct Case {
    const char* options;
    std::vector<std::int16_t> types;
  };
  for (const Case& c : {Case{"--code 1", {CHT_ANOM, CHT_ANOM, CHT_ANOM, CHT_ANOM}},
                        Case{"--code 4", {CHT_INTERACTION}},
                        Case{"--code 5", {CHT_RESPONSE2}},
                        Case{"--code 6", {CHT_MMP, CHT_MMP}},
                        Case{"--code 8", {CHT_PAIRWISE}},
                        Case{"--code 15", {CHT_RUN}},
                        Case{"--code 3", {CHT_RES_NPP, CHT_RES_RUN, CHT_RES_FITTED}},
                        Case{"--code 13", {CHT_NPP, CHT_PARETO}},
                        Case{"--report multichart",
                             {CHT_ANOM, CHT_ANOM, CHT_INTERACTION, CHT_MMP, CHT_RES_NPP, CHT_RES_FITTED}},
                        Case{"--report ipo", {CHT_IPO}}}) {
    std::string image = dir / "chart.png";
    std::remove(image.c_str());
    test::CliResult r = test::RunCli(dir, "analyse " + Sampdata("ChemicalYield") + " --study s1 " + c.options +
                                              " --size 640x480 --image " + image);
    ASSERT_EQ(r.code, 0) << c.options << ": " << r.err;
    EXPECT_EQ(r.err, "") << c.options;
    ChartPage page;
    std::string error;
    ASSERT_TRUE(ChartsFromJson(r.out, page, error)) << error;
    std::vector<std::int16_t> types;
    for (const Chart& chart : page.Charts)
      if (chart.chtType != CHT_FILLER) types.push_back(chart.chtType);
    EXPECT_EQ(types, c.types) << c.options;
    EXPECT_LE(page.Charts[0].ox + page.Charts[0].Width, 640) << c.options;
    EXPECT_EQ(test::ReadFile(image).substr(1, 3), "PNG") << c.options;
  }
  // The figures are the analysis's own: the decision limits of the 2^2 main effects.
  test::CliResult r = test::RunCli(dir, "analyse " + Sampdata("ChemicalYield") + " --study s1 --code 1");
  ChartPage page;
  std::string error;
  ASSERT_TRUE(ChartsFromJson(r.out, page, error)) << error;
  EXPECT_EQ(FormatNumSF(page.Charts[0].LowLimit), "26.15");
  for (auto [options, code, says] : std::vector<std::tuple<std::string, int, std::string>>{
           {"--report multichart", 1, "holds no charts yet"},
           {"--report worksheet", 2, "--report takes ipo or multichart"},
           {"--code 1 --report ipo", 2, "either --code N or --report"},
           {"--report ipo --tsv", 2, "--tsv is for grids"}}) {
    test::CliResult bad = test::RunCli(dir, "analyse " + Sampdata("CottonTensile") + " --study s1 " + options);
    EXPECT_EQ(bad.code, code) << options;
    EXPECT_NE(bad.err.find(says), std::string::npos) << options << ": " << bad.err;
  }
}

// A study whose analysis is not set up or cannot be done exits 1; bad usage
// exits 2. Either prints nothing and says why. (A missing study and an
// unknown option are refused as for every command: see the CLI tests.)
TEST_F(AnalyseCliTest, RefusalsSayWhyWithTheirExitCode) {
  auto problem = test::Sample("EtchRate");
  for (int rep = 1; rep <= problem->Studies(1).iReps; ++rep) problem->Studies(1).SetData(1, 3, rep, MISSING_VALUE);
  ASSERT_TRUE(problem->Save(dir / "run3missing.KSW"));
  std::string etch = Sampdata("EtchRate");
  for (auto [file, options, code, expect] : std::vector<std::tuple<std::string, std::string, int, std::string>>{
           {Sampdata("PlasmaEtch"), "--study s1 --code 2", 1, "has no settings yet"},  // no response chosen
           {dir / "run3missing.KSW", "--study s1 --code 2", 1, "At least one full replication is missing"},
           {etch, "--study s1 --code two", 2, "usage: kestrow-cli"},
           {etch, "--study s1 --code 2.5", 2, "usage: kestrow-cli"},
           {etch, "--code 2", 2, "usage: kestrow-cli"},
           // A grid has no picture, and a chart analysis prints no tab-separated rows.
           {etch, "--study s1 --code 2 --image " + dir / "x.png", 2, "--image and --size are for the analyses that draw"},
           {etch, "--study s1 --code 4 --tsv", 2, "--tsv is for grids"},
           {etch, "--study s1 --code 4 --image " + dir / "x.gif", 2, "extension is one of png, bmp"},
           {etch, "--study s1 --code 4 --image " + dir / "x.png --size 0x100", 2, "--size takes WxH"}}) {
    test::CliResult r = test::RunCli(dir, "analyse " + file + " " + options);
    EXPECT_EQ(r.code, code) << options;
    EXPECT_EQ(r.out, "") << options;
    EXPECT_NE(r.err.find(expect), std::string::npos) << options << ": " << r.err;
  }
}

}  // namespace
}  // namespace kestrow
