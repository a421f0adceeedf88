// The main window's chart commands: zoom, annotation labels and saving the
// page as a picture file.
#include <QGuiApplication>
#include <QInputDialog>
#include <QScreen>
#include <QStackedWidget>

#include "charts/ChartPage.h"
#include "core/Globals.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/Problem.h"
#include "core/Ui.h"
#include "shell/ChartPane.h"
#include "shell/GraphicFiles.h"
#include "shell/QtText.h"
#include "shell/frmMain.h"

namespace kestrow {

namespace {

// The formats of the save dialog, the first being the default.
const char* GRAPHIC_FILTER =
    "Bitmap (*.BMP)|*.BMP|JPEG (*.JPG)|*.JPG|Metafile (*.WMF)|*.WMF|Enhanced Metafile (*.EMF)|*.EMF|"
    "PNG (*.PNG)|*.PNG|SVG (*.SVG)|*.SVG|PDF (*.PDF)|*.PDF";

}  // namespace

bool frmMain::ChartsOnShow() const { return pane_->currentWidget() == picChart; }

void frmMain::ShowChartPage(const std::string& name) {
  pane_->setCurrentWidget(picChart);
  picChart->Redraw();
  paneName_ = name;
  UpdateMenus();
}

void frmMain::ToolsUnZoom() {
  if (!ChartsOnShow()) return;
  picChart->UnZoom();
  UpdateMenus();
}

void frmMain::ToolsEraseLabels() {
  if (!ChartsOnShow()) return;
  picChart->EraseLabels();
  UpdateMenus();
}

void frmMain::ToolsAddLabel() {
  if (!ChartsOnShow() || gPage.Charts.empty()) return;
  bool ok = false;
  QString text = QInputDialog::getText(this, Q(GetText("AddLabel")), Q(GetText("LabelText")), QLineEdit::Normal,
                                       QString(), &ok);
  if (!ok || text.trimmed().isEmpty()) return;
  picChart->AddLabel(text);
  UpdateMenus();
}

void frmMain::mnuFileSaveGraphic_Click() {
  if (!ChartsOnShow() || gPage.Charts.empty()) return;
  std::string folder = gProblem ? GetFPath(gProblem->sPathFileName) : std::string();
  if (folder.empty()) folder = gSettings.DataDir;
  std::string path = CurrentUi().SaveFileDialog(GetText("MNmsga"), folder, GRAPHIC_FILTER, std::string());
  if (!path.empty()) SaveGraphicFile(path);
}

bool frmMain::SaveGraphicFile(const std::string& path) {
  QScreen* screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
  QSize pixels = screen ? screen->size() * screen->devicePixelRatio() : QSize(1024, 768);
  int width = 0, height = 0;
  GraphicSize(pixels.width(), pixels.height(), width, height);
  std::string error;
  bool saved = SaveGraphic(gPage, path, width, height, error);
  // The file's drawing laid the page out at its own size.
  picChart->Redraw();
  if (!saved) ErrorBox(error);
  return saved;
}

}  // namespace kestrow
