// The percentage points of Snedecor's F distribution.
#pragma once

namespace kestrow {

// The F with lower tail p for v1 and v2 degrees of freedom; p at least 0.5.
// Paulson's normal approximation refined by Newton steps on FProbability
// until a step is at most 0.0001; where the steps miss P by more than 1e-4,
// FProbability(x) = p solved on a bracket.
float FValue(float p, float v1, float v2);

}  // namespace kestrow
