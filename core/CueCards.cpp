#include "core/CueCards.h"

#include <cstdio>
#include <fstream>
#include <vector>

#include "core/AtomicFile.h"
#include "core/CodePage.h"
#include "core/Paths.h"
#include "core/Text.h"

namespace kestrow {

namespace {

std::string gCardText;

std::vector<std::string> ReadLines(const std::string& file, bool& ok) {
  std::vector<std::string> lines;
  std::ifstream in(file, std::ios::binary);
  ok = static_cast<bool>(in);
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

std::string TagOf(const std::string& line) { return line.substr(0, line.find(',')); }

}  // namespace

long CueCardCheckValue(std::string_view line) {
  long sum = 0;
  for (std::size_t i = 0; i < line.size(); ++i)
    sum += (static_cast<long>(static_cast<unsigned char>(line[i])) - 31) * static_cast<long>(i + 1);
  return sum;
}

CueCard ReadCueCard(const std::string& file, const std::string& tag) {
  CueCard card;
  bool ok;
  std::vector<std::string> lines = ReadLines(file, ok);
  std::size_t i = 0;
  while (i < lines.size() && TagOf(lines[i]) != "!" + tag) ++i;
  if (i + 1 >= lines.size()) return card;  // the file ended first
  const std::string& head = lines[i];
  std::size_t comma = head.find(',');
  long stored = comma == std::string::npos ? 0 : std::strtol(head.c_str() + comma + 1, nullptr, 16);
  if (stored < 0) stored += 65536;
  const std::string& title = lines[i + 1];
  long sum = CueCardCheckValue(title);
  std::string text;
  for (i += 2; i < lines.size() && (lines[i].empty() || lines[i][0] != '!'); ++i) {
    sum += CueCardCheckValue(lines[i]);
    std::string t = Trim(lines[i]);
    text += (t.empty() ? std::string("\n\n") : t) + " ";
  }
  card.found = true;
  card.edited = (sum & 0xFFFF) != stored;
  card.title = Cp1252ToUtf8(title);
  card.text = Cp1252ToUtf8(text);
  return card;
}

std::string CueCardFile() { return JoinPath(ProgramFolder(), "CueCards.TXT"); }

std::string CueCards(const std::string& tag) {
  gCardText.clear();
  CueCard card = ReadCueCard(CueCardFile(), tag);
  if (!card.found) return gCardText;
  gCardText = card.title + (card.edited ? " (Edited)" : "") + "|" + card.text;
  return gCardText;
}

std::string DesWizText(const std::string& tag) {
  CueCard card = ReadCueCard(CueCardFile(), tag);
  if (!card.found) return "";
  return (card.edited ? "*" : "") + card.text;
}

const std::string& CueCardText() { return gCardText; }

std::string CueCardComplaint(const std::string& tag) {
  std::string file = CueCardFile();
  bool ok;
  ReadLines(file, ok);
  if (!ok) return "The cue cards cannot be read: " + file + " is missing or unreadable.";
  if (!ReadCueCard(file, tag).found) return "There is no cue card \"" + tag + "\" in " + file + ".";
  return "";
}

bool AdminResetCueCards(const std::string& file, std::string& error) {
  bool ok;
  std::vector<std::string> lines = ReadLines(file, ok);
  if (!ok) {
    error = "Cannot read " + file;
    return false;
  }
  std::string out;
  int cards = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    if (line == "!EOF") break;
    if (line.empty() || line[0] != '!' || cards >= 50) {
      out += line + "\r\n";
      continue;
    }
    ++cards;
    long sum = 0;
    for (std::size_t j = i + 1; j < lines.size() && (lines[j].empty() || lines[j][0] != '!'); ++j)
      sum += CueCardCheckValue(lines[j]);
    char hex[16];
    std::snprintf(hex, sizeof hex, "%04lX", (sum + 65536) & 0xFFFF);
    out += TagOf(line) + "," + hex + "\r\n";
  }
  // A file without a single card is no cue-card file: it stays as it is.
  if (cards == 0) {
    error = file + " holds no cue cards; it was left as it was";
    return false;
  }
  out += "!EOF\r\n";
  std::string why;
  if (!WriteFileAtomically(file, out, why)) {
    error = "Cannot replace " + file + ": " + why;
    return false;
  }
  return true;
}

}  // namespace kestrow
