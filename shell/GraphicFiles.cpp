#include "shell/GraphicFiles.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>

#include "charts/ChartPage.h"
#include "charts/MetafileCanvas.h"
#include "core/AtomicFile.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "shell/Colours.h"
#include "shell/QtCanvas.h"

namespace kestrow {

namespace {

// The fixed page of the metafiles.
constexpr int METAFILE_WIDTH = 800, METAFILE_HEIGHT = 600;

std::string Extension(const std::string& path) { return LCase(GetFExt(path)); }

bool Write(const std::string& path, const QByteArray& bytes, std::string& error) {
  return WriteFileAtomically(path, bytes.constData(), static_cast<std::size_t>(bytes.size()), error);
}

}  // namespace

bool IsGraphicExtension(const std::string& extension) {
  for (const char* known : {"bmp", "jpg", "jpeg", "png", "svg", "pdf", "wmf", "emf"})
    if (LCase(extension) == known) return true;
  return false;
}

void GraphicSize(int screenWidth, int screenHeight, int& width, int& height) {
  static const int SIZES[4][2] = {{0, 0}, {640, 480}, {800, 600}, {1024, 768}};
  int size = gSettings.JPGSize >= 0 && gSettings.JPGSize <= 3 ? gSettings.JPGSize : 0;
  width = size == 0 ? screenWidth : SIZES[size][0];
  height = size == 0 ? screenHeight : SIZES[size][1];
  width = std::min(width, screenWidth);
  height = std::min(height, screenHeight);
}

bool SaveGraphic(ChartPage& page, const std::string& path, int width, int height, std::string& error) {
  std::string ext = Extension(path);
  if (!IsGraphicExtension(ext)) {
    error = "Invalid extension for graphics file";
    return false;
  }
  width = std::max(1, width);
  height = std::max(1, height);
  if (ext == "wmf" || ext == "emf") {
    std::unique_ptr<MetafileCanvas> canvas;
    if (ext == "wmf") canvas = std::make_unique<WmfCanvas>();
    else canvas = std::make_unique<EmfCanvas>();
    page.DrawAll(*canvas, METAFILE_WIDTH, METAFILE_HEIGHT, ext == "wmf" ? PAGE_WMF : PAGE_EMF);
    std::string bytes = canvas->Bytes();
    return WriteFileAtomically(path, bytes, error);
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (ext == "svg") {
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(QSize(width, height));
    svg.setViewBox(QRect(0, 0, width, height));
    svg.setTitle("Kestrow chart");
    {
      QtCanvas canvas(svg, width, height);
      page.DrawAll(canvas, width, height, PAGE_BITMAP);
    }
    return Write(path, bytes, error);
  }
  if (ext == "pdf") {
    QPdfWriter pdf(&buffer);
    pdf.setResolution(96);
    pdf.setPageSize(QPageSize(QSizeF(width * 72.0 / 96.0, height * 72.0 / 96.0), QPageSize::Point));
    pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
    pdf.setTitle("Kestrow chart");
    {
      QtCanvas canvas(pdf, width, height);
      page.DrawAll(canvas, width, height, PAGE_BITMAP);
    }
    return Write(path, bytes, error);
  }
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(ToQColor(gSettings.ChartBackground));
  {
    QtCanvas canvas(image);
    page.DrawAll(canvas, width, height, PAGE_BITMAP);
  }
  bool jpeg = ext == "jpg" || ext == "jpeg";
  QImageWriter writer(&buffer, jpeg ? "jpeg" : ext.c_str());
  if (jpeg) writer.setQuality(std::clamp(gSettings.JPGQuality, 0, 100));
  if (!writer.canWrite()) {
    error = jpeg ? "IntelJPEGLibrary: Failed to initialise library  (" + writer.errorString().toStdString() + ")"
                 : writer.errorString().toStdString();
    return false;
  }
  if (!writer.write(image)) {
    error = jpeg ? "IntelJPEGLibrary: Failed to save to JPG  (" + writer.errorString().toStdString() + ")"
                 : writer.errorString().toStdString();
    return false;
  }
  return Write(path, bytes, error);
}

}  // namespace kestrow
