#include "core/Report.h"

#include <algorithm>
#include <vector>

#include "core/Language.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

namespace {

constexpr int LAST_COLUMN = 200;
constexpr std::size_t LINE_WIDTH = 320;

// The items of a row cut at "|"; false, with the error reported, when they
// would reach past the last column.
bool SplitColumns(const std::string& list, const char* procedure, std::vector<std::string>& items) {
  std::string rest = list;
  while (!rest.empty()) items.push_back(PopBar(rest));
  if (static_cast<int>(items.size()) + 1 <= LAST_COLUMN) return true;
  ReportError("Subscript out of range", procedure);
  return false;
}

// The characters of a UTF-8 text, one string each, so that columns count
// characters, not bytes.
std::vector<std::string> Characters(const std::string& text) {
  std::vector<std::string> chars;
  for (std::size_t i = 0; i < text.size();) {
    std::size_t n = 1;
    auto lead = static_cast<unsigned char>(text[i]);
    if (lead >= 0xF0) n = 4;
    else if (lead >= 0xE0) n = 3;
    else if (lead >= 0xC0) n = 2;
    chars.push_back(text.substr(i, n));
    i += n;
  }
  return chars;
}

// A marker is one byte from 242 up that no continuation byte follows, so that
// a UTF-8 character with a high lead byte is never taken for one.
bool IsMarker(const std::string& item) {
  if (item.empty() || static_cast<unsigned char>(item[0]) < 242) return false;
  return item.size() == 1 || (static_cast<unsigned char>(item[1]) & 0xC0) != 0x80;
}

// Puts the text into the line from column `at` (from 1), overwriting what
// stands there; the line keeps its length, so text beyond it is cut.
void PutAt(std::vector<std::string>& line, int at, const std::string& text) {
  std::size_t pos = at < 1 ? 0 : static_cast<std::size_t>(at - 1);
  for (const std::string& c : Characters(text)) {
    if (pos >= line.size()) break;
    line[pos++] = c;
  }
}

}  // namespace

std::string NextReportFile() {
  const std::string& name = gSettings.ReportFile;
  if (gSettings.ReportNumber < 0) return name;
  std::size_t dot = ExtensionDot(name);
  std::string file = name.substr(0, dot) + std::to_string(gSettings.ReportNumber) + name.substr(dot);
  gSettings.ReportNumber = static_cast<std::int16_t>(gSettings.ReportNumber == 32767 ? 0 : gSettings.ReportNumber + 1);
  return file;
}

bool Report::RepOpen(const std::string& file) {
  file_.close();
  file_.clear();
  file_.open(file, std::ios::binary | std::ios::trunc);
  iLines = 0;
  iLastLen = 0;
  return file_.is_open();
}

bool Report::RepSend(const std::string& text) {
  file_ << text << '\n';
  ++iLines;
  iLastLen = static_cast<int>(CharCount(text));
  return static_cast<bool>(file_);
}

void Report::RepClose() { file_.close(); }

bool Report::RepFormatColumns(const std::string& list) {
  aCol[1] = 1;
  std::vector<std::string> items;
  if (!SplitColumns(list, "RepFormatColumns", items)) return false;
  for (std::size_t k = 0; k < items.size(); ++k) {
    int i = static_cast<int>(k) + 1;
    int width = 8;
    if (gSettings.ReportMode == 1) width = static_cast<int>(CharCount(items[k])) + 1;
    else if (gSettings.ReportMode == 2) width = gSettings.ReportColWidth;
    aCol[static_cast<std::size_t>(i + 1)] = static_cast<std::int16_t>(aCol[static_cast<std::size_t>(i)] + width);
  }
  return true;
}

bool Report::RepSendFormatted(const std::string& list, bool truncate) {
  std::vector<std::string> line(LINE_WIDTH, " ");
  std::string tabbed;
  std::vector<std::string> items;
  if (!SplitColumns(list, "RepSendFormatted", items)) return false;
  for (std::size_t k = 0; k < items.size(); ++k) {
    int i = static_cast<int>(k) + 1;
    int start = aCol[static_cast<std::size_t>(i)], next = aCol[static_cast<std::size_t>(i + 1)];
    std::string item = items[k];
    char align = REP_LEFT;
    if (IsMarker(item)) {
      align = item[0];
      item.erase(0, 1);
    }
    if (align == REP_DASHES || align == REP_DASHES_RIGHT) {
      item = std::string(static_cast<std::size_t>(std::max(next - start - 1, 0)), '-');
      align = align == REP_DASHES ? REP_LEFT : REP_RIGHT;
    }
    int length = static_cast<int>(CharCount(item));
    switch (gSettings.ReportMode) {
      case 0:
        tabbed += item + "\t";
        break;
      case 1:
        PutAt(line, align == REP_RIGHT ? next - length - 1 : start, item);
        break;
      default:
        if (truncate && start + length >= next) {
          std::vector<std::string> chars = Characters(item);
          chars.resize(static_cast<std::size_t>(std::max(next - start - 2, 0)));
          item.clear();
          for (const std::string& c : chars) item += c;
          item += "_";
          length = static_cast<int>(CharCount(item));
        }
        PutAt(line, align == REP_RIGHT ? next - length : start, item);
        break;
    }
  }
  if (!tabbed.empty()) {
    // The tabbed row is written without counting it, as the old writer did.
    file_ << tabbed << '\n';
    return static_cast<bool>(file_);
  }
  std::string text;
  for (const std::string& c : line) text += c;
  text.erase(text.find_last_not_of(' ') + 1);
  file_ << text << '\n';
  ++iLines;
  iLastLen = static_cast<int>(CharCount(list));
  return static_cast<bool>(file_);
}

void ShowTextReport(const std::function<bool(const std::string&)>& write) {
  if (gSettings.TextEd.empty()) {
    InfoBox(GetText("MNerra"));
    return;
  }
  std::string file = NextReportFile();
  if (write(file)) CurrentUi().ShowTextFile(gSettings.TextEd, file);
}

}  // namespace kestrow
