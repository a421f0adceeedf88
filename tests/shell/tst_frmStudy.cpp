// The three routes to a designed study: the study dialog (with its checks in
// order), the quick study, and the setup wizard. Each ends in a study with a
// design, a randomised run order and an empty data array.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>
#include <set>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"
#include "shell/frmDesSel.h"
#include "shell/frmQuick.h"
#include "shell/frmStudy.h"
#include "shell/frmWizard.h"

using namespace kestrow;

namespace {

// Accepts the design table, when it opens, on its last row (the full factorial).
void AcceptFullFactorialWhenTheTableOpens() {
  QTimer::singleShot(0, [] {
    auto* d = qobject_cast<frmDesSel*>(QApplication::activeModalWidget());
    QVERIFY(d);
    d->grdDesigns->selectRow(d->grdDesigns->rowCount() - 1);
    d->cmdOK->click();
  });
}

// Every replication's run order is a permutation of the runs.
void CheckRunOrder(const Study& s) {
  for (int rep = 1; rep <= s.iReps; ++rep) {
    std::set<int> seen;
    for (int p = 1; p <= s.iNumRuns; ++p) seen.insert(s.GetSeq(p, rep));
    QCOMPARE(int(seen.size()), int(s.iNumRuns));
    QCOMPARE(*seen.begin(), 1);
    QCOMPARE(*seen.rbegin(), int(s.iNumRuns));
  }
}

QString T(const char* tag) { return QString::fromStdString(GetText(tag)); }

}  // namespace

class tst_frmStudy : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    SetProgramFolder(KESTROW_BIN);
    QVERIFY(OpenLanguage(KESTROW_BIN "/KSTlang.MDB", "English"));
  }

  void init() {
    ui_ = new ScriptedUi();
    InstallUi(std::unique_ptr<Ui>(ui_));
    gSettings = Settings();
    auto p = std::make_unique<Problem>();
    QVERIFY(p->Load(KESTROW_SAMPDATA "/PlasmaEtch.KSW"));
    ReplaceProblem(std::move(p));
  }

  QString LastMessage() { return QString::fromStdString(ui_->messages.back().text); }

  void theStudyDialogChecksInOrderAndMakesARandomisedStudy() {
    frmStudy d(1, "");
    QVERIFY(d.Refusal().empty());
    d.cmdOK->click();
    QCOMPARE(LastMessage(), T("QCKerr1"));
    d.txtName->setText("Screening");  // the name of the study already there
    d.cmdOK->click();
    QCOMPARE(LastMessage(), T("STUerr1"));
    d.txtName->setText("Confirmation");
    d.cmdOK->click();
    QCOMPARE(LastMessage(), T("SFerr1"));
    d.Form().FactorsChosen({"f1", "f2", "f3"});
    d.cmdOK->click();
    QCOMPARE(LastMessage(), T("STUerr3"));
    d.cmdRespVars_Click();  // the problem's only response is taken at once
    d.cmdOK->click();
    QCOMPARE(LastMessage(), T("QCKerr4"));
    AcceptFullFactorialWhenTheTableOpens();
    d.cmdDesign_Click();
    QVERIFY(d.lblDesign->text().startsWith("8-"));
    QVERIFY(d.cmdViewDes->isEnabled());
    d.txtReps->setText("31");
    d.cmdOK->click();
    QCOMPARE(LastMessage(), T("QCKerr3") + " 30");
    QCOMPARE(gProblem->Studies.Count(), 1);  // nothing stored yet
    d.txtReps->setText("30");
    d.cmdOK->click();
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(gProblem->Studies.Count(), 2);
    const Study& s = gProblem->Studies(2);
    QCOMPARE(s.sKey, std::string("s2"));
    QCOMPARE(s.iNumRuns, std::int16_t(8));
    QCOMPARE(s.iReps, std::int16_t(30));
    QVERIFY(s.DoesArrayExist());
    QVERIFY(s.IsArrayEmpty());
    CheckRunOrder(s);
  }

  void aNewStudyNeedsAFactorAndAResponse() {
    gProblem->Clear();
    frmStudy d(1, "");
    QCOMPARE(QString::fromStdString(d.Refusal()), T("MNerrd"));
  }

  void editingAStudyKeepsItsOwnNameAndReplicationsFromOneClearTheAnalyses() {
    Study& s = gProblem->Studies(1);
    s.ANOVA_sRVkey = "v1";
    frmStudy d(3, "s1");
    d.txtName->setText("Screening");  // its own old name passes
    ui_->answers.push_back(Answer::Yes);  // keep going although the study has data
    QTest::keyClick(d.txtReps, Qt::Key_Backspace);
    QTest::keyClicks(d.txtReps, "3");
    d.cmdOK->click();
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(s.iReps, std::int16_t(3));
    QCOMPARE(s.ANOVA_sRVkey, std::string("v1"));  // 2 to 3 keeps the analyses
    QCOMPARE(s.GetData(1, 1, 1), 666.2f);         // the data of the older replications stay
    QCOMPARE(s.GetData(1, 1, 3), MISSING_VALUE);
  }

  void theQuickStudyBuildsAWholeProblem() {
    frmQuick d;
    d.txtName->setText("Bread");
    d.txtRV->setText("Volume");
    auto set = [&](int r, int c, const char* text) { d.grdFactors->setItem(r, c, new QTableWidgetItem(text)); };
    set(0, 0, "Flour");
    set(0, 1, "Strong");
    set(0, 2, "Plain");
    set(1, 0, "Proof");
    set(1, 1, "30");
    set(1, 2, "45");
    set(1, 3, "60");
    d.cmdOK->click();
    QCOMPARE(LastMessage(), T("QCKerr4"));  // no design yet
    AcceptFullFactorialWhenTheTableOpens();
    d.cmdDesign_Click();
    QVERIFY(!d.lblDesign->text().isEmpty());
    ui_->answers.push_back(Answer::No);
    d.cmdOK->click();
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(QString::fromStdString(gProblem->sName), QString("Bread"));
    QCOMPARE(gProblem->Factors.Count(), 2);
    QVERIFY(gProblem->Factors.Find("f1")->iFlag & FACTOR_DISCRETE);  // a level that is no number
    const Study& s = gProblem->Studies(1);
    QCOMPARE(s.sKey, std::string("s1"));
    QCOMPARE(s.iNumRuns, std::int16_t(6));
    QCOMPARE(s.StudyRespVars(1).sKey, std::string("v1"));
    QVERIFY(s.IsArrayEmpty());
    CheckRunOrder(s);
  }

  void theQuickStudyRefusesBadFactorRows() {
    frmQuick d;
    d.txtName->setText("Bread");
    d.grdFactors->setItem(0, 0, new QTableWidgetItem("Flour"));
    d.grdFactors->setItem(0, 1, new QTableWidgetItem("Strong"));
    d.cmdOK->click();
    QCOMPARE(LastMessage(), T("QCKerr8"));
    d.grdFactors->setItem(0, 2, new QTableWidgetItem("Wholemeal"));
    d.cmdOK->click();
    QCOMPARE(LastMessage(), T("QCKerr6"));
    QCOMPARE(QString::fromStdString(gProblem->sName), QString("Plasma etch"));  // still the open problem
  }

  void theWizardLeadsFromNothingToADesignedStudy() {
    frmWizard w;
    w.txtProblem->setText("Coating");
    w.cmdNext->click();
    QCOMPARE(w.Step(), 2);
    w.cmdNext->click();
    QCOMPARE(LastMessage(), T("WIZerr2"));  // no factor yet
    w.txtFactor->setText("Temperature");
    w.grdLevels->setItem(0, 1, new QTableWidgetItem("150"));
    w.grdLevels->setItem(1, 1, new QTableWidgetItem("180"));
    w.cmdAddFactor->click();
    w.txtFactor->setText("Speed");
    w.grdLevels->setItem(0, 1, new QTableWidgetItem("1"));
    w.grdLevels->setItem(1, 1, new QTableWidgetItem("2"));
    w.cmdNext->click();
    QCOMPARE(w.Step(), 3);
    QCOMPARE(w.lstFactors->count(), 2);
    w.cmdNext->click();
    w.txtRV->setText("Thickness");
    w.txtTarget->setText("MAX");
    w.cmdNext->click();
    QCOMPARE(w.Step(), 5);
    w.cmdNext->click();
    w.txtStudy->setText("First run");
    w.cmdNext->click();
    QCOMPARE(w.Step(), 7);
    w.cmdNext->click();
    QCOMPARE(LastMessage(), T("WIZerre"));
    gStudyEdit.Factors.Add(Item{"f1"});
    gStudyEdit.Factors.Add(Item{"f2"});
    AcceptFullFactorialWhenTheTableOpens();
    w.cmdStudyDesign->click();
    w.cmdNext->click();
    QCOMPARE(w.Step(), 8);
    w.txtReps->setText("3");
    w.cmdNext->click();  // Finish; the one response is ticked
    QCOMPARE(w.result(), int(QDialog::Accepted));
    QCOMPARE(gProblem->Studies.Count(), 1);
    const Study& s = gProblem->Studies(1);
    QCOMPARE(s.iNumRuns, std::int16_t(4));
    QCOMPARE(s.iReps, std::int16_t(3));
    QCOMPARE(gProblem->RespVars(1).fTarget, TARGET_MAX);
    CheckRunOrder(s);
  }

 private:
  ScriptedUi* ui_ = nullptr;
};

QTEST_MAIN(tst_frmStudy)
#include "tst_frmStudy.moc"
