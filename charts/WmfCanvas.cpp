// The Windows metafile: a header of 9 words, records of a 32-bit size in
// words, a function word and its parameters, and a closing record; led by
// the 22-byte placeable header that gives the picture its size.
#include <algorithm>

#include "charts/MetafileCanvas.h"
#include "core/CodePage.h"

namespace kestrow {

namespace {

// The record functions used.
constexpr std::uint16_t META_SETWINDOWORG = 0x020B, META_SETWINDOWEXT = 0x020C, META_SETMAPMODE = 0x0103,
                        META_CREATEPENINDIRECT = 0x02FA, META_CREATEBRUSHINDIRECT = 0x02FC,
                        META_CREATEFONTINDIRECT = 0x02FB, META_SELECTOBJECT = 0x012D, META_DELETEOBJECT = 0x01F0,
                        META_SETTEXTCOLOR = 0x0209, META_SETBKCOLOR = 0x0201, META_SETBKMODE = 0x0102,
                        META_SETTEXTALIGN = 0x012E, META_MOVETO = 0x0214, META_LINETO = 0x0213,
                        META_RECTANGLE = 0x041B, META_ELLIPSE = 0x0418, META_POLYGON = 0x0324,
                        META_FLOODFILL = 0x0419, META_TEXTOUT = 0x0521;
constexpr int MM_ANISOTROPIC = 8;
constexpr std::uint16_t PAGE_WIDTH = 800, PAGE_HEIGHT = 600, UNITS_PER_INCH = 72;

// A coordinate as a signed 16-bit word, held within its range.
std::uint16_t W(int v) { return static_cast<std::uint16_t>(static_cast<std::int16_t>(std::clamp(v, -32768, 32767))); }
void Colour2(std::vector<std::uint16_t>& w, Colour c) {
  w.push_back(static_cast<std::uint16_t>(c & 0xFFFF));
  w.push_back(static_cast<std::uint16_t>(c >> 16));
}
void PutWord(std::string& out, std::uint16_t w) {
  out += static_cast<char>(w & 0xFF);
  out += static_cast<char>(w >> 8);
}

}  // namespace

std::string WmfCanvas::PlaceableHeader() {
  const std::uint32_t key = 0x9AC6CDD7u;
  std::uint16_t words[10] = {static_cast<std::uint16_t>(key & 0xFFFF), static_cast<std::uint16_t>(key >> 16), 0, 0, 0,
                             PAGE_WIDTH, PAGE_HEIGHT, UNITS_PER_INCH, 0, 0};
  std::uint16_t checksum = 0;
  for (std::uint16_t w : words) checksum ^= w;
  std::string out;
  for (std::uint16_t w : words) PutWord(out, w);
  PutWord(out, checksum);
  return out;
}

WmfCanvas::WmfCanvas() {
  Record(META_SETMAPMODE, {MM_ANISOTROPIC});
  Record(META_SETWINDOWORG, {0, 0});
  Record(META_SETWINDOWEXT, {PAGE_HEIGHT, PAGE_WIDTH});
}

void WmfCanvas::Record(std::uint16_t function, const std::vector<std::uint16_t>& words) {
  std::uint32_t size = 3 + static_cast<std::uint32_t>(words.size());
  body_.push_back(static_cast<std::uint16_t>(size & 0xFFFF));
  body_.push_back(static_cast<std::uint16_t>(size >> 16));
  body_.push_back(function);
  body_.insert(body_.end(), words.begin(), words.end());
  largest_ = std::max(largest_, size);
}

int WmfCanvas::MakePen(const Pen& pen) {
  int h = TakeHandle(0);
  std::vector<std::uint16_t> w = {static_cast<std::uint16_t>(pen.dotted ? 2 : 0), W(pen.width), 0};
  Colour2(w, pen.colour);
  Record(META_CREATEPENINDIRECT, w);
  return h;
}

int WmfCanvas::MakeBrush(const Brush& brush) {
  int h = TakeHandle(0);
  std::vector<std::uint16_t> w = {static_cast<std::uint16_t>(brush.hollow ? 1 : 0)};
  Colour2(w, brush.colour);
  w.push_back(0);
  Record(META_CREATEBRUSHINDIRECT, w);
  return h;
}

int WmfCanvas::MakeFont(const State& s) {
  int h = TakeHandle(0);
  // A negative height asks for the character height, without the leading.
  // Height, width, escapement, orientation, weight, then eight bytes of
  // italic to pitch and family, all 0 (the ANSI character set among them).
  std::vector<std::uint16_t> w = {W(-s.fontHeight), 0, W(s.escapement), W(s.escapement), 400, 0, 0, 0, 0};
  std::string face = Utf8ToCp1252(s.font).substr(0, 31);
  face.resize(32, '\0');
  for (std::size_t i = 0; i < face.size(); i += 2)
    w.push_back(static_cast<std::uint16_t>(static_cast<unsigned char>(face[i]) |
                                           (static_cast<unsigned char>(face[i + 1]) << 8)));
  Record(META_CREATEFONTINDIRECT, w);
  return h;
}

void WmfCanvas::SelectObject(int handle) { Record(META_SELECTOBJECT, {W(handle)}); }

void WmfCanvas::DeleteObject(int handle) {
  Record(META_DELETEOBJECT, {W(handle)});
  FreeHandle(handle);
}

void WmfCanvas::RecordTextColour(Colour c) {
  std::vector<std::uint16_t> w;
  Colour2(w, c);
  Record(META_SETTEXTCOLOR, w);
}

void WmfCanvas::RecordBackground(Colour c, bool opaque) {
  std::vector<std::uint16_t> w;
  Colour2(w, c);
  Record(META_SETBKCOLOR, w);
  Record(META_SETBKMODE, {static_cast<std::uint16_t>(opaque ? 2 : 1)});
}

void WmfCanvas::RecordAlign(int gdiAlign) { Record(META_SETTEXTALIGN, {static_cast<std::uint16_t>(gdiAlign)}); }
void WmfCanvas::RecordMoveTo(int x, int y) { Record(META_MOVETO, {W(y), W(x)}); }
void WmfCanvas::RecordLineTo(int x, int y) { Record(META_LINETO, {W(y), W(x)}); }
void WmfCanvas::RecordRectangle(int l, int t, int r, int b) { Record(META_RECTANGLE, {W(b), W(r), W(t), W(l)}); }
void WmfCanvas::RecordEllipse(int l, int t, int r, int b) { Record(META_ELLIPSE, {W(b), W(r), W(t), W(l)}); }

void WmfCanvas::RecordPolygon(const std::vector<CanvasPoint>& points) {
  std::vector<std::uint16_t> w = {W(static_cast<int>(points.size()))};
  for (const CanvasPoint& p : points) {
    w.push_back(W(p.x));
    w.push_back(W(p.y));
  }
  Record(META_POLYGON, w);
}

void WmfCanvas::RecordFloodFill(int x, int y, Colour border) {
  std::vector<std::uint16_t> w;
  Colour2(w, border);
  w.push_back(W(y));
  w.push_back(W(x));
  Record(META_FLOODFILL, w);
}

void WmfCanvas::RecordText(int x, int y, const std::string& utf8) {
  std::string bytes = Utf8ToCp1252(utf8).substr(0, 32000);
  std::vector<std::uint16_t> w = {static_cast<std::uint16_t>(bytes.size())};
  if (bytes.size() % 2) bytes += '\0';
  for (std::size_t i = 0; i < bytes.size(); i += 2)
    w.push_back(static_cast<std::uint16_t>(static_cast<unsigned char>(bytes[i]) |
                                           (static_cast<unsigned char>(bytes[i + 1]) << 8)));
  w.push_back(W(y));
  w.push_back(W(x));
  Record(META_TEXTOUT, w);
}

std::string WmfCanvas::Bytes() const {
  std::vector<std::uint16_t> all = body_;
  all.insert(all.end(), {3, 0, 0});  // the closing record
  std::uint32_t total = 9 + static_cast<std::uint32_t>(all.size());
  std::string out = PlaceableHeader();
  // The header: a file on disk, 9 words long, version 3.
  for (std::uint16_t w : {std::uint16_t(1), std::uint16_t(9), std::uint16_t(0x0300),
                          static_cast<std::uint16_t>(total & 0xFFFF), static_cast<std::uint16_t>(total >> 16),
                          static_cast<std::uint16_t>(std::max(1, MostHandles())),
                          static_cast<std::uint16_t>(std::max<std::uint32_t>(largest_, 3) & 0xFFFF),
                          static_cast<std::uint16_t>(std::max<std::uint32_t>(largest_, 3) >> 16), std::uint16_t(0)})
    PutWord(out, w);
  for (std::uint16_t w : all) PutWord(out, w);
  return out;
}

}  // namespace kestrow
