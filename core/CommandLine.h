// The program's command line: one file name and the switch "-admin".
#pragma once

#include <string>

namespace kestrow {

// Sets gbAdmin and gsCommandFile from the whole command line. A double quote
// is dropped from each end of the line only, so a quoted name followed by the
// switch keeps its closing quote inside the name; everything that remains,
// blanks included, is the one file name. "-admin" is found in any case and
// blanked out in place.
//
// File names are case-sensitive on this platform, so the name keeps its case;
// only the search for the switch ignores case.
void TakeCommandLine(const std::string& line);

}  // namespace kestrow
