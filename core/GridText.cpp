#include "core/GridText.h"

#include <cstdio>
#include <functional>
#include <sstream>

#include "core/Grid.h"
#include "core/Json.h"

namespace kestrow {

namespace {

// Colours are held as 0x00BBGGRR.
std::string ColourText(Colour c) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02X%02X%02X", c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
  return JsonQuote(text);
}

}  // namespace

void TableToJson(std::ostream& out, std::int64_t rows, int cols, const std::function<std::string(std::int64_t, int)>& text,
                 const std::function<Colour(std::int64_t, int)>& back, const std::function<Colour(std::int64_t, int)>& fore) {
  auto part = [&](const char* name, const std::function<std::string(std::int64_t, int)>& cell) {
    out << (name[0] == 'r' ? "{\"" : ",\n \"") << name << "\": [";
    for (std::int64_t r = 0; r < rows; ++r) {
      out << (r ? ",\n  [" : "\n  [");
      for (int c = 0; c < cols; ++c) out << (c ? ", " : "") << cell(r, c);
      out << "]";
    }
    out << (rows ? "\n ]" : "]");
  };
  part("rows", [&](std::int64_t r, int c) { return JsonQuote(text(r, c)); });
  part("back", [&](std::int64_t r, int c) { return ColourText(back(r, c)); });
  part("fore", [&](std::int64_t r, int c) { return ColourText(fore(r, c)); });
  out << "}\n";
}

std::string GridToJson(const Grid& g) {
  std::ostringstream out;
  TableToJson(
      out, g.Rows(), g.Cols(), [&](std::int64_t r, int c) { return g.Text(static_cast<int>(r), c); },
      [&](std::int64_t r, int c) { return g.Back(static_cast<int>(r), c); },
      [&](std::int64_t r, int c) { return g.Fore(static_cast<int>(r), c); });
  return out.str();
}

std::string GridToTsv(const Grid& g) {
  std::string out;
  for (int r = 0; r < g.Rows(); ++r) {
    for (int c = 0; c < g.Cols(); ++c) out += (c ? "\t" : "") + g.Text(r, c);
    out += "\n";
  }
  return out;
}

}  // namespace kestrow
