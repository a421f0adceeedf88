// The lower tail of Snedecor's F distribution.
#pragma once

namespace kestrow {

// P(F' <= f) for F' with v1 and v2 degrees of freedom, by the incomplete-beta
// series of Applied Statistics algorithm 63. The stopping tolerance is
// coarse (1e-5 for v1 = 1, 1e-3 otherwise); callers form 1 - result for a
// p value. A negative or NaN F, or degrees of freedom that are not finite and
// positive, give NaN.
float FProbability(float f, float v1, float v2);

}  // namespace kestrow
