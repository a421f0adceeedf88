// The metafile writers, read back as a reader of the formats would: the
// placeable header with its computed checksum, the Windows metafile's own
// header and a record walk that ends on the closing record; the enhanced
// metafile's header, frame, byte and record counts.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "ChartSamples.h"
#include "charts/MetafileCanvas.h"
#include "core/Settings.h"

namespace kestrow {
namespace {

std::uint16_t Word(const std::string& b, std::size_t at) {
  return static_cast<std::uint16_t>(static_cast<unsigned char>(b[at]) | (static_cast<unsigned char>(b[at + 1]) << 8));
}
std::uint32_t Dword(const std::string& b, std::size_t at) {
  return Word(b, at) | (static_cast<std::uint32_t>(Word(b, at + 2)) << 16);
}

std::string Drawn(MetafileCanvas&& canvas, int mode) {
  ChartPage page;
  std::string error;
  EXPECT_TRUE(test::LoadSamplePage(KESTROW_CHART_DATA, "p2", page, error)) << error;
  page.DrawAll(canvas, 800, 600, mode);
  return canvas.Bytes();
}

TEST(Metafile, ThePlaceableHeaderCarriesTheSizeAndItsChecksum) {
  std::string h = WmfCanvas::PlaceableHeader();
  ASSERT_EQ(h.size(), 22u);
  EXPECT_EQ(Dword(h, 0), 0x9AC6CDD7u);
  EXPECT_EQ(Word(h, 4), 0);  // handle
  EXPECT_EQ(Word(h, 6), 0);
  EXPECT_EQ(Word(h, 8), 0);
  EXPECT_EQ(Word(h, 10), 800);
  EXPECT_EQ(Word(h, 12), 600);
  EXPECT_EQ(Word(h, 14), 72);
  EXPECT_EQ(Dword(h, 16), 0u);
  std::uint16_t sum = 0;
  for (std::size_t at = 0; at < 20; at += 2) sum ^= Word(h, at);
  EXPECT_EQ(Word(h, 20), sum);
  EXPECT_EQ(sum, 0xCDD7 ^ 0x9AC6 ^ 800 ^ 600 ^ 72);
}

TEST(Metafile, AWindowsMetafileWalksRecordByRecordToItsEnd) {
  gSettings = Settings();
  std::string b = Drawn(WmfCanvas(), PAGE_WMF);
  ASSERT_GT(b.size(), 22u + 18u);
  EXPECT_EQ(b.substr(0, 22), WmfCanvas::PlaceableHeader());
  std::size_t at = 22;
  EXPECT_EQ(Word(b, at), 1);           // on disk
  EXPECT_EQ(Word(b, at + 2), 9);       // header words
  EXPECT_EQ(Word(b, at + 4), 0x0300);  // version
  EXPECT_EQ(Dword(b, at + 6) * 2, b.size() - 22);
  std::uint32_t largest = Dword(b, at + 12);
  at += 18;
  bool window = false, mapMode = false, fill = false;
  std::uint32_t biggest = 0;
  while (at + 6 <= b.size()) {
    std::uint32_t words = Dword(b, at);
    std::uint16_t function = Word(b, at + 4);
    ASSERT_GE(words, 3u);
    biggest = std::max(biggest, words);
    if (function == 0x020C) window = Word(b, at + 6) == 600 && Word(b, at + 8) == 800;  // y extent first
    if (function == 0x0103) mapMode = Word(b, at + 6) == 8;                             // anisotropic
    if (function == 0x0419 || function == 0x0548) fill = true;                          // flood fills
    at += words * 2;
    if (function == 0) break;
  }
  EXPECT_EQ(at, b.size());  // the closing record is the last
  EXPECT_TRUE(window);
  EXPECT_TRUE(mapMode);
  EXPECT_TRUE(fill);  // the contour's rainbow, for the reader to fill
  EXPECT_EQ(largest, biggest);
}

TEST(Metafile, AnEnhancedMetafileHasItsFrameAndCounts) {
  gSettings = Settings();
  std::string b = Drawn(EmfCanvas(), PAGE_EMF);
  ASSERT_GT(b.size(), 108u);
  EXPECT_EQ(Dword(b, 0), 1u);  // the header record
  EXPECT_EQ(Dword(b, 4), 108u);
  EXPECT_EQ(Dword(b, 16), 799u);  // bounds, in pixels
  EXPECT_EQ(Dword(b, 24), 0u);    // frame, in hundredths of a millimetre
  EXPECT_EQ(Dword(b, 28), 0u);
  EXPECT_EQ(Dword(b, 32), 19200u);
  EXPECT_EQ(Dword(b, 36), 14400u);
  EXPECT_EQ(Dword(b, 40), 0x464D4520u);  // " EMF"
  EXPECT_EQ(Dword(b, 48), b.size());
  std::uint32_t records = 0;
  std::size_t at = 0;
  std::uint32_t last = 0;
  while (at + 8 <= b.size()) {
    std::uint32_t size = Dword(b, at + 4);
    ASSERT_EQ(size % 4, 0u);
    ASSERT_GE(size, 8u);
    last = Dword(b, at);
    at += size;
    ++records;
  }
  EXPECT_EQ(at, b.size());
  EXPECT_EQ(last, 14u);  // EMR_EOF
  EXPECT_EQ(Dword(b, 52), records);
}

}  // namespace
}  // namespace kestrow
