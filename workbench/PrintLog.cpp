#include "workbench/PrintLog.h"

#include <algorithm>
#include <fstream>
#include <vector>

#include "core/Clock.h"
#include "core/Globals.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

namespace {

std::ofstream gLogFile;
int gLogLines = 0;
int gGraphicCount = 0;

}  // namespace

bool OpenLog(bool study) {
  gLogLines = 0;
  gLogFile.close();
  gLogFile.clear();
  gLogFile.open(gSettings.PrintLog, std::ios::binary | std::ios::app);
  if (!gLogFile.is_open()) {
    CurrentUi().ErrorBox("Cannot open the print log " + gSettings.PrintLog + ".");
    return false;
  }
  LogLine("Date: " + ShortDate() + " Time: " + ShortTime());
  LogLine("Problem: " + gProblem->sName);
  if (study && gStudy) LogLine("Study: " + gStudy->sName);
  LogLine(" ");
  return true;
}

void LogLine(const std::string& text) {
  gLogFile << text << '\n';
  ++gLogLines;
}

void LogGrid(int col1, int col2, const Grid& grid) {
  col1 = std::max(col1, 0);
  col2 = std::min(col2, grid.Cols() - 1);
  // A cell merged across columns (a title) is written as a line of its own
  // and does not widen its column.
  auto merged = [&](int r, int c) {
    const Grid::Range* m = grid.MergeAt(r, c);
    return m && m->cols > 1;
  };
  std::vector<std::size_t> widths;
  for (int c = col1; c <= col2; ++c) {
    std::size_t w = 0;
    for (int r = 0; r < grid.Rows(); ++r)
      if (!merged(r, c)) w = std::max(w, CharCount(grid.Text(r, c)));
    widths.push_back(w);
  }
  auto row = [&](auto cell) {
    std::string line;
    for (int c = col1; c <= col2; ++c) {
      if (c > col1) line += ' ';
      line += PadRight(cell(c), widths[static_cast<std::size_t>(c - col1)]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    LogLine(line);
  };
  for (int r = 0; r < grid.Rows(); ++r) {
    if (merged(r, col1)) {
      LogLine(grid.Text(r, grid.MergeAt(r, col1)->col));
      continue;
    }
    row([&](int c) { return grid.Text(r, c); });
    if (r + 1 == grid.FixedRows)
      row([&](int c) { return std::string(widths[static_cast<std::size_t>(c - col1)], '_'); });
  }
}

void CloseLog() {
  LogLine(std::string(80, '-'));
  gLogFile.close();
  CurrentUi().InfoBox(std::to_string(gLogLines) + " lines written");
}

void ViewLog() {
  if (gSettings.TextEd.empty()) return InfoBox(GetText("MNerra"));
  if (!FileExists(gSettings.PrintLog)) return InfoBox(GetText("MNerrf"));
  CurrentUi().ShowTextFile(gSettings.TextEd, gSettings.PrintLog);
}

int& GraphicCount() { return gGraphicCount; }

std::string NextGraphicName(const std::string& name) {
  if (gGraphicCount < 1) return name;
  std::size_t dot = ExtensionDot(name);
  std::size_t stem = GetFName(name.substr(0, dot)).size();
  std::size_t cut = dot - std::min<std::size_t>(3, stem);
  std::string digits = std::to_string(1000 + gGraphicCount);
  ++gGraphicCount;
  return name.substr(0, cut) + digits.substr(digits.size() - 3) + name.substr(dot);
}

}  // namespace kestrow
