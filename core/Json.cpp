#include "core/Json.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "core/CodePage.h"
#include "core/Text.h"

namespace kestrow {

namespace {

// Deep nesting is refused rather than followed down the stack.
constexpr int MAX_DEPTH = 64;

class Parser {
 public:
  explicit Parser(const std::string& text) : s_(text) {}

  bool Document(JsonValue& out, std::string& error) {
    SkipBlanks();
    if (!Value(out, 0)) {
      error = error_;
      return false;
    }
    SkipBlanks();
    if (i_ != s_.size()) {
      Fail("unexpected text after the end of the document");
      error = error_;
      return false;
    }
    return true;
  }

 private:
  bool Fail(const std::string& what) {
    if (!error_.empty()) return false;
    int line = 1, column = 1;
    for (std::size_t k = 0; k < i_ && k < s_.size(); ++k) {
      if (s_[k] == '\n') {
        ++line;
        column = 1;
      } else if ((static_cast<unsigned char>(s_[k]) & 0xC0) != 0x80) {
        ++column;
      }
    }
    error_ = "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + what;
    return false;
  }

  void SkipBlanks() {
    while (i_ < s_.size() && (s_[i_] == ' ' || s_[i_] == '\t' || s_[i_] == '\n' || s_[i_] == '\r')) ++i_;
  }

  bool Literal(const char* word) {
    std::size_t n = std::char_traits<char>::length(word);
    if (s_.compare(i_, n, word) != 0) return Fail("unknown word; expected a value");
    i_ += n;
    return true;
  }

  bool Value(JsonValue& out, int depth) {
    if (depth > MAX_DEPTH) return Fail("the document is nested too deeply");
    if (i_ >= s_.size()) return Fail("unexpected end of the document; expected a value");
    char c = s_[i_];
    if (c == '{') return Object(out, depth);
    if (c == '[') return Array(out, depth);
    if (c == '"') {
      out.type = JsonValue::Type::String;
      return String(out.text);
    }
    if (c == 't') {
      out.type = JsonValue::Type::Bool;
      out.boolean = true;
      return Literal("true");
    }
    if (c == 'f') {
      out.type = JsonValue::Type::Bool;
      out.boolean = false;
      return Literal("false");
    }
    if (c == 'n') {
      out.type = JsonValue::Type::Null;
      return Literal("null");
    }
    if (c == '-' || (c >= '0' && c <= '9')) return Number(out);
    return Fail(std::string("unexpected character '") + c + "'; expected a value");
  }

  bool Digits() {
    std::size_t start = i_;
    while (i_ < s_.size() && s_[i_] >= '0' && s_[i_] <= '9') ++i_;
    return i_ > start;
  }

  bool Number(JsonValue& out) {
    std::size_t start = i_;
    if (s_[i_] == '-') ++i_;
    if (i_ < s_.size() && s_[i_] == '0') {
      ++i_;
    } else if (!Digits()) {
      return Fail("a number needs digits");
    }
    if (i_ < s_.size() && s_[i_] == '.') {
      ++i_;
      if (!Digits()) return Fail("a number needs digits after its decimal point");
    }
    if (i_ < s_.size() && (s_[i_] == 'e' || s_[i_] == 'E')) {
      ++i_;
      if (i_ < s_.size() && (s_[i_] == '+' || s_[i_] == '-')) ++i_;
      if (!Digits()) return Fail("a number needs digits in its exponent");
    }
    out.type = JsonValue::Type::Number;
    out.text = s_.substr(start, i_ - start);
    return true;
  }

  bool Hex4(char32_t& cp) {
    if (i_ + 4 > s_.size()) return Fail("a \\u escape needs four hexadecimal digits");
    cp = 0;
    for (int k = 0; k < 4; ++k) {
      char h = s_[i_++];
      cp <<= 4;
      if (h >= '0' && h <= '9') cp |= static_cast<char32_t>(h - '0');
      else if (h >= 'a' && h <= 'f') cp |= static_cast<char32_t>(h - 'a' + 10);
      else if (h >= 'A' && h <= 'F') cp |= static_cast<char32_t>(h - 'A' + 10);
      else return Fail("a \\u escape needs four hexadecimal digits");
    }
    return true;
  }

  bool String(std::string& out) {
    ++i_;  // the opening quote
    out.clear();
    while (true) {
      if (i_ >= s_.size()) return Fail("a string is not closed");
      unsigned char c = static_cast<unsigned char>(s_[i_]);
      if (c == '"') {
        ++i_;
        return true;
      }
      if (c < 0x20) return Fail("a control character in a string must be escaped");
      if (c == '\\') {
        ++i_;
        if (i_ >= s_.size()) return Fail("a string is not closed");
        char e = s_[i_++];
        switch (e) {
          case '"': out += '"'; break;
          case '\\': out += '\\'; break;
          case '/': out += '/'; break;
          case 'b': out += '\b'; break;
          case 'f': out += '\f'; break;
          case 'n': out += '\n'; break;
          case 'r': out += '\r'; break;
          case 't': out += '\t'; break;
          case 'u': {
            char32_t cp = 0;
            if (!Hex4(cp)) return false;
            if (cp >= 0xD800 && cp <= 0xDBFF) {
              char32_t low = 0;
              if (s_.compare(i_, 2, "\\u") != 0) return Fail("a surrogate pair is incomplete");
              i_ += 2;
              if (!Hex4(low)) return false;
              if (low < 0xDC00 || low > 0xDFFF) return Fail("a surrogate pair is incomplete");
              cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
            } else if (cp >= 0xDC00 && cp <= 0xDFFF) {
              return Fail("a surrogate pair is incomplete");
            }
            AppendUtf8(out, cp);
            break;
          }
          default:
            --i_;
            return Fail(std::string("unknown escape '\\") + e + "'");
        }
        continue;
      }
      if (c < 0x80) {
        out += static_cast<char>(c);
        ++i_;
        continue;
      }
      std::size_t at = i_;
      if (NextCodePoint(s_, i_) == 0xFFFD && s_.compare(at, 3, "\xEF\xBF\xBD") != 0) {
        i_ = at;
        return Fail("the text is not valid UTF-8");
      }
      out.append(s_, at, i_ - at);
    }
  }

  bool Array(JsonValue& out, int depth) {
    out.type = JsonValue::Type::Array;
    ++i_;
    SkipBlanks();
    if (i_ < s_.size() && s_[i_] == ']') {
      ++i_;
      return true;
    }
    while (true) {
      SkipBlanks();
      out.items.emplace_back();
      if (!Value(out.items.back(), depth + 1)) return false;
      SkipBlanks();
      if (i_ < s_.size() && s_[i_] == ',') {
        ++i_;
        continue;
      }
      if (i_ < s_.size() && s_[i_] == ']') {
        ++i_;
        return true;
      }
      if (i_ >= s_.size()) return Fail("unexpected end of the document; expected ',' or ']'");
      return Fail("expected ',' or ']'");
    }
  }

  bool Object(JsonValue& out, int depth) {
    out.type = JsonValue::Type::Object;
    ++i_;
    SkipBlanks();
    if (i_ < s_.size() && s_[i_] == '}') {
      ++i_;
      return true;
    }
    while (true) {
      SkipBlanks();
      if (i_ >= s_.size()) return Fail("unexpected end of the document; expected a field name");
      if (s_[i_] != '"') return Fail("expected a field name in double quotes");
      std::string name;
      if (!String(name)) return false;
      for (const auto& m : out.members)
        if (m.first == name) return Fail("the field \"" + name + "\" appears twice");
      SkipBlanks();
      if (i_ >= s_.size() || s_[i_] != ':') return Fail("expected ':' after a field name");
      ++i_;
      SkipBlanks();
      out.members.emplace_back(name, JsonValue());
      if (!Value(out.members.back().second, depth + 1)) return false;
      SkipBlanks();
      if (i_ < s_.size() && s_[i_] == ',') {
        ++i_;
        continue;
      }
      if (i_ < s_.size() && s_[i_] == '}') {
        ++i_;
        return true;
      }
      if (i_ >= s_.size()) return Fail("unexpected end of the document; expected ',' or '}'");
      return Fail("expected ',' or '}'");
    }
  }

  const std::string& s_;
  std::size_t i_ = 0;
  std::string error_;
};

}  // namespace

const JsonValue* JsonValue::Member(const std::string& name) const {
  for (const auto& m : members)
    if (m.first == name) return &m.second;
  return nullptr;
}

const char* JsonValue::TypeName(Type t) {
  switch (t) {
    case Type::Null: return "null";
    case Type::Bool: return "true or false";
    case Type::Number: return "a number";
    case Type::String: return "a string";
    case Type::Array: return "an array";
    case Type::Object: return "an object";
  }
  return "";
}

bool ParseJson(const std::string& text, JsonValue& out, std::string& error) {
  out = JsonValue();
  return Parser(text).Document(out, error);
}

std::string JsonQuote(const std::string& utf8) {
  static const char* HEX = "0123456789abcdef";
  std::string out;
  out.reserve(utf8.size() + 2);
  out += '"';
  for (char ch : utf8) {
    unsigned char c = static_cast<unsigned char>(ch);
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default:
        if (c < 0x20 || c == 0x7F) {
          out += "\\u00";
          out += HEX[c >> 4];
          out += HEX[c & 15];
        } else {
          out += ch;
        }
    }
  }
  out += '"';
  return out;
}

}  // namespace kestrow

namespace kestrow {

std::string JsonFloat(float x) {
  if (std::isnan(x)) {
    std::uint32_t bits;
    std::memcpy(&bits, &x, 4);
    if (bits == JSON_PLAIN_NAN) return "\"NaN\"";
    char text[24];
    std::snprintf(text, sizeof text, "\"NaN:0x%08X\"", bits);
    return text;
  }
  if (std::isinf(x)) return x < 0 ? "\"-Inf\"" : "\"Inf\"";
  if (x == 0 && std::signbit(x)) return "-0";
  return ShortestText(x);
}

}  // namespace kestrow
