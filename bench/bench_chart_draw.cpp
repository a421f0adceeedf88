// A page of six charts of 500 points each, as the chart pane redraws it on
// every resize (QPainter on a 1600 x 1000 raster image), and as Save Graphic
// writes it to SVG, PDF and EMF files. Each is run in repetitions and
// reported by its median.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <filesystem>
#include <string>

#include "charts/ChartSamples.h"
#include "core/Settings.h"
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

BENCHMARK(BM_RedrawOnScreenImage)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(9)->ReportAggregatesOnly(true);
BENCHMARK(BM_SaveSvg)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_SavePdf)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_SaveEmf)->Unit(benchmark::kMillisecond)->UseRealTime()->Repetitions(5)->ReportAggregatesOnly(true);

}  // namespace
}  // namespace kestrow

// Fonts and painting need a GUI application; the offscreen platform serves
// without a display.
int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
