// The ANOVA dialog with its pooling panel, and the dispatch of the analysis
// nodes: a set-up analysis shows at once, one without settings opens its
// dialog first, and the print log takes the report.
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>
#include <filesystem>
#include <fstream>

#include "ShellTestSupport.h"
#include "core/Globals.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"
#include "data/Statistics.h"
#include "shell/frmANOVA.h"
#include "shell/frmMain.h"
#include "shell/frmNonLin.h"

using namespace kestrow;

namespace {

QString T(const char* tag) { return QString::fromStdString(GetText(tag)); }

// Row of grdPool holding a contrast.
int PoolRow(frmANOVA& d, const QString& name) {
  for (int r = 0; r < d.grdPool->rowCount(); ++r)
    if (d.grdPool->item(r, 1)->text() == name) return r;
  return -1;
}

}  // namespace

class tst_frmANOVA : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(test::OpenEnglish()); }

  void init() {
    ui_ = test::FreshUi();
    QVERIFY(test::OpenSample("PlasmaEtch"));
    study_ = &gProblem->Studies(1);
  }

  // The totals follow the ticks; Cancel puts the pooling back.
  void thePoolingPanelKeepsLiveTotalsUntilCancel() {
    study_->iReps = 1;  // the first replicate only
    study_->SetDataArrayPreserve();
    gStats.Compute(*study_);
    frmANOVA d(*study_, gStats);
    QVERIFY(d.cmdPooling->isEnabled());
    QVERIFY(!d.optVar[1]->isEnabled());  // one replicate: no standard deviations
    QVERIFY(!d.fra1->isVisible());
    d.show();
    d.cmdPooling->click();
    QVERIFY(d.fra1->isVisible());
    QCOMPARE(d.grdPool->rowCount(), 7);
    int ab = PoolRow(d, "AB"), abc = PoolRow(d, "ABC");
    QVERIFY(ab >= 0 && abc >= 0);
    emit d.grdPool->cellClicked(ab, 1);
    emit d.grdPool->cellClicked(abc, 0);  // a click anywhere on the row
    QCOMPARE(d.lblDF->text(), QString("2"));
    QCOMPARE(d.lblPooling->text(), QString("AB, ABC"));
    QCOMPARE(d.grdPool->item(ab, 0)->checkState(), Qt::Checked);
    emit d.grdPool->cellClicked(ab, 1);
    emit d.grdPool->cellClicked(abc, 1);
    QCOMPARE(d.lblErrorSS->text(), QString("0"));
    d.cmdPooling->click();
    QVERIFY(!d.fra1->isVisible());
    emit d.grdPool->cellClicked(0, 1);
    QVERIFY(study_->Contrasts(1).bPooled);
    d.cmdCancel->click();
    QVERIFY(!study_->Contrasts(1).bPooled);
    QVERIFY(study_->ANOVA_sRVkey.empty());
  }

  void okRefusesABadAlphaAndStoresAGoodOne() {
    gStats.Compute(*study_);
    frmANOVA d(*study_, gStats);
    QVERIFY(!d.cmdPooling->isEnabled());  // replicated: the error is within runs
    d.txtAlpha->setText("1");
    d.cmdOK->click();
    QCOMPARE(QString::fromStdString(ui_->messages.back().text), T("ANOVAerr1"));
    QCOMPARE(d.result(), 0);
    d.txtAlpha->setText("0.05");
    d.cmdOK->click();
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(QString::fromStdString(study_->ANOVA_sRVkey), QString("v1"));
    QCOMPARE(study_->ANOVA_fAlpha, 0.05f);
  }

  // Without settings the node opens the dialog; on OK the report shows, and a
  // later click shows it at once.
  void theNodeOpensTheDialogFirstThenShowsTheReport() {
    frmMain main;
    Open(main);
    QTreeWidgetItem* node = main.Node("z1+2");
    QVERIFY(node);
    QVERIFY(!node->isDisabled());
    bool opened = false;
    QTimer::singleShot(0, [&] {
      auto* d = qobject_cast<frmANOVA*>(QApplication::activeModalWidget());
      QVERIFY(d);
      opened = true;
      d->cmdOK->click();
    });
    main.NodeClick("z1+2");
    QVERIFY(opened);
    QCOMPARE(QString::fromStdString(main.PaneName()), QString("ANOVA"));
    QVERIFY(gProblem->bChanged);
    const Grid& g = main.MainGrid();
    bool sawA = false;
    for (int r = 0; r < g.Rows(); ++r) sawA = sawA || g.Text(r, 0) == "A";
    QVERIFY(sawA);
    main.NodeClick("P");
    main.NodeClick("z1+2");  // set up now: no dialog
    QCOMPARE(QString::fromStdString(main.PaneName()), QString("ANOVA"));
  }

  void theReportGoesToThePrintLog() {
    namespace fs = std::filesystem;
    fs::path log = fs::temp_directory_path() / "kestrow-tst-anova-log.txt";
    fs::remove(log);
    frmMain main;
    Open(main);
    gSettings.PrintLog = log.string();
    study_->ANOVA_sRVkey = "v1";
    main.NodeClick("z1+2");
    main.Action("tbAddLog")->trigger();
    std::ifstream in(log);
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    QVERIFY(text.find("Study: " + study_->sName) != std::string::npos);
    QVERIFY(text.find(GetText("SdofANOVA")) != std::string::npos);
    QVERIFY(text.find("Contrast Source") != std::string::npos);  // the caption row, padded to its columns
    QVERIFY(ui_->messages.back().text.find(" lines written") != std::string::npos);
    fs::remove(log);
  }

  void anUnavailableAnalysisSaysWhyAndOpensNothing() {
    frmMain main;
    Open(main);
    for (int run = 1; run <= study_->iNumRuns; ++run)
      for (int rep = 1; rep <= study_->iReps; ++rep) study_->SetData(1, run, rep, MISSING_VALUE);
    main.NodeClick("z1+2");
    QCOMPARE(QString::fromStdString(ui_->messages.back().text),
             QString("At least one full replication is missing - cannot perform ANOVA"));
    QVERIFY(QApplication::activeModalWidget() == nullptr);
  }

  void theNonLinearityTestNeedsCentrePointsAndReplicates() {
    frmMain main;
    Open(main);
    main.NodeClick("s1");
    QVERIFY(!main.Action("mnuStudyNonlin")->isEnabled());
    study_->iDesFlag |= DES_CENTRE_POINTS;
    main.NodeClick("s1");
    QVERIFY(main.Action("mnuStudyNonlin")->isEnabled());
    // No centre runs in the sample: the test says it needs them.
    gStats.Compute(*study_);
    frmNonLin d(*study_, gStats);
    QCOMPARE(d.lblConclusion->text(), T("NLNerr1"));
  }

 private:
  // The main window on the sample; the window's load starts a new problem.
  void Open(frmMain& main) {
    main.Load();
    QVERIFY(main.OpenKSTFile(KESTROW_SAMPDATA "/PlasmaEtch.KSW"));
    study_ = &gProblem->Studies(1);
  }

  ScriptedUi* ui_ = nullptr;
  Study* study_ = nullptr;
};

QTEST_MAIN(tst_frmANOVA)
#include "tst_frmANOVA.moc"
