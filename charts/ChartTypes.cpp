// The drawing of the chart types on plain axes: analysis of means, marginal
// means, effects, residuals, scree, Pareto, pairwise comparison, response
// plots, run chart, scattergram, and the input-process-output diagram.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "charts/ChartPainter.h"
#include "charts/GetScale.h"
#include "core/Formatters.h"
#include "core/Text.h"
#include "core/Settings.h"

namespace kestrow {

namespace {

// The lines of a text cut at its line breaks ("\r\n" or "\n").
std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::string line;
  for (char ch : text) {
    if (ch == '\r') continue;
    if (ch == '\n') {
      lines.push_back(line);
      line.clear();
    } else {
      line += ch;
    }
  }
  lines.push_back(line);
  return lines;
}

// The words of a line, cut at blanks.
std::vector<std::string> Words(const std::string& line) {
  std::vector<std::string> words;
  std::string word;
  for (char ch : line) {
    if (ch == ' ') {
      if (!word.empty()) words.push_back(word);
      word.clear();
    } else {
      word += ch;
    }
  }
  if (!word.empty()) words.push_back(word);
  return words;
}

}  // namespace

// Decision limits over the levels: the limits' figures stand under the title.
void ChartPainter::DrawANOM() {
  FitYAxis();
  PlotArea();
  CategoricalX();
  DrawFittedYAxis(true);
  DrawXAxis();
  DrawPoints(5);
  DrawLimits();
  SetFontPercent(5);
  auto figure = [](float v) { return v == MISSING_VALUE ? std::string(" --") : FormatNumSF(v); };
  std::string limits = "LDL=" + figure(c_.LowLimit) + ", Mean=" + figure(c_.MeanLimit) + ", UDL=" + figure(c_.HighLimit);
  int centre = (c_.PlotLeft + c_.PlotRight) / 2;
  TextAt(centre, c_.YPercent(NOTE_LINE), limits, 2, gSettings.ChartAxisText);
  TextAt(c_.PlotLeft, c_.YPercent(NOTE_LINE + 4), c_.sText2, 0, gSettings.ChartAxisText);
  TextAt(c_.PlotRight, c_.YPercent(NOTE_LINE + 4), c_.sText1, 1, gSettings.ChartAxisText);
}

// Level means of the factors side by side; each point's second text (a
// factor's name) stands over the plot above it.
void ChartPainter::DrawMMP() {
  FitYAxis();
  PlotArea();
  CategoricalX();
  DrawFittedYAxis(true);
  DrawXAxis();
  DrawPoints(-1);
  SetFontPercent(5);
  for (const DataPoint& p : c_.DataPoints)
    if (p.idf & 2) TextAt(c_.XToPixel(p.fX), c_.PlotTop - 2, p.sId2, 4, gSettings.ChartAxisText);
}

void ChartPainter::DrawEffects() {
  FitYAxis();
  PlotArea();
  CategoricalX();
  AutoScaleX();
  DrawFittedYAxis(true);
  DrawXAxis();
  DrawXTicks(true);
  DrawPoints(0);
  Note(c_.sText1);
}

// Residuals: the x axis at zero; against a factor, x ticks only where the
// factor is numeric (no categorical places).
void ChartPainter::DrawResiduals() {
  FitYAxis();
  PlotArea();
  CategoricalX();
  AutoScaleX();
  DrawFittedYAxis(true);
  AxisAtZero();
  DrawXAxis();
  if (c_.chtType == CHT_RES_RUN || c_.xAxisCount == 0) DrawXTicks(true);
  DrawPoints(-1);
}

void ChartPainter::DrawXY(bool minor) {
  FitYAxis();
  PlotArea();
  AutoScaleX();
  DrawFittedYAxis(minor);
  DrawXAxis();
  DrawXTicks(minor);
  DrawPoints(-1);
  Note(c_.sText1);
}

void ChartPainter::DrawScree() {
  FitYAxis();
  PlotArea();
  CategoricalX();
  DrawFittedYAxis(true);
  DrawXAxis();
  DrawPoints(0);  // each contrast named beside its point
  Note(c_.sText1);
}

// Bars from 0 to each value, in rainbow colours along the axis, with their
// text in them; a bar's pixel for Click is its top.
void ChartPainter::DrawPareto() {
  c_.yMin = std::min(0.0f, c_.yMin);
  FitYAxis();
  c_.yMin = std::min(0.0f, c_.yMin);
  PlotArea();
  CategoricalX();
  DrawFittedYAxis(true);
  DrawXAxis();
  SetFontPercent(4);
  int count = std::max<int>(1, c_.xAxisCount);
  int i = 0;
  for (DataPoint& p : c_.DataPoints) {
    ++i;
    if (p.fY == MISSING_VALUE || !std::isfinite(p.fY)) continue;
    int x1 = c_.XToPixel(p.fX - 0.5f), x2 = c_.XToPixel(p.fX + 0.5f);
    int y0 = c_.YToPixel(0), y1 = c_.YToPixel(p.fY);
    dc_.SetPen(Pen{gSettings.ChartDataLine, 1, false});
    dc_.SetBrush(Brush{RainbowColour(100 * i / count), false});
    dc_.Polygon({{x1, y0}, {x2, y0}, {x2, y1}, {x1, y1}});
    // The text in the bar under its top, or over a bar too low to hold it.
    int top = std::min(y0, y1);
    bool room = std::abs(y0 - y1) > fontHeight_ + 4;
    // The short name where there is one (a contrast's letter), else the text.
    const std::string& name = p.sId2.empty() ? p.sId : p.sId2;
    TextAt((x1 + x2) / 2, room ? top + 2 : top - 2, name, room ? 3 : 4, gSettings.ChartAxisText);
    p.iWhereX = static_cast<std::int16_t>((x1 + x2) / 2);
    p.iWhereY = static_cast<std::int16_t>(std::min(y0, y1));
  }
  Note(c_.sText1);
}

// The averages as a stacked dot plot on a number line at y 0, the groups of
// averages that do not differ as bars (line points) below it, a mark at each
// end of a bar, and the test and its alpha over the plot.
void ChartPainter::DrawPairwise() {
  EmptyYRangeToUnit();
  for (const LinePoint& p : c_.LinePoints) c_.ConsiderValue(p.fY);
  c_.ConsiderValue(0);
  // Room for ten rows of dots and bars at the least, so that a row is never
  // taller than a tenth of the plot.
  c_.ConsiderValue(-4);
  // Below the last bar a row to spare; above the line room for its numbers
  // and for a figure that the line under the title could not take.
  float span = c_.yMax - c_.yMin;
  c_.yMin -= std::max(0.4f, 0.05f * span);
  c_.yMax += std::max(1.2f, 0.15f * span);
  AutoScaleX();
  if (c_.xMin == c_.xMax) {
    c_.xMin -= 1;
    c_.xMax += 1;
  }
  if (c_.xMajor == 0) {
    float low = c_.xMin, high = c_.xMax;
    c_.sXformat = GetScale(low, high, c_.xMajor, c_.xMinor);
  }
  c_.yMajor = c_.yMax - c_.yMin;
  PlotArea();
  c_.XAxisY = static_cast<std::int16_t>(c_.YToPixel(0));
  LineSolid(c_.PlotLeft, c_.XAxisY, c_.PlotRight, c_.XAxisY, gSettings.ChartAxes);
  SetFontPercent(5);
  MajorTicks(c_.xMin, c_.xMax, c_.xMajor, [&](double v) {
    int x = c_.XToPixel(v);
    LineSolid(x, c_.XAxisY - c_.HeightPercent(1.5), x, c_.XAxisY, gSettings.ChartAxes);
    TextAt(x, c_.XAxisY - c_.HeightPercent(1.5), TickText(v, c_.sXformat), 4, gSettings.ChartAxisText);
  });
  if (!c_.sXlabel.empty()) TextAt((c_.PlotLeft + c_.PlotRight) / 2, c_.YPercent(100), c_.sXlabel, 4, gSettings.ChartAxisText);
  DrawPoints(-1);
  std::vector<int> tags;
  for (const LinePoint& p : c_.LinePoints)
    if (std::find(tags.begin(), tags.end(), p.iTag) == tags.end()) tags.push_back(p.iTag);
  for (int tag : tags) DrawLines(tag, 2, gSettings.ChartDataLine);
  int mark = c_.HeightPercent(1);
  for (const LinePoint& p : c_.LinePoints) {
    int x = c_.XToPixel(p.fX), y = c_.YToPixel(p.fY);
    LineSolid(x, y - mark, x, y + mark, gSettings.ChartDataLine);
  }
  // The test's name at the left and its figure at the right of the line
  // under the title; where the two would meet, the figure goes inside the
  // plot's top right corner.
  SetFontPercent(5);
  int line = c_.YPercent(NOTE_LINE);
  TextAt(c_.PlotLeft, line, c_.sText1, 0, gSettings.ChartAxisText);
  int room = c_.PlotRight - c_.PlotLeft - dc_.TextExtent(c_.sText1).cx - fontHeight_;
  if (dc_.TextExtent(c_.sText2).cx <= room) TextAt(c_.PlotRight, line, c_.sText2, 1, gSettings.ChartAxisText);
  else TextAt(c_.PlotRight - 2, c_.PlotTop + 2, c_.sText2, 6, gSettings.ChartAxisText);
  if (c_.fValue > 0) TextAt(c_.PlotRight, c_.PlotBottom - 3, "alpha = " + ShortestText(c_.fValue), 1, gSettings.ChartAxisText);
}

// Series over the levels of the first factor; the second text of a series'
// last point names it beside the point. The third factor's blocks are parted
// by the line points of tag 1. With sTextType "Angled" the x labels slant.
void ChartPainter::DrawResponse() {
  FitYAxis();
  PlotArea();
  CategoricalX();
  DrawFittedYAxis(true);
  DrawXAxis();
  if (c_.sTextType == "Angled") {
    SetEscapement(450);
    SetFontPercent(4);
    int tick = c_.HeightPercent(1.5);
    for (DataPoint& p : c_.DataPoints)
      if (p.idf & 1) {
        int x = c_.XToPixel(p.fX);
        LineSolid(x, c_.XAxisY, x, c_.XAxisY + tick, gSettings.ChartAxes);
        TextAt(x, c_.XAxisY + tick + fontHeight_, p.sId, 1, gSettings.ChartAxisText);
      }
    SetEscapement(0);
    xLabels_ = false;
    DrawPoints(0);
    xLabels_ = true;
  } else {
    DrawPoints(0);
  }
  for (const LinePoint& p : c_.LinePoints)
    if (p.iTag == 1) {
      int x = c_.XToPixel(p.fX);
      LineDotted(x, c_.PlotTop, x, c_.PlotBottom, gSettings.ChartAxes);
    }
  // A block's caption (a point with a text and no value) inside the plot's top.
  SetFontPercent(4);
  for (const DataPoint& p : c_.DataPoints)
    if ((p.idf & 2) && p.fY == MISSING_VALUE)
      TextAt(c_.XToPixel(p.fX), c_.PlotTop + 2, p.sId2, 3, gSettings.ChartAxisText);
  Note(c_.sText1);
}

// One line of markers for each response, its name after "= " in the legend
// over the plot (up to eight), the runs along x.
void ChartPainter::DrawRunChart() {
  FitYAxis();
  PlotArea();
  CategoricalX();
  DrawFittedYAxis(true);
  DrawXAxis();
  // A point's text is its response's name: the x labels are the run numbers.
  SetFontPercent(5);
  int tick = c_.HeightPercent(1.5);
  for (const DataPoint& p : c_.DataPoints)
    if (p.idf & 1) {
      int x = c_.XToPixel(p.fX);
      LineSolid(x, c_.XAxisY, x, c_.XAxisY + tick, gSettings.ChartAxes);
      TextAt(x, c_.XAxisY + tick, std::to_string(static_cast<int>(std::nearbyint(p.fX))), 3, gSettings.ChartAxisText);
    }
  xLabels_ = false;
  DrawPoints(-1);
  xLabels_ = true;
  SetFontPercent(4);
  std::vector<const DataPoint*> legend;
  for (const DataPoint& p : c_.DataPoints) {
    bool seen = false;
    for (const DataPoint* q : legend) seen = seen || q->sId == p.sId;
    if (!seen && legend.size() < 8) legend.push_back(&p);
  }
  int x = c_.PlotLeft, y = c_.YPercent(NOTE_LINE);
  int r = std::max(1, c_.WidthPercent(1) / 2);
  // The scale's name at the right end of the legend's line.
  TextAt(c_.PlotRight, y, c_.sText1, 1, gSettings.ChartTitles);
  for (const DataPoint* p : legend) {
    Marker(x + r, y - fontHeight_ / 3, p->iDotType);
    std::string text = "= " + p->sId;
    TextAt(x + 3 * r, y, text, 0, gSettings.ChartAxisText);
    x += 4 * r + dc_.TextExtent(text).cx + c_.WidthPercent(3);
  }
}

void ChartPainter::DrawScatter() {
  FitYAxis();
  PlotArea();
  AutoScaleX();
  DrawFittedYAxis(true);
  DrawXAxis();
  DrawXTicks(true);
  DrawPoints(-1);
  std::vector<int> tags;
  for (const LinePoint& p : c_.LinePoints)
    if (std::find(tags.begin(), tags.end(), p.iTag) == tags.end()) tags.push_back(p.iTag);
  for (int tag : tags) DrawLines(tag, 1, gSettings.ChartDataLine);
  Note(c_.sText1);
}

// The study as a process: a box with its name (sText1), an arrow in for each
// factor (points of fX 0) and out for each response (fX 1), the noise
// factors (fX 2) coming in from below; fY is an entry's place, from 1, among
// yAxisCount places. An entry's first line stands over its arrow, the rest
// (the level count) under it; a note (sText2) at the foot.
void ChartPainter::DrawIPO() {
  int left = c_.XPercent(38), right = c_.XPercent(62);
  int top = c_.PlotTop, bottom = c_.YPercent(72);
  BoxFilled(left, top, right, bottom, gSettings.ChartAxes, gSettings.ChartArea, 2);
  SetFontPercent(5);
  int lineHeight = fontHeight_ + 2;
  // The caption in the box, its words wrapped to the box's width.
  std::vector<std::string> caption;
  for (const std::string& line : Lines(c_.sText1)) {
    std::string current;
    for (const std::string& word : Words(line)) {
      std::string longer = current.empty() ? word : current + " " + word;
      if (!current.empty() && dc_.TextExtent(longer).cx > right - left - 4) {
        caption.push_back(current);
        current = word;
      } else {
        current = longer;
      }
    }
    caption.push_back(current);
  }
  int cy = (top + bottom) / 2 - lineHeight * static_cast<int>(caption.size() - 1) / 2;
  for (const std::string& line : caption) {
    TextAt((left + right) / 2, cy, line, 2, gSettings.ChartAxisText);
    cy += lineHeight;
  }
  int places = std::max<int>(1, c_.yAxisCount);
  int head = std::max(3, c_.WidthPercent(1));
  int noise = 0, noiseCount = 0;
  for (const DataPoint& p : c_.DataPoints)
    if (p.fX == 2) ++noiseCount;
  for (DataPoint& p : c_.DataPoints) {
    std::vector<std::string> text;
    for (const std::string& line : Lines(p.sId))
      if (!line.empty()) text.push_back(line);
    int x1, y1, x2, y2;
    if (p.fX == 2) {
      ++noise;
      x1 = x2 = left + (right - left) * noise / (noiseCount + 1);
      y1 = c_.YPercent(84);
      y2 = bottom;
    } else {
      y1 = y2 = top + static_cast<int>((bottom - top) * (p.fY - 0.5) / places);
      x1 = p.fX == 0 ? c_.XPercent(8) : right;
      x2 = p.fX == 0 ? left : c_.XPercent(92);
    }
    LineSolid(x1, y1, x2, y2, gSettings.ChartDataLine, 2);
    // The arrow's head at its end.
    if (y1 == y2) {
      LineSolid(x2, y2, x2 - head, y2 - head, gSettings.ChartDataLine, 2);
      LineSolid(x2, y2, x2 - head, y2 + head, gSettings.ChartDataLine, 2);
    } else {
      LineSolid(x2, y2, x2 - head, y2 + head, gSettings.ChartDataLine, 2);
      LineSolid(x2, y2, x2 + head, y2 + head, gSettings.ChartDataLine, 2);
    }
    if (p.fX == 2) {
      std::string joined;
      for (const std::string& line : text) joined += (joined.empty() ? "" : "  ") + line;
      TextAt(x1, y1 + 2, joined, 3, gSettings.ChartAxisText);
    } else if (!text.empty()) {
      TextAt((x1 + x2) / 2, y1 - 3, text[0], 2, gSettings.ChartAxisText);
      int ty = y1 + 3;
      for (std::size_t i = 1; i < text.size(); ++i, ty += lineHeight) TextAt((x1 + x2) / 2, ty, text[i], 3, gSettings.ChartAxisText);
    }
    p.iWhereX = static_cast<std::int16_t>((x1 + x2) / 2);
    p.iWhereY = static_cast<std::int16_t>((y1 + y2) / 2);
  }
  SetFontPercent(4);
  TextAt(c_.XPercent(2), c_.YPercent(99), c_.sText2, 0, gSettings.ChartTitles);
}

}  // namespace kestrow
