#include "core/CodePage.h"

namespace kestrow {

namespace {

// Code points of bytes 0x80 to 0x9F; the undefined ones map to themselves.
constexpr char32_t HIGH_CONTROL[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

int CodeOf(char32_t cp) {
  if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<int>(cp);
  for (int i = 0; i < 32; ++i)
    if (HIGH_CONTROL[i] == cp) return 0x80 + i;
  return -1;
}

}  // namespace

char32_t NextCodePoint(std::string_view text, std::size_t& i) {
  unsigned char c = static_cast<unsigned char>(text[i]);
  if (c < 0x80) {
    ++i;
    return c;
  }
  int extra = (c >> 5) == 6 ? 1 : (c >> 4) == 14 ? 2 : (c >> 3) == 30 ? 3 : 0;
  if (extra == 0 || i + extra >= text.size()) {  // a lead byte without its tail
    ++i;
    return 0xFFFD;
  }
  char32_t cp = c & (0x3F >> extra);
  for (int k = 1; k <= extra; ++k) {
    unsigned char d = static_cast<unsigned char>(text[i + k]);
    if ((d & 0xC0) != 0x80) {
      ++i;
      return 0xFFFD;
    }
    cp = (cp << 6) | (d & 0x3F);
  }
  static constexpr char32_t MIN_OF[4] = {0, 0x80, 0x800, 0x10000};
  if (cp < MIN_OF[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
    ++i;
    return 0xFFFD;
  }
  i += extra + 1;
  return cp;
}

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

std::string Utf8ToCp1252(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  std::size_t i = 0;
  while (i < utf8.size()) {
    unsigned char c = static_cast<unsigned char>(utf8[i]);
    if (c < 0x80) {  // the common case, and NUL and control characters too
      out += static_cast<char>(c);
      ++i;
      continue;
    }
    int code = CodeOf(NextCodePoint(utf8, i));
    out += code < 0 ? '?' : static_cast<char>(code);
  }
  return out;
}

std::string Cp1252ToUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (char ch : bytes) {
    unsigned char c = static_cast<unsigned char>(ch);
    if (c < 0x80) {
      out += ch;
    } else {
      AppendUtf8(out, c < 0xA0 ? HIGH_CONTROL[c - 0x80] : c);
    }
  }
  return out;
}

std::string BytesToUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (char ch : bytes) AppendUtf8(out, static_cast<unsigned char>(ch));
  return out;
}

bool Utf8ToBytes(std::string_view utf8, std::string& bytes) {
  bytes.clear();
  std::size_t i = 0;
  while (i < utf8.size()) {
    char32_t cp = NextCodePoint(utf8, i);
    if (cp > 0xFF) return false;
    bytes += static_cast<char>(cp);
  }
  return true;
}

}  // namespace kestrow
