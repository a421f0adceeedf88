// The chart canvas on a QPainter: the screen (through an image), printers,
// PDF and SVG files, and raster images. Lines are drawn without
// antialiasing, so that a flood fill finds its borders as the drawing made
// them: on an image the fill works on its pixels, on any other device on a
// shadow image of the same drawing, and the filled spans are painted there.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <memory>
#include <vector>

#include "charts/Canvas.h"

class QPaintDevice;

namespace kestrow {

class QtCanvas : public Canvas {
 public:
  // Draws on the image itself.
  explicit QtCanvas(QImage& image);
  // Draws on any device whose coordinates are pixels of a page of that size.
  QtCanvas(QPaintDevice& device, int width, int height);
  ~QtCanvas() override;

  void Save() override;
  void Restore() override;
  void SetPen(const Pen& pen) override { state_.pen = pen; }
  void SetBrush(const Brush& brush) override { state_.brush = brush; }
  void SetFont(const std::string& name, int height, int escapement) override;
  void SetTextColour(Colour colour) override { state_.text = colour; }
  void SetTextBackground(Colour colour, bool opaque) override {
    state_.back = colour;
    state_.opaque = opaque;
  }
  void MoveTo(int x, int y) override { at_ = QPoint(x, y); }
  void LineTo(int x, int y) override;
  void Rectangle(int left, int top, int right, int bottom) override;
  void Ellipse(int left, int top, int right, int bottom) override;
  void Polygon(const std::vector<CanvasPoint>& points) override;
  void FloodFill(int x, int y, Colour border) override;
  void TextOut(int x, int y, const std::string& text, HAlign h, VAlign v) override;
  CanvasSize TextExtent(const std::string& text) override;

 private:
  struct State {
    Pen pen;
    Brush brush;
    QFont font;
    int escapement = 0;
    Colour text = 0, back = 0xFFFFFF;
    bool opaque = false;
  };
  // Each painting step on the device and, for a device that is no image, on
  // the shadow image.
  template <class Paint>
  void Both(Paint paint);
  void Prepare(QPainter& p, bool fill) const;

  QImage* raster_;                 // the image flood fills work on
  std::unique_ptr<QImage> shadow_;  // for a device that is no image
  QPainter painter_;
  std::unique_ptr<QPainter> shadowPainter_;
  State state_;
  std::vector<State> saved_;
  QPoint at_;
};

}  // namespace kestrow
