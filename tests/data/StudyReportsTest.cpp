// The data worksheet and the statistics report of a study, and the checks
// and file naming of the commands that show them.
#include <gtest/gtest.h>

#include "core/Language.h"
#include "core/TestSupport.h"
#include "data/Statistics.h"
#include "data/StudyReports.h"

namespace kestrow {
namespace {

using test::ReadFile;
using test::Sample;
using test::ScopedUi;
using test::TempDir;

class StudyReportsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
    problem = Sample("PlasmaEtch");  // 8 runs x 2 replications, complete
    gSettings.ReportMode = 1;
    gSettings.ReportFile = dir / "KSTREP.TXT";
  }
  void TearDown() override { CloseLanguage(); }
  Study& study() { return problem->Studies(1); }
  ScopedUi ui;
  TempDir dir;
  std::unique_ptr<Problem> problem;
};

TEST_F(StudyReportsTest, WorksheetListsEntriesInRunOrderWithBlanksToWriteOn) {
  study().SetData(1, 3, 2, MISSING_VALUE);
  ASSERT_TRUE(WriteWorksheet(*problem, study(), dir / "w.txt"));
  std::vector<std::string> lines;
  std::istringstream in(ReadFile(dir / "w.txt"));
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  ASSERT_EQ(lines.size(), 13u + 16u);
  EXPECT_EQ(lines[8], "Response: Etch rate (A/min)");
  // The entry rows follow the three heading rows: replication by replication,
  // position p showing the run that the sequence puts there.
  for (int rep = 1; rep <= 2; ++rep)
    for (int p = 1; p <= 8; ++p) {
      int run = study().GetSeq(p, rep);
      const std::string& row = lines[static_cast<std::size_t>(12 + (rep - 1) * 8 + p)];
      EXPECT_EQ(row.substr(0, 11), PadLeft(std::to_string(run), 4) + "   " + PadLeft(std::to_string(rep), 4)) << row;
      EXPECT_EQ(row.find("________") != std::string::npos, run == 3 && rep == 2) << row;
    }
}

TEST_F(StudyReportsTest, StatisticsReportGivesPerRunAndOverallFigures) {
  gSettings.ReportMode = 2;
  Statistics st;
  ASSERT_EQ(StatsRefusal(&study(), st), "");
  ASSERT_TRUE(WriteStats(*problem, study(), st, dir / "s.txt"));
  std::string text = ReadFile(dir / "s.txt");
  // Run 1 holds 666.2 and 669.3: mean 667.75, range 3.1, s = 3.1 / sqrt 2, to four figures.
  EXPECT_NE(text.find("\n             1           667.8       3.1     2.192\n"), std::string::npos) << text;
  EXPECT_NE(text.find("Mean:                    776.3     17.61     12.45\n"), std::string::npos) << text;
  // By factor level: A at 275 covers runs 1 to 4.
  EXPECT_NE(text.find("\n  275          666.2     795.3     726.4\n"), std::string::npos) << text;
}

// Two responses side by side: a figure and the blank after it keep a gap in
// every column mode, and a response without any data has blank overall
// figures rather than the starting values of its sums.
TEST_F(StudyReportsTest, BlanksStandApartAndAResponseWithoutDataHasNoFigures) {
  auto p = Sample("CatalystTrial");
  Study& s = p->Studies(1);
  for (int mode : {0, 1, 2}) {
    gSettings.ReportMode = static_cast<std::int16_t>(mode);
    ASSERT_TRUE(WriteWorksheet(*p, s, dir / "w.txt"));
    std::string text = ReadFile(dir / "w.txt");
    std::size_t figure = text.find("84.5");  // run 6, replication 3: Impurity not measured
    ASSERT_NE(figure, std::string::npos) << mode << text;
    std::size_t blank = text.find("________", figure);
    EXPECT_GT(blank, figure + 4) << mode << text;
    EXPECT_EQ(text.find_first_not_of(" \t", figure + 4), blank) << mode << text;
  }
  for (int run = 1; run <= s.iNumRuns; ++run)
    for (int rep = 1; rep <= s.iReps; ++rep) s.SetData(2, run, rep, MISSING_VALUE);
  gSettings.ReportMode = 1;
  Statistics st;
  ASSERT_EQ(StatsRefusal(&s, st), "");
  ASSERT_TRUE(WriteStats(*p, s, st, dir / "s.txt"));
  std::string text = ReadFile(dir / "s.txt");
  // Yield's figures alone: its mean, range and standard deviation, or its extreme.
  for (auto [line, figures] : {std::pair{"Mean:", 3}, {"Min", 1}, {"Max", 1}}) {
    std::size_t at = text.find(std::string("\n") + line);
    ASSERT_NE(at, std::string::npos) << line;
    std::istringstream row(text.substr(at + 1, text.find('\n', at + 1) - at - 1));
    int words = 0;
    for (std::string word; row >> word;) ++words;
    EXPECT_EQ(words, 1 + figures) << row.str();
  }
}

TEST_F(StudyReportsTest, CommandsRefuseWithoutEditorDesignOrDataAndNumberTheirFiles) {
  ShowWorksheet(*problem, &study());  // no editor by default
  EXPECT_EQ(ui->messages.back().text, GetText("MNerra"));
  EXPECT_FALSE(std::filesystem::exists(gSettings.ReportFile));

  gSettings.TextEd = "/usr/bin/editor";
  gSettings.ReportNumber = 7;
  ShowWorksheet(*problem, &study());
  ShowStats(*problem, &study());
  EXPECT_EQ(ui->messages[ui->messages.size() - 2].text, "/usr/bin/editor " + (dir / "KSTREP7.TXT"));
  EXPECT_EQ(ui->messages.back().text, "/usr/bin/editor " + (dir / "KSTREP8.TXT"));
  EXPECT_EQ(gSettings.ReportNumber, 9);
  EXPECT_EQ(ReadFile(dir / "KSTREP8.TXT").rfind("Statistics report", 0), 0u);
  gSettings.ReportNumber = -1;
  ShowStats(*problem, &study());
  EXPECT_EQ(ui->messages.back().text, "/usr/bin/editor " + gSettings.ReportFile);

  Study empty;
  ShowWorksheet(*problem, &empty);
  EXPECT_EQ(ui->messages.back().text, GetText("MNerrb"));
  study().SetDataArray();  // every cell blank
  ShowStats(*problem, &study());
  EXPECT_EQ(ui->messages.back().text, GetText("MNmsgj"));
}

}  // namespace
}  // namespace kestrow
