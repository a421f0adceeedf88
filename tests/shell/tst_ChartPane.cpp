// The chart pane as a user meets it: the text about a point beside the
// pointer, zoom by double click and back, a box dragged across a probability
// plot fitting its line, labels made by the mouse and moved, and a page
// drawn whole at the pane's size.
#include <QLabel>
#include <QMouseEvent>
#include <QtTest>

#include "ShellTestSupport.h"
#include "charts/ChartPage.h"
#include "shell/ChartPane.h"

using namespace kestrow;

namespace {

// A page of three charts (and the filler the layout adds): a normal
// probability plot of twelve effects, an effects plot and a scattergram.
void FillPage(ChartPage& page) {
  page.Start();
  Chart& npp = page.NewChart(CHT_NPP);
  npp.sTitle = "Normal plot";
  const float effects[] = {-3.1f, -1.2f, -0.8f, -0.5f, -0.2f, 0.1f, 0.3f, 0.4f, 0.9f, 1.1f, 2.6f, 7.5f};
  for (int i = 0; i < 12; ++i) {
    DataPoint p;
    p.sId2 = std::string(1, static_cast<char>('A' + i));
    p.fX = effects[i];
    p.iDotType = 1;
    npp.AddData(p);
  }
  npp.RankForNPP();
  Chart& fx = page.NewChart(CHT_EFFECT);
  fx.sTitle = "Effect of A";
  fx.xAxisCount = 3;
  for (int i = 1; i <= 2; ++i) {
    DataPoint p;
    p.sId = i == 1 ? "Low" : "High";
    p.idf = 1;
    p.fX = static_cast<float>(i);
    p.fY = 10.0f * static_cast<float>(i);
    p.iDotType = 1;
    p.bJoined = i > 1;
    fx.AddData(p);
  }
  Chart& sc = page.NewChart(CHT_SCATTER);
  sc.sTitle = "Scattergram";
  for (int i = 0; i < 20; ++i) {
    DataPoint p;
    p.fX = static_cast<float>(i);
    p.fY = static_cast<float>(i * i % 7);
    p.iDotType = 1;
    sc.AddData(p);
  }
}

// The widget position of a page pixel.
QPoint Widget(const ChartPane& pane, int x, int y) {
  qreal r = pane.devicePixelRatioF();
  return QPoint(static_cast<int>(std::ceil(x / r)), static_cast<int>(std::ceil(y / r)));
}

void Move(QWidget* w, QPoint at, Qt::MouseButtons buttons = Qt::NoButton,
          Qt::KeyboardModifiers mods = Qt::NoModifier) {
  QMouseEvent e(QEvent::MouseMove, at, w->mapToGlobal(at), Qt::NoButton, buttons, mods);
  QApplication::sendEvent(w, &e);
}

void Send(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButton button,
          Qt::KeyboardModifiers mods = Qt::NoModifier) {
  Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
  QMouseEvent e(type, at, w->mapToGlobal(at), button, held, mods);
  QApplication::sendEvent(w, &e);
}

}  // namespace

class tst_ChartPane : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    test::FreshUi();
    FillPage(page);
    pane = std::make_unique<ChartPane>(page);
    pane->resize(800, 600);
    pane->show();
    QVERIFY(QTest::qWaitForWindowExposed(pane.get()));
    pane->repaint();
  }
  void cleanup() { pane.reset(); }

  void DrawsThePageWholeAtThePanesSize() {
    qreal r = pane->devicePixelRatioF();
    QCOMPARE(pane->Picture().width(), qRound(800 * r));
    QCOMPARE(page.Charts.size(), std::size_t(4));  // three and a filler
    QCOMPARE(page.cellWidth, qRound(400 * r));
    pane->resize(500, 300);
    pane->repaint();
    QCOMPARE(pane->Picture().width(), qRound(500 * r));
    QCOMPARE(page.cellHeight, qRound(150 * r));
  }

  void ShowsTheClickTextBesideThePointer() {
    const DataPoint& p = page.Charts[2].DataPoints[5];
    std::string expected = page.Click(p.iWhereX, p.iWhereY, false);
    QVERIFY(!expected.empty());
    QPoint at = Widget(*pane, p.iWhereX, p.iWhereY);
    Move(pane.get(), at);
    // With KESTROW_SHOTS set to a folder, the pane is saved there to be looked at.
    if (qEnvironmentVariableIsSet("KESTROW_SHOTS"))
      pane->grab().save(qEnvironmentVariable("KESTROW_SHOTS") + "/ChartPane.png");
    QVERIFY(pane->lblMsg->isVisible());
    QCOMPARE(pane->lblMsg->text().toStdString(), expected);
    QVERIFY(pane->rect().contains(pane->lblMsg->geometry()));
    // Far from any point, and with the option off, the text goes.
    Move(pane.get(), QPoint(2, 2));
    QVERIFY(!pane->lblMsg->isVisible());
    pane->SetStatusOption(false);
    Move(pane.get(), at);
    QVERIFY(!pane->lblMsg->isVisible());
  }

  void ZoomsOneChartByDoubleClickAndBack() {
    const Chart& fx = page.Charts[1];
    QPoint inside = Widget(*pane, fx.ox + 50, fx.oy + 50);
    QSignalSpy zoomed(pane.get(), &ChartPane::Zoomed);
    Send(pane.get(), QEvent::MouseButtonDblClick, inside, Qt::LeftButton);
    QCOMPARE(zoomed.count(), 1);
    QVERIFY(page.bZoomed);
    for (std::size_t i = 0; i < page.Charts.size(); ++i) QCOMPARE(page.Charts[i].bVisible, i == 1);
    pane->repaint();
    QCOMPARE(page.cellWidth, pane->Picture().width());  // the one chart fills the page
    pane->UnZoom();
    QVERIFY(!page.bZoomed);
    for (const Chart& c : page.Charts) QVERIFY(c.bVisible);
  }

  void ABoxOnTheProbabilityPlotFitsALine() {
    const Chart& npp = page.Charts[0];
    QVERIFY(pane->Events().Mode() & PictureEvents::MODE_DRAG);
    // A box round the nine middle effects, leaving out -3.1, 2.6 and 7.5.
    int left = npp.XToPixel(-1.5f), right = npp.XToPixel(1.5f);
    QPoint a = Widget(*pane, left, npp.PlotTop + 1), b = Widget(*pane, right, npp.PlotBottom - 1);
    Send(pane.get(), QEvent::MouseButtonPress, a, Qt::LeftButton);
    Move(pane.get(), b, Qt::LeftButton);
    QVERIFY(pane->Events().BoxUnderWay());
    Send(pane.get(), QEvent::MouseButtonRelease, b, Qt::LeftButton);
    QVERIFY(!pane->Events().BoxUnderWay());
    QVERIFY(npp.fLOBFAtTop != MISSING_VALUE);
    QVERIFY(npp.fLOBFAtTop > npp.fLOBFAtBottom);
    int inside = 0;
    for (const DataPoint& p : npp.DataPoints) inside += p.iDotType == 1 ? 1 : 0;
    QCOMPARE(inside, 9);
  }

  void LabelsAreMadeByTheMouseAndMoved() {
    const DataPoint& p = page.Charts[2].DataPoints[3];
    QPoint at = Widget(*pane, p.iWhereX, p.iWhereY);
    Move(pane.get(), at, Qt::NoButton, Qt::ControlModifier);
    QString text = pane->lblMsg->text();
    QVERIFY(!text.isEmpty());
    Send(pane.get(), QEvent::MouseButtonRelease, at, Qt::RightButton, Qt::ControlModifier);
    QCOMPARE(page.Labels.size(), std::size_t(1));
    QCOMPARE(QString::fromStdString(page.Labels[0].text), text);
    pane->repaint();
    // Grabbed at its box and dropped 100 pixels to the left.
    const AnnotationLabel& l = page.Labels[0];
    QPoint grab = Widget(*pane, (l.left + l.right) / 2, (l.top + l.bottom) / 2);
    double before = l.xfrac;
    Send(pane.get(), QEvent::MouseButtonPress, grab, Qt::LeftButton);
    Move(pane.get(), grab - QPoint(50, 0), Qt::LeftButton);
    Send(pane.get(), QEvent::MouseButtonRelease, grab - QPoint(100, 0), Qt::LeftButton);
    QVERIFY(std::abs((before - page.Labels[0].xfrac) - 100.0 / 800) < 0.01);
    pane->EraseLabels();
    QVERIFY(page.Labels.empty());
  }

 private:
  ChartPage page;
  std::unique_ptr<ChartPane> pane;
};

QTEST_MAIN(tst_ChartPane)
#include "tst_ChartPane.moc"
