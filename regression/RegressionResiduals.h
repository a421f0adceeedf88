// Residuals of a study's stored regression model on up to six charts: a
// normal probability plot (token -3), against the run order (-2, for a model
// of the observations), against the fitted value (-1), and against the
// values of factor n (n above 0); plain or studentised.
#pragma once

#include <string>

namespace kestrow {

class Study;
class Statistics;

// Fits the stored model and adds the charts of the list to the chart page.
// False when the fit stopped on a message, which has been shown.
bool SetupResiduals2(Study& study, Statistics& stats, const std::string& chartList, bool studentised);

}  // namespace kestrow
