#include "charts/Canvas.h"

#include <cmath>
#include <cstdio>

namespace kestrow {

CanvasSize EstimatedTextExtent(int fontHeight, const std::string& utf8) {
  int chars = 0;
  for (unsigned char ch : utf8)
    if ((ch & 0xC0) != 0x80) ++chars;  // a continuation byte is no character of its own
  return {static_cast<int>(std::lround(0.55 * fontHeight * chars)), fontHeight};
}

std::string ColourText(Colour c) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02X%02X%02X", RedOf(c), GreenOf(c), BlueOf(c));
  return text;
}

}  // namespace kestrow
