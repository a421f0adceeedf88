#include "workbench/ShowAnalysis.h"

#include <memory>
#include <vector>

#include "analyses/ANOVA.h"
#include "charts/Chart.h"
#include "core/Study.h"
#include "workbench/Availability.h"
#include "workbench/ProblemTree.h"

namespace kestrow {

bool IsAnalysisBuilt(int code) { return code == ANALYSIS_ANOVA; }

bool IsChartAnalysis(int code) {
  switch (code) {
    case ANALYSIS_ANOVA:
    case ANALYSIS_REGRESSION:
    case ANALYSIS_CALCULATOR: return false;
    default: return true;
  }
}

std::string AnalysisPaneName(int code) {
  switch (code) {
    case ANALYSIS_ANOM: return "ANOM";
    case ANALYSIS_ANOVA: return "ANOVA";
    case ANALYSIS_RESIDUALS: return "Residuals";
    case ANALYSIS_FXPLOT: return "FXPlot";
    case ANALYSIS_RESPLOT: return "Response";
    case ANALYSIS_MMEANS: return "MMP";
    case ANALYSIS_REGRESSION: return "Regression";
    case ANALYSIS_PAIRWISE: return "Pairwise";
    case ANALYSIS_REGRESSION_RESIDUALS: return "Residuals2";
    case ANALYSIS_CONPLOT: return "Contour";
    case ANALYSIS_RESPSURF: return "RSM";
    case ANALYSIS_SCREE: return "Scree";
    case ANALYSIS_CALCULATOR: return "Calculator";
    case ANALYSIS_RUNCHART: return "RunChart";
    case ANALYSIS_SCATTERGRAM: return "Scattergram";
    default: return AnalysisTag(code);
  }
}

std::string RunLevelsText(const Study& study, int run) {
  std::string text;
  for (int i = 1; i <= study.Factors.Count(); ++i) {
    if (i > 1) text += "\n";
    text += study.GetFactorAbbr(i) + " = " + study.GetTreatmentLevelName(i, run);
  }
  return text;
}

bool DrawAnalysis(int code, Study& study, Statistics& stats, Grid& grid) {
  if (IsChartAnalysis(code)) {
    // The texts are taken now: the study may change or go while its charts
    // are still on show.
    auto texts = std::make_shared<std::vector<std::string>>();
    for (int run = 1; run <= study.Treatments.Count(); ++run) texts->push_back(RunLevelsText(study, run));
    gRunLevelsText = [texts](int run) {
      return run >= 1 && run <= static_cast<int>(texts->size()) ? (*texts)[static_cast<std::size_t>(run - 1)]
                                                                 : std::string();
    };
  }
  switch (code) {
    case ANALYSIS_ANOVA: return DrawANOVA(study, stats, grid);
    default: return false;
  }
}

}  // namespace kestrow
