// The steps that the chart types share: primitives in the chart's colours,
// the cell and plot area, axes with their scale and ticks, points with their
// markers, joins and labels, contour marks, polylines and limit lines.
#include "charts/ChartPainter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "charts/GetScale.h"
#include "core/Formatters.h"
#include "core/Settings.h"

namespace kestrow {

namespace {

// A walk along an axis stops after this many ticks, whatever the steps.
constexpr int MAX_TICKS = 2000;

// Each tick of an axis from low to high by the minor step, with whether it
// is a major one (every ratio-th, counting from 0).
template <class Visit>
void Ticks(float low, float high, float major, float minor, Visit visit) {
  if (!(minor > 0) || !(major > 0) || !(high >= low) || !std::isfinite(high - low)) return;
  int ratio = static_cast<int>(std::nearbyint(major / minor));
  if (ratio < 1) ratio = 1;
  // A tick's value is low plus a whole number of minor steps, so that far
  // from zero no rounding piles up; at most MAX_TICKS of them.
  double steps = (static_cast<double>(high) - low) / minor;
  int count = steps > MAX_TICKS ? MAX_TICKS : static_cast<int>(std::floor(steps + 1e-4));
  for (int i = 0; i <= count; ++i) {
    double v = std::min(static_cast<double>(low) + static_cast<double>(minor) * i, static_cast<double>(high));
    visit(v, i % ratio == 0);
  }
}

}  // namespace

// The tick label of a value in an axis format. The value is the tick's own,
// in double precision, so that far from zero (1e9 and a step of 20) the
// label names the place where the tick stands.
std::string TickText(double value, const std::string& format) {
  int decimals = std::clamp(FormatDecimalsOf(format), 0, 30);
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.*f", decimals, value);
  std::string text = buf;
  // No "-0" for a tick at zero reached from below.
  if (text.find_first_not_of("-0.") == std::string::npos && text[0] == '-') text.erase(0, 1);
  return text;
}

// ---- primitives -------------------------------------------------------------

void ChartPainter::LineSolid(int x1, int y1, int x2, int y2, Colour colour, int width) {
  dc_.SetPen(Pen{colour, width, false});
  dc_.MoveTo(x1, y1);
  dc_.LineTo(x2, y2);
}

void ChartPainter::LineDotted(int x1, int y1, int x2, int y2, Colour colour) {
  dc_.SetPen(Pen{colour, 1, true});
  dc_.MoveTo(x1, y1);
  dc_.LineTo(x2, y2);
}

void ChartPainter::BoxFilled(int x1, int y1, int x2, int y2, Colour pen, Colour brush, int width) {
  dc_.SetPen(Pen{pen, width, false});
  dc_.SetBrush(Brush{brush, false});
  dc_.Rectangle(std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2));
}

void ChartPainter::SetFontHeight(int pixels) {
  fontHeight_ = std::max(1, pixels);
  dc_.SetFont(gSettings.GraphFont, fontHeight_, escapement_);
}

void ChartPainter::SetFontPercent(double p) { SetFontHeight(c_.HeightPercent(0.75 * p)); }

void ChartPainter::TextAt(int x, int y, const std::string& text, int align, Colour colour) {
  if (text.empty()) return;
  dc_.SetTextColour(colour);
  dc_.SetTextBackground(gSettings.ChartArea, (align & 128) != 0);
  HAlign h = HAlign::Left;
  VAlign v = VAlign::Baseline;
  switch (align & 127) {
    case 1: h = HAlign::Right; break;
    case 2: h = HAlign::Centre; break;
    case 3: h = HAlign::Centre; v = VAlign::Top; break;
    case 4: h = HAlign::Centre; v = VAlign::Bottom; break;
    case 5: v = VAlign::Top; break;
    case 6: h = HAlign::Right; v = VAlign::Top; break;
    default: break;
  }
  dc_.TextOut(x, y, text, h, v);
}

// Markers, about a centre, with r half of one percent of the chart's width.
void ChartPainter::Marker(int x, int y, int type) {
  if (type <= 0 || type > 9) return;
  double r = std::max(1.0, c_.WidthPercent(1) / 2.0);
  auto at = [](double v) { return static_cast<int>(std::nearbyint(v)); };
  bool filled = type <= 4;
  dc_.SetPen(Pen{gSettings.ChartDataLine, type == 9 ? 2 : 1, false});
  dc_.SetBrush(Brush{gSettings.ChartDataBlobs, !filled});
  switch (type) {
    case 1:
    case 5: dc_.Ellipse(at(x - r), at(y - r), at(x + r), at(y + r)); break;
    case 2:
    case 6: dc_.Rectangle(at(x - r), at(y - r), at(x + r), at(y + r)); break;
    case 3:
    case 7: dc_.Polygon({{x, at(y - 1.5 * r)}, {at(x + 1.7 * r), at(y + r)}, {at(x - 1.7 * r), at(y + r)}}); break;
    case 4:
    case 8:
      dc_.Polygon({{x, at(y - 1.5 * r)}, {at(x + 1.5 * r), y}, {x, at(y + 1.5 * r)}, {at(x - 1.5 * r), y}});
      break;
    case 9:
      dc_.MoveTo(at(x - r), at(y - r));
      dc_.LineTo(at(x + r), at(y + r));
      dc_.MoveTo(at(x + r), at(y - r));
      dc_.LineTo(at(x - r), at(y + r));
      break;
    default: break;
  }
}

// ---- the steps --------------------------------------------------------------

void ChartPainter::PlotArea() {
  BoxFilled(c_.PlotLeft, c_.PlotTop, c_.PlotRight, c_.PlotBottom, gSettings.ChartAxes, gSettings.ChartArea);
}

// A chart note: in the band under the title where the type's top margin has
// room for it, otherwise inside the plot at its top left.
void ChartPainter::Note(const std::string& text) {
  if (text.empty()) return;
  SetFontPercent(5);
  if (c_.TopLines >= 2)
    TextAt((c_.PlotLeft + c_.PlotRight) / 2, c_.YPercent(NOTE_LINE), text, 2, gSettings.ChartTitles);
  else
    TextAt(c_.PlotLeft + c_.WidthPercent(1), c_.PlotTop + 2, text, 5, gSettings.ChartTitles);
}

// A chart without a value has the unit interval for its y range.
void ChartPainter::EmptyYRangeToUnit() {
  if (c_.yMin > c_.yMax || !std::isfinite(c_.yMin) || !std::isfinite(c_.yMax)) {
    c_.yMin = 0;
    c_.yMax = 1;
  }
}

// The x range from the points, for the types whose caller leaves it to the
// chart (xMax not above xMin): every point's fX, and the line points'.
void ChartPainter::AutoScaleX() {
  if (c_.xAxisCount > 0 || c_.xMax > c_.xMin) return;
  float low = 1.0e9f, high = -1.0e9f;
  for (const DataPoint& p : c_.DataPoints)
    if (std::isfinite(p.fX)) {
      low = std::min(low, p.fX);
      high = std::max(high, p.fX);
    }
  for (const LinePoint& p : c_.LinePoints)
    if (std::isfinite(p.fX)) {
      low = std::min(low, p.fX);
      high = std::max(high, p.fX);
    }
  if (low > high) {
    low = 0;
    high = 1;
  }
  c_.xMin = low;
  c_.xMax = high;
}

// A categorical x axis: places 1 to xAxisCount - 1 on the range 0..xAxisCount.
void ChartPainter::CategoricalX() {
  if (c_.xAxisCount <= 0) return;
  c_.xMin = 0;
  c_.xMax = c_.xAxisCount;
  c_.xMajor = 1;
  c_.xMinor = 1;
}

void ChartPainter::FitYAxis() {
  EmptyYRangeToUnit();
  if (c_.yMin == c_.yMax) {
    c_.yMin -= 1;
    c_.yMax += 1;
  }
  if (c_.yMajor == 0) c_.sYformat = GetScale(c_.yMin, c_.yMax, c_.yMajor, c_.yMinor);
  // Two pixels clear of the cell's frame.
  int left = c_.ox + 2;
  SetFontPercent(5);
  // The rotated label stands one percent in from the cell's edge.
  if (!c_.sYlabel.empty()) left += fontHeight_ + c_.WidthPercent(1);
  int widest = 0;
  Ticks(c_.yMin, c_.yMax, c_.yMajor, c_.yMinor, [&](double v, bool major) {
    if (major) widest = std::max(widest, dc_.TextExtent(TickText(v, c_.sYformat)).cx);
  });
  left += widest + 2 + c_.WidthPercent(1.5);
  // Never to the right of the plot's own right edge.
  c_.PlotLeft = static_cast<std::int16_t>(std::min(left, c_.PlotRight - 10));
}

void ChartPainter::DrawXAxis() {
  if (c_.xAxisCount > 0) c_.xMajor = 1;
  if (c_.xMajor == 0) {
    AutoScaleX();
    c_.sXformat = GetScale(c_.xMin, c_.xMax, c_.xMajor, c_.xMinor);
  }
  LineSolid(c_.PlotLeft, c_.XAxisY, c_.PlotRight, c_.XAxisY, gSettings.ChartAxes);
  if (!c_.sXlabel.empty()) {
    SetFontPercent(5);
    // Below the tick labels where the bottom margin has room for both, else
    // inside the plot at the right end of the axis.
    if (c_.BottomLines >= 2)
      TextAt((c_.PlotLeft + c_.PlotRight) / 2, c_.YPercent(100), c_.sXlabel, 4, gSettings.ChartAxisText);
    else
      TextAt(c_.PlotRight - c_.WidthPercent(1), c_.PlotBottom - 2, c_.sXlabel, 1, gSettings.ChartAxisText);
  }
}

void ChartPainter::DrawYAxis(bool rotate) {
  EmptyYRangeToUnit();
  if (c_.yMin == c_.yMax) {
    c_.yMin -= 1;
    c_.yMax += 1;
  }
  if (c_.yMajor == 0) c_.sYformat = GetScale(c_.yMin, c_.yMax, c_.yMajor, c_.yMinor);
  LineSolid(c_.PlotLeft, c_.PlotTop, c_.PlotLeft, c_.PlotBottom, gSettings.ChartAxes);
  if (c_.sYlabel.empty()) return;
  SetFontPercent(5);
  if (rotate) {
    SetEscapement(900);
    SetFontPercent(5);
    TextAt(c_.XPercent(4), (c_.PlotTop + c_.PlotBottom) / 2, c_.sYlabel, 2, gSettings.ChartAxisText);
    SetEscapement(0);
    SetFontPercent(5);
  } else {
    TextAt(c_.XPercent(12), c_.PlotTop - c_.HeightPercent(5), c_.sYlabel, 1, gSettings.ChartAxisText);
  }
}

// The fitted axis: the plot starts where the label and the widest number
// end; the label runs upwards at the left edge of the cell.
void ChartPainter::DrawFittedYAxis(bool minor) {
  FitYAxis();
  LineSolid(c_.PlotLeft, c_.PlotTop, c_.PlotLeft, c_.PlotBottom, gSettings.ChartAxes);
  if (!c_.sYlabel.empty()) {
    SetEscapement(900);
    SetFontPercent(5);
    TextAt(c_.ox + c_.WidthPercent(1), (c_.PlotTop + c_.PlotBottom) / 2, c_.sYlabel, 3, gSettings.ChartAxisText);
    SetEscapement(0);
  }
  DrawYTicks(minor);
}

void ChartPainter::DrawXTicks(bool minor) {
  if (c_.xAxisCount > 0) return;  // a categorical axis is labelled by its points
  SetFontPercent(5);
  int full = c_.HeightPercent(1.5), half = c_.HeightPercent(0.75);
  // A label that would run into the one before it is left out (long numbers
  // on a narrow chart); its tick stays.
  int lastRight = -32768;
  Ticks(c_.xMin, c_.xMax, c_.xMajor, c_.xMinor, [&](double v, bool major) {
    int x = c_.XToPixel(v);
    if (major) {
      LineSolid(x, c_.XAxisY, x, c_.XAxisY + full, gSettings.ChartAxes);
      std::string text = TickText(v, c_.sXformat);
      int width = dc_.TextExtent(text).cx;
      if (x - width / 2 > lastRight) {
        TextAt(x, c_.XAxisY + full, text, 3, gSettings.ChartAxisText);
        lastRight = x + width / 2 + std::max(2, fontHeight_ / 2);
      }
    } else if (minor) {
      LineSolid(x, c_.XAxisY, x, c_.XAxisY + half, gSettings.ChartAxes);
    }
  });
}

void ChartPainter::DrawYTicks(bool minor) {
  SetFontPercent(5);
  int full = c_.WidthPercent(1.5), half = c_.WidthPercent(0.75);
  Ticks(c_.yMin, c_.yMax, c_.yMajor, c_.yMinor, [&](double v, bool major) {
    int y = c_.YToPixel(v);
    if (major) {
      LineSolid(c_.PlotLeft - full, y, c_.PlotLeft, y, gSettings.ChartAxes);
      TextAt(c_.PlotLeft - full - 2, y + fontHeight_ / 3, TickText(v, c_.sYformat), 1, gSettings.ChartAxisText);
    } else if (minor) {
      LineSolid(c_.PlotLeft - half, y, c_.PlotLeft, y, gSettings.ChartAxes);
    }
  });
}

// The points: x labels, markers, joins and labels, and the pixel of each for
// Click. A point without a value keeps its x label and its old pixel, and the
// next joined point joins the one before it.
void ChartPainter::DrawPoints(int mode) {
  // A marginal means chart may ask for a reduced font on its crowded x axis.
  SetFontPercent(c_.zAxisCount > 0 ? 2.5 : c_.chtType == CHT_MMP && c_.fValue == 1 ? 3.5 : 5);
  int tick = c_.HeightPercent(1.5);
  int r = std::max(1, c_.WidthPercent(1) / 2);
  for (DataPoint& p : c_.DataPoints) {
    int x = c_.XToPixel(p.fX);
    if ((p.idf & 1) && xLabels_) {
      LineSolid(x, c_.XAxisY, x, c_.XAxisY + tick, gSettings.ChartAxes);
      TextAt(x, c_.XAxisY + tick, p.sId, 3, gSettings.ChartAxisText);
    }
    if (p.fY == MISSING_VALUE || !std::isfinite(p.fY)) continue;
    int y = c_.YToPixel(p.fY);
    if ((p.idf & 2) && mode != -1) {
      if (mode == -3) TextAt(x, y + r + 1, p.sId2, 3, gSettings.ChartAxisText);
      else if (mode == -2) TextAt(x + 2 * r, y + fontHeight_ / 3, p.sId2, 0, gSettings.ChartAxisText);
      else if (mode == 0) TextAt(x + 2 * r, y, p.sId2, 0, gSettings.ChartAxisText);
      else if (mode > 0) TextAt(x, c_.YPercent(mode * 5 - 2.5), p.sId2, 2, gSettings.ChartAxisText);
    }
    if (p.bJoined && c_.lastJoinX != -1) LineSolid(c_.lastJoinX, c_.lastJoinY, x, y, gSettings.ChartDataLine);
    Marker(x, y, p.iDotType);
    p.iWhereX = static_cast<std::int16_t>(x);
    p.iWhereY = static_cast<std::int16_t>(y);
    c_.lastJoinX = static_cast<std::int16_t>(x);
    c_.lastJoinY = static_cast<std::int16_t>(y);
  }
}

// The marks of a contour: its segments are points joined in order; the
// target contour's points carry "T".
void ChartPainter::DrawMarks(bool target) {
  Colour join = target ? gSettings.ChartLimits : gSettings.ChartAxes;
  c_.lastJoinX = c_.lastJoinY = -1;
  for (DataPoint& p : c_.DataPoints) {
    if ((p.sId == "T") != target || p.sId == "COL") continue;
    if (p.fY == MISSING_VALUE || !std::isfinite(p.fY)) continue;
    int x = c_.XToPixel(p.fX), y = c_.YToPixel(p.fY);
    if (p.bJoined && c_.lastJoinX != -1) LineSolid(c_.lastJoinX, c_.lastJoinY, x, y, join, target ? 2 : 1);
    Marker(x, y, p.iDotType);
    p.iWhereX = static_cast<std::int16_t>(x);
    p.iWhereY = static_cast<std::int16_t>(y);
    c_.lastJoinX = static_cast<std::int16_t>(x);
    c_.lastJoinY = static_cast<std::int16_t>(y);
  }
}

void ChartPainter::DrawLines(int tag, int width, Colour colour) {
  dc_.SetPen(Pen{colour, width, false});
  for (const LinePoint& p : c_.LinePoints) {
    if (p.iTag != tag || !std::isfinite(p.fX) || !std::isfinite(p.fY)) continue;
    int x = c_.XToPixel(p.fX), y = c_.YToPixel(p.fY);
    if (p.bJoined) dc_.LineTo(x, y);
    else dc_.MoveTo(x, y);
  }
}

void ChartPainter::DrawLimits() {
  SetFontPercent(5);
  auto limit = [&](float value, const char* text, Colour colour) {
    if (value == MISSING_VALUE || !std::isfinite(value)) return;
    int y = c_.YToPixel(value);
    LineDotted(c_.PlotLeft, y, c_.PlotRight, y, colour);
    TextAt(c_.PlotRight, y - c_.HeightPercent(0.5), text, 1, colour);
  };
  limit(c_.HighLimit, "UDL", gSettings.ChartLimits);
  limit(c_.LowLimit, "LDL", gSettings.ChartLimits);
  limit(c_.MeanLimit, "Mean", gSettings.ChartMeanLine);
}

// A line across the plot at the value 0 when 0 lies within the y range.
void ChartPainter::AxisAtZero() {
  if (!(c_.yMin < 0 && c_.yMax > 0)) return;
  int y = c_.YToPixel(0);
  LineSolid(c_.PlotLeft, y, c_.PlotRight, y, gSettings.ChartAxes);
}

// ---- the chart --------------------------------------------------------------

void ChartPainter::Draw() {
  dc_.Save();
  escapement_ = 0;
  c_.lastJoinX = c_.lastJoinY = -1;
  BoxFilled(c_.ox, c_.oy, c_.ox + c_.Width, c_.oy + c_.Height, gSettings.ChartAxes,
            c_.chtType == CHT_SURFACE ? gSettings.ChartArea : gSettings.ChartBackground);
  if (c_.chtType != CHT_FILLER) {
    SetFontPercent(6);
    TextAt((c_.PlotLeft + c_.PlotRight) / 2, c_.YPercent(6), c_.sTitle, 3, gSettings.ChartTitles);
  }
  switch (c_.chtType) {
    case CHT_IPO: DrawIPO(); break;
    case CHT_ANOM: DrawANOM(); break;
    case CHT_MMP: DrawMMP(); break;
    case CHT_EFFECT:
    case CHT_INTERACTION: DrawEffects(); break;
    case CHT_RES_RUN:
    case CHT_RES_FACTOR: DrawResiduals(); break;
    case CHT_RES_FITTED: DrawXY(true); break;
    case CHT_RES_VARIABLE: DrawXY(false); break;
    case CHT_RES_NPP:
    case CHT_NPP:
    case CHT_REG_NPP: DrawProbability(); break;
    case CHT_RESPONSE2:
    case CHT_RESPONSE3: DrawResponse(); break;
    case CHT_SURFACE: DrawSurface(); break;
    case CHT_SCREE: DrawScree(); break;
    case CHT_CONTOUR: DrawContour(); break;
    case CHT_PAIRWISE: DrawPairwise(); break;
    case CHT_PARETO: DrawPareto(); break;
    case CHT_RUN: DrawRunChart(); break;
    case CHT_SCATTER: DrawScatter(); break;
    default: break;
  }
  dc_.Restore();
}

void Chart::Draw(Canvas& canvas) { ChartPainter(*this, canvas).Draw(); }

}  // namespace kestrow
