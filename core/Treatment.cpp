#include "core/Treatment.h"

#include "core/Text.h"

namespace kestrow {

void Treatment::SetZero(int n) {
  if (n < 1) {
    sTlist.clear();
    return;
  }
  sTlist.assign(static_cast<std::size_t>(n), '\x01');
  sTlist[static_cast<std::size_t>(n - 1)] = '\0';
}

void Treatment::Centralise(int n) { sTlist.assign(static_cast<std::size_t>(n < 0 ? 0 : n), '\0'); }

void Treatment::SetLevel(int i, int level) {
  if (i < 1) return;
  if (sTlist.size() < static_cast<std::size_t>(i)) sTlist.resize(static_cast<std::size_t>(i), '\x01');
  sTlist[static_cast<std::size_t>(i - 1)] = static_cast<char>(level);
}

int Treatment::GetLevel(int i) const {
  if (i < 1 || static_cast<std::size_t>(i) > sTlist.size()) return 0;
  return static_cast<unsigned char>(sTlist[static_cast<std::size_t>(i - 1)]);
}

void Treatment::Append(float x) { sTlist += "|" + ShortestText(x); }

}  // namespace kestrow
