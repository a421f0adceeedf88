// The rules of the mouse on the chart pane: where the text about a point
// stands, when a box may be dragged and what it does, and labels made from
// the text on show.
#include <gtest/gtest.h>

#include "charts/ChartPage.h"
#include "charts/RecordingCanvas.h"
#include "core/Settings.h"
#include "workbench/PictureEvents.h"

namespace kestrow {
namespace {

// Beside the pointer, below and to the right; flipped to the other side at
// the right or bottom edge; never out of the picture, even when larger.
TEST(PictureEvents, TheMessageStandsBesideThePointerInsideThePicture) {
  auto at = [](int x, int y, int w, int h) {
    CanvasPoint p = PictureEvents::PlaceMessage(x, y, w, h, 800, 600);
    return std::pair{p.x, p.y};
  };
  EXPECT_EQ(at(100, 100, 80, 20), (std::pair{112, 112}));
  EXPECT_EQ(at(780, 100, 80, 20), (std::pair{688, 112}));
  EXPECT_EQ(at(100, 590, 80, 20), (std::pair{112, 558}));
  EXPECT_EQ(at(5, 5, 900, 700), (std::pair{0, 0}));
}

class PictureEventsPage : public ::testing::Test {
 protected:
  void SetUp() override {
    gSettings = Settings();
    gSettings.HeadersFlag = 0;
    Chart& npp = page.NewChart(CHT_NPP);
    for (int i = 0; i < 8; ++i) {
      DataPoint p;
      p.fX = static_cast<float>(i);
      p.sId = "C" + std::to_string(i);
      p.iDotType = 1;
      npp.AddData(p);
    }
    npp.RankForNPP();
    page.NewChart(CHT_SCATTER).AddData(DataPoint{"", "", 0, 1, 1});
    RecordingCanvas rc;
    page.DrawAll(rc, 600, 400, PAGE_SCREEN);  // the two charts stacked
  }
  void TearDown() override { gSettings = Settings(); }
  ChartPage page;
  PictureEvents events{page};
};

TEST_F(PictureEventsPage, TheDragOptionComesWithAProbabilityPlot) {
  events.FitModeToPage(true);
  EXPECT_EQ(events.Mode(), PictureEvents::MODE_DRAG | PictureEvents::MODE_STATUS);
  events.FitModeToPage(false);
  EXPECT_EQ(events.Mode(), PictureEvents::MODE_DRAG);
  page.Zoom(10, 300);  // the scattergram alone
  events.FitModeToPage(true);
  EXPECT_EQ(events.Mode(), PictureEvents::MODE_STATUS);
  EXPECT_EQ(events.Move(10, 10, false), "");  // the probability plot is not on show
  events.Down(10, 300);
  EXPECT_FALSE(events.BoxUnderWay());
}

// A box across the plot fits the line; a click, or a box whose corners lie
// in two charts, does nothing.
TEST_F(PictureEventsPage, ABoxInOneProbabilityPlotFitsALine) {
  events.FitModeToPage(true);
  const Chart& npp = page.Charts[0];
  events.Down(npp.PlotLeft + 1, npp.PlotTop + 1);
  EXPECT_EQ(events.Up(npp.PlotLeft + 2, npp.PlotTop + 2, false, false, false, ""), PictureEvents::Release::Nothing);
  events.Down(npp.PlotLeft + 1, npp.PlotTop + 1);
  EXPECT_EQ(events.Up(300, 350, false, false, false, ""), PictureEvents::Release::Nothing);  // into the scattergram
  EXPECT_EQ(npp.fLOBFAtTop, MISSING_VALUE);
  events.Down(npp.PlotLeft + 1, npp.PlotTop + 1);
  events.Move(npp.PlotRight - 1, npp.PlotBottom - 1, false);
  EXPECT_EQ(events.BoxX2(), npp.PlotRight - 1);
  EXPECT_EQ(events.Up(npp.PlotRight - 1, npp.PlotBottom - 1, false, false, false, ""),
            PictureEvents::Release::LineFitted);
  EXPECT_NE(npp.fLOBFAtTop, MISSING_VALUE);
}

// With control held, the right button (or shift) makes a label of the text
// on show; a label is grabbed where it stands and dropped with its offset.
TEST_F(PictureEventsPage, LabelsFromTheTextOnShowAreMadeAndMoved) {
  EXPECT_EQ(events.Up(100, 100, true, false, false, "C3 text"), PictureEvents::Release::Nothing);
  EXPECT_EQ(events.Up(100, 100, true, false, true, ""), PictureEvents::Release::Nothing);
  EXPECT_EQ(events.Up(150, 100, false, true, true, "C3 text"), PictureEvents::Release::LabelMade);
  ASSERT_EQ(page.Labels.size(), 1u);
  EXPECT_DOUBLE_EQ(page.Labels[0].xfrac, 0.25);
  EXPECT_DOUBLE_EQ(page.Labels[0].yfrac, 0.25);
  RecordingCanvas rc;
  page.DrawAll(rc, 600, 400, PAGE_SCREEN);
  events.Down(155, 100);  // grabbed 5 pixels right of its centre
  EXPECT_TRUE(events.LabelGrabbed());
  EXPECT_FALSE(events.BoxUnderWay());
  EXPECT_EQ(events.Up(455, 300, false, false, false, ""), PictureEvents::Release::LabelMoved);
  EXPECT_DOUBLE_EQ(page.Labels[0].xfrac, 0.75);
  EXPECT_DOUBLE_EQ(page.Labels[0].yfrac, 0.75);
  events.EraseLabels();
  EXPECT_TRUE(page.Labels.empty());
}

}  // namespace
}  // namespace kestrow
