// kestrow-cli draw: a chart list drawn into each picture format, the list
// printed as drawn, and bad input refused with nothing written.
#include <gtest/gtest.h>

#include <filesystem>

#include "charts/ChartJson.h"
#include "core/TestSupport.h"

namespace kestrow {
namespace {

std::string Page(const char* name) { return std::string(KESTROW_CHART_DATA) + "/page_" + name + ".json"; }

// The first bytes of each format, as a reader checks them.
TEST(DrawCli, EachExtensionWritesItsFormatAndTheListAsDrawnIsPrinted) {
  test::TempDir dir;
  struct Case {
    const char* ext;
    std::string magic;
  };
  for (const Case& k : {Case{"png", "\x89PNG"}, Case{"bmp", "BM"}, Case{"jpg", "\xFF\xD8\xFF"}, Case{"JPEG", "\xFF\xD8\xFF"},
                        Case{"svg", "<?xml"}, Case{"pdf", "%PDF"}, Case{"wmf", std::string("\xD7\xCD\xC6\x9A", 4)},
                        Case{"emf", std::string("\x01\0\0\0", 4)}}) {
    std::string out = dir / (std::string("page.") + k.ext);
    test::CliResult r = test::RunCli(dir, "draw " + Page("p1") + " --image " + out + " --size 640x480");
    ASSERT_EQ(r.code, 0) << k.ext << ": " << r.err;
    std::string bytes = test::ReadFile(out);
    EXPECT_EQ(bytes.compare(0, k.magic.size(), k.magic), 0) << k.ext;
    ChartPage page;
    std::string error;
    ASSERT_TRUE(ChartsFromJson(r.out, page, error)) << error;
    // Laid out on the picture, six charts in three columns: the files on 640 x 480, the
    // metafiles on their 800 x 600.
    bool meta = std::string(k.ext) == "wmf" || std::string(k.ext) == "emf";
    EXPECT_EQ(page.Charts[2].ox, meta ? 267 : 213) << k.ext;
    EXPECT_NE(page.Charts[0].yMajor, 0);
  }
}

TEST(DrawCli, BadInputIsRefusedAndNothingIsWritten) {
  test::TempDir dir;
  test::WriteFile(dir / "bad.json", R"({"Charts": [{"chtType": 21, "DataPoints": [{"fY": "x"}]}]})");
  test::WriteFile(dir / "old.png", "old picture");
  struct Case {
    std::string args;
    int code;
    const char* says;
  };
  for (const Case& k : {Case{"draw " + Page("p1") + " --image " + dir / "x.gif", 2, "extension is one of"},
                        Case{"draw " + Page("p1") + " --image " + dir / "x.png --size 0x10", 2, "--size takes WxH"},
                        Case{"draw " + Page("p1") + " --image " + dir / "x.png --size 10001x10", 2, "--size takes"},
                        Case{"draw " + Page("p1") + " --image " + dir / "x.png --size 100", 2, "--size takes"},
                        Case{"draw " + Page("p1"), 2, "--image"},
                        Case{"draw " + dir / "none.json --image " + dir / "x.png", 1, "cannot read"},
                        Case{"draw " + dir / "bad.json --image " + dir / "old.png", 1, "DataPoints[0].fY: expected a number"},
                        Case{"draw " + Page("p1") + " --image " + dir / "no/such/folder/x.png", 1, "x.png"}}) {
    test::CliResult r = test::RunCli(dir, k.args);
    EXPECT_EQ(r.code, k.code) << k.args;
    EXPECT_EQ(r.out, "") << k.args;
    EXPECT_NE(r.err.find(k.says), std::string::npos) << k.args << ": " << r.err;
  }
  EXPECT_FALSE(std::filesystem::exists(dir / "x.png"));
  EXPECT_FALSE(std::filesystem::exists(dir / "x.gif"));
  EXPECT_EQ(test::ReadFile(dir / "old.png"), "old picture");
}

}  // namespace
}  // namespace kestrow
