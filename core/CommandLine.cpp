#include "core/CommandLine.h"

#include "core/Globals.h"
#include "core/Text.h"

namespace kestrow {

void TakeCommandLine(const std::string& line) {
  std::string text = line;
  if (!text.empty() && text.front() == '"') text.erase(0, 1);
  if (!text.empty() && text.back() == '"') text.pop_back();
  gbAdmin = false;
  std::size_t at = LCase(text).find("-admin");
  if (at != std::string::npos) {
    gbAdmin = true;
    text.replace(at, 6, "      ");
  }
  gsCommandFile = Trim(text);
}

}  // namespace kestrow
