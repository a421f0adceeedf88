// The chart model: its initial state by type, the data it takes in, and the
// percent geometry of its cell.
#include "charts/Chart.h"

#include <algorithm>
#include <cmath>

#include "charts/GetScale.h"

namespace kestrow {

namespace {

// The margins of each type, top and bottom, in lines of 5 percent.
constexpr std::int16_t MARGINS[CHART_TYPES][2] = {
    {0, 0}, {2, 2}, {3, 2}, {2, 3}, {2, 2}, {2, 2}, {2, 1}, {1, 2}, {1, 2}, {1, 2}, {2, 2},
    {1, 2}, {1, 1}, {2, 1}, {1, 2}, {2, 2}, {1, 2}, {2, 2}, {2, 2}, {2, 2}, {1, 1}, {2, 2}};

// Angles of a response surface: degrees to radians by this truncated factor.
constexpr float DEGREES_TO_RADIANS = 0.01745f;

// A pixel as a 16-bit integer: rounded half to even, and held within the
// range so that a value far outside the plot cannot wrap round.
int Pixel(double v) {
  if (!(v > -32768.0)) return -32768;
  if (!(v < 32767.0)) return 32767;
  return static_cast<int>(std::nearbyint(v));
}

}  // namespace

void Chart::Init(std::int16_t type) {
  *this = Chart();
  chtType = type >= 0 && type < CHART_TYPES ? type : static_cast<std::int16_t>(CHT_FILLER);
  TopLines = MARGINS[chtType][0];
  BottomLines = MARGINS[chtType][1];
  bVisible = true;
  yMin = 1.0e9f;
  yMax = -1.0e9f;
}

void Chart::AddData(const DataPoint& dp) {
  DataPoints.push_back(dp);
  ConsiderValue(dp.fY);
}

void Chart::AddDataUnconsidered(const DataPoint& dp) { DataPoints.push_back(dp); }

void Chart::AddLinePoint(float fX, float fY, float fZ, std::int16_t iTag, bool bJoined) {
  LinePoints.push_back(LinePoint{fX, fY, fZ, iTag, bJoined});
  ConsiderValue(fY);
}

void Chart::ConsiderValue(float v) {
  if (!(v > MISSING_VALUE) || !std::isfinite(v)) return;
  yMin = std::min(yMin, v);
  yMax = std::max(yMax, v);
}

void Chart::SetLimits(float fL, float fM, float fH) {
  LowLimit = fL;
  MeanLimit = fM;
  HighLimit = fH;
  ConsiderValue(fL);
  ConsiderValue(fM);
  ConsiderValue(fH);
}

void Chart::RSMsettings(std::int16_t iAlpha, std::int16_t iBeta, std::int16_t net, std::int16_t flags) {
  fAlphaRad = static_cast<float>(iAlpha) * DEGREES_TO_RADIANS;
  fBetaRad = static_cast<float>(iBeta) * DEGREES_TO_RADIANS;
  iNet = net;
  bShade = (flags & 1) != 0;
  bFilled = (flags & 2) != 0;
  bRainbow = (flags & 4) != 0;
  bHideNet = (flags & 8) != 0;
}

void Chart::SetupContourScales(float xLow, float xHigh, float yLow, float yHigh) {
  xMin = xLow;
  xMax = xHigh;
  yMin = yLow;
  yMax = yHigh;
  sXformat = GetScale(xMin, xMax, xMajor, xMinor);
  sYformat = GetScale(yMin, yMax, yMajor, yMinor);
  xMin = xLow;
  xMax = xHigh;
  yMin = yLow;
  yMax = yHigh;
}

void Chart::SetScaling() {
  PlotLeft = static_cast<std::int16_t>(XPercent(12));
  PlotRight = static_cast<std::int16_t>(XPercent(92));
  PlotBottom = static_cast<std::int16_t>(YPercent(100 - 5 * BottomLines));
  PlotTop = static_cast<std::int16_t>(YPercent(5 * TopLines + 6));
  XAxisY = PlotBottom;
}

void Chart::RankForNPP() {
  // The points still without a position, by rising value, the first of
  // equal values first (a stable sort: the same ranks as picking the least
  // again and again, in n log n). A point with no number is left unranked.
  const int n = static_cast<int>(DataPoints.size());
  std::vector<DataPoint*> order;
  for (DataPoint& p : DataPoints)
    if (p.fY == MISSING_VALUE && !std::isnan(p.fX)) order.push_back(&p);
  std::stable_sort(order.begin(), order.end(), [](const DataPoint* a, const DataPoint* b) { return a->fX < b->fX; });
  int r = 0;
  for (DataPoint* p : order) {
    ++r;
    p->iSeqPtr = static_cast<std::int16_t>(std::min(r, 32767));
    p->fY = static_cast<float>((r - 0.5) / n);
  }
}

int Chart::XPercent(double p) const { return Pixel(ox + Width * p / 100.0); }
int Chart::YPercent(double p) const { return Pixel(oy + Height * p / 100.0); }
int Chart::WidthPercent(double p) const { return Pixel(Width * p / 100.0); }
int Chart::HeightPercent(double p) const { return Pixel(Height * p / 100.0); }

int Chart::XToPixel(double x) const {
  if (!(xMax != xMin)) return PlotLeft;
  return Pixel(PlotLeft + (x - xMin) * (PlotRight - PlotLeft) / (static_cast<double>(xMax) - xMin));
}

int Chart::YToPixel(double y) const {
  if (!(yMax != yMin)) return PlotBottom;
  return Pixel(PlotBottom + (y - yMin) * (PlotTop - PlotBottom) / (static_cast<double>(yMax) - yMin));
}

}  // namespace kestrow
