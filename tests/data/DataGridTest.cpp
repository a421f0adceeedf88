// The data grid: where each layout puts a cell, what a load and an unload
// carry, and the rules of typing into a cell.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "core/TestSupport.h"

namespace kestrow {
namespace {

// 2 factors, 6 runs, 3 reps, Yield and a transformed Impurity.
class DataGridTest : public test::SampleGridFixture {
 protected:
  DataGridTest() : SampleGridFixture("CatalystTrial") {}
  // Types into a cell as the grid's editor does.
  DataGrid::EditResult Type(int row, int col, const std::string& text) {
    std::string start;
    dg.BeforeEdit(row, col, start);
    return dg.AfterEdit(*problem, study(), row, col, text, start);
  }
};

TEST_F(DataGridTest, GroupedLayoutPutsTheReplicationsOfAResponseSideBySide) {
  Show(1);
  EXPECT_EQ(Cell(1, 1, 1), std::pair(2, 3));  // behind Run and the two factors
  EXPECT_EQ(Cell(2, 5, 3), std::pair(6, 2 + 1 + 1 * 3 + 2));
  EXPECT_EQ(dg.ColumnRV(2, true), 3);  // the transformed Impurity follows Impurity
  EXPECT_EQ(grid.Cols(), 1 + 2 + 3 * 3 + 1);
  EXPECT_EQ(grid.Rows(), 8);
  EXPECT_EQ(grid.Text(0, 3), "Y");
  EXPECT_EQ(grid.Text(0, 9), "*Imp");
  EXPECT_EQ(grid.Text(1, 4), "Rep 2");
  EXPECT_EQ(grid.ColData(4), 2);
  EXPECT_EQ(grid.ColData(10), 102);  // transformed: read-only
  EXPECT_EQ(grid.Back(2, 10), gSettings.TransformedData);
}

TEST_F(DataGridTest, SectionsLayoutStartsEachReplicationToTheRight) {
  Show(2);
  EXPECT_EQ(Cell(1, 1, 2), std::pair(2, 2 + 1 + 1 * 3));
  EXPECT_EQ(grid.Text(0, 6), "Rep 2");
}

TEST_F(DataGridTest, VerticalLayoutPutsEachReplicationBeneathWithItsOwnHeadings) {
  Show(0);
  EXPECT_EQ(Cell(1, 1, 2), std::pair(study().iNumRuns + 4, 3));  // the third row of the second section
  EXPECT_EQ(grid.Rows(), 3 * (6 + 2));
  EXPECT_EQ(grid.RowData(8), 101);  // headings of the second section are read-only
  EXPECT_EQ(grid.RowData(0), 0);
  EXPECT_EQ(grid.Text(8, 1), "Results 2");
}

TEST_F(DataGridTest, LoadShowsValuesMissingCellsTransformsAndNotes) {
  Show(1);
  EXPECT_EQ(TextAt(1, 4, 2), "");  // excluded: reads as missing
  EXPECT_EQ(TextAt(1, 1, 1), "65.7");
  EXPECT_EQ(grid.Text(2, 1), "150");
  EXPECT_EQ(grid.Text(2, 2), "Acme");
  EXPECT_EQ(TextAt(3, 1, 1), "2.179");  // log10(150 + 1) to four figures
  // One notes cell a run: a note of a later replication carries its number.
  EXPECT_EQ(grid.Text(Cell(1, 6, 3).first, dg.NotesColumn()), "(3) HPLC down, impurity not measured");
  Show(0);  // a notes cell for each run and replication
  EXPECT_EQ(grid.Text(Cell(1, 6, 3).first, dg.NotesColumn()), "HPLC down, impurity not measured");
  EXPECT_EQ(grid.Text(Cell(1, 6, 1).first, dg.NotesColumn()), "");
}

TEST_F(DataGridTest, AnExtrapolatedValueShowsInItsColourAndCannotBeTyped) {
  study().SetFlag(1, 2, 1, CELL_EXTRAPOLATED);
  Show(1);
  auto [row, col] = Cell(1, 2, 1);
  EXPECT_EQ(grid.Fore(row, col), gSettings.ExtrapolatedData);
  std::string start;
  EXPECT_FALSE(dg.BeforeEdit(row, col, start));
  EXPECT_TRUE(dg.BeforeEdit(row + 1, col, start));
  EXPECT_EQ(start, "78.9");
  // A transformed column, the run column, a heading.
  for (auto [r, c] : {std::pair{row, 10}, {row, 0}, {1, col}}) EXPECT_FALSE(dg.BeforeEdit(r, c, start)) << r << "," << c;
}

TEST_F(DataGridTest, TypedEntriesAreCheckedAgainstTheLimitAndShownAsTheFloat) {
  Show(1);
  auto [row, col] = Cell(1, 1, 1);
  EXPECT_TRUE(Type(row, col, "65.7").accepted);  // the same text over itself changes nothing
  EXPECT_FALSE(problem->bChanged);
  EXPECT_TRUE(Type(row, col, " 1.50 ").accepted);
  EXPECT_EQ(grid.Text(row, col), "1.5");
  EXPECT_TRUE(problem->bChanged);
  EXPECT_TRUE(Type(row, col, "999999400").accepted);
  for (const char* refused : {"999999499", "999999500", "-999999500", "1e12", "abc", "1,5"}) {
    std::string before = grid.Text(row, col);
    EXPECT_FALSE(Type(row, col, refused).accepted) << refused;
    EXPECT_EQ(grid.Text(row, col), before) << refused;
  }
  EXPECT_TRUE(Type(row, col, "").accepted);  // AllowMissing is on
  EXPECT_EQ(grid.Text(row, col), "");
  gSettings.AllowMissing = false;
  Type(row, col, "5");
  EXPECT_FALSE(Type(row, col, "").accepted);
  EXPECT_EQ(grid.Text(row, col), "5");
}

TEST_F(DataGridTest, AnEntryUpdatesItsTransformedColumnAtOnce) {
  Show(1);
  auto [row, col] = Cell(2, 1, 1);  // Impurity
  Type(row, col, "99");
  EXPECT_EQ(TextAt(3, 1, 1), "2");  // log10(99 + 1)
}

TEST_F(DataGridTest, EditingANoteMarksTheProblemButReachesTheStudyAtTheUnload) {
  Show(1);
  Type(2, dg.NotesColumn(), "checked");
  EXPECT_TRUE(problem->bChanged);
  EXPECT_EQ(study().Notes.Count(), 2);
  dg.UnLoadDataGrid(study());
  bool found = false;
  for (const Note& n : study().Notes) found = found || (n.iRun == 1 && n.sText == "checked");
  EXPECT_TRUE(found);
}

TEST_F(DataGridTest, UnloadStoresTheEditedCellsAndAnEmptyCellAsMissing) {
  Show(0);
  auto put = [&](int rv, int run, int rep, const char* text) {
    auto [row, col] = Cell(rv, run, rep);
    dg.PutEdited(row, col, text);
  };
  put(1, 2, 3, "12.5");
  put(2, 1, 1, "");
  put(1, 3, 1, "MAX");  // nothing stops a level text here
  auto [row, col] = Cell(1, 1, 1);
  grid.SetText(row, col, "999");  // not an edit: never stored
  dg.UnLoadDataGrid(study());
  EXPECT_EQ(study().GetData(1, 2, 3), 12.5f);
  EXPECT_EQ(study().GetData(2, 1, 1), MISSING_VALUE);
  EXPECT_EQ(study().GetData(1, 3, 1), TARGET_MAX);
  EXPECT_EQ(study().GetData(1, 1, 1), 65.7f);
}

// Viewing never changes a stored value: in every layout a load and an
// unload leave every cell, flag and note as it was, tiny values, an excluded
// cell and notes of several replications of one run among them.
TEST_F(DataGridTest, ViewingChangesNoValueFlagOrNoteInAnyLayout) {
  study().SetData(1, 1, 1, 1.23e-6f);
  study().SetData(1, 1, 2, -3e-7f);
  study().SetData(2, 2, 2, 1e-30f);
  study().AddNote(6, 1, "first replication");
  study().AddNote(6, 2, "second | with a bar");
  const Study before = study();
  for (int mode : {0, 1, 2}) {
    Show(mode);
    EXPECT_EQ(TextAt(1, 1, 1), "1.23E-06") << mode;
    dg.UnLoadDataGrid(study());
    for (int rv = 1; rv <= 2; ++rv)
      for (int run = 1; run <= 6; ++run)
        for (int rep = 1; rep <= 3; ++rep) {
          EXPECT_EQ(study().GetData(rv, run, rep), before.GetData(rv, run, rep)) << mode;
          EXPECT_EQ(study().GetFlag(rv, run, rep), before.GetFlag(rv, run, rep)) << mode;
        }
    ASSERT_EQ(study().Notes.Count(), before.Notes.Count()) << mode;
    for (int i = 1; i <= before.Notes.Count(); ++i) {
      EXPECT_EQ(study().Notes(i).sText, before.Notes(i).sText) << mode;
      EXPECT_EQ(study().Notes(i).iRep, before.Notes(i).iRep) << mode;
    }
  }
  Show(1);
  EXPECT_EQ(grid.Text(Cell(1, 6, 1).first, dg.NotesColumn()),
            "(1) first replication | (2) second | with a bar | (3) HPLC down, impurity not measured");
}

// A run's notes cell of a horizontal layout is edited as it shows them: the
// marked pieces go to their replications, an unmarked one to the first, and
// no other run's notes change.
TEST_F(DataGridTest, EditingARunsNotesCellRewritesThatRunsNotesOnly) {
  Show(1);
  int notesRow = Cell(1, 6, 1).first;
  Type(notesRow, dg.NotesColumn(), "(3) HPLC fixed | (2) redone");
  dg.UnLoadDataGrid(study());
  std::vector<std::tuple<int, int, std::string>> notes;
  for (const Note& n : study().Notes) notes.emplace_back(n.iRun, n.iRep, n.sText);
  std::sort(notes.begin(), notes.end());
  EXPECT_EQ(notes, (std::vector<std::tuple<int, int, std::string>>{
                       {4, 2, "Sampler leaked; yield not trusted"}, {6, 2, "redone"}, {6, 3, "HPLC fixed"}}));
  Type(notesRow, dg.NotesColumn(), "");
  dg.UnLoadDataGrid(study());
  EXPECT_EQ(study().Notes.Count(), 1);
}

// A note's own text may hold the separator or start like a mark: editing
// another replication's note in the same cell leaves it whole and where it was.
TEST_F(DataGridTest, ANoteThatLooksLikeTheNotationKeepsItsTextAndReplicationThroughAnEdit) {
  study().AddNote(3, 1, "(2) samples swapped | see log");
  study().AddNote(5, 2, "second | with a bar");
  study().AddNote(5, 3, "third");
  Show(2);
  int row3 = Cell(1, 3, 1).first, row5 = Cell(1, 5, 1).first;
  EXPECT_EQ(grid.Text(row3, dg.NotesColumn()), "(1) (2) samples swapped | see log");
  Type(row3, dg.NotesColumn(), grid.Text(row3, dg.NotesColumn()) + " p. 4");
  Type(row5, dg.NotesColumn(), grid.Text(row5, dg.NotesColumn()) + ", redone");
  dg.UnLoadDataGrid(study());
  std::vector<std::tuple<int, int, std::string>> notes;
  for (const Note& n : study().Notes) notes.emplace_back(n.iRun, n.iRep, n.sText);
  std::sort(notes.begin(), notes.end());
  EXPECT_EQ(notes, (std::vector<std::tuple<int, int, std::string>>{
                       {3, 1, "(2) samples swapped | see log p. 4"},
                       {4, 2, "Sampler leaked; yield not trusted"},
                       {5, 2, "second | with a bar"},
                       {5, 3, "third, redone"},
                       {6, 3, "HPLC down, impurity not measured"}}));
}

// An excluded cell reads as missing; a value typed into it is kept and the
// exclusion ends. A value pasted or typed over an estimate is measured.
TEST_F(DataGridTest, AValuePutInAnExcludedOrEstimatedCellIsAMeasuredOne) {
  study().SetFlag(1, 2, 1, CELL_EXTRAPOLATED);
  Show(1);
  auto [row, col] = Cell(1, 4, 2);
  EXPECT_EQ(grid.Text(row, col), "");
  EXPECT_TRUE(Type(row, col, "81.5").changed);
  auto [erow, ecol] = Cell(1, 2, 1);
  dg.PutEdited(erow, ecol, "123.5");
  std::string start;
  EXPECT_TRUE(dg.BeforeEdit(erow, ecol, start));  // no longer an estimate on screen
  dg.UnLoadDataGrid(study());
  EXPECT_EQ(study().GetData(1, 4, 2), 81.5f);
  EXPECT_EQ(study().GetFlag(1, 4, 2), 0);
  EXPECT_EQ(study().GetData(1, 2, 1), 123.5f);
  EXPECT_EQ(study().GetFlag(1, 2, 1), 0);
}

TEST_F(DataGridTest, HighlightMarksEveryResponseOfARunAndReplication) {
  Show(1);
  auto back = [&](int rv) {
    auto [row, col] = Cell(rv, 2, 3);
    return grid.Back(row, col);
  };
  dg.HighlightGridEntry(2, 3, true);
  EXPECT_EQ(back(1), gSettings.ANOVAHighlights);
  EXPECT_EQ(back(2), gSettings.ANOVAHighlights);
  EXPECT_EQ(back(3), gSettings.TransformedData);  // the transformed column keeps its colour
  dg.HighlightGridEntry(2, 3, false);
  EXPECT_EQ(back(2), gSettings.DataGrid);
}

TEST_F(DataGridTest, EnterMovesDownThenToTheTopOfTheNextColumnOrRightThenDown) {
  Show(1);
  int row = 3, col = 4;
  dg.EnterKey(row, col);
  EXPECT_EQ(row, 4);
  row = grid.Rows() - 1;
  dg.EnterKey(row, col);
  EXPECT_EQ(std::pair(row, col), std::pair(2, 5));
  gSettings.Navigation = 1;
  row = 3;
  col = 4;
  dg.EnterKey(row, col);
  EXPECT_EQ(col, 5);
  col = grid.Cols() - 1;
  dg.EnterKey(row, col);
  EXPECT_EQ(std::pair(row, col), std::pair(4, 1));
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
  EXPECT_EQ(TextAt(1, 2000, 30), "2030");
  EXPECT_EQ(grid.Rows(), 2002);
}

}  // namespace
}  // namespace kestrow
