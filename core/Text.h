// The text helpers every part of the program shares: trimming, the one rule of
// what counts as a number, the shortest text of a float, targets, and tokens.
#pragma once

#include <string>
#include <string_view>

namespace kestrow {

std::string Trim(std::string_view text);
std::string UCase(std::string_view text);  // ASCII letters only, as keys and tags need
std::string LCase(std::string_view text);
bool EqualsNoCase(std::string_view a, std::string_view b);

// Numeric text: after trimming blanks, an optional sign, digits with at most
// one ".", at least one digit, and an optional exponent ("e" or "E", optional
// sign, digits). "." is the decimal point whatever the locale.
bool IsNumeric(std::string_view text);

// The value of numeric text as a 32-bit float; BAD_NUMBER when the text is not
// numeric or lies beyond the range of a float.
float ParseFloat(std::string_view text);
// Numeric text whose value a 32-bit float holds (1e400 is numeric text, but
// no float): what every numeric field of a dialog takes.
bool IsFloatText(std::string_view text);

// The value of the leading number of a text, 0 when there is none; blanks in
// front are skipped. Level names are read this way.
double Val(std::string_view text);

// The fewest significant digits that read back as the same float: plain
// notation when the decimal exponent lies between -5 and 14, otherwise
// mantissa, "E", sign and at least two exponent digits ("1.5E+20").
std::string ShortestText(float value);
std::string ShortestText(double value);  // the same rule for a 64-bit value

// Target text: "MAX..." and "MIN..." (any case) give TARGET_MAX and TARGET_MIN,
// empty gives MISSING_VALUE, a number its value, anything else BAD_NUMBER.
// The caller's text is left trimmed.
float ParseTarget(std::string& text);
std::string TargetToText(float value);

// A response-variable key or name with a trailing "*" selects its transformed
// form; PureKey drops the star.
bool IsTransformedKey(std::string_view key);
std::string PureKey(std::string_view key);

// Cuts the text before the first comma (PopToken) or "|" (PopBar) from the
// front of text and returns it; without a separator the whole text goes.
std::string PopToken(std::string& text);
std::string PopBar(std::string& text);

// The number of characters of a UTF-8 text.
std::size_t CharCount(std::string_view text);

// Fixed-width text as the program's "@" masks give it: pad with blanks on the
// right ("!@@@@@") or on the left ("@@@@@@@"); a longer text stays whole.
std::string PadRight(std::string_view text, std::size_t width);
std::string PadLeft(std::string_view text, std::size_t width);

}  // namespace kestrow
