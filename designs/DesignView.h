// The design as the Design Viewer shows it: runs with their treatments, the
// contrast columns with their values, and below them the aliases that can be
// shown.
#pragma once

#include <string>

#include "core/Grid.h"

namespace kestrow {

class Study;

// Fills the grid: two heading rows (the sections, then the factor and
// contrast names), one row per run, a heading row for the aliases and as many
// alias rows as the contrast with the most aliases needs. ColData of a
// contrast column is its contrast number.
void FillDesignView(const Study& study, Grid& grid);

}  // namespace kestrow
