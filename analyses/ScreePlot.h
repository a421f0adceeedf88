// The charts that help choose which contrasts to pool: the contrasts' sums
// of squares in falling order (scree), their effects on normal probability
// paper, and the sizes of the effects as Pareto bars; of the variable chosen
// in the ANOVA dialog. Tokens: "0" scree, "1" normal probability, "2" Pareto.
#pragma once

#include <string>

namespace kestrow {

class Study;
class Statistics;

// Adds the charts of the list (ANOVA_sCharts) to the chart page. False when
// a failure stopped it, which has been shown.
bool SetupScreePlot(Study& study, Statistics& stats, const std::string& chartList);

}  // namespace kestrow
