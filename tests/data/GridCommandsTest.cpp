// Copy, paste, clear, extrapolate and wipe on a study's data.
#include <gtest/gtest.h>

#include "core/TestSupport.h"
#include "data/GridCommands.h"

namespace kestrow {
namespace {

// 8 runs x 2 replications, complete.
class GridCommandsTest : public test::SampleGridFixture {
 protected:
  GridCommandsTest() : SampleGridFixture("PlasmaEtch") { gSettings.ClipAcknowledge = false; }
  // The study with its first replication only.
  Study& OneReplication() {
    study().iReps = 1;
    study().SetDataArrayPreserve();
    return study();
  }
};

TEST_F(GridCommandsTest, CopyThenPasteOverTheSameStudyChangesNothing) {
  for (int mode : {0, 1, 2}) {
    Show(mode);
    std::string before = ProblemToJson(*problem);
    std::string text = CopyData(dg, grid, study());
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), mode == 0 ? 16 : 8);
    ui->answers = {Answer::Yes};  // overwrite the data there
    ASSERT_TRUE(PasteData(dg, grid, *problem, study(), text)) << mode;
    dg.UnLoadDataGrid(study());
    EXPECT_EQ(ProblemToJson(*problem), before) << mode;
  }
}

// Rows and cells count as the clipboard has them: a copied column whose last
// runs are missing ends in empty rows, and pasting it back asks nothing; a
// blank pasted over a value clears it.
TEST_F(GridCommandsTest, EmptyTrailingRowsAndCellsArePastedAsBlanks) {
  OneReplication();
  study().SetData(1, 7, 1, MISSING_VALUE);
  study().SetData(1, 8, 1, MISSING_VALUE);
  Show(1);
  std::string text = CopyData(dg, grid, study());
  EXPECT_EQ(text.substr(text.size() - 6), "\r\n\r\n\r\n");
  ui->answers = {Answer::Yes};  // overwrite the data there; no other question may come
  ASSERT_TRUE(PasteData(dg, grid, *problem, study(), text));
  EXPECT_TRUE(ui->answers.empty());
  EXPECT_EQ(ui->messages.size(), 1u);

  // Blanks over runs 5 and 6, in a text ending in empty cells.
  study().SetData(1, 7, 1, 1.0f);
  study().SetData(1, 8, 1, 2.0f);
  Show(1);
  ui->answers = {Answer::Yes};
  ASSERT_TRUE(PasteData(dg, grid, *problem, study(), "1\r\n2\r\n3\r\n4\r\n\r\n\r\n7\r\n8\r\n"));
  dg.UnLoadDataGrid(study());
  EXPECT_EQ(study().GetData(1, 5, 1), MISSING_VALUE);
  EXPECT_EQ(study().GetData(1, 6, 1), MISSING_VALUE);
  EXPECT_EQ(study().GetData(1, 8, 1), 8.0f);
}

// A value pasted over an estimate is measured: not an estimate colour, open
// to typing, and the next wipe leaves it.
TEST_F(GridCommandsTest, AValuePastedOverAnEstimateIsMeasuredAndSurvivesTheWipe) {
  study().SetData(1, 2, 2, MISSING_VALUE);
  ASSERT_TRUE(Extrapolate(*problem, study()));
  Show(1);
  auto [row, col] = Cell(1, 2, 2);
  EXPECT_EQ(grid.Fore(row, col), gSettings.ExtrapolatedData);
  ASSERT_TRUE(PasteToCursor(dg, grid, *problem, study(), "123.5", row, col));
  EXPECT_NE(grid.Fore(row, col), gSettings.ExtrapolatedData);
  dg.UnLoadDataGrid(study());
  EXPECT_FALSE(WipeExtrapolated(*problem, study()));  // nothing left to wipe
  EXPECT_EQ(study().GetData(1, 2, 2), 123.5f);
}

TEST_F(GridCommandsTest, CopyTakesTheSelectionWhenThereIsOne) {
  Show(1);
  auto [row, col] = Cell(1, 3, 1);
  Grid::Range two{row, col, 2, 2};
  EXPECT_EQ(CopyData(dg, grid, study(), &two), grid.Text(row, col) + "\t" + grid.Text(row, col + 1) + "\r\n" +
                                                    grid.Text(row + 1, col) + "\t" + grid.Text(row + 1, col + 1) + "\r\n");
  Grid::Range one{row, col, 1, 1};  // a single cell is no selection: the whole data area
  EXPECT_EQ(CopyData(dg, grid, study(), &one), CopyData(dg, grid, study()));
}

TEST_F(GridCommandsTest, PasteTakesNewlineRowsAndLeavesNonNumbersAlone) {
  Show(1);
  std::string text;
  for (int run = 1; run <= 8; ++run) text += std::to_string(run) + "\t" + (run == 3 ? "abc" : "1.50") + "\n";
  ui->answers = {Answer::Yes};
  ASSERT_TRUE(PasteData(dg, grid, *problem, study(), text));
  dg.UnLoadDataGrid(study());
  EXPECT_EQ(study().GetData(1, 2, 1), 2.0f);
  EXPECT_EQ(study().GetData(1, 2, 2), 1.5f);
  EXPECT_EQ(study().GetData(1, 3, 2), 795.3f);  // "abc" left the cell as it was
  EXPECT_TRUE(problem->bChanged);
}

TEST_F(GridCommandsTest, RaggedOrNarrowClipboardsChangeNothing) {
  Show(1);
  std::string before = ProblemToJson(*problem);
  EXPECT_FALSE(PasteData(dg, grid, *problem, study(), "1\t2\r\n3\r\n4\t5\r\n5\t6\r\n1\t1\r\n1\t1\r\n1\t1\r\n1\t1\r\n"));
  EXPECT_EQ(ui->messages.back().text, GetText("MNmsg5"));
  EXPECT_FALSE(PasteData(dg, grid, *problem, study(), "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n"));
  EXPECT_EQ(ui->messages.back().text, GetText("MNmsg6"));
  ui->answers = {Answer::Cancel};
  EXPECT_FALSE(PasteData(dg, grid, *problem, study(), "1\t2\r\n"));  // fewer rows: Cancel stops
  dg.UnLoadDataGrid(study());
  EXPECT_EQ(ProblemToJson(*problem), before);
}

TEST_F(GridCommandsTest, PasteToCursorStartsAtTheCellAndAsksBeforeRunningOver) {
  Show(1);
  auto [row, col] = Cell(1, 7, 2);
  EXPECT_FALSE(PasteToCursor(dg, grid, *problem, study(), "1\r\n2\r\n3\r\n", row, col));  // past the end: No
  EXPECT_TRUE(PasteToCursor(dg, grid, *problem, study(), "11\r\n12\r\n", row, col));
  dg.UnLoadDataGrid(study());
  EXPECT_EQ(study().GetData(1, 7, 2), 11.0f);
  EXPECT_EQ(study().GetData(1, 8, 2), 12.0f);
  EXPECT_EQ(study().GetData(1, 7, 1), 692.8f);
}

TEST_F(GridCommandsTest, ExtrapolationWithReplicationsUsesTheRunsAverage) {
  study().SetData(1, 4, 2, MISSING_VALUE);
  ASSERT_TRUE(Extrapolate(*problem, study()));
  EXPECT_EQ(study().GetData(1, 4, 2), study().GetData(1, 4, 1));  // the only other value of the run
  EXPECT_TRUE(study().GetFlag(1, 4, 2) & CELL_EXTRAPOLATED);
  EXPECT_FALSE(study().GetFlag(1, 4, 1) & CELL_EXTRAPOLATED);
  for (int rep : {1, 2}) study().SetData(1, 5, rep, MISSING_VALUE);  // no value left in the run
  EXPECT_FALSE(Extrapolate(*problem, study()));
  EXPECT_EQ(ui->messages.back().text, GetText("MNerr3"));
}

TEST_F(GridCommandsTest, ExtrapolationOfOneReplicationAddsTheLevelDeviations) {
  Study& s = OneReplication();
  s.SetData(1, 8, 1, MISSING_VALUE);
  // By hand: the grand mean of the seven values, plus for each factor the
  // mean of the values at run 8's level less the grand mean.
  double grand = 0;
  for (int run = 1; run <= 7; ++run) grand += s.GetData(1, run, 1);
  grand /= 7;
  double estimate = grand;
  for (int f = 1; f <= 3; ++f) {
    double sum = 0;
    int n = 0;
    for (int run = 1; run <= 7; ++run)
      if (s.GetTreatmentLevel(f, run) == 2) sum += s.GetData(1, run, 1), ++n;
    estimate += sum / n - grand;
  }
  ASSERT_TRUE(Extrapolate(*problem, s));
  EXPECT_NEAR(s.GetData(1, 8, 1), estimate, 1e-3);
}

TEST_F(GridCommandsTest, ALevelWithoutDataStopsTheEstimatesButKeepsThoseMade) {
  Study& s = OneReplication();
  s.SetData(1, 1, 1, MISSING_VALUE);
  for (int run = 5; run <= 8; ++run) s.SetData(1, run, 1, MISSING_VALUE);  // Power at 325: nothing
  EXPECT_FALSE(Extrapolate(*problem, s));
  EXPECT_EQ(ui->messages.back().text, GetText("MNerr2"));
  EXPECT_TRUE(s.GetFlag(1, 1, 1) & CELL_EXTRAPOLATED);  // run 1 was estimated before the stop
}

TEST_F(GridCommandsTest, CodedAndUnstructuredDesignsAreNotExtrapolated) {
  for (int flag : {DES_CODED, DES_UNSTRUCTURED}) {
    study().iDesFlag = static_cast<std::int16_t>(1 | flag);
    ASSERT_FALSE(Extrapolate(*problem, study())) << flag;
    EXPECT_EQ(ui->messages.back().text, GetText("MNerr1")) << flag;
    ui->messages.clear();
  }
}

TEST_F(GridCommandsTest, WipeRemovesTheEstimatesAfterAskingAndClearAsksToo) {
  EXPECT_FALSE(WipeExtrapolated(*problem, study()));  // none: no question
  EXPECT_TRUE(ui->messages.empty());
  study().SetData(1, 2, 2, MISSING_VALUE);
  Extrapolate(*problem, study());
  ui->answers = {Answer::Yes};
  ASSERT_TRUE(WipeExtrapolated(*problem, study()));
  EXPECT_EQ(study().GetData(1, 2, 2), MISSING_VALUE);
  EXPECT_EQ(study().GetFlag(1, 2, 2), 0);
  EXPECT_FALSE(ClearData(*problem, study()));  // No
  EXPECT_FALSE(study().IsArrayEmpty());
  ui->answers = {Answer::Yes};
  EXPECT_TRUE(ClearData(*problem, study()));
  EXPECT_TRUE(study().IsArrayEmpty());
}

}  // namespace
}  // namespace kestrow
