// Factorial runs against centre points: the counts, averages and variances
// that the pure-quadratic row, the centre-point error term and the
// non-linearity test read.
#pragma once

#include <string>

namespace kestrow {

class Study;
class Statistics;

class Cstat {
 public:
  float fFnum = 0;    // good observations in factorial runs
  float fFmean = 0;   // their average
  float fFsum2 = 0;   // their sum of squares
  float fFvar = 0;    // average over the factorial runs of the run variance
  float fFruns = 0;   // factorial runs
  float fCnum = 0;    // good observations in centre runs
  float fCmean = 0;
  float fCsum2 = 0;
  float fCvar = 0;    // sample variance of the centre observations
  std::string sErrMsg;

  // A centre run has level 0 of the first factor. The run variances come from
  // stats by the response's number in the study: after ComputeRV the
  // statistics hold one response only, so for a later response the lookup
  // fails and so does the computation. Missing base data is told in sErrMsg
  // without failing.
  bool Compute(const Study& study, const Statistics& stats, int rvNumber);
};

}  // namespace kestrow
