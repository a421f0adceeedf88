#include "core/Text.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "core/Sentinels.h"

namespace kestrow {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Shortest round-trip digits of a value in scientific form: the digit string
// and the decimal exponent of its first digit.
template <class T>
std::string ShortestTextOf(T value) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-Inf" : "Inf";
  if (value == 0) return "0";  // negative zero reads as 0 too

  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific);
  std::string sci(buf, res.ptr);
  bool negative = sci[0] == '-';
  if (negative) sci.erase(0, 1);
  std::size_t e = sci.find('e');
  std::string digits;
  for (std::size_t i = 0; i < e; ++i)
    if (sci[i] != '.') digits += sci[i];
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
  int exponent = std::atoi(sci.c_str() + e + 1);
  int n = static_cast<int>(digits.size());

  std::string out = negative ? "-" : "";
  if (exponent >= -5 && exponent <= 14) {
    if (exponent >= 0) {
      if (n <= exponent + 1) {
        out += digits + std::string(exponent + 1 - n, '0');
      } else {
        out += digits.substr(0, exponent + 1) + "." + digits.substr(exponent + 1);
      }
    } else {
      out += "0." + std::string(-exponent - 1, '0') + digits;
    }
  } else {
    out += digits.substr(0, 1);
    if (n > 1) out += "." + digits.substr(1);
    out += exponent < 0 ? "E-" : "E+";
    std::string ex = std::to_string(std::abs(exponent));
    if (ex.size() < 2) ex = "0" + ex;
    out += ex;
  }
  return out;
}

std::string PopAt(std::string& text, char separator) {
  std::size_t at = text.find(separator);
  std::string token;
  if (at == std::string::npos) {
    token = std::move(text);
    text.clear();
  } else {
    token = text.substr(0, at);
    text.erase(0, at + 1);
  }
  return token;
}

}  // namespace

std::string Trim(std::string_view text) {
  std::size_t b = 0, e = text.size();
  while (b < e && IsBlank(text[b])) ++b;
  while (e > b && IsBlank(text[e - 1])) --e;
  return std::string(text.substr(b, e - b));
}

std::string UCase(std::string_view text) {
  std::string out(text);
  for (char& c : out)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return out;
}

std::string LCase(std::string_view text) {
  std::string out(text);
  for (char& c : out)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return out;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && LCase(a) == LCase(b);
}

bool IsNumeric(std::string_view text) {
  std::string t = Trim(text);
  std::size_t i = 0, n = t.size();
  if (i < n && (t[i] == '+' || t[i] == '-')) ++i;
  int digits = 0, points = 0;
  for (; i < n; ++i) {
    if (IsDigit(t[i])) {
      ++digits;
    } else if (t[i] == '.') {
      if (++points > 1) return false;
    } else {
      break;
    }
  }
  if (digits == 0) return false;
  if (i < n && (t[i] == 'e' || t[i] == 'E')) {
    ++i;
    if (i < n && (t[i] == '+' || t[i] == '-')) ++i;
    int expDigits = 0;
    while (i < n && IsDigit(t[i])) ++i, ++expDigits;
    if (expDigits == 0) return false;
  }
  return i == n;
}

float ParseFloat(std::string_view text) {
  if (!IsNumeric(text)) return BAD_NUMBER;
  std::string t = Trim(text);
  if (t[0] == '+') t.erase(0, 1);
  float value = 0;
  auto res = std::from_chars(t.data(), t.data() + t.size(), value);
  if (res.ec == std::errc()) return value;
  // Out of range as a float: tiny values read as zero, huge ones are no number.
  double wide = std::strtod(t.c_str(), nullptr);
  if (std::fabs(wide) > std::numeric_limits<float>::max()) return BAD_NUMBER;
  return static_cast<float>(wide);
}

bool IsFloatText(std::string_view text) { return IsNumeric(text) && ParseFloat(text) != BAD_NUMBER; }

double Val(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  std::size_t start = i;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  bool point = false, any = false;
  for (; i < text.size(); ++i) {
    if (IsDigit(text[i])) {
      any = true;
    } else if (text[i] == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  if (!any) return 0.0;
  std::size_t end = i;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    std::size_t j = i + 1;
    if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
    if (j < text.size() && IsDigit(text[j])) {
      while (j < text.size() && IsDigit(text[j])) ++j;
      end = j;
    }
  }
  std::string number(text.substr(start, end - start));
  double v = std::strtod(number.c_str(), nullptr);
  return std::isfinite(v) ? v : 0.0;
}

std::string ShortestText(float value) { return ShortestTextOf(value); }
std::string ShortestText(double value) { return ShortestTextOf(value); }

float ParseTarget(std::string& text) {
  text = Trim(text);
  std::string head = UCase(text.substr(0, 3));
  if (head == "MAX") return TARGET_MAX;
  if (head == "MIN") return TARGET_MIN;
  if (text.empty()) return MISSING_VALUE;
  return ParseFloat(text);
}

std::string TargetToText(float value) {
  if (value == TARGET_MAX) return "MAXimize";
  if (value == TARGET_MIN) return "MINimize";
  if (value == MISSING_VALUE) return "";
  if (value == BAD_NUMBER) return "!";
  if (std::fabs(value) < 1.0e-5f) return "0";
  return ShortestText(value);
}

bool IsTransformedKey(std::string_view key) { return !key.empty() && key.back() == '*'; }
std::string PureKey(std::string_view key) {
  return std::string(IsTransformedKey(key) ? key.substr(0, key.size() - 1) : key);
}

std::string PopToken(std::string& text) { return PopAt(text, ','); }
std::string PopBar(std::string& text) { return PopAt(text, '|'); }

std::size_t CharCount(std::string_view text) {
  std::size_t n = 0;
  for (char c : text)
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++n;
  return n;
}

std::string PadRight(std::string_view text, std::size_t width) {
  std::string out(text);
  std::size_t n = CharCount(out);
  if (n < width) out.append(width - n, ' ');
  return out;
}

std::string PadLeft(std::string_view text, std::size_t width) {
  std::string out(text);
  std::size_t n = CharCount(out);
  if (n < width) out.insert(0, width - n, ' ');
  return out;
}

}  // namespace kestrow
