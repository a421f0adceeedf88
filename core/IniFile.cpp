#include "core/IniFile.h"

#include <cstdio>
#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

#include "core/AtomicFile.h"
#include "core/Text.h"

namespace kestrow {

namespace {

std::vector<std::string> ReadLines(const std::string& file) {
  std::vector<std::string> lines;
  std::ifstream in(file, std::ios::binary);
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

// The section named by a line "[name]", or empty if the line is no header.
bool SectionOf(const std::string& line, std::string& name) {
  std::string t = Trim(line);
  if (t.size() < 2 || t.front() != '[') return false;
  std::size_t close = t.find(']');
  if (close == std::string::npos) return false;
  name = Trim(t.substr(1, close - 1));
  return true;
}

// The key of a line "key=value", with the value; false for other lines.
bool KeyOf(const std::string& line, std::string& key, std::string& value) {
  std::string t = Trim(line);
  if (t.empty() || t[0] == ';' || t[0] == '[') return false;
  std::size_t eq = t.find('=');
  if (eq == std::string::npos) return false;
  key = Trim(t.substr(0, eq));
  value = Trim(t.substr(eq + 1));
  // A value in double quotes loses them, as the old readers did.
  if (value.size() >= 2 && value.front() == '"' && value.back() == '"') value = value.substr(1, value.size() - 2);
  return !key.empty();
}

}  // namespace

IniText::IniText(std::string file) : file_(std::move(file)), lines_(ReadLines(file_)) {}

std::string IniText::Get(const std::string& section, const std::string& key, const std::string& defaultValue) const {
  std::string current, k, v;
  bool inSection = false;
  for (const std::string& line : lines_) {
    if (SectionOf(line, current)) {
      inSection = EqualsNoCase(current, section);
    } else if (inSection && KeyOf(line, k, v) && EqualsNoCase(k, key)) {
      return v.substr(0, 255);
    }
  }
  return defaultValue.substr(0, 255);
}

void IniText::Set(const std::string& section, const std::string& key, const std::string& value) {
  std::string current, k, v;
  int sectionAt = -1, keyAt = -1, lastInSection = -1;
  bool inSection = false;
  for (int i = 0; i < static_cast<int>(lines_.size()); ++i) {
    const std::string& line = lines_[static_cast<std::size_t>(i)];
    if (SectionOf(line, current)) {
      inSection = EqualsNoCase(current, section);
      if (inSection && sectionAt < 0) {
        sectionAt = i;
        lastInSection = i;
      }
      continue;
    }
    if (!inSection) continue;
    if (!Trim(line).empty()) lastInSection = i;
    if (keyAt < 0 && KeyOf(line, k, v) && EqualsNoCase(k, key)) keyAt = i;
  }
  std::string entry = key + "=" + value;
  if (keyAt >= 0) {
    lines_[static_cast<std::size_t>(keyAt)] = entry;
  } else if (sectionAt >= 0) {
    lines_.insert(lines_.begin() + lastInSection + 1, entry);
  } else {
    if (!lines_.empty() && !Trim(lines_.back()).empty()) lines_.push_back("");
    lines_.push_back("[" + section + "]");
    lines_.push_back(entry);
  }
}

bool IniText::Save(std::string* error) const {
  std::ostringstream text;
  for (const std::string& line : lines_) text << line << "\r\n";
  std::string why;
  if (WriteFileAtomically(file_, text.str(), why)) return true;
  if (error) *error = why;
  return false;
}

std::string ReadINI(const std::string& file, const std::string& section, const std::string& key,
                    const std::string& defaultValue) {
  return IniText(file).Get(section, key, defaultValue);
}

bool WriteINI(const std::string& file, const std::string& section, const std::string& key, const std::string& value) {
  IniText ini(file);
  ini.Set(section, key, value);
  return ini.Save();
}

}  // namespace kestrow
