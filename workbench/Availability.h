// Whether an analysis of a study can run, and whether it has been set up.
// Both read the run statistics of the study, computed for all its responses.
#pragma once

#include <string>

namespace kestrow {

class Study;
class Statistics;

// Analysis codes.
enum AnalysisCode : int {
  ANALYSIS_ANOM = 1,
  ANALYSIS_ANOVA = 2,
  ANALYSIS_RESIDUALS = 3,
  ANALYSIS_FXPLOT = 4,
  ANALYSIS_RESPLOT = 5,
  ANALYSIS_MMEANS = 6,
  ANALYSIS_REGRESSION = 7,
  ANALYSIS_PAIRWISE = 8,
  ANALYSIS_REGRESSION_RESIDUALS = 9,
  ANALYSIS_CONPLOT = 10,
  ANALYSIS_RESPSURF = 11,
  ANALYSIS_SCREE = 13,
  ANALYSIS_CALCULATOR = 14,
  ANALYSIS_RUNCHART = 15,
  ANALYSIS_SCATTERGRAM = 18,
};

// The reason why the analysis cannot run on the study, or empty if it can.
std::string AnalysisUnavailableReason(const Study& study, const Statistics& stats, int code);

// True if the analysis has stored settings it can be shown with.
bool IsAnalysisSetUp(const Study& study, const Statistics& stats, int code);

}  // namespace kestrow
