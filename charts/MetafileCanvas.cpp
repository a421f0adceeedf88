#include "charts/MetafileCanvas.h"

namespace kestrow {

namespace {

bool SamePen(const Pen& a, const Pen& b) { return a.colour == b.colour && a.width == b.width && a.dotted == b.dotted; }
bool SameBrush(const Brush& a, const Brush& b) { return a.hollow == b.hollow && (a.hollow || a.colour == b.colour); }

// The text-alignment flags of a device context.
constexpr int TA_RIGHT = 2, TA_CENTER = 6, TA_BOTTOM = 8, TA_BASELINE = 24;

}  // namespace

void MetafileCanvas::Save() { saved_.push_back(state_); }

void MetafileCanvas::Restore() {
  if (saved_.empty()) return;
  state_ = saved_.back();
  saved_.pop_back();
}

void MetafileCanvas::SetFont(const std::string& name, int height, int escapement) {
  state_.font = name;
  state_.fontHeight = height;
  state_.escapement = escapement;
}

int MetafileCanvas::TakeHandle(int first) {
  std::size_t i = static_cast<std::size_t>(first);
  while (i < used_.size() && used_[i]) ++i;
  if (i >= used_.size()) used_.resize(i + 1, false);
  used_[i] = true;
  most_ = std::max(most_, static_cast<int>(i) + 1);
  return static_cast<int>(i);
}

void MetafileCanvas::FreeHandle(int handle) {
  if (handle >= 0 && static_cast<std::size_t>(handle) < used_.size()) used_[static_cast<std::size_t>(handle)] = false;
}

void MetafileCanvas::EnsurePen() {
  if (penHandle_ >= 0 && SamePen(penSel_, state_.pen)) return;
  int old = penHandle_;
  penHandle_ = MakePen(state_.pen);
  penSel_ = state_.pen;
  SelectObject(penHandle_);
  if (old >= 0) DeleteObject(old);
}

void MetafileCanvas::EnsureBrush() {
  if (brushHandle_ >= 0 && SameBrush(brushSel_, state_.brush)) return;
  int old = brushHandle_;
  brushHandle_ = MakeBrush(state_.brush);
  brushSel_ = state_.brush;
  SelectObject(brushHandle_);
  if (old >= 0) DeleteObject(old);
}

void MetafileCanvas::EnsureFont() {
  if (fontHandle_ >= 0 && fontSel_.font == state_.font && fontSel_.fontHeight == state_.fontHeight &&
      fontSel_.escapement == state_.escapement)
    return;
  int old = fontHandle_;
  fontHandle_ = MakeFont(state_);
  fontSel_ = state_;
  SelectObject(fontHandle_);
  if (old >= 0) DeleteObject(old);
}

void MetafileCanvas::MoveTo(int x, int y) { RecordMoveTo(x, y); }

void MetafileCanvas::LineTo(int x, int y) {
  EnsurePen();
  RecordLineTo(x, y);
}

void MetafileCanvas::Rectangle(int left, int top, int right, int bottom) {
  EnsurePen();
  EnsureBrush();
  RecordRectangle(left, top, right, bottom);
}

void MetafileCanvas::Ellipse(int left, int top, int right, int bottom) {
  EnsurePen();
  EnsureBrush();
  RecordEllipse(left, top, right, bottom);
}

void MetafileCanvas::Polygon(const std::vector<CanvasPoint>& points) {
  if (points.size() < 2) return;
  EnsurePen();
  EnsureBrush();
  RecordPolygon(points);
}

void MetafileCanvas::FloodFill(int x, int y, Colour border) {
  EnsureBrush();
  RecordFloodFill(x, y, border);
}

void MetafileCanvas::TextOut(int x, int y, const std::string& text, HAlign h, VAlign v) {
  if (text.empty()) return;
  EnsureFont();
  if (textSel_ != state_.text) {
    RecordTextColour(state_.text);
    textSel_ = state_.text;
  }
  int mode = state_.opaque ? 2 : 1;
  if (modeSel_ != mode || (state_.opaque && backSel_ != state_.back)) {
    RecordBackground(state_.back, state_.opaque);
    modeSel_ = mode;
    backSel_ = state_.back;
  }
  int align = (h == HAlign::Right ? TA_RIGHT : h == HAlign::Centre ? TA_CENTER : 0) |
              (v == VAlign::Baseline ? TA_BASELINE : v == VAlign::Bottom ? TA_BOTTOM : 0);
  if (alignSel_ != align) {
    RecordAlign(align);
    alignSel_ = align;
  }
  RecordText(x, y, text);
}

}  // namespace kestrow
