// A page of charts: the list an analysis fills, laid out in a grid of one to
// six cells and drawn on a canvas, with the page headers, the annotation
// labels, zoom onto one chart, and the clicks that ask a chart about a point.
#pragma once

#include <deque>
#include <string>

#include "charts/Chart.h"

namespace kestrow {

class Canvas;

// What a page is drawn for; a file's mode has the value 0x80 in it.
enum PageMode : int {
  PAGE_SCREEN = 1,
  PAGE_PRINTER = 2,
  PAGE_WMF = 0x83,
  PAGE_EMF = 0x84,
  PAGE_BITMAP = 0x85,
};

// A text placed on the page by the user: its centre as fractions of the
// page's width and of its height below the headers, its font height as a
// fraction of the page's height.
struct AnnotationLabel {
  std::string text;
  double xfrac = 0.5, yfrac = 0.5, hfrac = 0.03;
  bool visible = true;
  int left = 0, top = 0, right = 0, bottom = 0;  // its box in the last drawing
};

class ChartPage {
 public:
  std::deque<Chart> Charts;  // in order of making; chart i has the key i + 1
  bool bZoomed = false;
  std::deque<AnnotationLabel> Labels;
  int pageX = 0, pageY = 0;  // offsets of the page on paper (the printer's margins)

  // The layout of the last drawing.
  int rows = 1, cols = 1, cellWidth = 0, cellHeight = 0, headerHeight = 0, width = 0, height = 0;

  // Empties the page: no charts, no labels, not zoomed.
  void Start();
  // A new chart of the type, made ready (Init) and added last.
  Chart& NewChart(std::int16_t type);
  // Draws the visible charts, in cells of a grid by their count, on a page of
  // that size; headers as the mode and the setting HeadersFlag ask; then the
  // labels.
  void DrawAll(Canvas& canvas, int iWidth, int iHeight, int iMode);
  // Zooms onto the chart whose cell holds the point, or back to all of them;
  // false, with nothing changed, when there is nothing to zoom (fewer than
  // two charts, or a point on no chart).
  bool Zoom(int x, int y);
  // The visible chart whose cell holds the point in the last layout, or null.
  Chart* ChartAt(int x, int y);
  // The text of a click at the point, from the chart under it.
  std::string Click(int x, int y, bool ctrl);
  // The page header: PageHeaders lines of the settings' headers, each in
  // three parts (left, centre, right) with the title macros expanded.
  void DrawTitles(Canvas& canvas, int pageWidth, int header) const;
  // The last drawn label whose box holds the point, or -1.
  int LabelUnder(int x, int y) const;
  // Sets the label's fractions so that its centre stands at the point of
  // the last layout.
  void PlaceLabel(AnnotationLabel& label, int x, int y) const;

 private:
  void DrawLabels(Canvas& canvas, int pageWidth, int pageHeight);
};

// The page of the workbench's chart pane, which the analyses fill.
inline ChartPage gPage;
void gphStart();
Chart& gphNewChart(std::int16_t type);
void gphDrawAll(Canvas& canvas, int iWidth, int iHeight, int iMode);

}  // namespace kestrow
