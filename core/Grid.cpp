#include "core/Grid.h"

namespace kestrow {

void Grid::Clear() {
  rows_ = cols_ = 0;
  FixedRows = FixedCols = 0;
  cells_.clear();
  colData_.clear();
  rowData_.clear();
  colWidth_.clear();
  Merges.clear();
  Notify(-1, -1);
}

void Grid::SetSize(int rows, int cols) {
  rows_ = rows < 0 ? 0 : rows;
  cols_ = cols < 0 ? 0 : cols;
  cells_.assign(static_cast<std::size_t>(rows_) * static_cast<std::size_t>(cols_), Cell());
  colData_.assign(static_cast<std::size_t>(cols_), 0);
  colWidth_.assign(static_cast<std::size_t>(cols_), 0);
  rowData_.assign(static_cast<std::size_t>(rows_), 0);
  Merges.clear();
  Notify(-1, -1);
}

int Grid::AddRow() {
  cells_.resize(cells_.size() + static_cast<std::size_t>(cols_));
  rowData_.push_back(0);
  ++rows_;
  Notify(-1, -1);
  return rows_ - 1;
}

const std::string& Grid::Text(int row, int col) const {
  static const std::string none;
  return InRows(row) && InCols(col) ? cells_[Index(row, col)].text : none;
}

void Grid::SetText(int row, int col, std::string text) {
  if (!InRows(row) || !InCols(col)) return;
  cells_[Index(row, col)].text = std::move(text);
  Notify(row, col);
}

Colour Grid::Back(int row, int col) const {
  Colour c = InRows(row) && InCols(col) ? cells_[Index(row, col)].back : DEFAULT_COLOUR;
  return c == DEFAULT_COLOUR ? BackColour : c;
}

Colour Grid::Fore(int row, int col) const {
  Colour c = InRows(row) && InCols(col) ? cells_[Index(row, col)].fore : DEFAULT_COLOUR;
  return c == DEFAULT_COLOUR ? ForeColour : c;
}

void Grid::SetBack(int row, int col, Colour c) {
  if (!InRows(row) || !InCols(col)) return;
  cells_[Index(row, col)].back = c;
  Notify(row, col);
}

void Grid::SetFore(int row, int col, Colour c) {
  if (!InRows(row) || !InCols(col)) return;
  cells_[Index(row, col)].fore = c;
  Notify(row, col);
}

const Grid::Range* Grid::MergeAt(int row, int col) const {
  for (const Range& r : Merges)
    if (row >= r.row && row < r.row + r.rows && col >= r.col && col < r.col + r.cols) return &r;
  return nullptr;
}

}  // namespace kestrow
