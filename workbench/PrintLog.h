// The print log: a plain text file kept between runs, to which analyses
// append their results on request. Each entry opens with a heading (date,
// problem, study) and closes with a rule; the file is only ever appended to.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace kestrow {

class Grid;

// Opens the log named by the setting PrintLog for appending and writes the
// heading, with the study's name when `study` is set. A file error is shown,
// and the result is false; callers then write nothing.
bool OpenLog(bool study);
// Writes one line and counts it.
void LogLine(const std::string& text);
// Writes columns col1 to col2 of the grid, each as wide as its widest cell,
// with a row of "_" under the fixed rows.
void LogGrid(int col1, int col2, const Grid& grid);
// The same for a table given by its cells: rows by cols, the first fixedRows
// underlined; a row whose title is not empty is that line alone and does not
// widen a column. Rows are asked for twice, so a table of any length needs no
// copy.
void LogTable(std::int64_t rows, int cols, int fixedRows, const std::function<std::string(std::int64_t, int)>& cell,
              const std::function<std::string(std::int64_t)>& title = nullptr);
// Writes the rule, closes, and tells how many lines were written.
void CloseLog();

// Shows the print log in the text editor of the setting TextEd; without an
// editor or without the file, says so.
void ViewLog();

// The counter of numbered graphics: 0 for a plain graphic name, from 1 on the
// number the next name carries.
int& GraphicCount();
// The name for the next saved graphic: the name itself, or with the counter
// at 1 or above the stem's last three characters replaced by the counter's
// three digits, after which the counter goes up.
std::string NextGraphicName(const std::string& name);

}  // namespace kestrow
