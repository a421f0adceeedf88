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

// Draws analysis code of the study with its stored settings into grid; the
// statistics are refilled as the analysis needs. False when drawing stopped
// on a message, which has been shown.
bool DrawAnalysis(int code, Study& study, Statistics& stats, Grid& grid);

}  // namespace kestrow
