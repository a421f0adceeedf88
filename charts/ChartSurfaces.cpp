// The drawing of the chart types off plain axes: normal probability plots on
// the probit scale, contour plots with their rainbow flood fill, and the
// response surface net in an oblique projection.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "charts/ChartPainter.h"
#include "charts/GetScale.h"
#include "core/Formatters.h"
#include "core/Settings.h"
#include "stats/Normal.h"

namespace kestrow {

namespace {

// The probit scale runs between the deviates of these probabilities.
constexpr float PROBIT_LOW = 0.001f, PROBIT_HIGH = 0.999f;
// Grid lines of a probability plot, top to bottom.
constexpr float PROBIT_LINES[] = {0.99f, 0.95f, 0.9f, 0.7f, 0.5f, 0.3f, 0.1f, 0.05f, 0.01f};

}  // namespace

int ChartPainter::ProbitToPixel(float p) const {
  float zLow = NormalValue(PROBIT_LOW), zHigh = NormalValue(PROBIT_HIGH);
  float z = NormalValue(std::clamp(p, PROBIT_LOW, PROBIT_HIGH));
  return static_cast<int>(std::nearbyint(c_.PlotBottom + (z - zLow) * (c_.PlotTop - c_.PlotBottom) / (zHigh - zLow)));
}

// A normal probability plot: each point at its value across and at its
// plotting position (fY, a probability) up, on a probit scale with nine
// labelled grid lines; a line of best fit found by ComputeLOBF across.
void ChartPainter::DrawProbability() {
  c_.yMin = NormalValue(PROBIT_LOW);
  c_.yMax = NormalValue(PROBIT_HIGH);
  PlotArea();
  AutoScaleX();
  DrawXAxis();
  DrawXTicks(true);
  SetFontPercent(4);
  for (float p : PROBIT_LINES) {
    int y = ProbitToPixel(p);
    LineDotted(c_.XPercent(10.5), y, c_.PlotRight, y, gSettings.ChartAxes);
    TextAt(c_.XPercent(10.5) - 2, y + fontHeight_ / 3, FormatDecimals(2, p), 1, gSettings.ChartAxisText);
  }
  // The points in the order of their rank.
  std::vector<DataPoint*> order;
  for (DataPoint& p : c_.DataPoints) order.push_back(&p);
  std::stable_sort(order.begin(), order.end(), [](const DataPoint* a, const DataPoint* b) { return a->iSeqPtr < b->iSeqPtr; });
  for (DataPoint* p : order) {
    if (p->fY == MISSING_VALUE || !std::isfinite(p->fY) || !std::isfinite(p->fX)) continue;
    int x = c_.XToPixel(p->fX), y = ProbitToPixel(p->fY);
    Marker(x, y, p->iDotType);
    // A contrast's name beside its point.
    if ((p->idf & 2) && !p->sId2.empty())
      TextAt(x + c_.WidthPercent(1), y + fontHeight_ / 3, p->sId2, 0, gSettings.ChartAxisText);
    p->iWhereX = static_cast<std::int16_t>(x);
    p->iWhereY = static_cast<std::int16_t>(y);
  }
  if (c_.fLOBFAtBottom != MISSING_VALUE && c_.fLOBFAtTop != MISSING_VALUE)
    LineSolid(c_.XToPixel(c_.fLOBFAtBottom), c_.PlotBottom, c_.XToPixel(c_.fLOBFAtTop), c_.PlotTop,
              gSettings.ChartMeanLine, 2);
  Note(c_.sText1);
}

// Contour segments over the plot, the cells between them flooded in rainbow
// colours from their seed points ("COL"), the target contour ("T") on top,
// and the contour values beside their labelled points.
void ChartPainter::DrawContour() {
  if (c_.xMax == c_.xMin) AutoScaleX();
  if (c_.xMajor == 0 || c_.yMajor == 0) {
    EmptyYRangeToUnit();
    c_.SetupContourScales(c_.xMin, c_.xMax == c_.xMin ? c_.xMin + 1 : c_.xMax, c_.yMin,
                          c_.yMax == c_.yMin ? c_.yMin + 1 : c_.yMax);
  }
  BoxFilled(c_.PlotLeft, c_.PlotTop, c_.PlotRight, c_.PlotBottom, gSettings.ChartAxes, gSettings.ChartArea);
  Note(c_.sText1);
  DrawYAxis(false);
  LineSolid(c_.PlotLeft, c_.XAxisY, c_.PlotRight, c_.XAxisY, gSettings.ChartAxes);
  if (!c_.sXlabel.empty()) {
    SetFontPercent(5);
    TextAt((c_.PlotLeft + c_.PlotRight) / 2, c_.YPercent(100), c_.sXlabel, 4, gSettings.ChartAxisText);
  }
  // Major ticks across both edges of each axis, the values outside.
  SetFontPercent(5);
  int tick = c_.HeightPercent(1.5);
  MajorTicks(c_.xMin, c_.xMax, c_.xMajor, [&](double v) {
    int x = c_.XToPixel(v);
    LineSolid(x, c_.PlotBottom, x, c_.PlotBottom - tick, gSettings.ChartAxes);
    LineSolid(x, c_.PlotTop, x, c_.PlotTop + tick, gSettings.ChartAxes);
    TextAt(x, c_.PlotBottom + 2, TickText(v, c_.sXformat), 3, gSettings.ChartAxisText);
  });
  int ytick = c_.WidthPercent(1.5);
  MajorTicks(c_.yMin, c_.yMax, c_.yMajor, [&](double v) {
    int y = c_.YToPixel(v);
    LineSolid(c_.PlotLeft, y, c_.PlotLeft + ytick, y, gSettings.ChartAxes);
    LineSolid(c_.PlotRight, y, c_.PlotRight - ytick, y, gSettings.ChartAxes);
    TextAt(c_.PlotLeft - 2, y + fontHeight_ / 3, TickText(v, c_.sYformat), 1, gSettings.ChartAxisText);
  });
  DrawMarks(false);
  if (c_.bRainbow) {
    for (const DataPoint& p : c_.DataPoints) {
      if (p.sId != "COL" || !std::isfinite(p.fY)) continue;
      // A seed off the plot would flood the cell around it.
      int sx = c_.XToPixel(p.fX), sy = c_.YToPixel(p.fY);
      if (sx <= c_.PlotLeft || sx >= c_.PlotRight || sy <= c_.PlotTop || sy >= c_.PlotBottom) continue;
      Colour fill = RainbowColour(static_cast<int>(std::floor(p.fZ)));
      // A fill the colour of the lines would stop at once: nudge it.
      if (fill == gSettings.ChartDataLine) fill ^= 1;
      dc_.SetBrush(Brush{fill, false});
      dc_.FloodFill(sx, sy, gSettings.ChartAxes);
    }
  }
  DrawMarks(true);
  SetFontPercent(10.0 / 3);
  for (const DataPoint& p : c_.DataPoints)
    if (!p.sId2.empty() && std::isfinite(p.fY))
      TextAt(c_.XToPixel(p.fX) + c_.WidthPercent(0.5), c_.YToPixel(p.fY) - c_.HeightPercent(1), p.sId2, 128,
             gSettings.ChartAxisText);
}

// The net of line points over a cube in an oblique parallel projection,
// painted from the back to the front so that each cell covers what lies
// behind it; walls, floor and axes first; a legend for rainbow colours.
void ChartPainter::DrawSurface() {
  if (c_.LinePoints.empty()) return;
  int right = c_.bRainbow ? c_.XPercent(80) : c_.PlotRight;
  double ca = std::cos(c_.fAlphaRad), cb = std::cos(c_.fBetaRad);
  double sa = std::sin(c_.fAlphaRad), sb = std::sin(c_.fBetaRad);
  double byWidth = (right - c_.PlotLeft) / std::max(1e-6, ca + cb);
  // The front edges' values and the axis titles hang below the cube's
  // lowest corner: a tenth of the plot's height is kept for them.
  double byHeight = 0.9 * (c_.PlotBottom - c_.PlotTop) / std::max(1e-6, 1 + sa + sb);
  int S = static_cast<int>(std::min(byWidth, byHeight));
  double X0 = (right + c_.PlotLeft - S * (ca + cb)) / 2.0;
  double Y0 = c_.PlotTop + S + S * sb;

  float x0 = 1e30f, x1 = -1e30f, y0 = 1e30f, y1 = -1e30f, z0 = 1e30f, z1 = -1e30f;
  for (const LinePoint& p : c_.LinePoints) {
    if (!std::isfinite(p.fX) || !std::isfinite(p.fY) || !std::isfinite(p.fZ)) continue;
    x0 = std::min(x0, p.fX), x1 = std::max(x1, p.fX);
    y0 = std::min(y0, p.fY), y1 = std::max(y1, p.fY);
    z0 = std::min(z0, p.fZ), z1 = std::max(z1, p.fZ);
  }
  if (x0 > x1) return;
  float xMajor, xMinor, yMajor, yMinor, zMajor, zMinor;
  float xa = x0, xb = x1, ya = y0, yb = y1, za = z0, zb = z1;
  GetScale(xa, xb, xMajor, xMinor);
  GetScale(ya, yb, yMajor, yMinor);
  GetScale(za, zb, zMajor, zMinor);
  if (x1 == x0) x0 -= 1, x1 += 1;
  if (y1 == y0) y0 -= 1, y1 += 1;
  if (z1 == z0) z0 -= 1, z1 += 1;
  auto project = [&](double x, double y, double z) {
    double u = (x - x0) / (x1 - x0), v = (y - y0) / (y1 - y0), w = (z - z0) / (z1 - z0);
    return CanvasPoint{static_cast<int>(std::nearbyint(X0 + S * ca * u + S * cb * v)),
                       static_cast<int>(std::nearbyint(Y0 + S * sa * u - S * sb * v - S * w))};
  };

  // Walls at x = xMin and y = yMax, and the floor.
  dc_.SetPen(Pen{gSettings.ChartAxes, 1, false});
  if (c_.bShade) {
    dc_.SetBrush(Brush{gSettings.ChartArea ^ 0x080808, false});
    dc_.Polygon({project(x0, y0, z0), project(x0, y1, z0), project(x0, y1, z1), project(x0, y0, z1)});
    dc_.SetBrush(Brush{gSettings.ChartArea ^ 0x181818, false});
    dc_.Polygon({project(x0, y1, z0), project(x1, y1, z0), project(x1, y1, z1), project(x0, y1, z1)});
  }
  dc_.SetBrush(Brush{c_.bShade ? gSettings.ChartArea ^ 0x303030 : gSettings.ChartArea, false});
  dc_.Polygon({project(x0, y0, z0), project(x1, y0, z0), project(x1, y1, z0), project(x0, y1, z0)});

  // Axes along the floor's front edges and up from (xMin, yMin), values to
  // three figures.
  SetFontPercent(4);
  int tick = c_.WidthPercent(1.5);
  // The two floor axes meet at the front corner, where the x axis's last
  // value stands; the y axis leaves its value there out.
  auto axis = [&](float low, float high, float step, auto at, int align, bool skipLow) {
    MajorTicks(low, high, step, [&](double v) {
      CanvasPoint p = at(static_cast<float>(v));
      LineSolid(p.x, p.y, p.x - tick, p.y + (align == 1 ? 0 : tick / 2), gSettings.ChartAxes);
      if (skipLow && v <= low + 1e-4 * step) return;
      TextAt(p.x - tick - 1, p.y + fontHeight_, FormatSF(3, static_cast<float>(v)), align, gSettings.ChartAxisText);
    });
  };
  axis(x0, x1, xMajor, [&](float v) { return project(v, y0, z0); }, 6, false);
  axis(y0, y1, yMajor, [&](float v) { return project(x1, v, z0); }, 5, true);
  axis(z0, z1, zMajor, [&](float v) { return project(x0, y0, v); }, 1, false);
  SetFontPercent(5);
  CanvasPoint xl = project(x0 + (x1 - x0) * 0.5, y0 - (y1 - y0) * 0.25, z0);
  CanvasPoint yl = project(x1 + (x1 - x0) * 0.25, y0 + (y1 - y0) * 0.5, z0);
  TextAt(xl.x, xl.y + fontHeight_, c_.sXlabel, 3, gSettings.ChartAxisText);
  TextAt(yl.x, yl.y + fontHeight_, c_.sYlabel, 5, gSettings.ChartAxisText);
  Note(c_.sText1);

  // The cells: each pair of line points with the pair after it.
  const std::vector<LinePoint>& lp = c_.LinePoints;
  for (std::size_t i = 0; i + 3 < lp.size(); i += 2) {
    if (!lp[i].bJoined) continue;
    float zMean = (lp[i].fZ + lp[i + 1].fZ + lp[i + 2].fZ + lp[i + 3].fZ) / 4;
    Colour fill = c_.bRainbow ? RainbowColour(static_cast<int>(std::nearbyint(100 * (zMean - z0) / (z1 - z0))))
                  : c_.bFilled ? gSettings.ChartDataBlobs
                               : gSettings.ChartArea;
    dc_.SetPen(Pen{c_.bHideNet ? fill : gSettings.ChartDataLine, 1, false});
    dc_.SetBrush(Brush{fill, false});
    // The strip zigzags (its pairs swap their y ends), so the four points
    // in their order go round the cell.
    dc_.Polygon({project(lp[i].fX, lp[i].fY, lp[i].fZ), project(lp[i + 1].fX, lp[i + 1].fY, lp[i + 1].fZ),
                 project(lp[i + 2].fX, lp[i + 2].fY, lp[i + 2].fZ), project(lp[i + 3].fX, lp[i + 3].fY, lp[i + 3].fZ)});
  }

  if (c_.bRainbow && zMajor > 0) {
    SetFontPercent(4);
    int y = c_.YPercent(20), h = c_.HeightPercent(7), w = c_.WidthPercent(4);
    for (int i = 0; i <= 12; ++i) {
      float v = std::ceil(z0 / zMajor - 1e-4f) * zMajor + zMajor * static_cast<float>(i);
      if (v > z1 + 1e-4f * zMajor || y + h > c_.oy + c_.Height) break;
      BoxFilled(c_.XPercent(85), y, c_.XPercent(85) + w, y + h, gSettings.ChartAxes,
                RainbowColour(static_cast<int>(std::nearbyint(100 * (v - z0) / (z1 - z0)))));
      TextAt(c_.XPercent(85) - 2, y + h / 2 + fontHeight_ / 3, FormatSF(3, v) + " = ", 1, gSettings.ChartAxisText);
      y += h;
    }
  }
}

}  // namespace kestrow
