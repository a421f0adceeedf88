#include "core/JsonReader.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "core/CodePage.h"
#include "core/FileIO.h"

namespace kestrow {

bool JsonReader::Fail(const std::string& path, const std::string& what) {
  error = (path.empty() ? std::string("the document") : path) + ": " + what;
  return false;
}

const JsonValue* JsonReader::Field(const JsonValue& obj, const std::string& path, const char* name) {
  const JsonValue* v = obj.Member(name);
  if (!v) Fail(path, std::string("missing field \"") + name + "\"");
  return v;
}

bool JsonReader::OnlyFields(const JsonValue& obj, const std::string& path, const std::vector<std::string>& names) {
  for (const auto& m : obj.members) {
    bool known = false;
    for (const auto& n : names) known = known || n == m.first;
    if (!known) return Fail(path, "unknown field \"" + m.first + "\"");
  }
  return true;
}

bool JsonReader::Expect(const JsonValue& v, JsonValue::Type t, const std::string& path) {
  if (v.type == t) return true;
  return Fail(path, std::string("expected ") + JsonValue::TypeName(t) + ", found " + JsonValue::TypeName(v.type));
}

bool JsonReader::Text(const JsonValue& v, const std::string& path, std::string& out) {
  if (!Expect(v, JsonValue::Type::String, path)) return false;
  if (Utf8ToCp1252(v.text).size() > FileIO::MAX_STRING)
    return Fail(path, "a text may hold at most " + std::to_string(FileIO::MAX_STRING) + " characters");
  out = v.text;
  return true;
}

bool JsonReader::Bytes(const JsonValue& v, const std::string& path, std::string& out) {
  if (!Expect(v, JsonValue::Type::String, path)) return false;
  if (!Utf8ToBytes(v.text, out)) return Fail(path, "packed levels hold only characters U+0000 to U+00FF");
  if (out.size() > FileIO::MAX_STRING)
    return Fail(path, "a text may hold at most " + std::to_string(FileIO::MAX_STRING) + " characters");
  return true;
}

bool JsonReader::Int(const JsonValue& v, const std::string& path, long lo, long hi, long& out) {
  if (v.type == JsonValue::Type::Number) {
    long x = 0;
    auto res = std::from_chars(v.text.data(), v.text.data() + v.text.size(), x);
    if (res.ec == std::errc() && res.ptr == v.text.data() + v.text.size() && x >= lo && x <= hi) {
      out = x;
      return true;
    }
  }
  return Fail(path, "expected a whole number from " + std::to_string(lo) + " to " + std::to_string(hi));
}

bool JsonReader::Int16(const JsonValue& v, const std::string& path, std::int16_t& out) {
  long x;
  if (!Int(v, path, -32768, 32767, x)) return false;
  out = static_cast<std::int16_t>(x);
  return true;
}

bool JsonReader::Float(const JsonValue& v, const std::string& path, float& out) {
  if (v.type == JsonValue::Type::String) {
    unsigned bits = 0;
    char tail = 0;
    if (v.text == "NaN") {
      std::uint32_t plain = JSON_PLAIN_NAN;
      std::memcpy(&out, &plain, 4);
    } else if (std::sscanf(v.text.c_str(), "NaN:0x%8X%c", &bits, &tail) == 1 && v.text.size() == 14) {
      std::uint32_t b = bits;
      std::memcpy(&out, &b, 4);
      if (!std::isnan(out)) return Fail(path, "expected a number");
    } else if (v.text == "Inf") {
      out = INFINITY;
    } else if (v.text == "-Inf") {
      out = -INFINITY;
    } else {
      return Fail(path, "expected a number");
    }
    return true;
  }
  if (!Expect(v, JsonValue::Type::Number, path)) return false;
  auto res = std::from_chars(v.text.data(), v.text.data() + v.text.size(), out);
  if (res.ec == std::errc::result_out_of_range) {
    double wide = std::strtod(v.text.c_str(), nullptr);
    if (std::fabs(wide) > 3.4028235e38) return Fail(path, "the number is beyond the range of a 32-bit float");
    out = static_cast<float>(wide);
    return true;
  }
  if (res.ec != std::errc()) return Fail(path, "expected a number");
  return true;
}

bool JsonReader::Boolean(const JsonValue& v, const std::string& path, bool& out) {
  if (!Expect(v, JsonValue::Type::Bool, path)) return false;
  out = v.boolean;
  return true;
}

}  // namespace kestrow
