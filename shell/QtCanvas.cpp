#include "shell/QtCanvas.h"

#include <QFontMetrics>
#include <QPaintDevice>
#include <QPolygon>
#include <QString>
#include <algorithm>

#include "shell/Colours.h"

namespace kestrow {

namespace {

// A painter as a device context draws: pixels as they are, no smoothing.
void Begin(QPainter& p) {
  p.setRenderHint(QPainter::Antialiasing, false);
  p.setRenderHint(QPainter::TextAntialiasing, true);
}

}  // namespace

QtCanvas::QtCanvas(QImage& image) : raster_(&image), painter_(&image) {
  Begin(painter_);
  state_.font = QFont("Arial");
}

QtCanvas::QtCanvas(QPaintDevice& device, int width, int height)
    : shadow_(std::make_unique<QImage>(std::max(1, width), std::max(1, height), QImage::Format_RGB32)),
      painter_(&device) {
  raster_ = shadow_.get();
  shadow_->fill(Qt::white);
  shadowPainter_ = std::make_unique<QPainter>(shadow_.get());
  Begin(painter_);
  Begin(*shadowPainter_);
  state_.font = QFont("Arial");
}

QtCanvas::~QtCanvas() {
  if (shadowPainter_) shadowPainter_->end();
  painter_.end();
}

template <class Paint>
void QtCanvas::Both(Paint paint) {
  paint(painter_);
  if (shadowPainter_) paint(*shadowPainter_);
}

void QtCanvas::Prepare(QPainter& p, bool fill) const {
  QPen pen(ToQColor(state_.pen.colour));
  pen.setWidth(std::max(1, state_.pen.width));
  pen.setStyle(state_.pen.dotted ? Qt::DotLine : Qt::SolidLine);
  // Both ends of a line are drawn, so that the segments of a polyline leave no
  // gap for a flood fill to pass.
  pen.setCapStyle(Qt::SquareCap);
  p.setPen(pen);
  p.setBrush(fill && !state_.brush.hollow ? QBrush(ToQColor(state_.brush.colour)) : QBrush(Qt::NoBrush));
}

void QtCanvas::Save() { saved_.push_back(state_); }

void QtCanvas::Restore() {
  if (saved_.empty()) return;
  state_ = saved_.back();
  saved_.pop_back();
}

void QtCanvas::SetFont(const std::string& name, int height, int escapement) {
  state_.font = QFont(QString::fromStdString(name));
  state_.font.setPixelSize(std::max(1, height));
  state_.escapement = escapement;
}

void QtCanvas::LineTo(int x, int y) {
  QPoint from = at_, to(x, y);
  Both([&](QPainter& p) {
    Prepare(p, false);
    p.drawLine(from, to);
  });
  at_ = to;
}

// A device context's rectangle leaves out its right and bottom edges.
void QtCanvas::Rectangle(int left, int top, int right, int bottom) {
  QRect r(left, top, std::max(0, right - left - 1), std::max(0, bottom - top - 1));
  Both([&](QPainter& p) {
    Prepare(p, true);
    p.drawRect(r);
  });
}

void QtCanvas::Ellipse(int left, int top, int right, int bottom) {
  QRect r(left, top, std::max(0, right - left - 1), std::max(0, bottom - top - 1));
  Both([&](QPainter& p) {
    Prepare(p, true);
    p.drawEllipse(r);
  });
}

void QtCanvas::Polygon(const std::vector<CanvasPoint>& points) {
  QPolygon poly;
  for (const CanvasPoint& pt : points) poly << QPoint(pt.x, pt.y);
  Both([&](QPainter& p) {
    Prepare(p, true);
    p.drawPolygon(poly);
  });
}

// The pixels reached from the start without crossing the border colour, by
// spans of rows, read from the image that holds the drawing so far (the
// raster engine paints straight into it); the spans are then painted in the
// brush's colour on the device and on the shadow.
void QtCanvas::FloodFill(int x, int y, Colour border) {
  const QImage& img = *raster_;
  int w = img.width(), h = img.height();
  if (state_.brush.hollow || x < 0 || y < 0 || x >= w || y >= h) return;
  QRgb stop = ToQColor(border).rgb() & 0xFFFFFF;
  auto open = [&](int px, int py) { return (img.pixel(px, py) & 0xFFFFFF) != stop; };
  if (!open(x, y)) return;
  std::vector<bool> seen(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), false);
  auto index = [w](int px, int py) { return static_cast<std::size_t>(py) * static_cast<std::size_t>(w) + static_cast<std::size_t>(px); };
  std::vector<QPoint> todo = {QPoint(x, y)};
  std::vector<QRect> spans;
  while (!todo.empty()) {
    QPoint p = todo.back();
    todo.pop_back();
    int py = p.y();
    if (seen[index(p.x(), py)] || !open(p.x(), py)) continue;
    int left = p.x(), right = p.x();
    while (left > 0 && !seen[index(left - 1, py)] && open(left - 1, py)) --left;
    while (right < w - 1 && !seen[index(right + 1, py)] && open(right + 1, py)) ++right;
    for (int px = left; px <= right; ++px) seen[index(px, py)] = true;
    spans.emplace_back(left, py, right - left + 1, 1);
    for (int ny : {py - 1, py + 1}) {
      if (ny < 0 || ny >= h) continue;
      bool inRun = false;
      for (int px = left; px <= right; ++px) {
        bool free = !seen[index(px, ny)] && open(px, ny);
        if (free && !inRun) todo.emplace_back(px, ny);
        inRun = free;
      }
    }
  }
  // Whole pixels, no more: the border must stay as it was for the next fill.
  QColor colour = ToQColor(state_.brush.colour);
  Both([&](QPainter& p) {
    for (const QRect& r : spans) p.fillRect(r, colour);
  });
}

void QtCanvas::TextOut(int x, int y, const std::string& utf8, HAlign h, VAlign v) {
  QString text = QString::fromStdString(utf8);
  QFontMetrics fm(state_.font);
  int width = fm.horizontalAdvance(text);
  int dx = h == HAlign::Left ? 0 : h == HAlign::Centre ? -width / 2 : -width;
  int dy = v == VAlign::Baseline ? 0 : v == VAlign::Top ? fm.ascent() : -fm.descent();
  Both([&](QPainter& p) {
    p.save();
    p.translate(x, y);
    if (state_.escapement) p.rotate(-state_.escapement / 10.0);
    p.setFont(state_.font);
    if (state_.opaque) p.fillRect(QRect(dx, dy - fm.ascent(), width, fm.height()), ToQColor(state_.back));
    p.setPen(ToQColor(state_.text));
    p.drawText(QPoint(dx, dy), text);
    p.restore();
  });
}

CanvasSize QtCanvas::TextExtent(const std::string& text) {
  QFontMetrics fm(state_.font);
  return {fm.horizontalAdvance(QString::fromStdString(text)), fm.height()};
}

}  // namespace kestrow
