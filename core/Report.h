// A text report written line by line into a file, with tables laid out in one
// of three modes (the setting ReportMode): 0 cells joined by tabs, for a
// spreadsheet; 1 columns as wide as the heading row's items; 2 columns of
// ReportColWidth characters, cutting what does not fit.
#pragma once

#include <array>
#include <cstdint>
#include <fstream>
#include <functional>
#include <string>

namespace kestrow {

// Format markers that may start an item of RepSendFormatted.
inline constexpr char REP_LEFT = '\xF1';          // left aligned, the default
inline constexpr char REP_RIGHT = '\xF2';         // right aligned
inline constexpr char REP_DASHES = '\xF4';        // a rule as wide as the column, left aligned
inline constexpr char REP_DASHES_RIGHT = '\xF5';  // the same rule, right aligned

// The file for the next text report: the setting ReportFile itself when
// ReportNumber is -1, otherwise that name with the running number before its
// extension, after which the number goes up.
std::string NextReportFile();

// A text report as the user asks for it: without a text editor (the setting
// TextEd) that is said and nothing is written; otherwise write fills the next
// report file, and the editor shows it when write succeeded.
void ShowTextReport(const std::function<bool(const std::string&)>& write);

class Report {
 public:
  // Opens the file for output, replacing it; false if it cannot be made.
  bool RepOpen(const std::string& file);
  // Writes one line.
  bool RepSend(const std::string& text);
  void RepLF() { RepSend(""); }
  // Underlines the line before exactly.
  void RepUnderline() { RepSend(std::string(static_cast<std::size_t>(iLastLen), '-')); }
  void RepClose();

  // Sets the column starts from items cut at "|". False, with the error
  // reported, past the last of the 200 columns.
  bool RepFormatColumns(const std::string& list);
  // Writes a row of items cut at "|" into the columns.
  bool RepSendFormatted(const std::string& list, bool truncate);

  int iLines = 0;    // lines written
  int iLastLen = 0;  // length of the last line sent
  std::array<std::int16_t, 201> aCol{};  // start columns, from 1

 private:
  std::ofstream file_;
};

}  // namespace kestrow
