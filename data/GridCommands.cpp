#include "data/GridCommands.h"

#include <vector>

#include "core/Grid.h"
#include "core/Language.h"
#include "core/Problem.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/DataGrid.h"
#include "data/Statistics.h"

namespace kestrow {

namespace {

// Designs whose runs can't be estimated from factor levels: unstructured ones
// and those with coded settings.
constexpr std::int16_t NO_EXTRAPOLATION = DES_UNSTRUCTURED | DES_CODED;
// An unstructured study holds at most this many rows.
constexpr int UNSTRUCTURED_ROWS = 500;

// The rows and cells of clipboard text, as the text has them: empty rows and
// empty cells count (a copied column of missing values ends in empty rows),
// and only the line end that closes the last row opens no row of its own.
std::vector<std::vector<std::string>> Split(const std::string& text) {
  std::vector<std::vector<std::string>> rows;
  std::string t = text;
  if (!t.empty() && t.back() == '\n') t.pop_back();
  if (!t.empty() && t.back() == '\r') t.pop_back();
  if (t.empty() && text.empty()) return rows;
  std::size_t start = 0;
  while (start <= t.size()) {
    std::size_t end = t.find('\n', start);
    std::string line = t.substr(start, end == std::string::npos ? std::string::npos : end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::vector<std::string> cells;
    std::size_t c = 0;
    for (;;) {
      std::size_t tab = line.find('\t', c);
      cells.push_back(line.substr(c, tab == std::string::npos ? std::string::npos : tab - c));
      if (tab == std::string::npos) break;
      c = tab + 1;
    }
    rows.push_back(std::move(cells));
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return rows;
}

// The rows of the grid that hold data, in order: one per run of each section.
std::vector<int> DataRows(const DataGrid& layout, const Study& s) {
  std::vector<int> rows;
  bool vertical = layout.Layout() == GridLayout::Vertical;
  for (int rep = 1; rep <= (vertical ? s.iReps : 1); ++rep)
    for (int run = 1; run <= s.iNumRuns; ++run) {
      int row, col;
      layout.CellOf(1, run, rep, row, col);
      rows.push_back(row);
    }
  return rows;
}

// The columns that take data (transformed ones are read-only), and the
// factor columns first when they go along.
std::vector<int> DataColumns(const Grid& grid, const Study& s, bool withFactors) {
  std::vector<int> cols;
  if (withFactors)
    for (int f = 1; f <= s.Factors.Count(); ++f) cols.push_back(f);
  for (int c = s.Factors.Count() + 1; c < grid.Cols() - 1; ++c)
    if (grid.ColData(c) <= 100) cols.push_back(c);
  return cols;
}

bool WithFactors(const Study& s) { return gSettings.CtrlCLevels || (s.iDesFlag & DES_UNSTRUCTURED); }

// Writes the cells of the clipboard into the grid from (row index, column
// index) of the data area on; text that is no number leaves its cell alone.
// A pasted value is an edit of its cell: it is stored at the next unload and
// counts as measured, whatever the cell held; an empty cell clears it.
void Write(DataGrid& layout, Grid& grid, const std::vector<int>& rows, const std::vector<int>& cols,
           const std::vector<std::vector<std::string>>& cells, std::size_t firstRow, std::size_t firstCol,
           const Study& s) {
  grid.BeginBatch();
  for (std::size_t r = 0; r < cells.size() && firstRow + r < rows.size(); ++r)
    for (std::size_t c = 0; c < cells[r].size() && firstCol + c < cols.size(); ++c) {
      std::string text = cells[r][c];
      int row = rows[firstRow + r], col = cols[firstCol + c];
      float value = ParseTarget(text);
      if (value == BAD_NUMBER) continue;
      if (col <= s.Factors.Count()) {  // the factor columns of an unstructured study
        grid.SetText(row, col, TargetToText(value));
        continue;
      }
      if (grid.Text(row, col) != DataGrid::ValueText(value) || grid.Fore(row, col) == gSettings.ExtrapolatedData)
        layout.PutEdited(row, col, DataGrid::ValueText(value));
    }
  grid.EndBatch();
}

}  // namespace

std::string CopyData(const DataGrid& layout, const Grid& grid, const Study& s, const Grid::Range* selection) {
  std::string out;
  std::vector<int> rows, cols;
  if (selection && selection->rows * selection->cols > 1) {
    for (int r = selection->row; r < selection->row + selection->rows; ++r)
      if (grid.InRows(r)) rows.push_back(r);
    for (int c = selection->col; c < selection->col + selection->cols; ++c)
      if (grid.InCols(c)) cols.push_back(c);
  } else {
    rows = DataRows(layout, s);
    cols = DataColumns(grid, s, WithFactors(s));
  }
  for (int row : rows) {
    for (std::size_t c = 0; c < cols.size(); ++c) out += (c ? "\t" : "") + grid.Text(row, cols[c]);
    out += "\r\n";
  }
  if (gSettings.ClipAcknowledge) InfoBox(SubstituteCopy(GetText("MNmsg2"), std::to_string(out.size())));
  return out;
}

bool PasteData(DataGrid& layout, Grid& grid, Problem& problem, const Study& s, const std::string& text) {
  auto cells = Split(text);
  std::vector<int> rows = DataRows(layout, s);
  std::vector<int> cols = DataColumns(grid, s, s.iDesFlag & DES_UNSTRUCTURED);
  int count = static_cast<int>(cells.size());
  int difference = (s.iDesFlag & DES_UNSTRUCTURED) ? (count > UNSTRUCTURED_ROWS ? 1 : 0)
                                                   : count - static_cast<int>(rows.size());
  if (difference < 0 && CurrentUi().YesNoCancelBox(GetText("MNmsg3")) == Answer::Cancel) return false;
  if (difference > 0 && CurrentUi().YesNoCancelBox(GetText("MNmsg4")) == Answer::Cancel) return false;
  if (cells.empty()) return false;
  for (const auto& row : cells)
    if (row.size() != cells[0].size()) {
      InfoBox(GetText("MNmsg5"));
      return false;
    }
  if (cells[0].size() < cols.size()) {
    ErrorBox(GetText("MNmsg6"));
    return false;
  }
  if (cells[0].size() > cols.size() && YesNoBox(GetText("MNmsg7")) != Answer::Yes) return false;
  if (s.DoesArrayExist() && !s.IsArrayEmpty() && YesNoBox(GetText("MNmsg7")) != Answer::Yes) return false;
  Write(layout, grid, rows, cols, cells, 0, 0, s);
  problem.bChanged = true;
  return true;
}

bool PasteToCursor(DataGrid& layout, Grid& grid, Problem& problem, const Study& s, const std::string& text,
                   int row, int col) {
  auto cells = Split(text);
  if (cells.empty()) return false;
  std::vector<int> rows = DataRows(layout, s);
  std::vector<int> cols = DataColumns(grid, s, s.iDesFlag & DES_UNSTRUCTURED);
  std::size_t r0 = 0, c0 = 0;
  while (r0 < rows.size() && rows[r0] != row) ++r0;
  while (c0 < cols.size() && cols[c0] != col) ++c0;
  if (r0 == rows.size() || c0 == cols.size()) return false;
  std::size_t widest = 0;
  for (const auto& line : cells) widest = std::max(widest, line.size());
  if ((r0 + cells.size() > rows.size() || c0 + widest > cols.size()) && YesNoBox(GetText("MNmsg7")) != Answer::Yes)
    return false;
  Write(layout, grid, rows, cols, cells, r0, c0, s);
  problem.bChanged = true;
  return true;
}

bool ClearData(Problem& problem, Study& s) {
  if (YesNoBox(GetText("MNmsg1")) != Answer::Yes) return false;
  s.SetDataArray();
  s.ZapNotes();
  problem.bChanged = true;
  return true;
}

bool Extrapolate(Problem& problem, Study& s) {
  if (s.iDesFlag & NO_EXTRAPOLATION) {
    ErrorBox(GetText("MNerr1"));
    return false;
  }
  Statistics stats;
  stats.Compute(s);
  bool filled = false;
  auto fill = [&](int rv, int run, int rep, float value) {
    s.SetData(rv, run, rep, value);
    s.SetFlag(rv, run, rep, static_cast<std::uint8_t>(s.GetFlag(rv, run, rep) | CELL_EXTRAPOLATED));
    filled = true;
  };
  bool ok = true;
  for (int rv = 1; ok && rv <= s.StudyRespVars.Count(); ++rv)
    for (int run = 1; ok && run <= s.iNumRuns; ++run) {
      if (s.iReps < 2) {
        if (s.GetData(rv, run, 1) != MISSING_VALUE) continue;
        // The grand mean plus the deviation of the mean of each of the run's
        // levels; the cells filled in this pass count in the level means.
        float grand = stats.AvgAvg(rv);
        float estimate = grand;
        for (int f = 1; ok && f <= s.Factors.Count(); ++f) {
          int level = s.GetTreatmentLevel(f, run);
          double sum = 0;
          int n = 0;
          for (int other = 1; other <= s.iNumRuns; ++other)
            if (s.GetTreatmentLevel(f, other) == level && s.GetData(rv, other, 1) != MISSING_VALUE) {
              sum += s.GetData(rv, other, 1);
              ++n;
            }
          if (n == 0) {
            ErrorBox(GetText("MNerr2"));
            ok = false;
            break;
          }
          estimate = static_cast<float>(sum / n) + estimate - grand;
        }
        if (ok) fill(rv, run, 1, estimate);
      } else {
        float average = stats.SampAvg(run, rv);
        bool anyMissing = false;
        for (int rep = 1; rep <= s.iReps; ++rep) anyMissing = anyMissing || s.GetData(rv, run, rep) == MISSING_VALUE;
        if (!anyMissing) continue;
        if (average == MISSING_VALUE) {
          ErrorBox(GetText("MNerr3"));
          ok = false;
          break;
        }
        for (int rep = 1; rep <= s.iReps; ++rep)
          if (s.GetData(rv, run, rep) == MISSING_VALUE) fill(rv, run, rep, average);
      }
    }
  if (filled) problem.bChanged = true;
  return ok;
}

bool WipeExtrapolated(Problem& problem, Study& s) {
  bool any = false;
  for (int rv = 1; !any && rv <= s.StudyRespVars.Count(); ++rv)
    for (int run = 1; !any && run <= s.iNumRuns; ++run)
      for (int rep = 1; rep <= s.iReps; ++rep)
        if (s.GetFlag(rv, run, rep) & CELL_EXTRAPOLATED) any = true;
  if (!any) return false;
  if (YesNoBox(GetText("MNmsg8")) != Answer::Yes) return false;
  for (int rv = 1; rv <= s.StudyRespVars.Count(); ++rv)
    for (int run = 1; run <= s.iNumRuns; ++run)
      for (int rep = 1; rep <= s.iReps; ++rep)
        if (s.GetFlag(rv, run, rep) & CELL_EXTRAPOLATED) {
          s.SetData(rv, run, rep, MISSING_VALUE);
          s.SetFlag(rv, run, rep, static_cast<std::uint8_t>(s.GetFlag(rv, run, rep) & ~CELL_EXTRAPOLATED));
        }
  problem.bChanged = true;
  return true;
}

}  // namespace kestrow
