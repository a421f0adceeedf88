// Reading typed fields out of a parsed JSON document, each failure naming
// the path of the field and what was wrong: the base of the readers of the
// problem's JSON form and of chart lists.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/Json.h"

namespace kestrow {

class JsonReader {
 public:
  std::string error;  // "Studies[0].iReps: expected a whole number from -32768 to 32767"

  bool Fail(const std::string& path, const std::string& what);
  // A field that must be there.
  const JsonValue* Field(const JsonValue& obj, const std::string& path, const char* name);
  // No fields but these.
  bool OnlyFields(const JsonValue& obj, const std::string& path, const std::vector<std::string>& names);
  bool Expect(const JsonValue& v, JsonValue::Type t, const std::string& path);
  // A text that a problem file can hold.
  bool Text(const JsonValue& v, const std::string& path, std::string& out);
  // Packed bytes, one character U+0000 to U+00FF each.
  bool Bytes(const JsonValue& v, const std::string& path, std::string& out);
  bool Int(const JsonValue& v, const std::string& path, long lo, long hi, long& out);
  bool Int16(const JsonValue& v, const std::string& path, std::int16_t& out);
  // A 32-bit float, or the texts "NaN", "NaN:0x........", "Inf", "-Inf".
  bool Float(const JsonValue& v, const std::string& path, float& out);
  bool Boolean(const JsonValue& v, const std::string& path, bool& out);
};

}  // namespace kestrow
