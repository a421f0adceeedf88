// One graph: its texts, axis settings and data, the geometry of its cell on
// a page, and the drawing and click behaviour of its type. An analysis fills
// charts and never draws; a page (ChartPage) lays them out and draws them on
// a Canvas.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "charts/DataPoint.h"
#include "core/Sentinels.h"

namespace kestrow {

class Canvas;

// The lines that name a run's factor levels, one "abbreviation = level" a
// line, which a click on a point of a run adds to its text. The workbench
// sets it; the charts know no study.
extern std::function<std::string(int run)> gRunLevelsText;

// The kinds of chart; chtType never changes after Init.
enum ChartType : std::int16_t {
  CHT_FILLER = 0,        // an empty cell of a page
  CHT_IPO = 1,           // input-process-output diagram
  CHT_ANOM = 2,          // analysis of means
  CHT_MMP = 3,           // marginal means
  CHT_EFFECT = 4,        // effects plot, main effect
  CHT_INTERACTION = 5,   // effects plot, interaction
  CHT_RES_RUN = 6,       // residuals against run
  CHT_RES_FACTOR = 7,    // residuals against a factor
  CHT_RES_FITTED = 8,    // residuals against fitted value
  CHT_RES_NPP = 9,       // normal probability plot of residuals
  CHT_RESPONSE2 = 10,    // response plot, two factors
  CHT_RESPONSE3 = 11,    // response plot, three factors
  CHT_SURFACE = 12,      // response surface
  CHT_SCREE = 13,        // scree plot
  CHT_NPP = 14,          // normal probability plot of contrasts
  CHT_CONTOUR = 15,      // contour plot
  CHT_REG_NPP = 16,      // normal probability plot of regression residuals
  CHT_PAIRWISE = 17,     // pairwise comparison
  CHT_PARETO = 18,       // Pareto chart
  CHT_RUN = 19,          // run chart
  CHT_RES_VARIABLE = 20, // residuals against a chosen variable
  CHT_SCATTER = 21,      // scattergram
};
inline constexpr int CHART_TYPES = 22;

class Chart {
 public:
  // ---- the fields an analysis sets -----------------------------------------
  std::string sTitle, sXlabel, sYlabel, sText1, sText2, sText3;
  float fValue = 0;
  std::string sTextType;
  std::int16_t xAxisCount = 0;  // above 0: a categorical x axis of that many places, major step 1
  std::int16_t yAxisCount = 0, zAxisCount = 0;
  std::int16_t ox = 0, oy = 0;  // top left corner of the cell on the page, in pixels
  bool bVisible = false;

  // ---- the state the chart keeps -------------------------------------------
  std::int16_t chtType = CHT_FILLER;
  std::int16_t TopLines = 0, BottomLines = 0;  // margins in lines of 5 percent
  float LowLimit = MISSING_VALUE, MeanLimit = MISSING_VALUE, HighLimit = MISSING_VALUE;
  float fAlphaRad = 0, fBetaRad = 0;  // viewing angles of a response surface
  std::int16_t iNet = 0;
  bool bShade = false, bFilled = false, bRainbow = false, bHideNet = false;
  std::int16_t Width = 0, Height = 0;  // the cell, in pixels
  float xMin = 0, xMax = 0, yMin = 0, yMax = 0;
  std::int16_t PlotLeft = 0, PlotTop = 0, PlotRight = 0, PlotBottom = 0;  // PlotBottom the larger
  std::int16_t XAxisY = 0;  // pixel row of the x axis
  float xMinor = 0, xMajor = 0, yMinor = 0, yMajor = 0;
  std::string sXformat, sYformat;  // number formats of the axes
  float fLOBFAtBottom = MISSING_VALUE, fLOBFAtTop = MISSING_VALUE;  // a dragged line of best fit
  std::int16_t lastClickX = -1, lastClickY = -1;  // the last clicked pixel
  std::int16_t lastJoinX = -1, lastJoinY = -1;    // the last point drawn, for joins; -1 none
  std::vector<DataPoint> DataPoints;
  std::vector<LinePoint> LinePoints;

  // Clears the texts and data, sets the margins of the type and an empty y
  // range (1e9 down to -1e9), makes the chart visible.
  void Init(std::int16_t type);

  void AddData(const DataPoint& dp);              // takes fY into the y range
  void AddDataUnconsidered(const DataPoint& dp);  // leaves the y range alone
  void AddLinePoint(float fX, float fY, float fZ, std::int16_t iTag, bool bJoined);
  void ConsiderValue(float v);  // widens the y range to take v in
  void SetLimits(float fL, float fM, float fH);
  // Angles in degrees; flags 1 shade, 2 filled, 4 rainbow, 8 hide the net.
  void RSMsettings(std::int16_t iAlpha, std::int16_t iBeta, std::int16_t iNet, std::int16_t flags);
  // The exact range kept, the steps from the scale rule.
  void SetupContourScales(float xLow, float xHigh, float yLow, float yHigh);
  void SetWidth(std::int16_t w) { Width = w; }
  void SetHeight(std::int16_t h) { Height = h; }
  // The plot rectangle from the percent geometry.
  void SetScaling();
  // A probability chart: ranks the points by fX and gives each the plotting
  // position (r - 0.5) / n as fY.
  void RankForNPP();

  // Paints the chart into its cell.
  void Draw(Canvas& canvas);
  // The text about the point nearest the pixel, "" when none is near.
  std::string Click(int X, int Y, bool bCtrl);
  // The line of best fit through the points inside a dragged box, on a
  // probability chart; false with fewer than four points there.
  bool ComputeLOBF(int xa, int ya, int xb, int yb);

  // ---- geometry, in pixels, rounded as 16-bit integers --------------------
  int XPercent(double p) const;
  int YPercent(double p) const;
  int WidthPercent(double p) const;
  int HeightPercent(double p) const;
  int XToPixel(double x) const;
  int YToPixel(double y) const;

 private:
  friend class ChartPainter;
};

}  // namespace kestrow
