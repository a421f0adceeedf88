// The standard normal distribution: lower tail and deviate, by the classical
// polynomial and rational approximations of Abramowitz & Stegun.
#pragma once

namespace kestrow {

// P(Z <= z), Abramowitz & Stegun 26.2.17 (absolute error below 7.5e-8).
float NormalProbability(float z);
// The z with P(Z <= z) = p, Abramowitz & Stegun 26.2.23 (absolute error below
// 4.5e-4); 0.5 gives 0.
float NormalValue(float p);

}  // namespace kestrow
