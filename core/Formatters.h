// Number-to-text of the analysis tables and reports.
#pragma once

#include <string>

namespace kestrow {

// The value rounded to that many significant digits (half to even) and
// printed as the shortest text of a 32-bit float; MISSING_VALUE gives the
// empty text, and a rounded magnitude below 0.00001 prints "0".
std::string FormatSF(int digits, float value);
// FormatSF with the setting NumSF.
std::string FormatNumSF(float value);
// The value in fixed notation with that many decimals and no grouping, as
// the mask "########0.000" prints it; MISSING_VALUE gives the empty text.
std::string FormatDecimals(int decimals, float value);
// A p value with that many decimals; one below 10^-decimals prints "<" and
// that power ("<0.001" for 3 decimals); MISSING_VALUE gives the empty text.
std::string FormatP(int decimals, float p);

}  // namespace kestrow
