// Figures of one run that several analyses read alike: the mean-square
// deviation from a response's target, and the marker of a chart's k-th
// series.
#pragma once

#include <cstdint>

namespace kestrow {

class Study;
class Statistics;

// The mean-square deviation of a run from the target of the configured
// response: (target - average)^2 + s^2, or, for a target of MAXimize, the
// average of 1 / x^2 over the run's good observations (larger is better).
// MISSING_VALUE when the run has no observation to form it from. The sigma
// of a run with one observation enters unguarded: MSD is offered for
// replicated studies.
float RunMSD(const Study& study, const Statistics& stats, int run, float target);

// A run's figure for an analysis of the variable chosen with the ANOVA: 0 the
// average, 1 the standard deviation, 2 the mean-square deviation from the
// target; MISSING_VALUE when the run has none.
float RunVariable(const Study& study, const Statistics& stats, int run, int variable, float target);

// The marker of the k-th series of a chart (from 1): the eight shapes in
// turn, filled then hollow.
std::int16_t SeriesDotType(int k);

}  // namespace kestrow
