// A grid as text: JSON with the cell texts and their colours, or one line
// per row with the cells joined by tabs.
#pragma once

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>

#include "core/Settings.h"

namespace kestrow {

class Grid;

// {"rows": [[...]], "back": [[...]], "fore": [[...]]}, colours as "#RRGGBB".
std::string GridToJson(const Grid& grid);
std::string GridToTsv(const Grid& grid);
// The same shape for a table given by its cells, written as it goes, so that
// a table of a million rows needs no copy.
void TableToJson(std::ostream& out, std::int64_t rows, int cols, const std::function<std::string(std::int64_t, int)>& text,
                 const std::function<Colour(std::int64_t, int)>& back, const std::function<Colour(std::int64_t, int)>& fore);

}  // namespace kestrow
