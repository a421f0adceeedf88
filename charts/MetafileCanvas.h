// The two metafile writers: a Windows metafile with the placeable header
// (800 x 600 units at 72 a inch) and an enhanced metafile (a frame of 192 by
// 144 millimetres for a page of 800 x 600 pixels). Each turns the canvas
// calls into the records of its format; pens, brushes and fonts become
// objects made when the drawing first needs them and deleted when replaced,
// and a flood fill stays a record for the reader to carry out.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "charts/Canvas.h"

namespace kestrow {

class MetafileCanvas : public Canvas {
 public:
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
  void MoveTo(int x, int y) override;
  void LineTo(int x, int y) override;
  void Rectangle(int left, int top, int right, int bottom) override;
  void Ellipse(int left, int top, int right, int bottom) override;
  void Polygon(const std::vector<CanvasPoint>& points) override;
  void FloodFill(int x, int y, Colour border) override;
  void TextOut(int x, int y, const std::string& text, HAlign h, VAlign v) override;
  CanvasSize TextExtent(const std::string& text) override { return EstimatedTextExtent(state_.fontHeight, text); }

  // The whole file.
  virtual std::string Bytes() const = 0;

 protected:
  struct State {
    Pen pen;
    Brush brush;
    std::string font = "Arial";
    int fontHeight = 10, escapement = 0;
    Colour text = 0, back = 0xFFFFFF;
    bool opaque = false;
  };
  // The records of a format.
  virtual int MakePen(const Pen& pen) = 0;
  virtual int MakeBrush(const Brush& brush) = 0;
  virtual int MakeFont(const State& s) = 0;
  virtual void SelectObject(int handle) = 0;
  virtual void DeleteObject(int handle) = 0;
  virtual void RecordTextColour(Colour c) = 0;
  virtual void RecordBackground(Colour c, bool opaque) = 0;
  virtual void RecordAlign(int gdiAlign) = 0;
  virtual void RecordMoveTo(int x, int y) = 0;
  virtual void RecordLineTo(int x, int y) = 0;
  virtual void RecordRectangle(int l, int t, int r, int b) = 0;
  virtual void RecordEllipse(int l, int t, int r, int b) = 0;
  virtual void RecordPolygon(const std::vector<CanvasPoint>& points) = 0;
  virtual void RecordFloodFill(int x, int y, Colour border) = 0;
  virtual void RecordText(int x, int y, const std::string& utf8) = 0;

  // Object handles: the lowest free one (a Windows metafile's rule), from
  // the first.
  int TakeHandle(int first);
  void FreeHandle(int handle);
  int MostHandles() const { return most_; }

 private:
  void EnsurePen();
  void EnsureBrush();
  void EnsureFont();

  State state_;
  std::vector<State> saved_;
  // What the device holds: its objects and their handles.
  Pen penSel_;
  Brush brushSel_;
  State fontSel_;
  int penHandle_ = -1, brushHandle_ = -1, fontHandle_ = -1;
  Colour textSel_ = 0xFFFFFFFF, backSel_ = 0xFFFFFFFF;
  int modeSel_ = -1, alignSel_ = -1;
  std::vector<bool> used_;
  int most_ = 0;
};

// A Windows metafile, led by its placeable header: the page is 800 x 600.
class WmfCanvas : public MetafileCanvas {
 public:
  WmfCanvas();
  std::string Bytes() const override;

  // The 22 bytes of the placeable header of an 800 x 600 picture at 72
  // units an inch, its checksum the XOR of its ten words before it.
  static std::string PlaceableHeader();

 protected:
  int MakePen(const Pen& pen) override;
  int MakeBrush(const Brush& brush) override;
  int MakeFont(const State& s) override;
  void SelectObject(int handle) override;
  void DeleteObject(int handle) override;
  void RecordTextColour(Colour c) override;
  void RecordBackground(Colour c, bool opaque) override;
  void RecordAlign(int gdiAlign) override;
  void RecordMoveTo(int x, int y) override;
  void RecordLineTo(int x, int y) override;
  void RecordRectangle(int l, int t, int r, int b) override;
  void RecordEllipse(int l, int t, int r, int b) override;
  void RecordPolygon(const std::vector<CanvasPoint>& points) override;
  void RecordFloodFill(int x, int y, Colour border) override;
  void RecordText(int x, int y, const std::string& utf8) override;

 private:
  void Record(std::uint16_t function, const std::vector<std::uint16_t>& words);
  std::vector<std::uint16_t> body_;  // the records, in 16-bit words
  std::uint32_t largest_ = 0;        // the longest record, in words
};

// An enhanced metafile of a page of 800 x 600 pixels.
class EmfCanvas : public MetafileCanvas {
 public:
  EmfCanvas();
  std::string Bytes() const override;

 protected:
  int MakePen(const Pen& pen) override;
  int MakeBrush(const Brush& brush) override;
  int MakeFont(const State& s) override;
  void SelectObject(int handle) override;
  void DeleteObject(int handle) override;
  void RecordTextColour(Colour c) override;
  void RecordBackground(Colour c, bool opaque) override;
  void RecordAlign(int gdiAlign) override;
  void RecordMoveTo(int x, int y) override;
  void RecordLineTo(int x, int y) override;
  void RecordRectangle(int l, int t, int r, int b) override;
  void RecordEllipse(int l, int t, int r, int b) override;
  void RecordPolygon(const std::vector<CanvasPoint>& points) override;
  void RecordFloodFill(int x, int y, Colour border) override;
  void RecordText(int x, int y, const std::string& utf8) override;

 private:
  void Record(std::uint32_t type, const std::vector<std::uint32_t>& dwords);
  std::vector<std::uint32_t> body_;  // the records after the header, in 32-bit words
  std::uint32_t records_ = 0;
  int fontHeight_ = 10;
};

}  // namespace kestrow
