// The regression's dialogs as a user meets them: the term grid's ticks kept
// hierarchical, Compute, the search opened from the dialog with its best
// model copied back, Stop pressed on the running search of a large model,
// the residuals' and scattergram's dialogs, and the tree's nodes.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTableWidget>
#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

#include "ShellTestSupport.h"
#include "charts/ChartPage.h"
#include "core/Factor.h"
#include "data/Statistics.h"
#include "designs/Builders.h"
#include "designs/Design.h"
#include "regression/Regress.h"
#include "shell/RegressionChartDialogs.h"
#include "shell/frmAPR.h"
#include "shell/frmCalculator.h"
#include "shell/frmMain.h"
#include "shell/frmRegress.h"

using namespace kestrow;
using test::T;
using test::WhenUp;

namespace {

// With KESTROW_SHOTS set, the widget as shown, for a person to look at.
void Shot(QWidget* w, const char* name) {
  if (const char* shots = std::getenv("KESTROW_SHOTS")) {
    w->show();
    QTest::qWait(50);
    w->grab().save(QString(shots) + "/" + name + ".png");
  }
}

// The scripted Ui, but with the window's events done while a search runs.
class EventfulUi : public ScriptedUi {
 public:
  void DoEvents() override { QApplication::processEvents(); }
};

// A full 2^6 of the problem's response, data that no small model fits:
// 21 terms of the interactions model, 2^21 subsets without the hierarchy.
Study& SixFactors() {
  std::vector<std::string> keys;
  for (int i = 0; i < 6; ++i) {
    Factor f;
    f.sKey = gProblem->GetNextNode("f");
    f.sName = "Factor " + f.sKey;
    f.sAbbr = std::string(1, static_cast<char>('A' + i));
    f.Levels.Add(Level{"10", "", 0});
    f.Levels.Add(Level{"20", "", 0});
    keys.push_back(f.sKey);
    gProblem->Factors.Add(std::move(f), keys.back());
  }
  Study s;
  s.sKey = "s" + std::to_string(gProblem->Studies.Count() + 1);
  s.sName = "Six factors";
  for (const std::string& k : keys) s.Factors.Add(Item{k});
  s.StudyRespVars.Add(StudyRespVar{"v1", 0, 0, 0});
  Study& study = *gProblem->AddStudy(std::move(s));
  GetFullyCrossed(study, Design{});
  study.iDesFlag = DES_FULLY_CROSSED | DES_TWO_LEVEL_NUMERIC;
  study.iReps = 1;
  study.SetDataArray();
  for (int run = 1; run <= study.iNumRuns; ++run) study.SetData(1, run, 1, static_cast<float>((run * 37) % 11 + run % 3));
  return study;
}

Study& Composite() { return gProblem->Studies(1); }

}  // namespace

class tst_Regression : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(test::OpenEnglish()); }
  void init() {
    ui_ = test::FreshUi();
    QVERIFY(test::OpenSample("CentralComposite"));
    gStats.Compute(Composite());
  }

  // Unticking a factor in the grid unticks its products; Compute fills the
  // labels; OK stores the model.
  void theTermGridComputeAndOK() {
    frmRegress d(Composite(), gStats);
    QCOMPARE(d.grdTerms->rowCount(), 6);
    QVERIFY(!(d.grdTerms->item(0, frmRegress::COL_TICK)->flags() & Qt::ItemIsEnabled));  // the constant stays
    d.grdTerms->item(1, frmRegress::COL_TICK)->setCheckState(Qt::Unchecked);  // Time
    QCOMPARE(d.grdTerms->item(3, frmRegress::COL_TICK)->checkState(), Qt::Unchecked);  // Time x Temp
    QCOMPARE(d.grdTerms->item(4, frmRegress::COL_TICK)->checkState(), Qt::Unchecked);  // Time x Time
    QCOMPARE(d.grdTerms->item(5, frmRegress::COL_TICK)->checkState(), Qt::Checked);
    d.cmdRegress->click();
    Shot(&d, "frmRegress");
    QVERIFY(!d.lblEquation->text().isEmpty());
    QVERIFY(!d.grdTerms->item(2, frmRegress::COL_COEFF)->text().isEmpty());
    QVERIFY(d.grdTerms->item(1, frmRegress::COL_COEFF)->text().isEmpty());
    d.cmdOK->click();
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(Composite().REGRESS_Rterms.Count(), 3);
    QVERIFY(d.Stored());  // the window marks the problem changed
  }

  // Search from the dialog, Start, Exit: the best row comes back ticked.
  void theSearchCopiesItsBestModelBack() {
    frmRegress d(Composite(), gStats);
    d.optModel[2]->setChecked(true);
    std::uint32_t mask = 0;
    WhenUp<frmAPR>([&mask](frmAPR* s) {
      QCOMPARE(s->lblModelType->text(), QString("Quadratic + Interactions"));
      s->cmdStart->click();
      QVERIFY(s->Form().BestRow() > 0);
      QCOMPARE(s->grdResults->model()->rowCount(), int(s->Form().Rows() - 1));
      QVERIFY(s->cmdPrint->isEnabled());
      Shot(s, "frmAPR");
      s->cmdExit->click();
      mask = s->CopyBackMask();
    });
    d.cmdSearch->click();
    QVERIFY(mask != 0);
    for (int r = 1; r < d.grdTerms->rowCount(); ++r)
      QCOMPARE(d.grdTerms->item(r, frmRegress::COL_TICK)->checkState() == Qt::Checked, bool(mask >> (r - 1) & 1));
    QVERIFY(!d.lblRsquared->text().isEmpty());
  }

  // Stop is the Start button pressed again while the window keeps going.
  void stopEndsARunningSearch() {
    auto* ui = new EventfulUi;
    InstallUi(std::unique_ptr<Ui>(ui));
    Study& s = SixFactors();
    std::vector<std::pair<std::string, std::string>> grid = {{"Constant", "0"}};
    for (int i = 1; i <= 6; ++i) grid.emplace_back(std::string(1, static_cast<char>('A' + i - 1)), std::to_string(i));
    for (int i = 1; i <= 6; ++i)
      for (int j = i + 1; j <= 6; ++j) grid.emplace_back("x", std::to_string(i) + "," + std::to_string(j));
    frmAPR d(s, "v1", REGRESS_CODED, grid, "Interactions");
    d.show();
    d.chkHierarchy->setChecked(false);
    QString captionWhileRunning;
    QTimer::singleShot(30, &d, [&d, &captionWhileRunning] {
      captionWhileRunning = d.cmdStart->text();
      QVERIFY(!d.chkHierarchy->isEnabled());
      d.cmdStart->click();
    });
    d.cmdStart->click();
    QCOMPARE(captionWhileRunning, T("Stop"));
    QVERIFY(!d.Form().Running());
    QVERIFY(!d.Form().Search().Finished());
    QCOMPARE(d.cmdStart->text(), T("Start"));
    QVERIFY(d.lblProgress->text().endsWith("before the search was stopped"));
    QVERIFY(d.Form().Rows() < (1 << 21));
    d.close();  // closing copies nothing back
    QCOMPARE(d.CopyBackMask(), 0u);
  }

  void theChartDialogs() {
    frmResiduals2 r(Composite(), gStats);
    QCOMPARE(r.grd1->count(), 5);
    for (int i = 0; i < r.grd1->count(); ++i) r.grd1->item(i)->setCheckState(Qt::Unchecked);
    QCOMPARE(test::ErrorAfter(*ui_, r.cmdOK), T("REGerr1"));
    r.grd1->item(0)->setCheckState(Qt::Checked);
    r.chkStudent->setChecked(true);
    r.cmdOK->click();
    QCOMPARE(r.result(), int(QDialog::Accepted));
    QCOMPARE(Composite().REGRESS_RES_sCharts, std::string("-3"));
    QVERIFY(Composite().REGRESS_iFlag & REGRESS_STUDENTISED);

    frmScattergram sc(Composite(), gStats);
    QCOMPARE(sc.cmbFactor->count(), 2);
    QVERIFY(sc.optDegree[1]->isChecked());  // the stored quadratic
    sc.cmbFactor->setCurrentIndex(1);
    sc.optDegree[2]->setChecked(true);
    sc.cmdOK->click();
    QCOMPARE(sc.result(), int(QDialog::Accepted));
    QCOMPARE(sc.Choice().factorKey, Composite().GetFactorKey(2));
    QCOMPARE(sc.Choice().degree, 3);
    gProblem->bChanged = false;
  }

  // Evaluate and Solve as typed; the Monte-Carlo search runs until Stop;
  // a bad restraint is selected with its message.
  void theCalculator() {
    auto* ui = new EventfulUi;
    InstallUi(std::unique_ptr<Ui>(ui));
    frmCalculator d(Composite());
    QCOMPARE(d.grdEval->rowCount(), 2);
    d.grdEval->item(0, frmCalculator::EVAL_VALUE)->setText("86.95");
    d.grdEval->item(1, frmCalculator::EVAL_VALUE)->setText("176.53");
    d.cmdEvaluate->click();
    QCOMPARE(d.lblValue->text(), QString("Yield = 80.21"));
    d.tabs->setCurrentIndex(1);
    d.txtTarget->setText("MAX");
    d.cmdSolve->click();
    QVERIFY(d.lblSolution->text().startsWith("Best value 80.21 at: Time = "));
    Shot(&d, "frmCalculator");

    d.cmbAlgorithm->setCurrentIndex(1);
    bool stopEnabled = false, solveEnabled = true;
    QTimer::singleShot(100, &d, [&] {
      stopEnabled = d.cmdStop->isEnabled();
      solveEnabled = d.cmdSolve->isEnabled();
      d.cmdStop->click();
    });
    d.cmdSolve->click();
    QVERIFY(stopEnabled);
    QVERIFY(!solveEnabled);
    QVERIFY(d.cmdSolve->isEnabled());
    QVERIFY(d.lblSolution->text().startsWith("Best value"));
    QVERIFY(d.Form().Evaluations() > 1000);

    static_cast<QComboBox*>(d.grdRestraints->cellWidget(2, frmCalculator::RES_FACTOR))->setCurrentIndex(1);
    d.grdRestraints->item(2, frmCalculator::RES_VALUE)->setText("200");
    d.cmbAlgorithm->setCurrentIndex(0);
    d.cmdSolve->click();
    QCOMPARE(QString::fromStdString(ui->messages.back().text), T("CALerr4"));
    QCOMPARE(d.grdRestraints->currentRow(), 2);
    QVERIFY(d.lblSolution->text().isEmpty());
  }

  // The tree shows the report and the residual charts of the stored model.
  void theTreeShowsTheRegression() {
    frmMain w;
    w.Load();
    QVERIFY(w.OpenKSTFile(KESTROW_SAMPDATA "/CentralComposite.KSW"));
    w.NodeClick("z1+7");
    QVERIFY(!w.ChartsOnShow());
    WhenUp<frmCalculator>([](frmCalculator* c) { c->cmdOK->click(); });
    w.NodeClick("z1+14");  // a dialog, and nothing in the pane
    QVERIFY(!w.ChartsOnShow());
    w.NodeClick("z1+9");
    QVERIFY(w.ChartsOnShow());
    QCOMPARE(gPage.Charts.size(), std::size_t(2));
    QCOMPARE(gPage.Charts[0].chtType, std::int16_t(CHT_REG_NPP));
    w.resize(1200, 800);
    Shot(&w, "regression-residuals");
    gProblem->bChanged = false;
  }

 private:
  ScriptedUi* ui_ = nullptr;
};

QTEST_MAIN(tst_Regression)
#include "tst_Regression.moc"
