// Every chart type drawn by the QPainter canvas, compared with pictures
// looked at and kept (tests/shell/golden): at most 1 percent of the pixels
// may differ noticeably, which a changed font rendering stays under and a
// moved axis, a lost fill or a missing series does not. With
// KESTROW_UPDATE_GOLDEN set the pictures are written anew instead.
#include <QImage>
#include <QtTest>

#include "../charts/ChartSamples.h"
#include "ShellTestSupport.h"
#include "charts/ChartPage.h"
#include "shell/Colours.h"
#include "shell/QtCanvas.h"

using namespace kestrow;

namespace {

QImage Render(const char* name) {
  ChartPage page;
  std::string error;
  if (!test::LoadSamplePage(KESTROW_CHART_DATA, name, page, error)) qFatal("%s", error.c_str());
  QImage image(800, 600, QImage::Format_RGB32);
  image.fill(ToQColor(gSettings.ChartBackground));
  QtCanvas canvas(image);
  page.DrawAll(canvas, 800, 600, PAGE_BITMAP);
  return image;
}

// The share of pixels whose colour moved by more than 64 in some channel.
double Differing(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return 1;
  long count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      if (std::abs(qRed(p) - qRed(q)) > 64 || std::abs(qGreen(p) - qGreen(q)) > 64 || std::abs(qBlue(p) - qBlue(q)) > 64)
        ++count;
    }
  return static_cast<double>(count) / (a.width() * a.height());
}

}  // namespace

class tst_ChartImages : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    test::FreshUi();
    gSettings.HeadersFlag = 0;  // no date in the pictures
  }

  void PagesLookAsTheyWereKept_data() {
    QTest::addColumn<QString>("name");
    for (const char* name : test::SAMPLE_PAGES) QTest::newRow(name) << QString(name);
  }
  void PagesLookAsTheyWereKept() {
    QFETCH(QString, name);
    QImage drawn = Render(name.toUtf8().constData());
    QString kept = QString(KESTROW_GOLDEN) + "/page_" + name + ".png";
    if (qEnvironmentVariableIsSet("KESTROW_UPDATE_GOLDEN")) {
      QVERIFY(drawn.save(kept));
      return;
    }
    QImage golden(kept);
    QVERIFY2(!golden.isNull(), qPrintable("no kept picture " + kept));
    double share = Differing(drawn, golden.convertToFormat(QImage::Format_RGB32));
    if (share > 0.01) drawn.save(QDir::temp().filePath("page_" + name + ".drawn.png"));
    QVERIFY2(share <= 0.01, qPrintable(QString("%1% of the pixels differ").arg(share * 100, 0, 'f', 2)));
  }

  // The test's own check: a lost contour fill is far beyond the tolerance.
  void ALostFillIsNoticed() {
    ChartPage page;
    std::string error;
    QVERIFY(test::LoadSamplePage(KESTROW_CHART_DATA, "p2", page, error));
    QImage with(800, 600, QImage::Format_RGB32), without(800, 600, QImage::Format_RGB32);
    for (QImage* image : {&with, &without}) {
      if (image == &without)
        for (Chart& c : page.Charts) c.bRainbow = false;
      image->fill(ToQColor(gSettings.ChartBackground));
      QtCanvas canvas(*image);
      page.DrawAll(canvas, 800, 600, PAGE_BITMAP);
    }
    QVERIFY(Differing(with, without) > 0.01);
  }
};

QTEST_MAIN(tst_ChartImages)
#include "tst_ChartImages.moc"
