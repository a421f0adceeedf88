// A settings file of sections and keys, with the semantics programs have long
// relied on: sections and keys compare without regard to case, a missing key
// gives the default, and a write changes one key and keeps the rest of the
// file as it was.
#pragma once

#include <string>
#include <vector>

namespace kestrow {

// The lines of one settings file held in memory, so that many keys are read
// or written with one pass over the disk.
class IniText {
 public:
  // Reads the file; a missing file gives no lines.
  explicit IniText(std::string file);

  // The value of a key, or the default; cut at 255 characters.
  std::string Get(const std::string& section, const std::string& key, const std::string& defaultValue) const;

  // Sets one key, making the section as needed.
  void Set(const std::string& section, const std::string& key, const std::string& value);

  // Writes the lines back through a temporary file; false if that fails.
  bool Save(std::string* error = nullptr) const;

 private:
  std::string file_;
  std::vector<std::string> lines_;
};

// The value of a key, or the default when the file, the section or the key is
// missing. Values are cut at 255 characters, as a 256-character buffer holds.
std::string ReadINI(const std::string& file, const std::string& section, const std::string& key,
                    const std::string& defaultValue);

// Writes one key, making the file and the section as needed. False if the file
// cannot be written.
bool WriteINI(const std::string& file, const std::string& section, const std::string& key, const std::string& value);

}  // namespace kestrow
