// The pictures of a fitted quadratic in four factors (two plotted, two held):
// a contour plot at cell size 100, from the click to the page drawn on the
// screen's image, once with the levels the scale rule gives it and once
// with twenty levels traced (the most its table holds); and a response
// surface of net 50 redrawn at a new angle, as a slider of its dialog asks.
// Each is run in repetitions and reported by its median.
#include <benchmark/benchmark.h>

#include "QtBenchmarkMain.h"

#include <QGuiApplication>
#include <QImage>
#include <memory>

#include "charts/ChartPage.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/Problem.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"
#include "regression/ContourPlot.h"
#include "regression/Regress.h"
#include "regression/ResponseSurface.h"
#include "shell/Colours.h"
#include "shell/QtCanvas.h"

namespace kestrow {
namespace {

constexpr int WIDTH = 1600, HEIGHT = 1000;

// Four three-level factors and the full quadratic in coded units, its
// stationary point inside the plot; C and D held.
std::unique_ptr<Problem> QuadraticInFour() {
  auto p = std::make_unique<Problem>();
  Study s;
  s.sKey = "s1";
  for (int f = 1; f <= 4; ++f) {
    Factor factor;
    factor.sKey = "f" + std::to_string(f);
    factor.sName = factor.sAbbr = std::string(1, static_cast<char>('A' + f - 1));
    for (const char* level : {"100", "150", "200"}) factor.Levels.Add(Level{level, "", 0});
    p->Factors.Add(factor, factor.sKey);
    s.Factors.Add(Item{factor.sKey});
  }
  RespVar rv;
  rv.sKey = "v1";
  rv.sName = rv.sAbbr = "Yield";
  p->RespVars.Add(rv, rv.sKey);
  s.StudyRespVars.Add(StudyRespVar{"v1", 0, 0, 0});
  const std::pair<const char*, float> terms[] = {
      {"0", 80},      {"1", 1.2f},    {"2", 0.7f},    {"3", -0.4f},  {"4", 0.3f},    {"1,1", -1.4f}, {"2,2", -0.9f}, {"3,3", -0.5f},
      {"4,4", -0.6f}, {"1,2", 0.25f}, {"1,3", 0.2f}, {"1,4", -0.1f}, {"2,3", 0.15f}, {"2,4", 0.1f}, {"3,4", -0.05f}};
  for (const auto& [text, beta] : terms) {
    Rterm r;
    InitRterm(r);
    r.sTerm = text;
    r.fBeta = beta;
    const std::string t = text;
    if (t == "1" || t == "2") r.fValue = FREE_AXIS;
    if (t == "3" || t == "4") r.fValue = 160;
    s.REGRESS_Rterms.Add(r);
  }
  s.REGRESS_sRVkey = "v1";
  s.REGRESS_iFlag = REGRESS_CODED;
  s.CONTOUR_flags = 1;
  s.sRSM_f1Key = "f1";
  s.sRSM_f2Key = "f2";
  p->AddStudy(std::move(s));
  return p;
}

void Start() {
  InstallUi(std::make_unique<ScriptedUi>());
  SetProgramFolder(KESTROW_BIN);
  OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
  gSettings = Settings();
  gSettings.ContourCellSize = 100;
}

void Draw(QImage& image) {
  image.fill(ToQColor(gSettings.ChartBackground));
  QtCanvas canvas(image);
  gphDrawAll(canvas, WIDTH, HEIGHT, PAGE_SCREEN);
}

std::size_t LevelCount(const Chart& c) {
  std::size_t n = 0;
  for (const DataPoint& p : c.DataPoints) n += p.idf == 2 ? 1 : 0;
  return n;
}

void BM_ContourPlotToDrawnPage(benchmark::State& state) {
  Start();
  auto p = QuadraticInFour();
  Study& s = p->Studies(1);
  QImage image(WIDTH, HEIGHT, QImage::Format_RGB32);
  for (auto _ : state) {
    gphStart();
    if (!SetupContourPlot(s, s.CONTOUR_KeyValues)) state.SkipWithError("no plot");
    Draw(image);
  }
  state.counters["points"] = static_cast<double>(gPage.Charts[0].DataPoints.size());
  state.counters["lines"] = static_cast<double>(LevelCount(gPage.Charts[0]));
}

// Twenty levels evenly across the surface's range, traced and drawn.
void BM_TwentyContourLevelsToDrawnPage(benchmark::State& state) {
  Start();
  auto p = QuadraticInFour();
  Study& s = p->Studies(1);
  Regress fit;
  fit.Init(s);
  fit.SetupFastConstants();
  const ContourSurface surface = PlotSurface(s, fit, 1, 2);
  const ContourGrid grid{100, 100, 200, 100, 200};
  float zMin = surface.At(100, 100), zMax = zMin;
  for (int a = 0; a <= 20; ++a)
    for (int b = 0; b <= 20; ++b) {
      float z = surface.At(100 + 5.0f * static_cast<float>(a), 100 + 5.0f * static_cast<float>(b));
      zMin = std::min(zMin, z), zMax = std::max(zMax, z);
    }
  std::vector<float> levels;
  for (int k = 1; k <= MAX_CONTOUR_LEVELS; ++k) levels.push_back(zMin + (zMax - zMin) * static_cast<float>(k) / 21);
  QImage image(WIDTH, HEIGHT, QImage::Format_RGB32);
  std::string complaint;
  for (auto _ : state) {
    gphStart();
    Chart& c = gphNewChart(CHT_CONTOUR);
    c.SetupContourScales(100, 200, 100, 200);
    if (!TraceContours(c, surface, grid, levels, 0, true, nullptr, "Yield", complaint)) state.SkipWithError(complaint.c_str());
    Draw(image);
  }
  state.counters["points"] = static_cast<double>(gPage.Charts[0].DataPoints.size());
  state.counters["lines"] = static_cast<double>(LevelCount(gPage.Charts[0]));
}

void BM_SurfaceRedrawnAtANewAngle(benchmark::State& state) {
  Start();
  auto p = QuadraticInFour();
  Study& s = p->Studies(1);
  s.REGRESS_RSM_iNetSize = 50;
  s.REGRESS_RSM_flags = 1 | 4;
  gphStart();
  if (!SetupRSM(s)) state.SkipWithError("no surface");
  QImage image(WIDTH, HEIGHT, QImage::Format_RGB32);
  int angle = 0;
  for (auto _ : state) {
    angle = (angle + 7) % 90;
    gPage.Charts[0].RSMsettings(static_cast<std::int16_t>(angle), 25, 50, 1 | 4);
    Draw(image);
  }
  state.counters["cells"] = 50.0 * 50;
}

BENCHMARK(BM_ContourPlotToDrawnPage)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(7)->ReportAggregatesOnly(true);
BENCHMARK(BM_TwentyContourLevelsToDrawnPage)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(7)->ReportAggregatesOnly(true);
BENCHMARK(BM_SurfaceRedrawnAtANewAngle)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(9)->ReportAggregatesOnly(true);

}  // namespace
}  // namespace kestrow

KESTROW_QT_BENCHMARK_MAIN()
