// Each chart type drawn from a small chart list onto the recording canvas:
// the calls it makes in the colours of their roles, not the pixels; the
// markers; a point without a value; and charts off the textbook path (no
// point, one point, equal values, values near 1e9 and 1e-9, 10,000 points,
// pages of 50 x 40 and 10,000 x 10,000 pixels) drawn whole with axes that
// read in order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>

#include "ChartSamples.h"
#include "charts/Canvas.h"
#include "charts/GetScale.h"
#include "charts/RecordingCanvas.h"
#include "core/Settings.h"

namespace kestrow {
namespace {

bool Has(const RecordingCanvas& rc, const std::string& kind, const std::string& part) {
  auto calls = rc.Calls(kind);
  return std::any_of(calls.begin(), calls.end(), [&](const std::string& c) { return c.find(part) != std::string::npos; });
}

int CountWith(const RecordingCanvas& rc, const std::string& kind, const std::string& part) {
  auto calls = rc.Calls(kind);
  return static_cast<int>(
      std::count_if(calls.begin(), calls.end(), [&](const std::string& c) { return c.find(part) != std::string::npos; }));
}

class Draw : public ::testing::Test {
 protected:
  void SetUp() override {
    gSettings = Settings();
    gSettings.HeadersFlag = 0;
  }
  void TearDown() override { gSettings = Settings(); }

  // The chart alone on a page of that size.
  RecordingCanvas Alone(const Chart& chart, int width = 600, int height = 400) {
    page.Start();
    page.Charts.push_back(chart);
    RecordingCanvas rc;
    page.DrawAll(rc, width, height, PAGE_SCREEN);
    return rc;
  }
  ChartPage page;
};

// Every sample chart: drawn inside one saved state, its cell first in the
// background colour, its title in the title colour, and then what its type
// draws with the colours of their roles.
TEST_F(Draw, EachTypeMakesItsOwnCallsInTheColoursOfTheirRoles) {
  const std::string axes = ColourText(gSettings.ChartAxes), data = ColourText(gSettings.ChartDataLine),
                    limits = ColourText(gSettings.ChartLimits), area = ColourText(gSettings.ChartArea),
                    titles = ColourText(gSettings.ChartTitles);
  std::vector<int> seen(CHART_TYPES, 0);
  for (const char* name : test::SAMPLE_PAGES) {
    ChartPage samples;
    std::string error;
    ASSERT_TRUE(test::LoadSamplePage(KESTROW_CHART_DATA, name, samples, error)) << error;
    for (const Chart& chart : samples.Charts) {
      SCOPED_TRACE(std::string(name) + " type " + std::to_string(chart.chtType));
      ++seen[static_cast<std::size_t>(chart.chtType)];
      RecordingCanvas rc = Alone(chart);
      ASSERT_GE(rc.calls.size(), 4u);
      EXPECT_EQ(rc.calls.front(), "save");
      EXPECT_EQ(rc.calls.back(), "restore");
      EXPECT_EQ(std::count(rc.calls.begin(), rc.calls.end(), "save"),
                std::count(rc.calls.begin(), rc.calls.end(), "restore"));
      std::string cell = "rect 0,0 600,400 " + axes + " 1 solid " +
                         ColourText(chart.chtType == CHT_SURFACE ? gSettings.ChartArea : gSettings.ChartBackground);
      EXPECT_TRUE(Has(rc, "rect", cell)) << cell;
      if (!chart.sTitle.empty()) EXPECT_TRUE(Has(rc, "text", titles + " '" + chart.sTitle + "'"));
      const Chart& drawn = page.Charts.front();
      switch (chart.chtType) {
        case CHT_ANOM:
          EXPECT_EQ(CountWith(rc, "line", limits + " 1 dotted"), 2);  // the decision limits
          EXPECT_TRUE(Has(rc, "line", ColourText(gSettings.ChartMeanLine) + " 1 dotted"));
          EXPECT_TRUE(Has(rc, "text", "'LDL=45, Mean=50, UDL=55'"));
          EXPECT_TRUE(Has(rc, "text", "'UDL'"));
          break;
        case CHT_NPP:
        case CHT_RES_NPP:
        case CHT_REG_NPP: {
          // Nine probabilities, dotted across, labelled in this order.
          const char* probs[] = {"'0.99'", "'0.95'", "'0.90'", "'0.70'", "'0.50'", "'0.30'", "'0.10'", "'0.05'", "'0.01'"};
          auto texts = rc.Calls("text");
          std::size_t at = 0;
          for (const char* p : probs) {
            auto it = std::find_if(texts.begin() + static_cast<long>(at), texts.end(),
                                   [&](const std::string& t) { return t.find(p) != std::string::npos; });
            ASSERT_NE(it, texts.end()) << p;
            at = static_cast<std::size_t>(it - texts.begin());
          }
          EXPECT_GE(CountWith(rc, "line", " dotted"), 9);
          EXPECT_EQ(CountWith(rc, "ellipse", data), static_cast<int>(chart.DataPoints.size()));
          break;
        }
        case CHT_PARETO: {
          int bars = static_cast<int>(chart.DataPoints.size());
          EXPECT_EQ(rc.Count("polygon"), bars);
          EXPECT_TRUE(Has(rc, "polygon", ColourText(RainbowColour(100 * 1 / chart.xAxisCount))));
          for (const DataPoint& p : chart.DataPoints) EXPECT_TRUE(Has(rc, "text", "'" + p.sId + "'"));
          break;
        }
        case CHT_CONTOUR: {
          // One fill for each coloured seed inside the plot, stopped by the axes colour.
          int seeds = 0;
          for (const DataPoint& p : drawn.DataPoints) {
            if (p.sId != "COL") continue;
            int x = drawn.XToPixel(p.fX), y = drawn.YToPixel(p.fY);
            if (x > drawn.PlotLeft && x < drawn.PlotRight && y > drawn.PlotTop && y < drawn.PlotBottom) ++seeds;
          }
          EXPECT_GT(seeds, 0);
          EXPECT_EQ(CountWith(rc, "fill", "border " + axes), seeds);
          EXPECT_TRUE(Has(rc, "line", limits));  // the target contour
          EXPECT_TRUE(Has(rc, "text", "opaque '10'"));
          break;
        }
        case CHT_SURFACE: EXPECT_GT(rc.Count("polygon"), 50); break;
        case CHT_EFFECT:
          EXPECT_TRUE(Has(rc, "text", "'Low'"));
          EXPECT_TRUE(Has(rc, "text", "'High'"));
          EXPECT_TRUE(Has(rc, "line", std::to_string(drawn.DataPoints[0].iWhereX) + "," +
                                          std::to_string(drawn.DataPoints[0].iWhereY) + " " +
                                          std::to_string(drawn.DataPoints[1].iWhereX) + "," +
                                          std::to_string(drawn.DataPoints[1].iWhereY) + " " + data));
          EXPECT_TRUE(Has(rc, "rect", area));
          break;
        case CHT_PAIRWISE:
          EXPECT_TRUE(Has(rc, "text", "'alpha = 0.05'"));
          EXPECT_GE(CountWith(rc, "line", data), 2);  // the two bars of groups
          break;
        case CHT_RUN:
          EXPECT_TRUE(Has(rc, "text", "'= Yield'"));
          EXPECT_TRUE(Has(rc, "text", "'= Impurity'"));
          break;
        case CHT_SCATTER:
          EXPECT_TRUE(Has(rc, "line", data));  // the fitted line
          EXPECT_TRUE(Has(rc, "text", "'Temp'"));
          break;
        case CHT_IPO:
          EXPECT_TRUE(Has(rc, "text", "'Yield'"));
          EXPECT_TRUE(Has(rc, "text", "'* noise factor'"));
          break;
        default: break;
      }
    }
  }
  for (int type = 1; type < CHART_TYPES; ++type) EXPECT_GT(seen[static_cast<std::size_t>(type)], 0) << type;
  // The filler draws its cell and nothing else.
  Chart filler;
  filler.Init(CHT_FILLER);
  RecordingCanvas rc = Alone(filler);
  EXPECT_EQ(rc.Count("text"), 0);
  EXPECT_EQ(rc.Count("line"), 0);
}

// Filled circle, square, triangle and diamond, their hollow kinds, and the
// cross of two lines of width 2.
TEST_F(Draw, MarkerShapes) {
  Chart c;
  c.Init(CHT_SCATTER);
  for (int t = 0; t <= 9; ++t) {
    DataPoint p;
    p.fX = static_cast<float>(t);
    p.fY = static_cast<float>(t);
    p.iDotType = static_cast<std::int16_t>(t);
    c.AddData(p);
  }
  RecordingCanvas rc = Alone(c);
  const std::string blob = ColourText(gSettings.ChartDataBlobs), data = ColourText(gSettings.ChartDataLine);
  EXPECT_EQ(CountWith(rc, "ellipse", data + " 1 solid " + blob), 1);
  EXPECT_EQ(CountWith(rc, "ellipse", data + " 1 solid hollow"), 1);
  EXPECT_EQ(CountWith(rc, "rect", data + " 1 solid " + blob), 1);
  EXPECT_EQ(CountWith(rc, "rect", data + " 1 solid hollow"), 1);
  EXPECT_EQ(CountWith(rc, "polygon", blob), 2);
  EXPECT_EQ(CountWith(rc, "polygon", "hollow"), 2);
  EXPECT_EQ(CountWith(rc, "line", data + " 2 solid"), 2);
}

// A point without a value keeps its x label, gets no marker and no join, and
// its pixel stays from before; the join from the first point never happens.
TEST_F(Draw, APointWithoutAValueIsLabelledButNotDrawnOrJoined) {
  Chart c;
  c.Init(CHT_EFFECT);
  c.xAxisCount = 4;
  const float ys[] = {10, MISSING_VALUE, 14};
  for (int i = 0; i < 3; ++i) {
    DataPoint p;
    p.sId = "L" + std::to_string(i + 1);
    p.idf = 1;
    p.fX = static_cast<float>(i + 1);
    p.fY = ys[i];
    p.iDotType = 1;
    p.bJoined = true;
    p.iWhereX = 77;
    c.AddData(p);
  }
  c.ConsiderValue(0);  // the points above the axis, clear of its ticks
  RecordingCanvas rc = Alone(c);
  const Chart& d = page.Charts.front();
  EXPECT_TRUE(Has(rc, "text", "'L2'"));
  EXPECT_EQ(rc.Count("ellipse"), 2);
  EXPECT_EQ(d.DataPoints[1].iWhereX, 77);
  std::string join = "line " + std::to_string(d.DataPoints[0].iWhereX) + "," + std::to_string(d.DataPoints[0].iWhereY) +
                     " " + std::to_string(d.DataPoints[2].iWhereX) + "," + std::to_string(d.DataPoints[2].iWhereY);
  EXPECT_TRUE(Has(rc, "line", join)) << join;
  std::string from0 = "line " + std::to_string(d.DataPoints[0].iWhereX) + "," + std::to_string(d.DataPoints[0].iWhereY);
  EXPECT_EQ(CountWith(rc, "line", from0 + " "), 1);
  EXPECT_FALSE(Has(rc, "line", "-1,-1"));
}

// The tick labels at the left of the plot, read as numbers from the top
// down; they must fall strictly.
std::vector<double> YTickValues(const RecordingCanvas& rc, const Chart& c) {
  std::vector<std::pair<int, double>> found;
  for (const std::string& call : rc.Calls("text")) {
    int x = 0, y = 0;
    char h = 0;
    if (std::sscanf(call.c_str(), "text %d,%d %c", &x, &y, &h) != 3 || h != 'R' || x >= c.PlotLeft) continue;
    std::size_t q = call.find('\'');
    found.emplace_back(y, std::strtod(call.c_str() + q + 1, nullptr));
  }
  std::sort(found.begin(), found.end());
  std::vector<double> values;
  for (const auto& f : found) values.push_back(f.second);
  return values;
}

TEST_F(Draw, ChartsOffTheTextbookPathDrawWholeWithAxesInOrder) {
  struct Case {
    const char* name;
    std::function<void(Chart&)> fill;
  };
  auto points = [](Chart& c, int n, std::function<float(int)> y) {
    for (int i = 0; i < n; ++i) {
      DataPoint p;
      p.fX = static_cast<float>(i);
      p.fY = y(i);
      p.iDotType = 1;
      p.bJoined = i > 0;
      c.AddData(p);
    }
  };
  const Case cases[] = {
      {"no point", [](Chart&) {}},
      {"one point", [&](Chart& c) { points(c, 1, [](int) { return 7.0f; }); }},
      {"equal values", [&](Chart& c) { points(c, 5, [](int) { return 3.0f; }); }},
      {"around 1e9", [&](Chart& c) { points(c, 10, [](int i) { return 1e9f + 64.0f * static_cast<float>(i); }); }},
      {"around 1e-9", [&](Chart& c) { points(c, 10, [](int i) { return 1e-9f * static_cast<float>(i + 1); }); }},
      {"missing among them",
       [&](Chart& c) { points(c, 6, [](int i) { return i % 2 ? MISSING_VALUE : static_cast<float>(i); }); }},
      {"10,000 points", [&](Chart& c) { points(c, 10000, [](int i) { return std::sin(i * 0.01f) * 1000; }); }},
  };
  for (const Case& k : cases) {
    for (std::int16_t type : {CHT_SCATTER, CHT_RES_FITTED, CHT_RES_RUN, CHT_SCREE, CHT_EFFECT, CHT_ANOM, CHT_MMP,
                              CHT_RUN, CHT_PARETO, CHT_NPP, CHT_PAIRWISE, CHT_RES_VARIABLE}) {
      SCOPED_TRACE(std::string(k.name) + ", type " + std::to_string(type));
      Chart c;
      c.Init(type);
      k.fill(c);
      if (type == CHT_NPP) {
        for (DataPoint& p : c.DataPoints) p.fY = MISSING_VALUE;
        c.RankForNPP();
      }
      if (type == CHT_SCREE || type == CHT_PARETO || type == CHT_RUN || type == CHT_ANOM || type == CHT_MMP)
        c.xAxisCount = static_cast<std::int16_t>(std::min<std::size_t>(c.DataPoints.size() + 1, 32000));
      for (auto [w, h] : {std::pair{600, 400}, {50, 40}, {10000, 10000}}) {
        RecordingCanvas rc = Alone(c, w, h);
        const Chart& d = page.Charts.front();
        EXPECT_EQ(rc.calls.back(), "restore");
        EXPECT_TRUE(std::isfinite(d.yMin) && std::isfinite(d.yMax) && d.yMin < d.yMax) << d.yMin << " " << d.yMax;
        EXPECT_LE(d.PlotLeft, d.PlotRight);
        if (type == CHT_SCATTER && w == 600) {
          std::vector<double> ticks = YTickValues(rc, d);
          ASSERT_GE(ticks.size(), 2u);
          for (std::size_t i = 1; i < ticks.size(); ++i) EXPECT_LT(ticks[i], ticks[i - 1]) << i;
          for (const DataPoint& p : d.DataPoints)
            if (p.fY != MISSING_VALUE) {
              EXPECT_GE(p.fY, d.yMin);
              EXPECT_LE(p.fY, d.yMax);
            }
        }
      }
    }
  }
}

// Around 1e9 the labels name the values where their ticks stand: 1e9 + 100
// is a tick of its own, not the float next to it.
TEST_F(Draw, TickLabelsFarFromZeroNameTheirPlaces) {
  Chart c;
  c.Init(CHT_SCATTER);
  for (int i = 0; i < 10; ++i) {
    DataPoint p;
    p.fX = static_cast<float>(i);
    p.fY = 1e9f + 64.0f * static_cast<float>(i);
    c.AddData(p);
  }
  RecordingCanvas rc = Alone(c);
  std::vector<double> ticks = YTickValues(rc, page.Charts.front());
  EXPECT_NE(std::find(ticks.begin(), ticks.end(), 1000000100.0), ticks.end());
  for (std::size_t i = 1; i < ticks.size(); ++i) EXPECT_DOUBLE_EQ(ticks[i - 1] - ticks[i], 100);
}

}  // namespace
}  // namespace kestrow
