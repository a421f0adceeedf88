// Contour plots of the fitted equation over two factors, all others held at
// chosen values: the levels, the walk through the cells of a grid that
// follows each level, and the seeds of the rainbow fill. Every line is made
// at set-up as points of a contour chart; drawing never needs the model.
#pragma once

#include <string>
#include <vector>

namespace kestrow {

class Chart;
class Regress;
class Study;

// The progress window of the tracing, which the workbench installs; the
// command line and the tests trace without one.
class ContourProgress {
 public:
  virtual ~ContourProgress() = default;
  virtual void Show() = 0;
  // Tells the level now traced, of the response sRV.
  virtual void Progress(float fContour, const std::string& sRV) = 0;
  virtual void Hide() = 0;
  // True once the user has asked the tracing to stop.
  virtual bool Stopped() const = 0;
};
inline ContourProgress* gConProg = nullptr;

// The progress window's line: "Tracing contour Yield = 78 ....".
std::string ContourProgressText(float fContour, const std::string& sRV);

// The fitted surface over the plotted factors, in their actual units: a
// coded model takes each value through its factor's coding line.
struct ContourSurface {
  const Regress* fit = nullptr;
  bool swap = false;  // the fast polynomial's first factor is the plot's y
  double xSlope = 1, xOffset = 0, ySlope = 1, yOffset = 0;
  float At(float x, float y) const;
};

// The surface of a fit whose fast constants are set up, over the factors
// numbered fx (across) and fy (up).
ContourSurface PlotSurface(const Study& study, const Regress& fit, int fx, int fy);

// The levels of a surface that spans zMin to zMax: the scale's steps
// strictly inside, the step halved until five stand (a level may come
// twice), and the target last unless it is MISSING_VALUE. False, with the
// reason, for a flat surface, whose halving would never end, and for a
// table of more than MAX_CONTOUR_LEVELS.
inline constexpr int MAX_CONTOUR_LEVELS = 20;
bool ContourLevels(float zMin, float zMax, float target, std::vector<float>& levels, std::string& complaint);

// The grid of the walk: N by N cells over the plot.
struct ContourGrid {
  int n = 20;
  float xMin = 0, xMax = 1, yMin = 0, yMax = 1;
};

// Traces each level (the target's index from 1, or 0) into the chart as
// runs of points, with the seeds of the rainbow fill when asked, telling
// the progress window of each level when there is one and stopping early
// when it asks. False, with the complaint, when a walk never ends.
bool TraceContours(Chart& chart, const ContourSurface& surface, const ContourGrid& grid, const std::vector<float>& levels,
                   int targetIndex, bool rainbow, ContourProgress* progress, const std::string& sRV,
                   std::string& complaint);

// Builds the contour charts of the study's stored model and plotted
// factors: one for each pair "label|value" of sList (the key factor's
// values), or one without a key factor when sList is empty. False after a
// message; the charts made so far stay. A stop asked in the progress window
// ends the tracing with what has been traced.
bool SetupContourPlot(Study& study, const std::string& sList);

// The factor numbers plotted across and up, from sRSM_f1Key and sRSM_f2Key
// (or, when they name none, the two factors whose terms are marked free, in
// term order), when both have a term of their own marked free and every
// other factor's term holds a value; false with the complaint otherwise.
bool PlottedFactors(const Study& study, int& fx, int& fy, std::string& complaint);

// Fits the stored model when a term has no coefficient yet (a model read
// from a file before the regression was shown); false after the fit's
// message.
bool EnsureCoefficients(Study& study);

}  // namespace kestrow
