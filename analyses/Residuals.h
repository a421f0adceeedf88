// Residuals of a study's observations from the treatment means, or from the
// additive model of a blocked design, on up to six charts: a normal
// probability plot (token -3), against the run order (-2), against the
// fitted value (-1), and by the levels of factor n (n above 0).
#pragma once

#include <string>

namespace kestrow {

class Study;
class Statistics;

// Adds the charts of the list (RESIDUAL_sCharts) to the chart page. A token
// the design cannot serve is skipped. False when a failure stopped it, which
// has been shown.
bool SetupResiduals1l(Study& study, Statistics& stats, const std::string& chartList);

// Whether the study has a run order for the residuals in run order.
bool HasRunSequence(const Study& study);

}  // namespace kestrow
