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
  // A cell merged across columns (a title) is written as a line of its own.
  LogTable(
      grid.Rows(), col2 - col1 + 1, grid.FixedRows,
      [&](std::int64_t r, int c) { return grid.Text(static_cast<int>(r), col1 + c); },
      [&](std::int64_t r) {
        const Grid::Range* m = grid.MergeAt(static_cast<int>(r), col1);
        return m && m->cols > 1 ? grid.Text(static_cast<int>(r), m->col) : std::string();
      });
}

void LogTable(std::int64_t rows, int cols, int fixedRows, const std::function<std::string(std::int64_t, int)>& cell,
              const std::function<std::string(std::int64_t)>& title) {
  auto titled = [&](std::int64_t r) { return title ? title(r) : std::string(); };
  std::vector<std::size_t> widths(static_cast<std::size_t>(std::max(cols, 0)), 0);
  for (std::int64_t r = 0; r < rows; ++r) {
    if (!titled(r).empty()) continue;
    for (int c = 0; c < cols; ++c) widths[static_cast<std::size_t>(c)] = std::max(widths[static_cast<std::size_t>(c)], CharCount(cell(r, c)));
  }
  auto line = [&](auto text) {
    std::string out;
    for (int c = 0; c < cols; ++c) {
      if (c > 0) out += ' ';
      out += PadRight(text(c), widths[static_cast<std::size_t>(c)]);
    }
    out.erase(out.find_last_not_of(' ') + 1);
    LogLine(out);
  };
  for (std::int64_t r = 0; r < rows; ++r) {
    if (std::string t = titled(r); !t.empty()) {
      LogLine(t);
      continue;
    }
    line([&](int c) { return cell(r, c); });
    if (r + 1 == fixedRows) line([&](int c) { return std::string(widths[static_cast<std::size_t>(c)], '_'); });
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
