// Chart lists as JSON: every field round trips exactly, a chart given by its
// type and points alone takes a new chart's values and the y range of its
// points, and a malformed list is refused with where and why, leaving the
// page as it was.
#include <gtest/gtest.h>

#include "ChartSamples.h"
#include "charts/ChartJson.h"
#include "charts/RecordingCanvas.h"
#include "core/Settings.h"

namespace kestrow {
namespace {

TEST(ChartJson, APageAsDrawnRoundTripsExactly) {
  gSettings = Settings();
  for (const char* name : test::SAMPLE_PAGES) {
    ChartPage page;
    std::string error;
    ASSERT_TRUE(test::LoadSamplePage(KESTROW_CHART_DATA, name, page, error)) << error;
    RecordingCanvas rc;
    page.DrawAll(rc, 800, 600, PAGE_BITMAP);  // fills the steps, formats and pixels
    std::string once = ChartsToJson(page);
    ChartPage again;
    ASSERT_TRUE(ChartsFromJson(once, again, error)) << error;
    EXPECT_EQ(ChartsToJson(again), once) << name;
  }
}

TEST(ChartJson, AChartOfTypeAndPointsAloneTakesANewChartsValues) {
  ChartPage page;
  std::string error;
  ASSERT_TRUE(ChartsFromJson(R"({"Charts": [{"chtType": 9, "DataPoints": [{"fX": 1, "fY": 0.25}, {"fX": 2}]},
                                            {"chtType": 17, "LinePoints": [{"fX": 1, "fY": -3, "iTag": 2}]}]})",
                             page, error))
      << error;
  ASSERT_EQ(page.Charts.size(), 2u);
  Chart fresh;
  fresh.Init(CHT_RES_NPP);
  const Chart& c = page.Charts[0];
  EXPECT_EQ(c.TopLines, fresh.TopLines);
  EXPECT_EQ(c.BottomLines, fresh.BottomLines);
  EXPECT_TRUE(c.bVisible);
  EXPECT_EQ(c.DataPoints[1].fY, MISSING_VALUE);  // a point without fY has no value
  EXPECT_EQ(c.yMin, 0.25f);                      // as AddData takes it in
  EXPECT_EQ(c.yMax, 0.25f);
  EXPECT_EQ(page.Charts[1].yMin, -3);  // and AddLinePoint
  EXPECT_EQ(page.Charts[1].LinePoints[0].iTag, 2);
}

TEST(ChartJson, MalformedListsAreRefusedWithTheirPathAndLeaveThePage) {
  ChartPage page;
  page.NewChart(CHT_SCATTER).sTitle = "kept";
  struct Case {
    const char* json;
    const char* error;
  };
  for (const Case& k : {
           Case{R"({"Charts": [{"chtType": 21, "bogus": 1}]})", R"(Charts[0]: unknown field "bogus")"},
           Case{R"({"Charts": [{"chtType": 21}, {"chtType": 4, "DataPoints": [{"fY": "x"}]}]})",
                "Charts[1].DataPoints[0].fY: expected a number"},
           Case{R"({"Charts": [{"chtType": 22}]})", "Charts[0].chtType: expected a whole number from 0 to 21"},
           Case{R"({"Charts": [{}]})", R"(Charts[0]: missing field "chtType")"},
           Case{R"({"Charts": [{"chtType": 21, "Width": 70000}]})",
                "Charts[0].Width: expected a whole number from -32768 to 32767"},
           Case{R"({"Charts": [{"chtType": 21, "DataPoints": [{"fX": 1e39}]}]})",
                "Charts[0].DataPoints[0].fX: the number is beyond the range of a 32-bit float"},
           Case{R"({"Charts": [{"chtType": 21, "sTitle": 5}]})", "Charts[0].sTitle: expected a string, found a number"},
           Case{R"([])", "the document: expected an object, found an array"},
           Case{R"({"Charts": [)", "unexpected end of the document"},
       }) {
    std::string error;
    EXPECT_FALSE(ChartsFromJson(k.json, page, error)) << k.json;
    EXPECT_NE(error.find(k.error), std::string::npos) << error;
    ASSERT_EQ(page.Charts.size(), 1u);
    EXPECT_EQ(page.Charts[0].sTitle, "kept");
  }
}

}  // namespace
}  // namespace kestrow
