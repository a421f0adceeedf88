#include "data/DataGrid.h"

#include <algorithm>
#include <cmath>

#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Problem.h"
#include "core/Sentinels.h"
#include "core/Settings.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

namespace {

// The run column is 502 twips wide.
constexpr int RUN_COLUMN_TWIPS = 502;
// ColData of a transformed column is its replication plus this; RowData of a
// heading row inside the vertical layout is above it.
constexpr int TRANSFORMED = 100;
constexpr int HEADING_ROW = 101;

// Black, the foreground of a value that was not extrapolated.
constexpr Colour BLACK = 0x000000;

// The largest magnitude a cell takes, compared as a 32-bit float: 999999500
// itself rounds to the same float as 999999499, so both are refused.
const float ENTRY_LIMIT = static_cast<float>(999999500.0);

// Between the notes of one notes cell.
constexpr const char* NOTE_SEPARATOR = " | ";

}  // namespace

std::string DataGrid::ValueText(float value) { return value == MISSING_VALUE ? std::string() : ShortestText(value); }

bool DataGrid::IsEdited(int row, int col) const {
  if (!grid_.InRows(row) || !grid_.InCols(col)) return false;
  std::size_t at = static_cast<std::size_t>(row) * static_cast<std::size_t>(grid_.Cols()) + static_cast<std::size_t>(col);
  return at < edited_.size() && edited_[at];
}

void DataGrid::PutEdited(int row, int col, const std::string& text) {
  if (!grid_.InRows(row) || !grid_.InCols(col)) return;
  grid_.SetText(row, col, text);
  if (col != NotesColumn()) grid_.SetFore(row, col, BLACK);
  std::size_t at = static_cast<std::size_t>(row) * static_cast<std::size_t>(grid_.Cols()) + static_cast<std::size_t>(col);
  if (at < edited_.size()) edited_[at] = true;
}

bool DataGrid::NotesCellOf(int row, int& run, int& firstRep, int& lastRep) const {
  if (layout_ == GridLayout::Vertical) {
    int section = runs_ + 2;
    int rep = row / section + 1;
    run = row % section - 1;
    firstRep = lastRep = rep;
  } else {
    run = row - 1;
    firstRep = 1;
    lastRep = reps_;
  }
  return run >= 1 && run <= runs_ && firstRep >= 1 && lastRep <= reps_;
}

namespace {

// The replication a notes piece is marked with, "(2) " at its start, or 0;
// only a replication between first and last counts as a mark.
int MarkedRep(const std::string& piece, int firstRep, int lastRep, std::size_t& textStart) {
  std::size_t close = piece.find(") ");
  if (piece.size() < 4 || piece[0] != '(' || close == std::string::npos || close < 2 || close > 6) return 0;
  std::string digits = piece.substr(1, close - 1);
  if (digits.find_first_not_of("0123456789") != std::string::npos) return 0;
  int rep = std::stoi(digits);
  if (rep < firstRep || rep > lastRep) return 0;
  textStart = close + 2;
  return rep;
}

// Where the next marked piece starts: a separator followed by a mark. A
// separator inside a note's own text is not followed by one and stays there.
std::size_t NextMarkedPiece(const std::string& text, std::size_t from, int firstRep, int lastRep) {
  const std::string separator = NOTE_SEPARATOR;
  for (std::size_t at = text.find(separator, from); at != std::string::npos; at = text.find(separator, at + 1)) {
    std::size_t start = 0;
    if (MarkedRep(text.substr(at + separator.size()), firstRep, lastRep, start) != 0) return at;
  }
  return std::string::npos;
}

}  // namespace

std::string DataGrid::NotesText(const Study& s, int run, int firstRep, int lastRep) const {
  std::vector<const Note*> notes;
  for (const Note& n : s.Notes)
    if (n.iRun == run && n.iRep >= firstRep && n.iRep <= lastRep) notes.push_back(&n);
  std::stable_sort(notes.begin(), notes.end(), [](const Note* a, const Note* b) { return a->iRep < b->iRep; });
  // A lone note of the first replication shows as it is, unless its text
  // would read back as marked for another replication.
  bool plain = firstRep == lastRep;
  if (notes.size() == 1 && notes[0]->iRep == firstRep) {
    std::size_t start = 0;
    const std::string& t = notes[0]->sText;
    plain = plain || (MarkedRep(t, firstRep, lastRep, start) == 0 && NextMarkedPiece(t, 0, firstRep, lastRep) == std::string::npos);
  }
  std::string text;
  for (const Note* n : notes) {
    if (!text.empty()) text += NOTE_SEPARATOR;
    if (!plain) text += "(" + std::to_string(n->iRep) + ") ";
    text += n->sText;
  }
  return text;
}

void DataGrid::StoreNotes(Study& s, int run, int firstRep, int lastRep, const std::string& text) const {
  for (int i = s.Notes.Count(); i >= 1; --i) {
    const Note& n = s.Notes(i);
    if (n.iRun == run && n.iRep >= firstRep && n.iRep <= lastRep) s.Notes.Remove(i);
  }
  if (Trim(text).empty()) return;
  if (firstRep == lastRep) {
    s.AddNote(run, firstRep, text);
    return;
  }
  // "(2) text" is a note of replication 2, up to the next " | " that is
  // followed by such a mark; text before the first mark is a note of the
  // first replication.
  const std::size_t separator = std::string(NOTE_SEPARATOR).size();
  std::size_t from = 0;
  for (;;) {
    std::size_t cut = NextMarkedPiece(text, from, firstRep, lastRep);
    std::string piece = text.substr(from, cut == std::string::npos ? std::string::npos : cut - from);
    std::size_t start = 0;
    int rep = MarkedRep(piece, firstRep, lastRep, start);
    if (rep == 0) rep = firstRep;
    piece = piece.substr(start);
    if (!Trim(piece).empty()) s.AddNote(run, rep, piece);
    if (cut == std::string::npos) break;
    from = cut + separator;
  }
}

int DataGrid::ColumnRV(int studyRV, bool transformed) const {
  if (studyRV < 1 || studyRV >= static_cast<int>(columnRV_.size())) return 0;
  return columnRV_[static_cast<std::size_t>(studyRV)] + (transformed ? 1 : 0);
}

void DataGrid::CellOf(int p, int run, int rep, int& row, int& col) const {
  switch (layout_) {
    case GridLayout::Grouped:
      row = run + 1;
      col = nF_ + 1 + (p - 1) * reps_ + (rep - 1);
      break;
    case GridLayout::Sections:
    case GridLayout::TextRows:
      row = run + 1;
      col = nF_ + 1 + (rep - 1) * nRV_ + (p - 1);
      break;
    case GridLayout::Vertical:
      row = (rep - 1) * (runs_ + 2) + run + 1;
      col = nF_ + 1 + (p - 1);
      break;
  }
}

void DataGrid::FixUpDataGrid(const Study& s) {
  grid_.BeginBatch();
  nF_ = s.Factors.Count();
  runs_ = s.iNumRuns < 0 ? 0 : s.iNumRuns;
  reps_ = s.iReps < 1 ? 1 : s.iReps;
  if (s.iDesFlag & DES_UNSTRUCTURED) {
    layout_ = GridLayout::TextRows;
  } else {
    layout_ = static_cast<GridLayout>(gSettings.GridMode >= 0 && gSettings.GridMode <= 2 ? gSettings.GridMode : 1);
  }

  // Column responses: each study response, and its transformed form behind it.
  columnRV_.assign(static_cast<std::size_t>(s.StudyRespVars.Count() + 1), 0);
  studyRV_.assign(1, 0);
  transformed_.assign(1, false);
  for (int i = 1; i <= s.StudyRespVars.Count(); ++i) {
    columnRV_[static_cast<std::size_t>(i)] = static_cast<int>(studyRV_.size());
    studyRV_.push_back(i);
    transformed_.push_back(false);
    if (s.StudyRespVars(i).iType != 0) {
      studyRV_.push_back(i);
      transformed_.push_back(true);
    }
  }
  nRV_ = static_cast<int>(studyRV_.size()) - 1;

  bool vertical = layout_ == GridLayout::Vertical;
  int dataCols = vertical ? nRV_ : nRV_ * reps_;
  int rows = vertical ? reps_ * (runs_ + 2) : runs_ + 2;
  grid_.SetSize(rows, 1 + nF_ + dataCols + 1);
  edited_.assign(static_cast<std::size_t>(rows) * static_cast<std::size_t>(grid_.Cols()), false);
  grid_.FixedRows = 2;
  grid_.FixedCols = 1;
  grid_.BackColour = gSettings.DataGrid;
  grid_.ForeColour = BLACK;
  grid_.SetColWidth(0, RUN_COLUMN_TWIPS);

  std::string runTag = GetText("Run");
  std::string notesTag = GetText("Notes");
  auto rvName = [&](int p) {
    const StudyRespVar& srv = s.StudyRespVars(studyRV_[static_cast<std::size_t>(p)]);
    return (transformed_[static_cast<std::size_t>(p)] ? "*" : "") + s.GetPRVName2(srv.sKey);
  };
  auto headings = [&](int row) {  // the row of column headings of a section
    grid_.SetText(row, 0, runTag);
    for (int f = 1; f <= nF_; ++f) grid_.SetText(row, f, s.GetPFactorName2(s.GetFactorKey(f)));
    grid_.SetText(row, NotesColumn(), notesTag);
  };

  // ColData: the replication of a data column, plus 100 when transformed.
  for (int p = 1; p <= nRV_; ++p)
    for (int rep = 1; rep <= (vertical ? 1 : reps_); ++rep) {
      int row, col;
      CellOf(p, 1, rep, row, col);
      grid_.SetColData(col, rep + (transformed_[static_cast<std::size_t>(p)] ? TRANSFORMED : 0));
    }

  if (vertical) {
    for (int rep = 1; rep <= reps_; ++rep) {
      int top = (rep - 1) * (runs_ + 2);
      grid_.SetText(top, 1, GetTextSpaced("Results") + std::to_string(rep));
      grid_.Merges.push_back({top, 1, 1, grid_.Cols() - 1});
      headings(top + 1);
      for (int p = 1; p <= nRV_; ++p) grid_.SetText(top + 1, nF_ + p, rvName(p));
      if (rep > 1) {
        grid_.SetRowData(top, HEADING_ROW);
        grid_.SetRowData(top + 1, HEADING_ROW);
      }
    }
  } else {
    headings(1);
    if (layout_ == GridLayout::Grouped) {
      if (nF_ > 0) {
        grid_.SetText(0, 1, GetText("Treatments"));
        grid_.Merges.push_back({0, 1, 1, nF_});
      }
      for (int p = 1; p <= nRV_; ++p) {
        int row, col;
        CellOf(p, 1, 1, row, col);
        grid_.SetText(0, col, rvName(p));
        grid_.Merges.push_back({0, col, 1, reps_});
        for (int rep = 1; rep <= reps_; ++rep) grid_.SetText(1, col + rep - 1, GetText("Repn") + std::to_string(rep));
      }
    } else {
      for (int rep = 1; rep <= reps_; ++rep) {
        int row, col;
        CellOf(1, 1, rep, row, col);
        grid_.SetText(0, col, GetText("Repn") + std::to_string(rep));
        grid_.Merges.push_back({0, col, 1, nRV_});
        for (int p = 1; p <= nRV_; ++p) grid_.SetText(1, col + p - 1, rvName(p));
      }
    }
  }

  // Run numbers, factor levels, and the colour of the transformed columns.
  for (int rep = 1; rep <= (vertical ? reps_ : 1); ++rep)
    for (int run = 1; run <= runs_; ++run) {
      int row, col;
      CellOf(1, run, rep, row, col);
      grid_.SetText(row, 0, std::to_string(run));
      if (layout_ != GridLayout::TextRows)
        for (int f = 1; f <= nF_; ++f) grid_.SetText(row, f, s.GetTreatmentLevelName(f, run));
    }
  for (int p = 1; p <= nRV_; ++p) {
    if (!transformed_[static_cast<std::size_t>(p)]) continue;
    for (int rep = 1; rep <= reps_; ++rep)
      for (int run = 1; run <= runs_; ++run) {
        int row, col;
        CellOf(p, run, rep, row, col);
        grid_.SetBack(row, col, gSettings.TransformedData);
      }
  }
  grid_.EndBatch();
}

void DataGrid::LoadDataGrid(const Study& s) {
  grid_.BeginBatch();
  if (layout_ == GridLayout::TextRows) {
    for (int run = 1; run <= runs_ && run <= s.Treatments.Count(); ++run) {
      std::string list = s.Treatments(run).sTlist;
      for (int f = 1; f <= nF_; ++f) {
        std::string token = PopBar(list);
        grid_.SetText(run + 1, f, IsFloatText(token) ? TargetToText(ParseFloat(token)) : token);
      }
    }
  }
  for (int p = 1; p <= nRV_; ++p) {
    int rv = studyRV_[static_cast<std::size_t>(p)];
    bool xformed = transformed_[static_cast<std::size_t>(p)];
    for (int rep = 1; rep <= reps_; ++rep)
      for (int run = 1; run <= runs_; ++run) {
        int row, col;
        CellOf(p, run, rep, row, col);
        if (xformed) {
          float v = s.GetDataXformed(rv, run, rep);
          grid_.SetText(row, col, FormatSF(gSettings.NumSF, v));
          continue;
        }
        grid_.SetText(row, col, ValueText(s.GetData(rv, run, rep)));
        bool extrapolated = (s.GetFlag(rv, run, rep) & CELL_EXTRAPOLATED) != 0;
        grid_.SetFore(row, col, extrapolated ? gSettings.ExtrapolatedData : BLACK);
      }
  }
  for (int row = grid_.FixedRows; row < grid_.Rows(); ++row) {
    int run, firstRep, lastRep;
    if (NotesCellOf(row, run, firstRep, lastRep)) grid_.SetText(row, NotesColumn(), NotesText(s, run, firstRep, lastRep));
  }
  edited_.assign(static_cast<std::size_t>(grid_.Rows()) * static_cast<std::size_t>(grid_.Cols()), false);
  grid_.EndBatch();
}

void DataGrid::UnLoadDataGrid(Study& s) {
  for (int rep = 1; rep <= reps_; ++rep)
    for (int run = 1; run <= runs_; ++run)
      for (int p = 1; p <= nRV_; ++p) {
        int row, col;
        CellOf(p, run, rep, row, col);
        if (grid_.ColData(col) > TRANSFORMED || !IsEdited(row, col)) continue;
        // An empty cell stores the missing value; "MAX" stores TARGET_MAX,
        // which nothing stops here. A value put in a cell is measured: it is
        // no longer excluded or an estimate.
        std::string text = grid_.Text(row, col);
        int rv = studyRV_[static_cast<std::size_t>(p)];
        s.SetData(rv, run, rep, ParseTarget(text));
        s.SetFlag(rv, run, rep, static_cast<std::uint8_t>(s.GetFlag(rv, run, rep) & ~(CELL_EXCLUDED | CELL_EXTRAPOLATED)));
      }
  for (int row = grid_.FixedRows; row < grid_.Rows(); ++row) {
    int run, firstRep, lastRep;
    if (IsEdited(row, NotesColumn()) && NotesCellOf(row, run, firstRep, lastRep))
      StoreNotes(s, run, firstRep, lastRep, grid_.Text(row, NotesColumn()));
  }
  // The grid and the array agree again.
  std::fill(edited_.begin(), edited_.end(), false);
}

bool DataGrid::BeforeEdit(int row, int col, std::string& editText) const {
  if (grid_.ColData(col) > TRANSFORMED) return false;
  // An extrapolated value must be wiped before the cell can be typed in.
  if (grid_.Fore(row, col) == gSettings.ExtrapolatedData && gSettings.ExtrapolatedData != grid_.ForeColour)
    return false;
  if (grid_.RowData(row) > TRANSFORMED) return false;
  if (col < grid_.FixedCols || row < grid_.FixedRows) return false;
  if (!grid_.InRows(row) || !grid_.InCols(col)) return false;
  editText = Trim(grid_.Text(row, col));
  return true;
}

DataGrid::EditResult DataGrid::AfterEdit(Problem& problem, const Study& s, int row, int col,
                                         const std::string& typed, const std::string& startText) {
  EditResult result;
  if (col == NotesColumn()) {
    if (typed == grid_.Text(row, col)) return result;
    PutEdited(row, col, typed);
    problem.bChanged = true;
    result.changed = true;
    return result;
  }
  std::string text = Trim(typed);
  if (text == startText) {
    grid_.SetText(row, col, startText);
    return result;
  }
  float value;
  if (text.empty() && gSettings.AllowMissing) {
    value = MISSING_VALUE;
  } else {
    value = text.empty() ? BAD_NUMBER : ParseFloat(text);
    if (value == BAD_NUMBER || !(std::fabs(value) < ENTRY_LIMIT)) {
      grid_.SetText(row, col, startText);
      result.accepted = false;
      return result;
    }
  }
  PutEdited(row, col, ValueText(value));
  problem.bChanged = true;
  result.changed = true;

  // The transformed column of this response shows the new value at once.
  int next = layout_ == GridLayout::Grouped ? col + reps_ : col + 1;
  if (grid_.InCols(next) && grid_.ColData(next) == grid_.ColData(col) + TRANSFORMED) {
    for (int p = 1; p <= nRV_; ++p) {
      int r, c;
      for (int rep = 1; rep <= reps_; ++rep) {
        CellOf(p, row - 1 - (layout_ == GridLayout::Vertical ? (rep - 1) * (runs_ + 2) : 0), rep, r, c);
        if (r == row && c == col) {
          float v = value;
          if (v != MISSING_VALUE) s.TransformByRV(v, studyRV_[static_cast<std::size_t>(p)]);
          grid_.SetText(row, next, FormatSF(gSettings.NumSF, v));
          return result;
        }
      }
    }
  }
  return result;
}

void DataGrid::HighlightGridEntry(int run, int rep, bool on) {
  // Text rows track the first section only.
  if (layout_ == GridLayout::TextRows) rep = 1;
  for (int p = 1; p <= nRV_; ++p) {
    if (transformed_[static_cast<std::size_t>(p)]) continue;
    int row, col;
    CellOf(p, run, rep, row, col);
    grid_.SetBack(row, col, on ? gSettings.ANOVAHighlights : gSettings.DataGrid);
  }
}

void DataGrid::EnterKey(int& row, int& col) const {
  int lastRow = grid_.Rows() - 1, lastCol = grid_.Cols() - 1;
  if (gSettings.Navigation == 0) {
    if (row < lastRow) {
      ++row;
    } else {  // page up and right
      row = grid_.FixedRows;
      if (col < lastCol) ++col;
    }
  } else {
    if (col < lastCol) {
      ++col;
    } else {  // back to the first column, one row down
      col = grid_.FixedCols;
      if (row < lastRow) ++row;
    }
  }
}

}  // namespace kestrow
