// A grid as text: JSON with the cell texts and their colours, or one line
// per row with the cells joined by tabs.
#pragma once

#include <string>

namespace kestrow {

class Grid;

// {"rows": [[...]], "back": [[...]], "fore": [[...]]}, colours as "#RRGGBB".
std::string GridToJson(const Grid& grid);
std::string GridToTsv(const Grid& grid);

}  // namespace kestrow
