// The enhanced metafile: a header record, then records of a type and a size
// in bytes, 32-bit aligned, then the closing record. The page of 800 x 600
// pixels is drawn in device units (MM_TEXT) on a reference device of that
// size and of 192 x 144 millimetres, so the frame is 19200 x 14400 hundredths
// of a millimetre.
#include <algorithm>
#include <cstring>

#include "charts/MetafileCanvas.h"

namespace kestrow {

namespace {

constexpr std::uint32_t EMR_HEADER = 1, EMR_POLYGON = 3, EMR_EOF = 14, EMR_SETBKMODE = 18, EMR_SETTEXTALIGN = 22,
                        EMR_SETTEXTCOLOR = 24, EMR_SETBKCOLOR = 25, EMR_MOVETOEX = 27, EMR_SELECTOBJECT = 37,
                        EMR_CREATEPEN = 38, EMR_CREATEBRUSHINDIRECT = 39, EMR_DELETEOBJECT = 40, EMR_ELLIPSE = 42,
                        EMR_RECTANGLE = 43, EMR_EXTFLOODFILL = 53, EMR_LINETO = 54, EMR_EXTCREATEFONTINDIRECTW = 82,
                        EMR_EXTTEXTOUTW = 84;
constexpr std::int32_t PAGE_WIDTH = 800, PAGE_HEIGHT = 600, PAGE_MM_WIDTH = 192, PAGE_MM_HEIGHT = 144;

std::uint32_t D(int v) { return static_cast<std::uint32_t>(static_cast<std::int32_t>(v)); }
std::uint32_t F(float v) {
  std::uint32_t u;
  std::memcpy(&u, &v, 4);
  return u;
}

// UTF-8 to UTF-16 code units.
std::vector<std::uint16_t> Utf16(const std::string& s) {
  std::vector<std::uint16_t> out;
  for (std::size_t i = 0; i < s.size();) {
    auto c = static_cast<unsigned char>(s[i]);
    std::uint32_t cp = c;
    int more = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
    if (more) cp = c & (0x3F >> more);
    ++i;
    for (int k = 0; k < more && i < s.size(); ++k, ++i) cp = (cp << 6) | (static_cast<unsigned char>(s[i]) & 0x3F);
    if (cp >= 0x10000) {
      cp -= 0x10000;
      out.push_back(static_cast<std::uint16_t>(0xD800 + (cp >> 10)));
      out.push_back(static_cast<std::uint16_t>(0xDC00 + (cp & 0x3FF)));
    } else {
      out.push_back(static_cast<std::uint16_t>(cp));
    }
  }
  return out;
}

// 16-bit units packed two to a 32-bit word, the last one padded.
void PackUnits(std::vector<std::uint32_t>& out, const std::vector<std::uint16_t>& units) {
  for (std::size_t i = 0; i < units.size(); i += 2)
    out.push_back(units[i] | (i + 1 < units.size() ? static_cast<std::uint32_t>(units[i + 1]) << 16 : 0u));
}

}  // namespace

EmfCanvas::EmfCanvas() = default;

void EmfCanvas::Record(std::uint32_t type, const std::vector<std::uint32_t>& dwords) {
  body_.push_back(type);
  body_.push_back(8 + 4 * static_cast<std::uint32_t>(dwords.size()));
  body_.insert(body_.end(), dwords.begin(), dwords.end());
  ++records_;
}

int EmfCanvas::MakePen(const Pen& pen) {
  int h = TakeHandle(1);
  Record(EMR_CREATEPEN, {D(h), pen.dotted ? 2u : 0u, D(pen.width), 0, pen.colour});
  return h;
}

int EmfCanvas::MakeBrush(const Brush& brush) {
  int h = TakeHandle(1);
  Record(EMR_CREATEBRUSHINDIRECT, {D(h), brush.hollow ? 1u : 0u, brush.colour, 0});
  return h;
}

int EmfCanvas::MakeFont(const State& s) {
  int h = TakeHandle(1);
  fontHeight_ = s.fontHeight;
  // LOGFONTW: height, width, escapement, orientation, weight, eight bytes of
  // italic to pitch and family, and a face name of 32 UTF-16 units.
  std::vector<std::uint32_t> d = {D(h), D(-s.fontHeight), 0, D(s.escapement), D(s.escapement), 400, 0, 0};
  std::vector<std::uint16_t> face = Utf16(s.font);
  face.resize(32, 0);
  face[31] = 0;
  PackUnits(d, face);
  Record(EMR_EXTCREATEFONTINDIRECTW, d);
  return h;
}

void EmfCanvas::SelectObject(int handle) { Record(EMR_SELECTOBJECT, {D(handle)}); }

void EmfCanvas::DeleteObject(int handle) {
  Record(EMR_DELETEOBJECT, {D(handle)});
  FreeHandle(handle);
}

void EmfCanvas::RecordTextColour(Colour c) { Record(EMR_SETTEXTCOLOR, {c}); }

void EmfCanvas::RecordBackground(Colour c, bool opaque) {
  Record(EMR_SETBKCOLOR, {c});
  Record(EMR_SETBKMODE, {opaque ? 2u : 1u});
}

void EmfCanvas::RecordAlign(int gdiAlign) { Record(EMR_SETTEXTALIGN, {D(gdiAlign)}); }
void EmfCanvas::RecordMoveTo(int x, int y) { Record(EMR_MOVETOEX, {D(x), D(y)}); }
void EmfCanvas::RecordLineTo(int x, int y) { Record(EMR_LINETO, {D(x), D(y)}); }
void EmfCanvas::RecordRectangle(int l, int t, int r, int b) { Record(EMR_RECTANGLE, {D(l), D(t), D(r), D(b)}); }
void EmfCanvas::RecordEllipse(int l, int t, int r, int b) { Record(EMR_ELLIPSE, {D(l), D(t), D(r), D(b)}); }

void EmfCanvas::RecordPolygon(const std::vector<CanvasPoint>& points) {
  int l = points[0].x, t = points[0].y, r = l, b = t;
  for (const CanvasPoint& p : points) {
    l = std::min(l, p.x), r = std::max(r, p.x);
    t = std::min(t, p.y), b = std::max(b, p.y);
  }
  std::vector<std::uint32_t> d = {D(l), D(t), D(r), D(b), static_cast<std::uint32_t>(points.size())};
  for (const CanvasPoint& p : points) {
    d.push_back(D(p.x));
    d.push_back(D(p.y));
  }
  Record(EMR_POLYGON, d);
}

void EmfCanvas::RecordFloodFill(int x, int y, Colour border) {
  Record(EMR_EXTFLOODFILL, {D(x), D(y), border, 0});  // 0: fill up to the border colour
}

void EmfCanvas::RecordText(int x, int y, const std::string& utf8) {
  std::vector<std::uint16_t> text = Utf16(utf8);
  auto n = static_cast<std::uint32_t>(text.size());
  // The record: bounds, graphics mode, scales, then the text's reference
  // point, length, offsets of the string and the advances, options and
  // clipping rectangle; the string and the advances follow.
  constexpr std::uint32_t FIXED = 76;  // bytes from the record's start to the string
  std::uint32_t stringBytes = (n * 2 + 3) / 4 * 4;
  int advance = std::max(1, static_cast<int>(fontHeight_ * 0.55));
  std::vector<std::uint32_t> d = {D(x), D(y), D(x + advance * static_cast<int>(n)), D(y + fontHeight_), 1, F(0), F(0),
                                  D(x), D(y), n, FIXED, 0, 0, 0, 0, 0, FIXED + stringBytes};
  PackUnits(d, text);
  for (std::uint32_t i = 0; i < n; ++i) d.push_back(D(advance));
  Record(EMR_EXTTEXTOUTW, d);
}

std::string EmfCanvas::Bytes() const {
  std::vector<std::uint32_t> all = body_;
  all.insert(all.end(), {EMR_EOF, 20, 0, 16, 20});
  std::uint32_t records = records_ + 2;
  constexpr std::uint32_t HEADER_BYTES = 108;
  auto bytes = static_cast<std::uint32_t>(HEADER_BYTES + 4 * all.size());
  std::vector<std::uint32_t> header = {
      EMR_HEADER, HEADER_BYTES,
      0, 0, D(PAGE_WIDTH - 1), D(PAGE_HEIGHT - 1),                         // bounds, in device units
      0, 0, D(PAGE_MM_WIDTH * 100), D(PAGE_MM_HEIGHT * 100),               // frame, in 0.01 mm, as made
      0x464D4520u, 0x10000u, bytes, records,
      static_cast<std::uint32_t>(std::max(1, MostHandles())) & 0xFFFFu,   // handles, and the reserved half
      0, 0, 0,                                                              // description, palette
      D(PAGE_WIDTH), D(PAGE_HEIGHT), D(PAGE_MM_WIDTH), D(PAGE_MM_HEIGHT),  // the reference device
      0, 0, 0,                                                              // pixel format, OpenGL
      D(PAGE_MM_WIDTH * 1000), D(PAGE_MM_HEIGHT * 1000)};                   // micrometres
  std::string out;
  auto put = [&out](std::uint32_t v) {
    for (int i = 0; i < 4; ++i) out += static_cast<char>((v >> (8 * i)) & 0xFF);
  };
  for (std::uint32_t v : header) put(v);
  for (std::uint32_t v : all) put(v);
  return out;
}

}  // namespace kestrow
