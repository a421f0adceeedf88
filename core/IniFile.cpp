#include "core/IniFile.h"

#include <fstream>
#include <sstream>
#include <vector>

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

std::string ReadINI(const std::string& file, const std::string& section, const std::string& key,
                    const std::string& defaultValue) {
  std::string current, k, v;
  bool inSection = false;
  for (const std::string& line : ReadLines(file)) {
    if (SectionOf(line, current)) {
      inSection = EqualsNoCase(current, section);
    } else if (inSection && KeyOf(line, k, v) && EqualsNoCase(k, key)) {
      return v.substr(0, 255);
    }
  }
  return defaultValue.substr(0, 255);
}

bool WriteINI(const std::string& file, const std::string& section, const std::string& key, const std::string& value) {
  std::vector<std::string> lines = ReadLines(file);
  std::string current, k, v;
  int sectionAt = -1, keyAt = -1, lastInSection = -1;
  bool inSection = false;
  for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
    if (SectionOf(lines[static_cast<std::size_t>(i)], current)) {
      inSection = EqualsNoCase(current, section);
      if (inSection && sectionAt < 0) {
        sectionAt = i;
        lastInSection = i;
      }
      continue;
    }
    if (!inSection) continue;
    if (!Trim(lines[static_cast<std::size_t>(i)]).empty()) lastInSection = i;
    if (keyAt < 0 && KeyOf(lines[static_cast<std::size_t>(i)], k, v) && EqualsNoCase(k, key)) keyAt = i;
  }
  std::string entry = key + "=" + value;
  if (keyAt >= 0) {
    lines[static_cast<std::size_t>(keyAt)] = entry;
  } else if (sectionAt >= 0) {
    lines.insert(lines.begin() + lastInSection + 1, entry);
  } else {
    if (!lines.empty() && !Trim(lines.back()).empty()) lines.push_back("");
    lines.push_back("[" + section + "]");
    lines.push_back(entry);
  }
  std::ostringstream text;
  for (const std::string& line : lines) text << line << "\r\n";
  std::string tmp = file + ".tmp";
  {
    std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
    out << text.str();
    if (!out.flush()) return false;
  }
  return std::rename(tmp.c_str(), file.c_str()) == 0;
}

}  // namespace kestrow
