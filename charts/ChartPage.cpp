#include "charts/ChartPage.h"

#include <algorithm>
#include <cmath>

#include "charts/Canvas.h"
#include "core/Settings.h"

namespace kestrow {

namespace {

// Rows and columns of the grid by the count of visible charts; more than six
// keep the grid that stands (the program never makes more).
bool GridOf(int count, int& rows, int& cols, bool& filler) {
  static const int GRID[7][3] = {{1, 1, 0}, {1, 1, 0}, {2, 1, 0}, {2, 2, 1}, {2, 2, 0}, {2, 3, 1}, {2, 3, 0}};
  if (count > 6) return false;
  rows = GRID[count][0];
  cols = GRID[count][1];
  filler = GRID[count][2] != 0;
  return true;
}

// Cuts a header line into its three parts at "|".
void Parts(const std::string& line, std::string part[3]) {
  std::string rest = line;
  for (int i = 0; i < 3; ++i) {
    std::size_t bar = rest.find('|');
    part[i] = i == 2 ? rest : rest.substr(0, bar);
    rest = bar == std::string::npos ? std::string() : rest.substr(bar + 1);
  }
}

}  // namespace

void ChartPage::Start() {
  bZoomed = false;
  Charts.clear();
  Labels.clear();
}

Chart& ChartPage::NewChart(std::int16_t type) {
  Charts.emplace_back();
  Charts.back().Init(type);
  return Charts.back();
}

void ChartPage::DrawAll(Canvas& canvas, int iWidth, int iHeight, int iMode) {
  int visible = 0;
  for (const Chart& c : Charts) visible += c.bVisible ? 1 : 0;
  bool filler = false;
  if (GridOf(visible, rows, cols, filler) && filler) {
    Charts.emplace_back();
    Charts.back().Init(CHT_FILLER);
  }
  if (iMode != PAGE_PRINTER) pageX = pageY = 0;
  width = std::max(1, iWidth);
  height = std::max(1, iHeight);
  canvas.Save();
  canvas.SetPen(Pen{gSettings.ChartBackground, 1, false});
  canvas.SetBrush(Brush{gSettings.ChartBackground, false});
  canvas.Rectangle(pageX, pageY, pageX + width, pageY + height);
  bool headers = (iMode == PAGE_SCREEN && (gSettings.HeadersFlag & 1)) ||
                 ((iMode & 0x80) && (gSettings.HeadersFlag & 2)) || iMode == PAGE_PRINTER;
  headerHeight = 0;
  int plotHeight = height;
  if (headers) {
    headerHeight = static_cast<int>(std::nearbyint(height * gSettings.PageHeaders * gSettings.HdrLinePercent / 100.0));
    DrawTitles(canvas, width, headerHeight);
    plotHeight = std::max(1, height - headerHeight);
  }
  cellWidth = static_cast<int>(std::nearbyint(static_cast<double>(width) / cols));
  cellHeight = static_cast<int>(std::nearbyint(static_cast<double>(plotHeight) / rows));
  int i = 0;
  for (Chart& c : Charts) {
    if (!c.bVisible) continue;
    c.ox = static_cast<std::int16_t>(pageX + cellWidth * (i / rows));
    c.oy = static_cast<std::int16_t>(headerHeight + pageY + cellHeight * (i % rows));
    c.SetWidth(static_cast<std::int16_t>(std::min(cellWidth, 32767)));
    c.SetHeight(static_cast<std::int16_t>(std::min(cellHeight, 32767)));
    c.SetScaling();
    c.Draw(canvas);
    ++i;
  }
  DrawLabels(canvas, width, height);
  canvas.Restore();
}

void ChartPage::DrawTitles(Canvas& canvas, int pageWidth, int header) const {
  if (header <= 0) return;
  canvas.SetPen(Pen{gSettings.HeaderBackground, 1, false});
  canvas.SetBrush(Brush{gSettings.HeaderBackground, false});
  canvas.Rectangle(pageX, pageY, pageX + pageWidth, pageY + header);
  int lines = std::clamp(static_cast<int>(gSettings.PageHeaders), 1, 4);
  int lineHeight = std::max(1, header / lines);
  canvas.SetFont(gSettings.GraphFont, std::max(1, lineHeight * 3 / 4), 0);
  canvas.SetTextColour(gSettings.HeaderText);
  canvas.SetTextBackground(gSettings.HeaderBackground, false);
  TitleContext context = CurrentTitleContext();
  for (int line = 1; line <= lines; ++line) {
    std::string part[3];
    Parts(gSettings.Header[static_cast<std::size_t>(line)], part);
    int y = pageY + lineHeight * line - lineHeight / 5;
    canvas.TextOut(pageX + 4, y, ExpandTitleMacros(part[0], context), HAlign::Left, VAlign::Baseline);
    canvas.TextOut(pageX + pageWidth / 2, y, ExpandTitleMacros(part[1], context), HAlign::Centre, VAlign::Baseline);
    canvas.TextOut(pageX + pageWidth - 4, y, ExpandTitleMacros(part[2], context), HAlign::Right, VAlign::Baseline);
  }
}

void ChartPage::DrawLabels(Canvas& canvas, int pageWidth, int pageHeight) {
  for (AnnotationLabel& l : Labels) {
    if (!l.visible || l.text.empty()) continue;
    int x = static_cast<int>(std::nearbyint(l.xfrac * pageWidth)) + pageX;
    int y = static_cast<int>(std::nearbyint(l.yfrac * (pageHeight - headerHeight))) + headerHeight + pageY;
    canvas.SetFont(gSettings.GraphFont, std::max(1, static_cast<int>(std::nearbyint(l.hfrac * pageHeight))), 0);
    canvas.SetTextColour(gSettings.LabelText);
    canvas.SetTextBackground(gSettings.LabelBackground, true);
    std::string text = " " + l.text + " ";
    CanvasSize size = canvas.TextExtent(text);
    l.left = x - size.cx / 2;
    l.top = y - size.cy / 2;
    l.right = l.left + size.cx;
    l.bottom = l.top + size.cy;
    canvas.TextOut(x, l.top, text, HAlign::Centre, VAlign::Top);
  }
}

int ChartPage::LabelUnder(int x, int y) const {
  for (int i = static_cast<int>(Labels.size()) - 1; i >= 0; --i) {
    const AnnotationLabel& l = Labels[static_cast<std::size_t>(i)];
    if (l.visible && x >= l.left && x < l.right && y >= l.top && y < l.bottom) return i;
  }
  return -1;
}

void ChartPage::PlaceLabel(AnnotationLabel& label, int x, int y) const {
  int below = std::max(1, height - headerHeight);
  label.xfrac = static_cast<double>(x - pageX) / std::max(1, width);
  label.yfrac = static_cast<double>(y - headerHeight - pageY) / below;
}

Chart* ChartPage::ChartAt(int x, int y) {
  for (Chart& c : Charts)
    if (c.bVisible && x >= c.ox && x < c.ox + cellWidth && y >= c.oy && y < c.oy + cellHeight) return &c;
  return nullptr;
}

bool ChartPage::Zoom(int x, int y) {
  if (Charts.size() < 2) return false;
  if (!bZoomed) {
    Chart* target = ChartAt(x, y);
    if (!target || target->chtType == CHT_FILLER) return false;
    for (Chart& c : Charts) c.bVisible = &c == target;
  } else {
    for (Chart& c : Charts) c.bVisible = true;
  }
  Labels.clear();
  bZoomed = !bZoomed;
  return true;
}

std::string ChartPage::Click(int x, int y, bool ctrl) {
  Chart* c = ChartAt(x, y);
  return c ? c->Click(x, y, ctrl) : std::string();
}

void gphStart() { gPage.Start(); }
Chart& gphNewChart(std::int16_t type) { return gPage.NewChart(type); }
void gphDrawAll(Canvas& canvas, int iWidth, int iHeight, int iMode) { gPage.DrawAll(canvas, iWidth, iHeight, iMode); }

}  // namespace kestrow
