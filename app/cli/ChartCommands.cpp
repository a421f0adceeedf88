// Chart pages drawn into picture files: the draw command, and the images of
// chart analyses.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>

#include <sys/stat.h>
#include <unistd.h>

#include "app/cli/Cli.h"
#include "app/cli/Commands.h"
#include "charts/ChartJson.h"
#include "charts/ChartPage.h"
#include "core/Paths.h"
#include "core/Text.h"

#ifdef KESTROW_CLI_IMAGES
#include <QGuiApplication>

#include "shell/GraphicFiles.h"
#include "shell/QtCanvas.h"
#else
#include "charts/RecordingCanvas.h"
#endif

namespace kestrow::cli {

namespace {

// The largest picture side, in pixels.
constexpr int MAX_SIDE = 10000;

}  // namespace

bool ParseSize(const std::string& text, int& width, int& height) {
  std::size_t x = text.find_first_of("xX");
  if (x == std::string::npos) return false;
  return ParseWhole(text.substr(0, x), 1, MAX_SIDE, width) && ParseWhole(text.substr(x + 1), 1, MAX_SIDE, height);
}

bool CheckImagePath(const std::string& path, std::string& complaint) {
#ifdef KESTROW_CLI_IMAGES
  if (IsGraphicExtension(GetFExt(path))) return true;
  complaint = "the picture's extension is one of png, bmp, jpg, svg, pdf, wmf, emf: " + path;
#else
  (void)path;
  complaint = "this kestrow-cli was built without the workbench and draws no pictures";
#endif
  return false;
}

namespace {

#ifdef KESTROW_CLI_IMAGES
// Fonts and painting need a GUI application; without a display, the
// offscreen platform serves.
void StartPainting() {
  static int argc = 1;
  static char name[] = "kestrow-cli";
  static char* argv[] = {name, nullptr};
  if (!QGuiApplication::instance()) {
    if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // Qt wants a private runtime folder and says so on stderr when there is none.
    if (!std::getenv("XDG_RUNTIME_DIR")) {
      std::string runtime = "/tmp/kestrow-runtime-" + std::to_string(getuid());
      if (mkdir(runtime.c_str(), 0700) == 0 || errno == EEXIST) setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
    }
    new QGuiApplication(argc, argv);
  }
}
#endif

}  // namespace

int PrintChartList(ChartPage& page, const std::string& image, int width, int height) {
  if (!image.empty()) {
    if (int code = WriteImage(page, image, width, height); code != OK) return code;
  } else {
    // Laid out on an image of the page's size, so that the positions are
    // those a picture of that size would have.
#ifdef KESTROW_CLI_IMAGES
    StartPainting();
    QImage picture(width, height, QImage::Format_RGB32);
    QtCanvas canvas(picture);
#else
    RecordingCanvas canvas;
#endif
    page.DrawAll(canvas, width, height, PAGE_BITMAP);
  }
  std::cout << ChartsToJson(page);
  return OK;
}

int WriteImage(ChartPage& page, const std::string& path, int width, int height) {
#ifdef KESTROW_CLI_IMAGES
  StartPainting();
  std::string error;
  if (!SaveGraphic(page, path, width, height, error)) return Failed(error + ": " + path);
  return OK;
#else
  (void)page, (void)path, (void)width, (void)height;
  return Failed("this kestrow-cli was built without the workbench and draws no pictures");
#endif
}

int Draw(const Words& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {"--image", "--size"}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 1 || !a.Has("--image")) return Usage("draw takes a chart list and --image OUT.ext");
  int width = 800, height = 600;
  if (a.Has("--size") && !ParseSize(a.Option("--size"), width, height))
    return Usage("--size takes WxH, each from 1 to 10000");
  if (!CheckImagePath(a.Option("--image"), complaint)) return Usage(complaint);
  std::string text, error;
  if (!ReadJsonFile(a.positional[0], text, error)) return Failed(error);
  ChartPage page;
  if (!ChartsFromJson(text, page, error)) return Failed(a.positional[0] + ": " + error);
  return PrintChartList(page, a.Option("--image"), width, height);
}

}  // namespace kestrow::cli
