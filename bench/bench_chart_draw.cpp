// A page of six charts of 500 points each, as the chart pane redraws it on
// every resize (QPainter on a 1600 x 1000 raster image), and as Save Graphic
// writes it to SVG, PDF and EMF files; and the residuals and the run chart of
// a study of 500 runs in 30 replicates (15,000 observations) from the click
// to the page drawn on the screen's image. Each is run in repetitions and
// reported by its median.
#include <benchmark/benchmark.h>

#include "QtBenchmarkMain.h"

#include <QGuiApplication>
#include <QImage>
#include <filesystem>
#include <string>

#include "LargeStudy.h"
#include "analyses/RunChart.h"
#include "charts/ChartSamples.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"
#include "data/Statistics.h"
#include "workbench/Availability.h"
#include "workbench/ShowAnalysis.h"
#include "shell/Colours.h"
#include "shell/GraphicFiles.h"
#include "shell/QtCanvas.h"

namespace kestrow {
namespace {

constexpr int POINTS = 500;

void BM_RedrawOnScreenImage(benchmark::State& state) {
  gSettings = Settings();
  ChartPage page;
  test::FillBusyPage(page, POINTS);
  QImage image(1600, 1000, QImage::Format_RGB32);
  for (auto _ : state) {
    image.fill(ToQColor(gSettings.ChartBackground));
    QtCanvas canvas(image);
    page.DrawAll(canvas, 1600, 1000, PAGE_SCREEN);
  }
  benchmark::DoNotOptimize(image.constBits());
}

void SaveAs(benchmark::State& state, const char* extension) {
  gSettings = Settings();
  ChartPage page;
  test::FillBusyPage(page, POINTS);
  std::string path = (std::filesystem::temp_directory_path() / (std::string("kestrow-bench.") + extension)).string();
  std::string error;
  for (auto _ : state)
    if (!SaveGraphic(page, path, 1600, 1000, error)) state.SkipWithError(error.c_str());
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
  std::filesystem::remove(path);
}

void BM_SaveSvg(benchmark::State& state) { SaveAs(state, "svg"); }
void BM_SavePdf(benchmark::State& state) { SaveAs(state, "pdf"); }
void BM_SaveEmf(benchmark::State& state) { SaveAs(state, "emf"); }

// Click to drawn page: the statistics, the analysis filling the page, the
// page drawn at 1600 x 1000.
void ClickToDrawnPage(benchmark::State& state, int code, const std::string& charts) {
  InstallUi(std::make_unique<ScriptedUi>());
  SetProgramFolder(KESTROW_BIN);
  OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
  gSettings = Settings();
  auto p = LargeStudy(500, 30, 2);
  Study& s = p->Studies(1);
  s.RESIDUAL_sRVkey = "v1";
  s.RESIDUAL_sCharts = charts;
  s.RUN_flags = RUN_SHOW_RANGE;
  Statistics stats;
  Grid grid;
  QImage image(1600, 1000, QImage::Format_RGB32);
  std::size_t points = 0;
  for (auto _ : state) {
    stats.Compute(s);
    gphStart();
    if (!DrawAnalysis(code, s, stats, grid)) state.SkipWithError("the analysis stopped");
    image.fill(ToQColor(gSettings.ChartBackground));
    QtCanvas canvas(image);
    gphDrawAll(canvas, 1600, 1000, PAGE_SCREEN);
  }
  for (const Chart& c : gPage.Charts) points += c.DataPoints.size();
  state.counters["points"] = static_cast<double>(points);
}

void BM_ResidualsToDrawnPage(benchmark::State& state) { ClickToDrawnPage(state, ANALYSIS_RESIDUALS, "-3,-2,-1,1,2,3"); }
void BM_RunChartToDrawnPage(benchmark::State& state) { ClickToDrawnPage(state, ANALYSIS_RUNCHART, ""); }

BENCHMARK(BM_ResidualsToDrawnPage)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_RunChartToDrawnPage)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_RedrawOnScreenImage)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(9)->ReportAggregatesOnly(true);
BENCHMARK(BM_SaveSvg)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_SavePdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_SaveEmf)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);

}  // namespace
}  // namespace kestrow

KESTROW_QT_BENCHMARK_MAIN()
