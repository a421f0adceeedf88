#include "workbench/ShowAnalysis.h"

#include <memory>
#include <vector>

#include "analyses/ANOM.h"
#include "analyses/ANOVA.h"
#include "analyses/EffectsPlot.h"
#include "analyses/MarginalMeans.h"
#include "analyses/Pairwise.h"
#include "analyses/ResponsePlot.h"
#include "analyses/Residuals.h"
#include "analyses/RunChart.h"
#include "analyses/ScreePlot.h"
#include "regression/ContourPlot.h"
#include "regression/Regress.h"
#include "regression/ResponseSurface.h"
#include "regression/RegressionReport.h"
#include "regression/RegressionResiduals.h"
#include "regression/Scattergram.h"
#include "charts/ChartPage.h"
#include "charts/Chart.h"
#include "core/Study.h"
#include "core/Ui.h"
#include "workbench/Availability.h"
#include "workbench/ProblemTree.h"

namespace kestrow {

bool IsAnalysisBuilt(int code) {
  switch (code) {
    case ANALYSIS_ANOM:
    case ANALYSIS_ANOVA:
    case ANALYSIS_RESIDUALS:
    case ANALYSIS_SCREE:
    case ANALYSIS_RUNCHART:
    case ANALYSIS_FXPLOT:
    case ANALYSIS_RESPLOT:
    case ANALYSIS_MMEANS:
    case ANALYSIS_PAIRWISE:
    case ANALYSIS_REGRESSION:
    case ANALYSIS_REGRESSION_RESIDUALS:
    case ANALYSIS_CALCULATOR:
    case ANALYSIS_CONPLOT:
    case ANALYSIS_RESPSURF:
    case ANALYSIS_SCATTERGRAM: return true;
    default: return false;
  }
}

bool IsChartAnalysis(int code) {
  switch (code) {
    case ANALYSIS_ANOM:
    case ANALYSIS_RESIDUALS:
    case ANALYSIS_FXPLOT:
    case ANALYSIS_RESPLOT:
    case ANALYSIS_MMEANS:
    case ANALYSIS_PAIRWISE:
    case ANALYSIS_REGRESSION_RESIDUALS:
    case ANALYSIS_CONPLOT:
    case ANALYSIS_RESPSURF:
    case ANALYSIS_SCREE:
    case ANALYSIS_RUNCHART:
    case ANALYSIS_SCATTERGRAM: return true;
    default: return false;
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

bool DrawAnalysis(int code, Study& study, Statistics& stats, Grid& grid, const std::string& detail) {
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
  auto list = [&](const std::string& stored) { return detail.empty() ? stored : detail; };
  switch (code) {
    case ANALYSIS_ANOM: return SetupANOM(study, stats, list(study.ANOM_sCharts));
    case ANALYSIS_ANOVA: return DrawANOVA(study, stats, grid);
    case ANALYSIS_RESIDUALS: return SetupResiduals1l(study, stats, list(study.RESIDUAL_sCharts));
    case ANALYSIS_FXPLOT: return SetupFXPlot(study, stats, list(study.FXPLOT_sFilter));
    case ANALYSIS_RESPLOT: return SetupResponsePlot(study, stats);
    case ANALYSIS_MMEANS: return SetupMMP(study, stats, list(MMPChartList(study)));
    case ANALYSIS_PAIRWISE: return Pairwise(study, stats);
    case ANALYSIS_SCREE: return SetupScreePlot(study, stats, list(study.ANOVA_sCharts));
    case ANALYSIS_RUNCHART: return SetupRunChart(study, stats, list(RunChartList(study)));
    case ANALYSIS_REGRESSION: return DrawRegression(study, grid);
    case ANALYSIS_REGRESSION_RESIDUALS:
      return SetupResiduals2(study, stats, list(study.REGRESS_RES_sCharts), (study.REGRESS_iFlag & REGRESS_STUDENTISED) != 0);
    case ANALYSIS_CONPLOT: return SetupContourPlot(study, study.CONTOUR_KeyValues);
    case ANALYSIS_RESPSURF: return SetupRSM(study);
    case ANALYSIS_SCATTERGRAM: {
      ScatterChoice choice;
      std::string complaint;
      if (!ParseScatterChoice(study, stats, detail, choice, complaint)) {
        ErrorBox("The scattergram cannot be drawn: " + complaint);
        return false;
      }
      return SetupScattergram(study, stats, choice);
    }
    default: return false;
  }
}

void DrawIPOReport(const Study& study) {
  gphStart();
  gRunLevelsText = nullptr;
  SetupIPO(study);
}

}  // namespace kestrow
