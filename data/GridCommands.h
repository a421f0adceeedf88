// The Edit menu's commands on the data of the current study: copy to and
// paste from the clipboard's text, clearing, filling missing observations
// with estimates, and removing those estimates. They work on the data grid
// and the study; the questions go through the Ui.
#pragma once

#include <string>

#include "core/Grid.h"

namespace kestrow {

class DataGrid;
class Problem;
class Study;

// The text of the grid's data: cells joined by tabs, rows by "\r\n". A
// selection of more than one cell is taken as it stands; without one the
// whole data area is, the factor columns along with the setting CtrlCLevels
// or in an unstructured study. With ClipAcknowledge a notice tells the length.
std::string CopyData(const DataGrid& layout, const Grid& grid, const Study& study,
                     const Grid::Range* selection = nullptr);

// Pastes clipboard text over the whole data area ("\r\n" or "\n" rows, tab
// cells, each counted as the text has them), after the checks and questions
// of rows and columns; false when nothing was pasted. Text that is no number
// leaves its cell as it was; an empty cell clears it. Pasted cells are edits:
// the next unload stores them as measured values.
bool PasteData(DataGrid& layout, Grid& grid, Problem& problem, const Study& study, const std::string& text);
// The same from a cell of the grid on, without the checks against the study;
// a paste that runs past the grid's end asks first.
bool PasteToCursor(DataGrid& layout, Grid& grid, Problem& problem, const Study& study, const std::string& text,
                   int row, int col);

// Asks, then blanks every cell and note of the study.
bool ClearData(Problem& problem, Study& study);

// Fills every missing observation with an estimate, marked as extrapolated:
// with one replication the grand mean plus the main-effect deviations of the
// run's levels, with more the run's own average. False, with the message,
// when a level or a run has no data to estimate from; cells filled before
// stay filled.
bool Extrapolate(Problem& problem, Study& study);

// Asks, then removes every extrapolated value. False when there was none or
// the user declined.
bool WipeExtrapolated(Problem& problem, Study& study);

}  // namespace kestrow
