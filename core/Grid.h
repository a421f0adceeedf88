// A grid of cell texts with colours, as analyses fill it and windows show it:
// rows and columns from 0, fixed rows and columns at the top and left, a
// hidden word per row and column (RowData, ColData), merged header ranges and
// column widths. The engine fills it; the workbench shows it through a table
// model; the command line prints it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/Settings.h"

namespace kestrow {

// A cell colour that follows the grid's default.
inline constexpr Colour DEFAULT_COLOUR = 0xFFFFFFFFu;

class Grid {
 public:
  struct Range {
    int row, col, rows, cols;
  };

  void Clear();
  void SetSize(int rows, int cols);
  // Appends an empty row, keeping the rest; gives its index.
  int AddRow();
  int Rows() const { return rows_; }
  int Cols() const { return cols_; }

  int FixedRows = 0;
  int FixedCols = 0;
  Colour BackColour = 0xFFFFFF;  // the grid's default background
  Colour ForeColour = 0x000000;  // and foreground

  const std::string& Text(int row, int col) const;
  void SetText(int row, int col, std::string text);
  Colour Back(int row, int col) const;  // DEFAULT_COLOUR resolved to BackColour
  Colour Fore(int row, int col) const;
  void SetBack(int row, int col, Colour c);
  void SetFore(int row, int col, Colour c);

  int ColData(int col) const { return InCols(col) ? colData_[static_cast<std::size_t>(col)] : 0; }
  void SetColData(int col, int value) {
    if (InCols(col)) colData_[static_cast<std::size_t>(col)] = value;
  }
  int RowData(int row) const { return InRows(row) ? rowData_[static_cast<std::size_t>(row)] : 0; }
  void SetRowData(int row, int value) {
    if (InRows(row)) rowData_[static_cast<std::size_t>(row)] = value;
  }
  // Column widths in twips (1/1440 inch); 0 means the view decides.
  int ColWidth(int col) const { return InCols(col) ? colWidth_[static_cast<std::size_t>(col)] : 0; }
  void SetColWidth(int col, int twips) {
    if (InCols(col)) colWidth_[static_cast<std::size_t>(col)] = twips;
  }

  std::vector<Range> Merges;
  // The merged range that holds a cell, if any.
  const Range* MergeAt(int row, int col) const;

  bool InRows(int row) const { return row >= 0 && row < rows_; }
  bool InCols(int col) const { return col >= 0 && col < cols_; }

  // Called after a cell's text or colour changed (the view repaints it), and
  // after the whole grid changed (row -1).
  std::function<void(int row, int col)> Changed;

  // Between BeginBatch and EndBatch changes are gathered, and EndBatch reports
  // one change of the whole grid: filling a large grid stays fast.
  void BeginBatch() { ++batch_; }
  void EndBatch() {
    if (batch_ > 0 && --batch_ == 0 && dirty_) {
      dirty_ = false;
      Notify(-1, -1);
    }
  }

 private:
  struct Cell {
    std::string text;
    Colour back = DEFAULT_COLOUR;
    Colour fore = DEFAULT_COLOUR;
  };
  std::size_t Index(int row, int col) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(cols_) + static_cast<std::size_t>(col);
  }
  void Notify(int row, int col) {
    if (batch_ > 0) {
      dirty_ = true;
    } else if (Changed) {
      Changed(row, col);
    }
  }

  int batch_ = 0;
  bool dirty_ = false;
  int rows_ = 0, cols_ = 0;
  std::vector<Cell> cells_;
  std::vector<int> colData_, rowData_, colWidth_;
};

}  // namespace kestrow
