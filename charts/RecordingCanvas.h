// A canvas that draws nothing and writes down every call, one line each, for
// tests: "line 10,20 30,40 #0000FF 1 solid", "text 15,8 C T 'Title'". Text
// extents are estimated.
#pragma once

#include <string>
#include <vector>

#include "charts/Canvas.h"

namespace kestrow {

class RecordingCanvas : public Canvas {
 public:
  std::vector<std::string> calls;

  // The calls that start with a word ("line", "text", "fill", ...).
  std::vector<std::string> Calls(const std::string& kind) const;
  int Count(const std::string& kind) const { return static_cast<int>(Calls(kind).size()); }

  void Save() override;
  void Restore() override;
  void SetPen(const Pen& pen) override { pen_ = pen; }
  void SetBrush(const Brush& brush) override { brush_ = brush; }
  void SetFont(const std::string& name, int height, int escapement) override;
  void SetTextColour(Colour colour) override { text_ = colour; }
  void SetTextBackground(Colour colour, bool opaque) override {
    back_ = colour;
    opaque_ = opaque;
  }
  void MoveTo(int x, int y) override;
  void LineTo(int x, int y) override;
  void Rectangle(int left, int top, int right, int bottom) override;
  void Ellipse(int left, int top, int right, int bottom) override;
  void Polygon(const std::vector<CanvasPoint>& points) override;
  void FloodFill(int x, int y, Colour border) override;
  void TextOut(int x, int y, const std::string& text, HAlign h, VAlign v) override;
  CanvasSize TextExtent(const std::string& text) override { return EstimatedTextExtent(fontHeight_, text); }

  int FontHeight() const { return fontHeight_; }
  int Escapement() const { return escapement_; }

 private:
  std::string PenText() const;
  std::string BrushText() const;

  Pen pen_;
  Brush brush_;
  Colour text_ = 0, back_ = 0xFFFFFF;
  bool opaque_ = false;
  int fontHeight_ = 10, escapement_ = 0;
  CanvasPoint at_;
  int depth_ = 0;
};

}  // namespace kestrow
