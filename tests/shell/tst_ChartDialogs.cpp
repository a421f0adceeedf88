// The dialogs of the charted analyses as a user meets them: the check list's
// ticks in the order they are made and its refusal that keeps it open, the
// widgets each dialog enables, its refusals as message boxes, and the main
// window opening a dialog the first time an analysis is clicked and its
// charts afterwards.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>
#include <QtTest>

#include "ShellTestSupport.h"
#include "charts/ChartPage.h"
#include "core/CheckList.h"
#include "data/Statistics.h"
#include "shell/ChartPane.h"
#include "shell/ChartChoiceDialogs.h"
#include "shell/frmANOM.h"
#include "shell/frmFXplot.h"
#include "shell/frmList.h"
#include "shell/frmMChart.h"
#include "shell/frmMMP.h"
#include "shell/frmMain.h"
#include "shell/frmPairwise.h"
#include "shell/frmResponse.h"

using namespace kestrow;
using test::T;
using test::WhenUp;

namespace {

Study& Chemical() { return gProblem->Studies(1); }

}  // namespace

class tst_ChartDialogs : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(test::OpenEnglish()); }
  void init() {
    ui_ = test::FreshUi();
    QVERIFY(test::OpenSample("ChemicalYield"));
    gStats.Compute(Chemical());
  }

  // Boxes ticked second and first come back in that order; no tick is
  // refused with the list's own complaint, and the list stays.
  void theListKeepsTheOrderOfTicksAndStaysOnARefusal() {
    CheckList list;
    list.Init();
    list.Add("One", "1", false);
    list.Add("Two", "2", false);
    list.check = [](const std::vector<bool>& t) { return t[0] || t[1] ? std::string() : std::string("none"); };
    frmList form(list);
    form.cmdOK_Click();
    QCOMPARE(ui_->messages.back().text, std::string("none"));
    QVERIFY(form.result() != QDialog::Accepted);
    form.chkItem[1]->setChecked(true);
    form.chkItem[0]->setChecked(true);
    form.cmdOK_Click();
    QCOMPARE(form.result(), int(QDialog::Accepted));
    QCOMPARE(list.OrderOfChoice(), (std::vector<int>{1, 0}));
  }

  void analysisOfMeans() {
    frmANOM d(Chemical(), gStats);
    QVERIFY(d.chkExclude->isEnabled());
    QVERIFY(!d.cmbSG->isEnabled());
    d.optSG[1]->setChecked(true);
    QVERIFY(d.cmbSG->isEnabled());
    QCOMPARE(d.cmbSG->count(), 2);
    ui_->checkListAnswers.push_back({"f1"});
    d.cmdCharts->click();
    QCOMPARE(d.lblCharts->text(), QString::fromStdString(SubstituteCopy(GetText("ANOMmsg4"), "Reactant concentration")));
    d.cmbAlpha->setCurrentText("0.3");
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), T("ANOMerr5"));
    d.cmbAlpha->setCurrentText("0.01");
    d.cmdOK->click();
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(Chemical().ANOM_sCharts, std::string("f1"));
    QCOMPARE(Chemical().ANOM_iSubgrouping, std::int16_t(1));
    QCOMPARE(Chemical().ANOM_fAlpha, 0.01f);
  }

  void pairwiseRefusesDuncanAtTenPercent() {
    frmPairwise d(Chemical(), gStats);
    d.optAlgorithm[1]->setChecked(true);
    d.cmbAlpha->setCurrentText("0.10");
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), T("FXerr2"));
    d.cmbAlpha->setCurrentIndex(1);
    d.cmdOK->click();
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(Chemical().PAIRWISE_iAlgorithm, std::int16_t(1));
  }

  // Flip only with two factors; the labels follow the choice.
  void effectsPlotFlipsItsFactors() {
    frmFXplot d(Chemical(), gStats);
    QCOMPARE(d.lblFactors->text(), QString("Reactant concentration, Catalyst"));
    QVERIFY(d.cmdFlip->isEnabled());
    d.cmdFlip->click();
    QCOMPARE(d.lblFactors->text(), QString("Catalyst, Reactant concentration"));
    ui_->checkListAnswers.push_back({"f2"});
    d.cmdBrowse->click();
    QVERIFY(!d.cmdFlip->isEnabled());
    d.cmdOK->click();
    QCOMPARE(Chemical().FXPLOT_sF1Key, std::string("f2"));
    QCOMPARE(Chemical().FXPLOT_sF2Key, std::string());
  }

  void marginalMeansOfferStandardDeviationsOnlyWithReplicates() {
    frmMMP d(Chemical(), gStats);
    QVERIFY(d.chkIncSD->isEnabled());
    Chemical().iReps = 1;
    frmMMP one(Chemical(), gStats);
    QVERIFY(!one.chkIncSD->isEnabled());
    QVERIFY(!one.chkIncSD->isChecked());
  }

  void responsePlotCyclesAndDisablesMSDWithoutATarget() {
    frmResponse d(Chemical(), gStats);
    QVERIFY(!d.optVar[2]->isEnabled());
    QVERIFY(d.optVar[1]->isEnabled());
    d.cmdCycle->click();
    QCOMPARE(d.lblFactors->text(), QString("Catalyst, Reactant concentration"));
    d.cmdOK->click();
    QCOMPARE(Chemical().RESPONSE_sF1Key, std::string("f2"));
  }

  // The residuals' grid refuses seven charts with its message, and the
  // ANOVA graphics none; the run chart keeps its scale.
  void theChartChoiceDialogs() {
    frmResiduals r(Chemical(), gStats);
    QCOMPARE(r.grd1->count(), 5);
    for (int i = 0; i < r.grd1->count(); ++i) r.grd1->item(i)->setCheckState(Qt::Unchecked);
    QCOMPARE(test::ErrorAfter(*ui_, r.cmdOK), T("REGerr1"));
    r.grd1->item(3)->setCheckState(Qt::Checked);
    r.cmdOK->click();
    QCOMPARE(r.result(), int(QDialog::Accepted));
    QCOMPARE(Chemical().RESIDUAL_sCharts, std::string("1"));

    frmScree scree(Chemical(), gStats);
    scree.chkLHNPP->setChecked(false);
    scree.chkPareto->setChecked(false);
    scree.chkScree->setChecked(false);
    QCOMPARE(test::ErrorAfter(*ui_, scree.cmdOK), T("ANOMerr1"));

    frmRunChart run(Chemical(), gStats);
    run.optScale[1]->setChecked(true);
    run.chkShowRange->setChecked(true);
    run.cmdOK->click();
    QCOMPARE(Chemical().RUN_iScaling, std::int16_t(1));
    QCOMPARE(Chemical().RUN_flags, std::int16_t(1));
  }

  // The multi-chart report opens its dialog when its list is empty, then
  // shows the sheet; a double click edits it.
  void theMultiChartReport() {
    frmMain w;
    w.Load();
    QVERIFY(w.OpenKSTFile(KESTROW_SAMPDATA "/ChemicalYield.KSW"));
    w.NodeClick("e1+3");
    QCOMPARE(gPage.Charts.size(), std::size_t(6));
    QCOMPARE(w.PaneName(), std::string("MultiChart"));
    gProblem->Studies(1).sMultiChart.clear();
    WhenUp<frmMChart>([](frmMChart* d) {
      d->grdMChart->item(0)->setCheckState(Qt::Checked);
      d->cmdOK->click();
    });
    w.NodeClick("e1+3");
    QCOMPARE(gPage.Charts.size(), std::size_t(1));
    QCOMPARE(gProblem->Studies(1).sMultiChart, std::string("1+f1"));
    gProblem->bChanged = false;
  }

  // An analysis node shows its charts when set up; the first click on one
  // that is not opens its dialog, and OK shows the charts.
  void theTreeOpensTheDialogFirstAndTheChartsAfter() {
    frmMain w;
    w.Load();
    QVERIFY(w.OpenKSTFile(KESTROW_SAMPDATA "/ChemicalYield.KSW"));
    w.NodeClick("z1+1");
    QVERIFY(w.ChartsOnShow());
    QCOMPARE(w.PaneName(), std::string("ANOM"));
    QCOMPARE(gPage.Charts.size(), std::size_t(4));
    gProblem->Studies(1).MMP_sRVkey.clear();
    WhenUp<frmMMP>([](frmMMP* d) { d->cmdOK->click(); });
    w.NodeClick("z1+6");
    QVERIFY(w.ChartsOnShow());
    QCOMPARE(w.PaneName(), std::string("MMP"));
    QCOMPARE(gPage.Charts[0].chtType, std::int16_t(CHT_MMP));
    QVERIFY(gProblem->bChanged);
    w.NodeClick("e1+1");
    QCOMPARE(gPage.Charts[0].chtType, std::int16_t(CHT_IPO));
    gProblem->bChanged = false;
  }

 private:
  ScriptedUi* ui_ = nullptr;
};

QTEST_MAIN(tst_ChartDialogs)
#include "tst_ChartDialogs.moc"
