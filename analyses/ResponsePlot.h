// The response plot: the response at each combination of levels of two or
// three factors, the first on the x axis, one line for each level of the
// second, and for a third one block of lines for each of its levels, the
// blocks side by side. And the input-process-output diagram of a study.
#pragma once

namespace kestrow {

class Study;
class Statistics;

// Adds the chart of the study's stored settings to the chart page. False
// when a failure stopped it, which has been shown.
bool SetupResponsePlot(Study& study, Statistics& stats);

// Adds the study's input-process-output diagram to the chart page: factors
// in, responses out, noise factors from below.
void SetupIPO(const Study& study);

}  // namespace kestrow
