// The data grid: the study's observations laid out in a Grid for entry. It
// lays the grid out for the current study, copies the array to the grid and
// back, and holds the rules of typing into a cell.
//
// Viewing never changes a stored value: a cell shows its observation by the
// shortest text of the float, and the unload stores only the cells that were
// typed in or pasted into since the load. An excluded observation shows as
// missing and keeps its value and flag until a value is put in its cell.
//
// Notes belong to a run and a replication. The vertical layout has a notes
// cell for each; the horizontal ones have one for a run, which shows all its
// notes, "(2) " before the text of a replication other than the only first,
// " | " between them, and an edit of it is read back the same way.
#pragma once

#include <string>
#include <vector>

#include "core/Grid.h"

namespace kestrow {

class Problem;
class Study;

// Layouts of the grid.
enum class GridLayout {
  Vertical = 0,   // each replication a section beneath the previous one
  Grouped = 1,    // the replications of each response side by side
  Sections = 2,   // each replication a section to the right of the previous
  TextRows = 3,   // an unstructured design: as Sections
};

class DataGrid {
 public:
  explicit DataGrid(Grid& grid) : grid_(grid) {}

  // Lays the grid out for the study: size, headings, merges, ColData and
  // RowData, colours. The layout follows the setting GridMode, or the text
  // rows of an unstructured design.
  void FixUpDataGrid(const Study& study);
  // Copies the array to the grid, with notes and the transformed columns.
  void LoadDataGrid(const Study& study);
  // Copies the cells edited since the load back to the array: a value put in
  // a cell is a measured one (no longer excluded or extrapolated), an emptied
  // cell is missing. An edited notes cell replaces the notes it shows.
  void UnLoadDataGrid(Study& study);

  // Puts text in a cell as an edit does (paste): the cell counts as edited
  // and shows as measured.
  void PutEdited(int row, int col, const std::string& text);
  bool IsEdited(int row, int col) const;

  // The text of a data cell for a value: empty for a missing one, otherwise
  // the shortest text that reads back as the same float.
  static std::string ValueText(float value);

  // Whether a cell may be typed in; if so, the text an edit starts with.
  bool BeforeEdit(int row, int col, std::string& editText) const;

  struct EditResult {
    bool accepted = true;  // false: beep, and the old text stays
    bool changed = false;  // the problem was marked as changed
  };
  // Checks a typed entry and shows it as the program keeps it; a refused entry
  // puts the text at the start of the edit back. Nothing reaches the array
  // here: UnLoadDataGrid does that, for the cells changed here.
  EditResult AfterEdit(Problem& problem, const Study& study, int row, int col, const std::string& typed,
                       const std::string& startText);

  // Marks the cells of all responses of a run and replication, for the charts
  // that point at a datum; off restores the grid's colour.
  void HighlightGridEntry(int run, int rep, bool on);

  // Where the Enter key moves from a cell, by the setting Navigation.
  void EnterKey(int& row, int& col) const;

  // The cell of a column response (1 to CountRVs, transformed ones counted),
  // run and replication.
  void CellOf(int columnRV, int run, int rep, int& row, int& col) const;
  // The column response of a study response (transformed: the column behind).
  int ColumnRV(int studyRV, bool transformed) const;
  int NotesColumn() const { return grid_.Cols() - 1; }
  GridLayout Layout() const { return layout_; }

 private:
  // The run and the replications whose notes the notes cell of a row holds.
  bool NotesCellOf(int row, int& run, int& firstRep, int& lastRep) const;
  std::string NotesText(const Study& study, int run, int firstRep, int lastRep) const;
  void StoreNotes(Study& study, int run, int firstRep, int lastRep, const std::string& text) const;

  Grid& grid_;
  GridLayout layout_ = GridLayout::Grouped;
  int nF_ = 0, nRV_ = 0, runs_ = 0, reps_ = 0;
  std::vector<int> columnRV_;     // by study response: its column response
  std::vector<int> studyRV_;      // by column response: the study response
  std::vector<bool> transformed_; // by column response
  std::vector<bool> edited_;      // by grid cell, row by row
};

}  // namespace kestrow
