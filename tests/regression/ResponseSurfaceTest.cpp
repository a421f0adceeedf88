// The response surface of Montgomery's central composite (Design and
// Analysis of Experiments, chapter 11): the net's corners against the
// published quadratic y = 79.94 + 0.995 x1 + 0.515 x2 - 1.376 x1^2 -
// 1.001 x2^2 + 0.250 x1 x2 in coded units, the strips' order and joins, the
// view taken from the study, and the dialog's rules.
#include <gtest/gtest.h>

#include <cmath>

#include "analyses/ChartFixture.h"
#include "charts/ChartPage.h"
#include "charts/RecordingCanvas.h"
#include "core/Language.h"
#include "regression/RSMForm.h"
#include "regression/Regress.h"
#include "regression/ResponseSurface.h"

namespace kestrow {
namespace {

double Published(double time, double temperature) {
  const double x1 = (time - 85) / 5, x2 = (temperature - 175) / 5;
  return 79.94 + 0.995 * x1 + 0.515 * x2 - 1.376 * x1 * x1 - 1.001 * x2 * x2 + 0.250 * x1 * x2;
}

class ResponseSurfaceTest : public test::ChartFixture {};

TEST_F(ResponseSurfaceTest, TheNetRunsInStripsFromTheBackOverThePublishedSurface) {
  Study& s = SampleStudy("CentralComposite");
  s.REGRESS_RSM_iNetSize = 10;
  s.REGRESS_RSM_iAlpha = 30;
  s.REGRESS_RSM_flags = 4 | 8;
  ASSERT_TRUE(SetupRSM(s));
  ASSERT_EQ(Charts().size(), 1u);
  const Chart& c = Charts()[0];
  EXPECT_EQ(c.chtType, CHT_SURFACE);
  EXPECT_EQ(c.sTitle, "Yield response surface");
  EXPECT_EQ(c.sXlabel, "Time");
  EXPECT_EQ(c.sYlabel, "Temp");
  EXPECT_NEAR(c.fAlphaRad, 30 * std::acos(-1.0) / 180, 2e-4);
  EXPECT_TRUE(c.bRainbow && c.bHideNet && !c.bShade && !c.bFilled);
  // n strips of n + 1 pairs: 2 n (n + 1) evaluations.
  ASSERT_EQ(c.LinePoints.size(), 220u);
  for (std::size_t strip = 0; strip < 10; ++strip) {
    const LinePoint* p = &c.LinePoints[strip * 22];
    // The back strip first: its lower edge at 179, then 178 ... 170.
    const float y = 179 - static_cast<float>(strip);
    for (int pair = 0; pair <= 10; ++pair) {
      const LinePoint& a = p[2 * pair];
      const LinePoint& b = p[2 * pair + 1];
      EXPECT_FLOAT_EQ(a.fX, 80 + static_cast<float>(pair));
      EXPECT_FLOAT_EQ(b.fX, a.fX);
      // The pairs zigzag: the lower edge first, then the upper first.
      EXPECT_FLOAT_EQ(std::min(a.fY, b.fY), y);
      EXPECT_FLOAT_EQ(std::max(a.fY, b.fY), y + 1);
      EXPECT_EQ(a.fY < b.fY, pair % 2 == 0);
      EXPECT_EQ(a.bJoined, pair < 10);  // the pair at 90 closes the strip
      EXPECT_EQ(a.iTag, 1);
      // The fitted coefficients are the published ones to their printed
      // digits: 0.0005 on each of six terms.
      for (const LinePoint* q : {&a, &b}) EXPECT_NEAR(q->fZ, Published(q->fX, q->fY), 0.003);
    }
  }
  // The corners of the region: 76.30 at (-1, -1), 79.32 at (1, 1).
  EXPECT_NEAR(c.LinePoints[c.LinePoints.size() - 22].fZ, 76.303, 0.003);  // (80, 170)
  EXPECT_NEAR(c.LinePoints[20].fZ, Published(90, 179), 0.003);
}

TEST_F(ResponseSurfaceTest, AFlatSurfaceIsDrawnWithoutTrouble) {
  Study& s = SampleStudy("CentralComposite");
  for (int i = 2; i <= s.REGRESS_Rterms.Count(); ++i) s.REGRESS_Rterms(i).fBeta = 0;
  s.REGRESS_Rterms(1).fBeta = 50;
  s.REGRESS_RSM_iAlpha = 90;
  s.REGRESS_RSM_iBeta = 90;
  ASSERT_TRUE(SetupRSM(s));
  for (const LinePoint& p : Charts()[0].LinePoints) EXPECT_EQ(p.fZ, 50);
  RecordingCanvas canvas;
  gphDrawAll(canvas, 640, 480, PAGE_SCREEN);
  EXPECT_TRUE(ui->messages.empty());
}

TEST_F(ResponseSurfaceTest, TheDialogWantsTwoFactorsAndANumberForEachOther) {
  Study& s = StudyOf(3, 3);
  s.REGRESS_Rterms.Clear();
  for (const char* t : {"0", "1", "2", "3"}) {
    Rterm r;
    InitRterm(r);
    r.sTerm = t;
    r.fBeta = 1;
    if (std::string(t) != "0") r.fValue = FREE_AXIS;
    s.REGRESS_Rterms.Add(r);
  }
  s.REGRESS_sRVkey = "v1";
  RSMForm form(s, stats);
  ASSERT_EQ(form.grdSelFac.size(), 3u);
  // A model never plotted offers its first two factors, the third at its middle.
  EXPECT_TRUE(form.grdSelFac[0].ticked && form.grdSelFac[1].ticked && !form.grdSelFac[2].ticked);
  EXPECT_EQ(form.grdSelFac[2].value, "20");
  form.grdSelFac[2].ticked = true;
  std::string message;
  EXPECT_EQ(form.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("RSMerr1"));
  form.grdSelFac[0].ticked = false;
  form.grdSelFac[0].value = "1O";
  EXPECT_EQ(form.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("RSMerr2"));
  EXPECT_EQ(s.REGRESS_Rterms(2).fValue, FREE_AXIS);  // nothing stored yet
  form.grdSelFac[0].value = "15";
  form.chkShade = true;
  form.chkFilled = false;
  form.chkRainbow = true;
  form.sldNetsize = 50;
  ASSERT_EQ(form.OK(message), FormOutcome::Accepted);
  EXPECT_TRUE(form.stored);
  EXPECT_EQ(s.REGRESS_Rterms(2).fValue, 15);
  EXPECT_EQ(s.REGRESS_Rterms(4).fValue, FREE_AXIS);
  EXPECT_EQ(s.sRSM_f1Key, s.GetFactorKey(2));
  EXPECT_EQ(s.sRSM_f2Key, s.GetFactorKey(3));
  EXPECT_EQ(s.REGRESS_RSM_flags, 1 | 4);
  EXPECT_EQ(s.REGRESS_RSM_iNetSize, 50);
  Chart preview;
  EXPECT_TRUE(form.Preview(preview));
  EXPECT_EQ(preview.LinePoints.size(), 2u * 50 * 51);
  ASSERT_TRUE(SetupRSM(s));
  EXPECT_EQ(Charts()[0].sText1, "Subject to: Factor f1 = 15");
}

}  // namespace
}  // namespace kestrow
