#include "core/GridText.h"

#include <cstdio>
#include <functional>

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

std::string Rows(const Grid& g, const std::function<std::string(int, int)>& cell) {
  std::string out = "[";
  for (int r = 0; r < g.Rows(); ++r) {
    out += r ? ",\n  [" : "\n  [";
    for (int c = 0; c < g.Cols(); ++c) out += (c ? ", " : "") + cell(r, c);
    out += "]";
  }
  return out + (g.Rows() ? "\n ]" : "]");
}

}  // namespace

std::string GridToJson(const Grid& g) {
  return "{\"rows\": " + Rows(g, [&](int r, int c) { return JsonQuote(g.Text(r, c)); }) +
         ",\n \"back\": " + Rows(g, [&](int r, int c) { return ColourText(g.Back(r, c)); }) +
         ",\n \"fore\": " + Rows(g, [&](int r, int c) { return ColourText(g.Fore(r, c)); }) + "}\n";
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
