#include "charts/Canvas.h"

#include <cmath>

namespace kestrow {

CanvasSize EstimatedTextExtent(int fontHeight, const std::string& utf8) {
  int chars = 0;
  for (unsigned char ch : utf8)
    if ((ch & 0xC0) != 0x80) ++chars;  // a continuation byte is no character of its own
  return {static_cast<int>(std::lround(0.55 * fontHeight * chars)), fontHeight};
}

}  // namespace kestrow
