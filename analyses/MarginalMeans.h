// The marginal means plot: the level means of every factor of the study side
// by side, or the means at each coefficient of each contrast, of the run
// averages (token "X") and of the run standard deviations (token "S").
#pragma once

#include <string>

namespace kestrow {

class Study;
class Statistics;

// Adds one chart per token of the list ("X", "X,S") to the chart page, with
// the study's stored response and flags. False when a failure stopped it,
// which has been shown.
bool SetupMMP(Study& study, Statistics& stats, const std::string& chartList);

// The token list of the study's stored settings.
std::string MMPChartList(const Study& study);

}  // namespace kestrow
