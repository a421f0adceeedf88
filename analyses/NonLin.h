// The non-linearity test: the average of the factorial base design against
// the average of the centre points, with a t decision limit.
#pragma once

#include <string>

namespace kestrow {

class Problem;
class Study;
class Statistics;

struct NonLinResult {
  std::string lblBaseAvg, lblCentreAvg, lblENonLin, lblSigma, lblDL;
  std::string lblConclusion;
  bool nonLinear = false;
};

// The confidence levels offered, as percentages.
inline constexpr int NONLIN_CONFIDENCE[3] = {90, 95, 99};

// rvNumber is the response's number in the study; stats as the centre-point
// figures need them (see Cstat). A reason that stops the test empties the
// figures and stands in the conclusion.
NonLinResult ComputeNonLin(const Study& study, const Statistics& stats, int rvNumber, int confidence);

// The result as a text report: the problem, study, response and confidence,
// then each figure under its caption. False, with the message, if the file
// cannot be written.
bool WriteNonLin(const Problem& problem, const Study& study, int rvNumber, int confidence, const NonLinResult& r,
                 const std::string& file);

}  // namespace kestrow
