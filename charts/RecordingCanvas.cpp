#include "charts/RecordingCanvas.h"

namespace kestrow {

namespace {
std::string Pt(int x, int y) { return std::to_string(x) + "," + std::to_string(y); }
}  // namespace

std::vector<std::string> RecordingCanvas::Calls(const std::string& kind) const {
  std::vector<std::string> out;
  for (const std::string& c : calls)
    if (c.compare(0, kind.size() + 1, kind + " ") == 0 || c == kind) out.push_back(c);
  return out;
}

std::string RecordingCanvas::PenText() const {
  return ColourText(pen_.colour) + " " + std::to_string(pen_.width) + (pen_.dotted ? " dotted" : " solid");
}

std::string RecordingCanvas::BrushText() const { return brush_.hollow ? "hollow" : ColourText(brush_.colour); }

void RecordingCanvas::Save() {
  ++depth_;
  calls.push_back("save");
}

void RecordingCanvas::Restore() {
  --depth_;
  calls.push_back("restore");
}

void RecordingCanvas::SetFont(const std::string& name, int height, int escapement) {
  fontHeight_ = height;
  escapement_ = escapement;
  calls.push_back("font '" + name + "' " + std::to_string(height) + " " + std::to_string(escapement));
}

void RecordingCanvas::MoveTo(int x, int y) { at_ = {x, y}; }

void RecordingCanvas::LineTo(int x, int y) {
  calls.push_back("line " + Pt(at_.x, at_.y) + " " + Pt(x, y) + " " + PenText());
  at_ = {x, y};
}

void RecordingCanvas::Rectangle(int left, int top, int right, int bottom) {
  calls.push_back("rect " + Pt(left, top) + " " + Pt(right, bottom) + " " + PenText() + " " + BrushText());
}

void RecordingCanvas::Ellipse(int left, int top, int right, int bottom) {
  calls.push_back("ellipse " + Pt(left, top) + " " + Pt(right, bottom) + " " + PenText() + " " + BrushText());
}

void RecordingCanvas::Polygon(const std::vector<CanvasPoint>& points) {
  std::string text = "polygon";
  for (const CanvasPoint& p : points) text += " " + Pt(p.x, p.y);
  calls.push_back(text + " " + PenText() + " " + BrushText());
}

void RecordingCanvas::FloodFill(int x, int y, Colour border) {
  calls.push_back("fill " + Pt(x, y) + " " + BrushText() + " border " + ColourText(border));
}

void RecordingCanvas::TextOut(int x, int y, const std::string& text, HAlign h, VAlign v) {
  const char* hs = h == HAlign::Left ? "L" : h == HAlign::Centre ? "C" : "R";
  const char* vs = v == VAlign::Baseline ? "B" : v == VAlign::Top ? "T" : "U";
  calls.push_back("text " + Pt(x, y) + " " + hs + " " + vs + " " + ColourText(text_) + (opaque_ ? " opaque" : "") +
                  " '" + text + "'");
}

}  // namespace kestrow
