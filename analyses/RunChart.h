// The run chart: every response of a study run by run on one chart, each a
// line of its own marker, on its natural scale, coded to [-1, +1], or as
// sigma deviations from its mean; and, when asked, the run ranges beneath.
#pragma once

#include <cstdint>
#include <string>

namespace kestrow {

class Study;
class Statistics;

// Bits of RUN_flags.
inline constexpr std::int16_t RUN_SHOW_RANGE = 1;  // a range chart too
inline constexpr std::int16_t RUN_LABEL_FIFTH = 2;  // only every fifth run labelled

// Adds the charts to the chart page; "X" the averages, "R" the ranges, as
// the list asks (the stored flags decide the default list). False when a
// failure stopped it, which has been shown.
bool SetupRunChart(Study& study, Statistics& stats, const std::string& chartList);

// The list of the study's stored settings: "X", or "X,R" with a range chart.
std::string RunChartList(const Study& study);

}  // namespace kestrow
