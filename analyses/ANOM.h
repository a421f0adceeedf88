// Analysis of means: on control-style charts, which level averages differ
// from the grand average by more than chance. One chart per token of the
// list: a factor's key gives the main-effect chart of that factor, "1WX" the
// X-bar chart of the runs and "1WR" their range chart. The limits rest on the
// average run range; without replicates the charts have a centre line only.
#pragma once

#include <string>

namespace kestrow {

class Study;
class Statistics;

// The chart tokens of the one-way charts.
inline constexpr const char* ANOM_XBAR = "1WX";
inline constexpr const char* ANOM_RANGE = "1WR";

// Adds the charts of the list (ANOM_sCharts) to the chart page, with the
// study's stored response, alpha, subgrouping and flags. False when a
// failure stopped it, which has been shown; the charts made so far stay.
bool SetupANOM(Study& study, Statistics& stats, const std::string& chartList);

}  // namespace kestrow
