// The data grid: where each layout puts a cell, what a load and an unload
// carry, and the rules of typing into a cell.
#include <gtest/gtest.h>

#include "core/Language.h"
#include "core/TestSupport.h"
#include "data/DataGrid.h"

namespace kestrow {
namespace {

using test::Sample;
using test::ScopedUi;

class DataGridTest : public ::testing::Test {
 protected:
  void SetUp() override {
    OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
    problem = Sample("CatalystTrial");  // 2 factors, 6 runs, 3 reps, Yield and a transformed Impurity
  }
  void TearDown() override { CloseLanguage(); }
  Study& study() { return problem->Studies(1); }
  void Lay(int mode) {
    gSettings.GridMode = static_cast<std::int16_t>(mode);
    dg.FixUpDataGrid(study());
    dg.LoadDataGrid(study());
  }
  ScopedUi ui;
  std::unique_ptr<Problem> problem;
  Grid grid;
  DataGrid dg{grid};
};

TEST_F(DataGridTest, GroupedLayoutPutsTheReplicationsOfAResponseSideBySide) {
  Lay(1);
  int row, col;
  dg.CellOf(1, 1, 1, row, col);
  EXPECT_EQ(row, 2);
  EXPECT_EQ(col, 3);  // behind Run and the two factors
  dg.CellOf(2, 5, 3, row, col);
  EXPECT_EQ(row, 6);
  EXPECT_EQ(col, 2 + 1 + 1 * 3 + 2);
  EXPECT_EQ(dg.ColumnRV(2, true), 3);  // the transformed Impurity follows Impurity
  EXPECT_EQ(grid.Cols(), 1 + 2 + 3 * 3 + 1);
  EXPECT_EQ(grid.Rows(), 8);
  EXPECT_EQ(grid.Text(1, 0), "Run");
  EXPECT_EQ(grid.Text(1, grid.Cols() - 1), "Notes");
  EXPECT_EQ(grid.Text(0, 1), "Treatments");
  EXPECT_EQ(grid.Text(0, 3), "Y");
  EXPECT_EQ(grid.Text(0, 9), "*Imp");
  EXPECT_EQ(grid.Text(1, 4), "Rep 2");
  EXPECT_EQ(grid.ColWidth(0), 502);
  EXPECT_EQ(grid.ColData(4), 2);
  EXPECT_EQ(grid.ColData(10), 102);  // transformed: read-only
  EXPECT_EQ(grid.Back(2, 10), gSettings.TransformedData);
}

TEST_F(DataGridTest, SectionsLayoutStartsEachReplicationToTheRight) {
  Lay(2);
  int row, col;
  dg.CellOf(1, 1, 2, row, col);
  EXPECT_EQ(row, 2);
  EXPECT_EQ(col, 2 + 1 + 1 * 3);
  EXPECT_EQ(grid.Text(0, col), "Rep 2");
}

TEST_F(DataGridTest, VerticalLayoutPutsEachReplicationBeneathWithItsOwnHeadings) {
  Lay(0);
  int row, col;
  dg.CellOf(1, 1, 2, row, col);
  EXPECT_EQ(row, study().iNumRuns + 4);  // the third row of the second section
  EXPECT_EQ(col, 3);
  EXPECT_EQ(grid.Rows(), 3 * (6 + 2));
  EXPECT_EQ(grid.RowData(8), 101);  // headings of the second section are read-only
  EXPECT_EQ(grid.RowData(0), 0);
  EXPECT_EQ(grid.Text(8, 1), "Results 2");
}

TEST_F(DataGridTest, LoadShowsValuesMissingCellsTransformsAndNotes) {
  Lay(1);
  int row, col;
  dg.CellOf(1, 4, 2, row, col);  // excluded: reads as missing
  EXPECT_EQ(grid.Text(row, col), "");
  dg.CellOf(1, 1, 1, row, col);
  EXPECT_EQ(grid.Text(row, col), "65.7");
  EXPECT_EQ(grid.Text(row, 1), "150");
  EXPECT_EQ(grid.Text(row, 2), "Acme");
  dg.CellOf(3, 1, 1, row, col);
  EXPECT_EQ(grid.Text(row, col), "2.179");  // log10(150 + 1) to four figures
  dg.CellOf(1, 6, 3, row, col);
  EXPECT_EQ(grid.Text(row, dg.NotesColumn()), "HPLC down, impurity not measured");
}

TEST_F(DataGridTest, AnExtrapolatedValueShowsInItsColourAndCannotBeTyped) {
  study().SetFlag(1, 2, 1, CELL_EXTRAPOLATED);
  Lay(1);
  int row, col;
  dg.CellOf(1, 2, 1, row, col);
  EXPECT_EQ(grid.Fore(row, col), gSettings.ExtrapolatedData);
  std::string start;
  EXPECT_FALSE(dg.BeforeEdit(row, col, start));
  dg.CellOf(1, 3, 1, row, col);
  EXPECT_TRUE(dg.BeforeEdit(row, col, start));
  EXPECT_EQ(start, "78.9");
  EXPECT_FALSE(dg.BeforeEdit(row, 10, start));  // a transformed column
  EXPECT_FALSE(dg.BeforeEdit(row, 0, start));   // the run column
  EXPECT_FALSE(dg.BeforeEdit(1, col, start));   // a heading
}

TEST_F(DataGridTest, TypedEntriesAreCheckedAgainstTheLimitAndShownAsTheFloat) {
  Lay(1);
  int row, col;
  dg.CellOf(1, 1, 1, row, col);
  auto type = [&](const std::string& text) {
    std::string start;
    dg.BeforeEdit(row, col, start);
    return dg.AfterEdit(*problem, study(), row, col, text, start);
  };
  EXPECT_TRUE(type(" 1.50 ").accepted);
  EXPECT_EQ(grid.Text(row, col), "1.5");
  EXPECT_TRUE(problem->bChanged);
  EXPECT_TRUE(type("999999400").accepted);
  for (const char* refused : {"999999499", "999999500", "-999999500", "1e12", "abc", "1,5"}) {
    std::string before = grid.Text(row, col);
    EXPECT_FALSE(type(refused).accepted) << refused;
    EXPECT_EQ(grid.Text(row, col), before) << refused;
  }
  EXPECT_TRUE(type("").accepted);  // AllowMissing is on
  EXPECT_EQ(grid.Text(row, col), "");
  gSettings.AllowMissing = false;
  type("5");
  EXPECT_FALSE(type("").accepted);
  EXPECT_EQ(grid.Text(row, col), "5");
}

TEST_F(DataGridTest, TheSameTextOverItselfChangesNothing) {
  Lay(1);
  int row, col;
  dg.CellOf(1, 1, 1, row, col);
  std::string start;
  dg.BeforeEdit(row, col, start);
  EXPECT_TRUE(dg.AfterEdit(*problem, study(), row, col, "65.7", start).accepted);
  EXPECT_FALSE(problem->bChanged);
}

TEST_F(DataGridTest, AnEntryUpdatesItsTransformedColumnAtOnce) {
  Lay(1);
  int row, col;
  dg.CellOf(2, 1, 1, row, col);  // Impurity
  std::string start;
  dg.BeforeEdit(row, col, start);
  dg.AfterEdit(*problem, study(), row, col, "99", start);
  int trow, tcol;
  dg.CellOf(3, 1, 1, trow, tcol);
  EXPECT_EQ(grid.Text(trow, tcol), "2");  // log10(99 + 1)
}

TEST_F(DataGridTest, EditingANoteMarksTheProblemButReachesTheStudyAtTheUnload) {
  Lay(1);
  std::string start;
  dg.BeforeEdit(2, dg.NotesColumn(), start);
  dg.AfterEdit(*problem, study(), 2, dg.NotesColumn(), "checked", start);
  EXPECT_TRUE(problem->bChanged);
  int notes = study().Notes.Count();
  EXPECT_EQ(notes, 2);
  dg.UnLoadDataGrid(study());
  bool found = false;
  for (const Note& n : study().Notes) found = found || (n.iRun == 1 && n.sText == "checked");
  EXPECT_TRUE(found);
}

TEST_F(DataGridTest, UnloadStoresTheGridAndAnEmptyCellAsMissing) {
  Lay(0);
  int row, col;
  dg.CellOf(1, 2, 3, row, col);
  grid.SetText(row, col, "12.5");
  dg.CellOf(2, 1, 1, row, col);
  grid.SetText(row, col, "");
  dg.CellOf(1, 3, 1, row, col);
  grid.SetText(row, col, "MAX");  // nothing stops a level text here
  dg.UnLoadDataGrid(study());
  EXPECT_EQ(study().GetData(1, 2, 3), 12.5f);
  EXPECT_EQ(study().GetData(2, 1, 1), MISSING_VALUE);
  EXPECT_EQ(study().GetData(1, 3, 1), TARGET_MAX);
  EXPECT_EQ(study().GetData(1, 1, 1), 65.7f);
}

TEST_F(DataGridTest, CopyingTheArrayToTheGridAndBackChangesNoValue) {
  for (int mode : {0, 1, 2}) {
    Lay(mode);
    dg.UnLoadDataGrid(study());
    // Values, flags and run order survive; notes are rebuilt in their rows.
    for (int rv = 1; rv <= 2; ++rv)
      for (int run = 1; run <= 6; ++run)
        for (int rep = 1; rep <= 3; ++rep)
          EXPECT_EQ(study().GetData(rv, run, rep), Sample("CatalystTrial")->Studies(1).GetData(rv, run, rep));
  }
}

TEST_F(DataGridTest, HighlightMarksEveryResponseOfARunAndReplication) {
  Lay(1);
  dg.HighlightGridEntry(2, 3, true);
  int row, col;
  dg.CellOf(1, 2, 3, row, col);
  EXPECT_EQ(grid.Back(row, col), gSettings.ANOVAHighlights);
  dg.CellOf(2, 2, 3, row, col);
  EXPECT_EQ(grid.Back(row, col), gSettings.ANOVAHighlights);
  dg.HighlightGridEntry(2, 3, false);
  EXPECT_EQ(grid.Back(row, col), gSettings.DataGrid);
}

TEST_F(DataGridTest, EnterMovesDownThenToTheTopOfTheNextColumnOrRightThenDown) {
  Lay(1);
  int row = 3, col = 4;
  dg.EnterKey(row, col);
  EXPECT_EQ(row, 4);
  row = grid.Rows() - 1;
  dg.EnterKey(row, col);
  EXPECT_EQ(row, 2);
  EXPECT_EQ(col, 5);
  gSettings.Navigation = 1;
  row = 3;
  col = 4;
  dg.EnterKey(row, col);
  EXPECT_EQ(col, 5);
  col = grid.Cols() - 1;
  dg.EnterKey(row, col);
  EXPECT_EQ(col, 1);
  EXPECT_EQ(row, 4);
}

TEST_F(DataGridTest, ALargeStudyLaysOutAndLoadsEveryCell) {
  Study big = study();
  big.iNumRuns = 2000;
  big.iReps = 30;
  big.SetDataArray();
  for (int run = 1; run <= 2000; ++run)
    for (int rep = 1; rep <= 30; ++rep) big.SetData(1, run, rep, static_cast<float>(run + rep));
  gSettings.GridMode = 1;
  dg.FixUpDataGrid(big);
  dg.LoadDataGrid(big);
  int row, col;
  dg.CellOf(1, 2000, 30, row, col);
  EXPECT_EQ(grid.Text(row, col), "2030");
  EXPECT_EQ(grid.Rows(), 2002);
}

}  // namespace
}  // namespace kestrow
