// The builders of the computed design families. Each fills the study's
// treatments and contrasts from a row of the selection table and returns -1
// on success and 0 on failure (when it has told the user why).
#pragma once

#include <cstdint>

namespace kestrow {

class Study;
struct Design;

// A regular two-level fraction from the catalogue: the row's parameter is "k,p".
std::int16_t Get2kpDesign(Study& study, const Design& row);
// Every combination of the study's factors, with orthogonal contrasts.
std::int16_t GetFullyCrossed(Study& study, const Design& row);
// The levels of the study's one factor.
std::int16_t GetSingleFactorDesign(Study& study, const Design& row);
// The factor crossed with one noise factor as blocks.
std::int16_t GetBlocked1(Study& study, const Design& row);
// The factor in a Latin square of two noise factors.
std::int16_t GetLatinSquare(Study& study, const Design& row);
// No runs: the user types them in.
std::int16_t GetUnstructuredDesign(Study& study, const Design& row);

}  // namespace kestrow
