// The drawing of one chart on a canvas: the primitives in the chart's
// colours, the axes, ticks, points, marks, lines and limits that the types
// share, and each type's own drawing. Internal to the chart engine.
#pragma once

#include <cmath>
#include <string>

#include "charts/Canvas.h"
#include "charts/Chart.h"

namespace kestrow {

// The baseline of the line under a chart's title, in percent of the cell:
// the title hangs from 6 percent at font 6 (4.5 percent high), and a line of
// font 5 follows it.
inline constexpr double NOTE_LINE = 6 + 4.5 + 3.75;

// The tick label of a value in an axis format ("#########0.00").
std::string TickText(double value, const std::string& format);

// Calls visit(v) for each multiple v of the step from low to high, worked
// out in double precision; at most a few hundred.
template <class Visit>
void MajorTicks(float low, float high, float step, Visit visit) {
  if (!(step > 0) || !(high >= low)) return;
  double first = std::ceil(static_cast<double>(low) / step - 1e-4);
  for (int i = 0; i < 500; ++i) {
    double v = (first + i) * step;
    if (!(v <= high + 1e-4 * static_cast<double>(step))) break;
    visit(v);
  }
}

class ChartPainter {
 public:
  ChartPainter(Chart& chart, Canvas& canvas) : c_(chart), dc_(canvas) {}
  void Draw();

  // Text alignments: 0 left on the baseline, 1 right, 2 centred; 3 centred
  // under the point, 4 centred above it, 5 left under, 6 right under; 128
  // added paints the text's box in the plot area's colour first.
  void TextAt(int x, int y, const std::string& text, int align, Colour colour);
  void SetFontHeight(int pixels);
  void SetFontPercent(double p);
  void SetEscapement(int tenths) { escapement_ = tenths; }

 private:
  // Primitives: each sets its own pen and brush.
  void LineSolid(int x1, int y1, int x2, int y2, Colour colour, int width = 1);
  void LineDotted(int x1, int y1, int x2, int y2, Colour colour);
  void BoxFilled(int x1, int y1, int x2, int y2, Colour pen, Colour brush, int width = 1);
  void Marker(int x, int y, int type);

  // The steps of the types.
  void PlotArea();
  void Note(const std::string& text);
  void EmptyYRangeToUnit();
  void AutoScaleX();
  void CategoricalX();
  void FitYAxis();
  void DrawXAxis();
  void DrawYAxis(bool rotate);
  void DrawFittedYAxis(bool minor);
  void DrawXTicks(bool minor);
  void DrawYTicks(bool minor);
  void DrawPoints(int mode);
  void DrawMarks(bool target);
  void DrawLines(int tag, int width, Colour colour);
  void DrawLimits();
  void AxisAtZero();

  // The types' own drawings.
  void DrawIPO();
  void DrawANOM();
  void DrawMMP();
  void DrawEffects();
  void DrawResiduals();
  void DrawXY(bool minor);
  void DrawProbability();
  void DrawResponse();
  void DrawSurface();
  void DrawScree();
  void DrawContour();
  void DrawPairwise();
  void DrawPareto();
  void DrawRunChart();
  void DrawScatter();

  int ProbitToPixel(float p) const;

  Chart& c_;
  Canvas& dc_;
  int escapement_ = 0;
  bool xLabels_ = true;  // DrawPoints draws the x labels of points
  int fontHeight_ = 10;
};

}  // namespace kestrow
