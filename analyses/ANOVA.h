// The analysis-of-variance report of a study, as its stored settings ask:
// the one-way table of a replicated study, the single-degree-of-freedom
// table of the contrasts with the pure-quadratic and error rows, the table
// by factor, or the blocked and Latin-square tables.
#pragma once

namespace kestrow {

class Grid;
class Study;
class Statistics;

// Fills grid. The statistics are recomputed for the chosen response only;
// the contrasts keep the sums of this report in fCSS, fChat and fCSum. False
// when the report stopped on a message (what was drawn so far stays).
bool DrawANOVA(Study& study, Statistics& stats, Grid& grid);

}  // namespace kestrow
