// The effects plot of one factor, or the interaction plot of two, drawn once
// for each data filter: the level means joined, with the run averages behind
// them for one factor, and one line for each level of the second factor.
#pragma once

#include <string>

namespace kestrow {

class Study;
class Statistics;

// Adds one chart per filter of the list ("f;l" tokens joined by commas; "0;0"
// is all data) to the chart page, with the study's stored response and
// factors. False when a failure stopped it, which has been shown.
bool SetupFXPlot(Study& study, Statistics& stats, const std::string& filterList);

}  // namespace kestrow
