// The show step of an analysis, shared by the workbench and the command
// line: whether it can run, whether it is set up, and drawing it.
#pragma once

#include <string>

namespace kestrow {

class Grid;
class Study;
class Statistics;

// True for the analyses that can be drawn so far.
bool IsAnalysisBuilt(int code);

// True for the analyses whose show step fills the chart page (gPage)
// rather than the grid.
bool IsChartAnalysis(int code);

// Draws analysis code of the study with its stored settings: into grid for a
// grid analysis, into the chart page for a chart analysis, whose clicks then
// name the study's levels of a run. The statistics are refilled as the
// analysis needs. False when drawing stopped on a message, which has been
// shown.
// A detail (a chart token, or a filter of an effects plot) draws that chart
// alone instead of the stored list.
bool DrawAnalysis(int code, Study& study, Statistics& stats, Grid& grid, const std::string& detail = "");

// The study's input-process-output diagram, alone on the chart page.
void DrawIPOReport(const Study& study);

// The name of what the show step leaves on the pane: "ANOVA", "ANOM",
// "Residuals", "Contour" and so on.
std::string AnalysisPaneName(int code);

// The lines that name a run's factor levels, "abbreviation = level" each.
std::string RunLevelsText(const Study& study, int run);

}  // namespace kestrow
