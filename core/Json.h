// A small strict JSON reader and the writing helpers of the problem's JSON
// form. Numbers keep their text, so a float reads back exactly as written.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kestrow {

class JsonValue {
 public:
  enum class Type { Null, Bool, Number, String, Array, Object };

  Type type = Type::Null;
  bool boolean = false;
  std::string text;  // a number's text, or a string's UTF-8 content
  std::vector<JsonValue> items;                            // an array
  std::vector<std::pair<std::string, JsonValue>> members;  // an object, in order

  const JsonValue* Member(const std::string& name) const;
  static const char* TypeName(Type t);
};

// Parses a whole document. On failure the result is false and error says
// where and what: "line 3, column 14: expected ',' or '}'".
bool ParseJson(const std::string& text, JsonValue& out, std::string& error);

// A JSON string literal of UTF-8 text; control characters are escaped.
std::string JsonQuote(const std::string& utf8);

// The bits of the quiet NaN that the text "NaN" stands for.
inline constexpr unsigned JSON_PLAIN_NAN = 0x7FC00000u;

// A 32-bit float that reads back to the bit: the shortest text of a number,
// "-0" for negative zero, and for what is no number the strings "NaN" (the
// plain quiet NaN), "NaN:0x7FC00001" (any other, by its bits), "Inf", "-Inf".
std::string JsonFloat(float x);

}  // namespace kestrow
