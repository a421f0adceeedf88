// The contour and surface dialogs as a user meets them: the sample picture
// following the boxes, the filter refusal, the key column of the series
// that takes one tick, the surface's preview following its sliders, Stop in
// the progress window of a long tracing, and the tree's nodes showing both
// pictures of the central composite's stored model.
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>

#include "ShellTestSupport.h"
#include "charts/ChartPage.h"
#include "core/Settings.h"
#include "data/Statistics.h"
#include "regression/ContourPlot.h"
#include "regression/Regress.h"
#include "shell/frmConProg.h"
#include "shell/frmContour2.h"
#include "shell/frmMain.h"
#include "shell/frmMultiCon.h"
#include "shell/frmRSM.h"

using namespace kestrow;
using test::T;

namespace {

// The scripted Ui, but with the window's events done while tracing.
class EventfulUi : public ScriptedUi {
 public:
  void DoEvents() override { QApplication::processEvents(); }
};

Study& Composite() { return gProblem->Studies(1); }

// With KESTROW_SHOTS set, the widget as shown, for a person to look at.
void Shot(QWidget* w, const char* name) {
  if (const char* shots = std::getenv("KESTROW_SHOTS")) {
    w->show();
    QTest::qWait(50);
    w->grab().save(QString(shots) + "/" + name + ".png");
  }
}

// The composite's model with a third factor held: Time x Temp x a catalyst
// load that enters linearly.
void ThirdFactor() {
  QVERIFY(EnsureCoefficients(Composite()));  // the two-factor fit first: the runs know no third factor
  Factor f;
  f.sKey = gProblem->GetNextNode("f");
  f.sName = f.sAbbr = "Load";
  f.Levels.Add(Level{"1", "", 0});
  f.Levels.Add(Level{"3", "", 0});
  const std::string key = f.sKey;
  gProblem->Factors.Add(std::move(f), key);
  Composite().Factors.Add(Item{key});
  Rterm r;
  InitRterm(r);
  r.sTerm = "3";
  r.fBeta = 0.5f;
  r.fValue = FREE_AXIS;
  Composite().REGRESS_Rterms.Add(r);
}

}  // namespace

class tst_Surfaces : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(test::OpenEnglish()); }
  void init() {
    ui_ = test::FreshUi();
    QVERIFY(test::OpenSample("CentralComposite"));
    gStats.Compute(Composite());
    gphStart();
  }

  void theContourDialogShowsItsLookAndWantsAFilter() {
    Composite().CONTOUR_sFilter = "";
    frmContour2 d(Composite(), gStats);
    QCOMPARE(d.windowTitle(), QString("Contour plot: Yield"));
    QCOMPARE(d.img1->toolTip(), QString("conFilled"));
    d.chkTgtContour->setChecked(true);
    d.chkRainbow->setChecked(false);
    QCOMPARE(d.img1->toolTip(), QString("conEmptyTgt"));
    QVERIFY(!d.img1->pixmap().isNull());
    Shot(&d, "frmContour2");
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), T("CONerr1"));
    QCOMPARE(Composite().CONTOUR_flags, std::int16_t(1));
    gProblem->bChanged = false;
  }

  void theSeriesDialogTakesOneKeyAndTwoPlottedFactors() {
    ThirdFactor();
    frmMultiCon d(Composite(), gStats);
    QCOMPARE(d.grdFactors->rowCount(), 3);
    d.grdFactors->item(0, frmMultiCon::COL_KEY)->setCheckState(Qt::Checked);
    d.grdFactors->item(2, frmMultiCon::COL_KEY)->setCheckState(Qt::Checked);
    QCOMPARE(d.grdFactors->item(0, frmMultiCon::COL_KEY)->checkState(), Qt::Unchecked);
    for (int r = 0; r < 3; ++r) d.grdFactors->item(r, frmMultiCon::COL_PLOT)->setCheckState(Qt::Unchecked);
    d.grdFactors->item(0, frmMultiCon::COL_PLOT)->setCheckState(Qt::Checked);
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), T("MCONerr2"));
    Shot(&d, "frmMultiCon");
    d.grdFactors->item(1, frmMultiCon::COL_PLOT)->setCheckState(Qt::Checked);
    d.grdFactors->item(2, frmMultiCon::COL_VALUE)->setText("1");
    d.grdFactors->item(2, frmMultiCon::COL_VALUE + 1)->setText("3");
    d.cmdOK->click();
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(Composite().CONTOUR_KeyValues, std::string("Load = 1|1|Load = 3|3"));
    QVERIFY(SetupContourPlot(Composite(), Composite().CONTOUR_KeyValues));
    QCOMPARE(gPage.Charts.size(), std::size_t(2));
    gProblem->bChanged = false;
  }

  void theSurfacePreviewFollowsTheSliders() {
    frmRSM d(Composite(), gStats);
    QVERIFY(!d.grdSelFac->isVisibleTo(&d));  // two factors: nothing to choose
    const QImage before = d.pic1->pixmap().toImage();
    d.sldAlpha->setValue(70);
    QVERIFY(d.pic1->pixmap().toImage() != before);
    d.chkRainbow->setChecked(true);
    Shot(&d, "frmRSM");
    d.cmdOK->click();
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(Composite().REGRESS_RSM_iAlpha, std::int16_t(70));
    QCOMPARE(Composite().REGRESS_RSM_flags, std::int16_t(3 | 4));
    gProblem->bChanged = false;
  }

  // A fine grid takes long enough to be stopped from the progress window,
  // which tells the level it traces.
  void stopEndsALongTracing() {
    auto* ui = new EventfulUi;
    InstallUi(std::unique_ptr<Ui>(ui));
    gSettings.ContourProgress = true;
    gSettings.ContourCellSize = 3000;
    frmConProg progress;
    ConProgScope scope(progress);
    QString shown;
    QTimer::singleShot(50, &progress, [&] {
      shown = progress.lblMsg->text();
      QVERIFY(progress.isVisible());
      progress.cmdStop->click();
    });
    QElapsedTimer clock;
    clock.start();
    QVERIFY(SetupContourPlot(Composite(), ""));
    QVERIFY(shown.startsWith("Tracing contour Yield = "));
    QVERIFY(!progress.isVisible());
    int lines = 0;
    for (const DataPoint& p : gPage.Charts[0].DataPoints) lines += p.idf == 2 ? 1 : 0;
    QVERIFY(lines < 12);  // the twelve levels were not all traced
    QVERIFY(clock.elapsed() < 20000);
    gSettings = Settings();
  }

  // Both nodes show their pictures at once: the file marks the model's two
  // factors free.
  void theTreeShowsTheContourPlotAndTheSurface() {
    frmMain w;
    w.Load();
    QVERIFY(w.OpenKSTFile(KESTROW_SAMPDATA "/CentralComposite.KSW"));
    w.NodeClick("z1+10");
    QVERIFY(w.ChartsOnShow());
    QCOMPARE(gPage.Charts.size(), std::size_t(1));
    QCOMPARE(gPage.Charts[0].chtType, std::int16_t(CHT_CONTOUR));
    w.NodeClick("z1+11");
    QCOMPARE(gPage.Charts.size(), std::size_t(1));
    QCOMPARE(gPage.Charts[0].chtType, std::int16_t(CHT_SURFACE));
    QVERIFY(ui_->messages.empty());
    gProblem->bChanged = false;
  }

 private:
  ScriptedUi* ui_ = nullptr;
};

QTEST_MAIN(tst_Surfaces)
#include "tst_Surfaces.moc"
