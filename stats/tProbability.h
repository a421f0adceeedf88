// The lower tail of Student's t distribution.
#pragma once

namespace kestrow {

// P(T <= t) for T with v degrees of freedom (v at least 1), in 64 bits.
double tProbability(double t, int v);

}  // namespace kestrow
