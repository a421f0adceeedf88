// The device every chart draws on: the primitives of a plain 2-D device
// context, in pixels with the origin at the top left. The QPainter canvas of
// the workbench (screen, printer, PDF, SVG and raster images), the metafile
// writers and the recording canvas of the tests implement it, so that the
// drawing of a chart is one code path for all of them.
#pragma once

#include <string>
#include <vector>

#include "core/Settings.h"

namespace kestrow {

struct CanvasPoint {
  int x = 0, y = 0;
};

struct CanvasSize {
  int cx = 0, cy = 0;
};

// A pen: colour, width in pixels, and solid or dotted.
struct Pen {
  Colour colour = 0;
  int width = 1;
  bool dotted = false;
};

// A brush: a solid fill, or none (hollow).
struct Brush {
  Colour colour = 0xFFFFFF;
  bool hollow = false;
};

// Where text stands against its point: across (left edge, centre, right
// edge at the point) and up and down (the point on the baseline, at the top
// of the text, or at its bottom).
enum class HAlign { Left, Centre, Right };
enum class VAlign { Baseline, Top, Bottom };

class Canvas {
 public:
  virtual ~Canvas() = default;

  // The state that Save and Restore keep: pen, brush, font, text colours.
  virtual void Save() = 0;
  virtual void Restore() = 0;

  virtual void SetPen(const Pen& pen) = 0;
  virtual void SetBrush(const Brush& brush) = 0;
  // The font by name and height in pixels, with an escapement in tenths of a
  // degree counter-clockwise (900: text runs upwards).
  virtual void SetFont(const std::string& name, int height, int escapement) = 0;
  virtual void SetTextColour(Colour colour) = 0;
  // An opaque background fills the text's box in that colour; otherwise the
  // text is drawn over what is there.
  virtual void SetTextBackground(Colour colour, bool opaque) = 0;

  virtual void MoveTo(int x, int y) = 0;
  virtual void LineTo(int x, int y) = 0;
  // Outlined by the pen and filled by the brush; the corners are inclusive
  // of the outline, as a device context's are.
  virtual void Rectangle(int left, int top, int right, int bottom) = 0;
  virtual void Ellipse(int left, int top, int right, int bottom) = 0;
  virtual void Polygon(const std::vector<CanvasPoint>& points) = 0;
  // Fills with the brush from the point outwards up to pixels of the border
  // colour.
  virtual void FloodFill(int x, int y, Colour border) = 0;
  virtual void TextOut(int x, int y, const std::string& text, HAlign h, VAlign v) = 0;
  // The size of a text in the current font, before any escapement.
  virtual CanvasSize TextExtent(const std::string& text) = 0;
};

// The size of a text where no font can be measured (the metafile writers,
// the recording canvas): an average Arial character is about 0.55 of the
// font's height wide.
CanvasSize EstimatedTextExtent(int fontHeight, const std::string& utf8);

// A colour as "#RRGGBB".
std::string ColourText(Colour c);

// The red, green and blue of a colour held as 0x00BBGGRR.
inline int RedOf(Colour c) { return static_cast<int>(c & 0xFF); }
inline int GreenOf(Colour c) { return static_cast<int>((c >> 8) & 0xFF); }
inline int BlueOf(Colour c) { return static_cast<int>((c >> 16) & 0xFF); }
inline Colour RGB(int r, int g, int b) {
  return static_cast<Colour>(r & 0xFF) | (static_cast<Colour>(g & 0xFF) << 8) | (static_cast<Colour>(b & 0xFF) << 16);
}

}  // namespace kestrow
