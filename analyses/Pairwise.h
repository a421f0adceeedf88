// Pairwise comparison of the run averages of a replicated study: the
// averages as a stacked dot plot on a number line, and under it, as bars,
// the groups of averages that do not differ by the least significant
// difference or by Duncan's multiple range test.
#pragma once

#include <vector>

namespace kestrow {

class Study;
class Statistics;

// The groups found: the run averages in rising order and, for each, the last
// row (from 1) of the group that starts there, or 0 when it stands alone.
struct PairwiseGroups {
  std::vector<float> sorted;
  std::vector<int> groupEnd;
  float mse = 0;   // the error mean square
  int df = 0;      // its degrees of freedom
  float critical = 0;  // the least significant difference, or the standard error for Duncan's test
  std::vector<float> ranges;  // Duncan's significant range for p means, by p (from 2)
};

// Adds the chart of the study's stored settings to the chart page; the groups
// go to groups when asked. False when a failure stopped it, which has been
// shown.
bool Pairwise(Study& study, Statistics& stats, PairwiseGroups* groups = nullptr);

}  // namespace kestrow
