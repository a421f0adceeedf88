// The report writer in its three table modes, and the print log.
#include <gtest/gtest.h>

#include "core/Grid.h"
#include "core/Language.h"
#include "core/Report.h"
#include "core/TestSupport.h"
#include "workbench/PrintLog.h"

namespace kestrow {
namespace {

using test::ReadFile;
using test::ScopedUi;
using test::TempDir;

const std::string RIGHT(1, REP_RIGHT);

class ReportTest : public ::testing::Test {
 protected:
  // Formats the heading, writes the rows, and gives back the file's text.
  std::string Write(int mode, const std::string& heading, const std::vector<std::string>& rows, bool truncate) {
    gSettings.ReportMode = static_cast<std::int16_t>(mode);
    gSettings.ReportColWidth = 6;
    EXPECT_TRUE(rep.RepOpen(dir / "rep.txt"));
    EXPECT_TRUE(rep.RepFormatColumns(heading));
    for (const std::string& row : rows) rep.RepSendFormatted(row, truncate);
    rep.RepClose();
    return ReadFile(dir / "rep.txt");
  }
  ScopedUi ui;
  TempDir dir;
  Report rep;
};

TEST_F(ReportTest, TabModeWritesSpreadsheetRowsWithoutCountingThem) {
  EXPECT_EQ(Write(0, "Run|Mean", {"Run|Mean", "1|" + RIGHT + "2.5"}, false), "Run\tMean\t\n1\t2.5\t\n");
  EXPECT_EQ(rep.iLines, 0);
}

TEST_F(ReportTest, FloatingModeTakesWidthsFromTheHeadingAndLetsLongItemsOverwrite) {
  std::string text = Write(1, "Run|Average|x", {"Run|Average|x", "1|" + RIGHT + "2.5|y", "toolongitem|z"}, false);
  // Columns start at 1, 5 and 13; a right-aligned item ends one short of the next start.
  EXPECT_EQ(text, "Run Average x\n1       2.5 y\ntoolzngitem\n");  // "z" lands in the long item
  EXPECT_EQ(rep.iLines, 3);
  EXPECT_EQ(rep.iLastLen, 13);  // the raw text given, bars included
}

TEST_F(ReportTest, FixedModeCutsWithAMarkAndAlignsRight) {
  std::string text = Write(2, "a|b|c", {"abcdefgh|" + RIGHT + "12|x", "abcdefgh|" + RIGHT + "1234567|x"}, true);
  EXPECT_EQ(text, "abcd_     12x\nabcd_  1234_x\n");
  EXPECT_EQ(Write(2, "a|b", {"abcdefgh|x"}, false), "abcdefxh\n");  // untruncated, overwritten by the next
}

TEST_F(ReportTest, DashMarkersDrawRulesAsWideAsTheColumnAndUnderlineMatchesTheLineBefore) {
  gSettings.ReportMode = 2;
  gSettings.ReportColWidth = 5;
  ASSERT_TRUE(rep.RepOpen(dir / "rep.txt"));
  rep.RepFormatColumns("a|b");
  rep.RepSendFormatted(std::string(1, REP_DASHES) + "|" + std::string(1, REP_DASHES_RIGHT), false);
  rep.RepSend("Mean é");
  rep.RepUnderline();
  rep.RepClose();
  EXPECT_EQ(ReadFile(dir / "rep.txt"), "----  ----\nMean é\n------\n");
}

TEST_F(ReportTest, MoreThanTwoHundredColumnsIsABoundsError) {
  std::string many;
  for (int i = 0; i < 200; ++i) many += "x|";
  ASSERT_TRUE(rep.RepOpen(dir / "rep.txt"));
  EXPECT_FALSE(rep.RepFormatColumns(many));
  ASSERT_FALSE(ui->messages.empty());
  EXPECT_NE(ui->messages.back().text.find("Subscript out of range"), std::string::npos);
  EXPECT_TRUE(rep.RepFormatColumns(many.substr(2)));  // 199 items fill columns up to 200
}

TEST_F(ReportTest, PrintLogAppendsHeadingGridAndRuleAndCountsTheLines) {
  gSettings.PrintLog = dir / "log.txt";
  test::WriteFile(gSettings.PrintLog, "older entry\n");
  gProblem->sName = "Etch";
  Grid grid;
  grid.SetSize(3, 3);
  grid.FixedRows = 1;
  const char* cells[3][3] = {{"Source", "SS", "x"}, {"A", "12.5", "x"}, {"Error", "3", "x"}};
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) grid.SetText(r, c, cells[r][c]);
  ASSERT_TRUE(OpenLog(false));
  LogGrid(0, 1, grid);
  CloseLog();
  std::string text = ReadFile(gSettings.PrintLog);
  ASSERT_EQ(text.rfind("older entry\nDate: ", 0), 0u);
  std::string body = text.substr(text.find("Problem:"));
  EXPECT_EQ(body, "Problem: Etch\n \nSource SS\n______ ____\nA      12.5\nError  3\n" + std::string(80, '-') + "\n");
  EXPECT_EQ(ui->messages.back().text, "8 lines written");

  gSettings.PrintLog = dir / "no-such-folder/log.txt";
  EXPECT_FALSE(OpenLog(true));
  EXPECT_EQ(ui->messages.back().kind, "error");
}

TEST_F(ReportTest, ViewLogNeedsAnEditorAndALog) {
  OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
  gSettings.PrintLog = dir / "log.txt";
  ViewLog();  // no editor by default
  EXPECT_EQ(ui->messages.back().text, GetText("MNerra"));
  gSettings.TextEd = "/usr/bin/editor";
  ViewLog();
  EXPECT_EQ(ui->messages.back().text, GetText("MNerrf"));
  test::WriteFile(gSettings.PrintLog, "entry\n");
  ViewLog();
  EXPECT_EQ(ui->messages.back().text, "/usr/bin/editor " + gSettings.PrintLog);
  CloseLanguage();
}

TEST(PrintLog, NumberedGraphicNamesReplaceTheStemsLastThreeCharacters) {
  GraphicCount() = 0;
  EXPECT_EQ(NextGraphicName("/tmp/CHART001.png"), "/tmp/CHART001.png");
  GraphicCount() = 7;
  EXPECT_EQ(NextGraphicName("/tmp/CHART001.png"), "/tmp/CHART007.png");
  EXPECT_EQ(NextGraphicName("/tmp/CHART001.png"), "/tmp/CHART008.png");
  GraphicCount() = 0;
}

}  // namespace
}  // namespace kestrow
