// The ANOVA dialog with its pooling panel, and the dispatch of the analysis
// nodes: a set-up analysis shows at once, one without settings opens its
// dialog first, and the print log takes the report. The dialog's rules are
// tested on ANOVAForm; here their binding to the widgets.
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>
#include <fstream>

#include "ShellTestSupport.h"
#include "data/Statistics.h"
#include "shell/frmANOVA.h"
#include "shell/frmMain.h"
#include "shell/frmNonLin.h"

using namespace kestrow;
using test::T;

namespace {

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
    d.show();
    QVERIFY(!d.fra1->isVisible());
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
    QVERIFY(study_->Contrasts(ab + 1).bPooled);  // the rows are the contrasts in order
    d.cmdPooling->click();
    QVERIFY(!d.fra1->isVisible());
    gSettings.ConfirmCancel = true;
    d.cmdCancel->click();  // asks first, and No keeps the dialog with its ticks
    QCOMPARE(ui_->messages.back().kind, std::string("yesno"));
    QVERIFY(d.isVisible());
    QVERIFY(study_->Contrasts(ab + 1).bPooled);
    ui_->answers.push_back(Answer::Yes);
    d.cmdCancel->click();
    QVERIFY(!d.isVisible());
    QVERIFY(!study_->Contrasts(ab + 1).bPooled);
    QVERIFY(study_->ANOVA_sRVkey.empty());
  }

  // Cancel asks only after a change; OK with nothing changed leaves the
  // problem unchanged, and a new alpha changes it.
  void cancelAsksOnlyAfterAChangeAndOKMarksOnlyAChange() {
    gSettings.ConfirmCancel = true;
    study_->ANOVA_sRVkey = "v1";
    gStats.Compute(*study_);
    {
      frmANOVA d(*study_, gStats);
      d.show();
      d.cmdCancel->click();
      QVERIFY(ui_->messages.empty());
      QVERIFY(!d.isVisible());
    }
    {
      frmANOVA d(*study_, gStats);
      d.cmdOK->click();
      QCOMPARE(d.result(), int(QDialog::Accepted));
      QVERIFY(!d.Stored());
    }
    frmANOVA d(*study_, gStats);
    d.txtAlpha->setText("0.05");
    d.cmdOK->click();
    QVERIFY(d.Stored());
    QCOMPARE(study_->ANOVA_fAlpha, 0.05f);
  }

  void okRefusesABadAlphaAndStoresAGoodOne() {
    gStats.Compute(*study_);
    frmANOVA d(*study_, gStats);
    QVERIFY(!d.cmdPooling->isEnabled());  // replicated: the error is within runs
    d.txtAlpha->setText("1");
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), T("ANOVAerr1"));
    QCOMPARE(d.result(), 0);
    d.txtAlpha->setText("0.05");
    d.cmdOK->click();
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(study_->ANOVA_fAlpha, 0.05f);
  }

  // Without settings the node opens the dialog; on OK the report shows, a
  // later click shows it at once, and Add to Print Log takes it.
  void theNodeOpensTheDialogFirstThenShowsTheReport() {
    frmMain main;
    Open(main);
    QTreeWidgetItem* node = main.Node("z1+2");
    QVERIFY(node && !node->isDisabled());
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
    main.NodeClick("P");
    main.NodeClick("z1+2");  // set up now: no dialog
    QCOMPARE(QString::fromStdString(main.PaneName()), QString("ANOVA"));
    QTemporaryDir folder;
    gSettings.PrintLog = folder.filePath("log.txt").toStdString();
    main.Action("tbAddLog")->trigger();
    std::ifstream in(gSettings.PrintLog);
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    QVERIFY(text.find(GetText("SdofANOVA")) != std::string::npos);
    QVERIFY(text.find("Contrast Source") != std::string::npos);  // the caption row, padded to its columns
  }

  void anUnavailableAnalysisSaysWhyAndOpensNothing() {
    frmMain main;
    Open(main);
    for (int rep = 1; rep <= study_->iReps; ++rep) study_->SetData(1, 2, rep, MISSING_VALUE);
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
