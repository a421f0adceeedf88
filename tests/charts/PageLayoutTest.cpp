// The page: the grid of one to six charts with the filler, the cells in
// order down each column, the page headers, zoom, and the annotation labels.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "charts/ChartPage.h"
#include "charts/RecordingCanvas.h"
#include "core/Settings.h"

namespace kestrow {
namespace {

using CornerList = std::vector<std::pair<int, int>>;

class PageLayout : public ::testing::Test {
 protected:
  void SetUp() override {
    gSettings = Settings();
    gSettings.HeadersFlag = 0;
  }
  void TearDown() override { gSettings = Settings(); }

  void Fill(int count) {
    page.Start();
    for (int i = 0; i < count; ++i) page.NewChart(CHT_SCATTER).AddData(DataPoint{"", "", 0, 1, 2});
  }
  void Draw(int mode = PAGE_SCREEN) {
    RecordingCanvas canvas;
    page.DrawAll(canvas, 600, 400, mode);
  }
  CornerList Corners() const {
    CornerList out;
    for (const Chart& c : page.Charts)
      if (c.bVisible) out.emplace_back(c.ox, c.oy);
    return out;
  }

  ChartPage page;
};

// Two stack; three fill the left column, then the top of the right one, with
// a filler in the last cell; five take two rows of three.
TEST_F(PageLayout, OneToSixChartsFillTheirGridDownEachColumn) {
  struct Case {
    int count, cellWidth, cellHeight;
    CornerList corners;
    std::size_t charts;  // with the filler
  };
  const Case cases[] = {
      {1, 600, 400, {{0, 0}}, 1},
      {2, 600, 200, {{0, 0}, {0, 200}}, 2},
      {3, 300, 200, {{0, 0}, {0, 200}, {300, 0}, {300, 200}}, 4},
      {4, 300, 200, {{0, 0}, {0, 200}, {300, 0}, {300, 200}}, 4},
      {5, 200, 200, {{0, 0}, {0, 200}, {200, 0}, {200, 200}, {400, 0}, {400, 200}}, 6},
      {6, 200, 200, {{0, 0}, {0, 200}, {200, 0}, {200, 200}, {400, 0}, {400, 200}}, 6},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.count);
    Fill(c.count);
    Draw();
    EXPECT_EQ(page.cellWidth, c.cellWidth);
    EXPECT_EQ(page.cellHeight, c.cellHeight);
    EXPECT_EQ(Corners(), c.corners);
    ASSERT_EQ(page.Charts.size(), c.charts);
    EXPECT_EQ(page.Charts.back().chtType, c.count == 3 || c.count == 5 ? CHT_FILLER : CHT_SCATTER);
    for (const Chart& ch : page.Charts) EXPECT_EQ(ch.Width, c.cellWidth);
    // A second drawing counts the filler and keeps the grid, with no second filler.
    Draw();
    EXPECT_EQ(page.Charts.size(), c.charts);
    EXPECT_EQ(Corners(), c.corners);
  }
  // Beyond six the grid of the drawing before stays.
  Fill(2);
  Draw();
  for (int i = 0; i < 5; ++i) page.NewChart(CHT_SCATTER);
  Draw();
  EXPECT_EQ(page.rows, 2);
  EXPECT_EQ(page.cols, 1);
}

// The header band takes PageHeaders lines of HdrLinePercent of the height, on
// screen only when asked, in files when asked, always on paper, where the
// page stands at the printer's margins.
TEST_F(PageLayout, HeadersTakeTheirBandAndPushTheCellsDown) {
  gSettings.Header[1] = "Left @P|Centre|Right";
  Fill(2);
  page.pageX = 30;
  page.pageY = 20;
  {
    RecordingCanvas canvas;
    page.DrawAll(canvas, 600, 400, PAGE_PRINTER);
    EXPECT_EQ(page.headerHeight, 32);  // 400 x 4 x 2 %
    EXPECT_EQ(Corners(), (CornerList{{30, 52}, {30, 52 + 184}}));
    auto texts = canvas.Calls("text");
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [](const std::string& t) {
      return t.find("'Centre'") != std::string::npos && t.find(" C B ") != std::string::npos;
    }));
  }
  Draw(PAGE_SCREEN);  // flag 0: none on screen, and no margins off paper
  EXPECT_EQ(page.headerHeight, 0);
  EXPECT_EQ(page.Charts[0].ox, 0);
  gSettings.HeadersFlag = 2;
  Draw(PAGE_BITMAP);
  EXPECT_EQ(page.headerHeight, 32);
  Draw(PAGE_SCREEN);
  EXPECT_EQ(page.headerHeight, 0);
}

TEST_F(PageLayout, ZoomShowsTheChartUnderThePointAndUnzoomShowsAll) {
  Fill(1);
  Draw();
  EXPECT_FALSE(page.Zoom(10, 10));  // one chart: nothing to zoom
  Fill(3);
  Draw();
  page.Labels.push_back(AnnotationLabel{"note"});
  EXPECT_FALSE(page.Zoom(450, 300));  // the filler's cell
  EXPECT_TRUE(page.Zoom(450, 100));
  EXPECT_TRUE(page.bZoomed);
  EXPECT_TRUE(page.Labels.empty());
  for (std::size_t i = 0; i < page.Charts.size(); ++i) EXPECT_EQ(page.Charts[i].bVisible, i == 2);
  Draw();
  EXPECT_EQ(page.Charts[2].Width, 600);
  EXPECT_TRUE(page.Zoom(1, 1));  // as ToolsUnZoom
  EXPECT_FALSE(page.bZoomed);
  for (const Chart& c : page.Charts) EXPECT_TRUE(c.bVisible);
}

// A label stands at its fractions of the page below the header band; its
// box is found again under the pointer, and placing it moves its centre.
TEST_F(PageLayout, LabelsStandAtTheirFractionsAndAreFoundUnderThePointer) {
  gSettings.HeadersFlag = 1;
  Fill(1);
  AnnotationLabel l;
  l.text = "peak";
  l.xfrac = 0.25;
  l.yfrac = 0.5;
  l.hfrac = 0.05;
  page.Labels.push_back(l);
  RecordingCanvas canvas;
  page.DrawAll(canvas, 600, 400, PAGE_SCREEN);
  const AnnotationLabel& drawn = page.Labels[0];
  int header = page.headerHeight;
  EXPECT_GT(header, 0);
  EXPECT_EQ((drawn.left + drawn.right) / 2, 150);
  EXPECT_NEAR((drawn.top + drawn.bottom) / 2.0, header + (400 - header) / 2.0, 1);
  auto texts = canvas.Calls("text");
  EXPECT_NE(texts.back().find("opaque ' peak '"), std::string::npos) << texts.back();
  EXPECT_EQ(page.LabelUnder(150, (drawn.top + drawn.bottom) / 2), 0);
  EXPECT_EQ(page.LabelUnder(400, 300), -1);
  page.PlaceLabel(page.Labels[0], 300, header + (400 - header) / 4);
  EXPECT_DOUBLE_EQ(page.Labels[0].xfrac, 0.5);
  EXPECT_NEAR(page.Labels[0].yfrac, 0.25, 0.01);
}

}  // namespace
}  // namespace kestrow
