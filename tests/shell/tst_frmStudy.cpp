// The three routes to a designed study: the study dialog (with its checks in
// order), the quick study, and the setup wizard. Each ends in a study with a
// design, a randomised run order and an empty data array.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>
#include <set>

#include "ShellTestSupport.h"
#include "shell/QtUi.h"
#include "shell/frmDesSel.h"
#include "shell/frmQuick.h"
#include "shell/frmStudy.h"
#include "shell/frmWizard.h"

using namespace kestrow;
using test::ErrorAfter;
using test::T;

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

// The program's real message boxes, each one recorded before it shows.
class RecordingQtUi : public QtUi {
 public:
  void ErrorBox(const std::string& text) override {
    shown.push_back(text);
    QtUi::ErrorBox(text);
  }
  Answer YesNoBox(const std::string& text) override {
    shown.push_back(text);
    return QtUi::YesNoBox(text);
  }
  std::vector<std::string> shown;
};

// Presses a button of the next message box as soon as it is up and has the
// focus, so that the focus really moves to it and back.
void PressWhenAsked(QMessageBox::StandardButton which) {
  auto* timer = new QTimer;
  timer->setInterval(5);
  QObject::connect(timer, &QTimer::timeout, [timer, which] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box || !box->isActiveWindow()) return;
    timer->stop();
    timer->deleteLater();
    box->button(which)->click();
  });
  timer->start();
}

// Fills cells of a table's row, from the column given on.
void SetCells(QTableWidget* table, int row, int column, const QStringList& texts) {
  for (const QString& text : texts) table->setItem(row, column++, new QTableWidgetItem(text));
}

}  // namespace

class tst_frmStudy : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(test::OpenEnglish()); }

  void init() {
    ui_ = test::FreshUi();
    QVERIFY(test::OpenSample("PlasmaEtch"));
  }

  void theStudyDialogChecksInOrderAndMakesARandomisedStudy() {
    frmStudy d(1, "");
    QVERIFY(d.Refusal().empty());
    QCOMPARE(ErrorAfter(*ui_, d.cmdOK), T("QCKerr1"));
    d.txtName->setText("Screening");  // the name of the study already there
    QCOMPARE(ErrorAfter(*ui_, d.cmdOK), T("STUerr1"));
    d.txtName->setText("Confirmation");
    QCOMPARE(ErrorAfter(*ui_, d.cmdOK), T("SFerr1"));
    d.Form().FactorsChosen({"f1", "f2", "f3"});
    QCOMPARE(ErrorAfter(*ui_, d.cmdOK), T("STUerr3"));
    d.cmdRespVars_Click();  // the problem's only response is taken at once
    QCOMPARE(ErrorAfter(*ui_, d.cmdOK), T("QCKerr4"));
    AcceptFullFactorialWhenTheTableOpens();
    d.cmdDesign_Click();
    QVERIFY(d.lblDesign->text().startsWith("8-"));
    QVERIFY(d.cmdViewDes->isEnabled());
    // Beyond the range, beyond an int and beyond a double: refused alike.
    for (const char* reps : {"31", "1e300", "1e400", "2.5"}) {
      d.txtReps->setText(reps);
      QCOMPARE(ErrorAfter(*ui_, d.cmdOK), T("QCKerr3") + " 30");
    }
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

  // Typing 3 over 4 replications of a study with data asks first; No must
  // leave the count and every observation as they were, although the
  // question box took the focus from the replications box and gave it back.
  // With a count out of range in the box, Cancel still closes the dialog.
  void answeringNoOrCancellingLeavesTheReplicationsAndEveryObservation() {
    QVERIFY(test::OpenSample("PoisonSurvival"));
    auto* ui = new RecordingQtUi;
    InstallUi(std::unique_ptr<Ui>(ui));
    const Study before = gProblem->Studies(1);
    QCOMPARE(before.iReps, std::int16_t(4));
    {
      frmStudy d(3, "s1");
      d.show();
      QVERIFY(QTest::qWaitForWindowActive(&d));
      d.txtReps->setFocus();
      d.txtReps->selectAll();
      PressWhenAsked(QMessageBox::No);
      QTest::keyClicks(d.txtReps, "3");
      QCOMPARE(ui->shown, std::vector<std::string>{GetText("STUmsg3")});
      QCOMPARE(d.txtReps->text(), QString("4"));
      d.txtName->setFocus();  // leave the box for another control
      QCOMPARE(gStudyEdit.iReps, std::int16_t(4));
      d.cmdOK->click();
      QCOMPARE(d.result(), int(QDialog::Accepted));
    }
    const Study& after = gProblem->Studies(1);
    QCOMPARE(after.iReps, std::int16_t(4));
    for (int run = 1; run <= before.iNumRuns; ++run)
      for (int rep = 1; rep <= 4; ++rep) QCOMPARE(after.GetData(1, run, rep), before.GetData(1, run, rep));

    ui->shown.clear();
    frmStudy d(3, "s1");
    d.show();
    QVERIFY(QTest::qWaitForWindowActive(&d));
    d.txtReps->setFocus();
    d.txtReps->selectAll();
    PressWhenAsked(QMessageBox::Yes);  // go on although the study has data
    QTest::keyClicks(d.txtReps, "99");
    PressWhenAsked(QMessageBox::Yes);  // yes, cancel the changes
    QTest::mouseClick(d.cmdCancel, Qt::LeftButton);
    QCOMPARE(d.result(), int(QDialog::Rejected));
    QVERIFY(!d.isVisible());
    for (const std::string& text : ui->shown) QVERIFY(text.find(GetText("QCKerr3")) == std::string::npos);
    QCOMPARE(gProblem->Studies(1).iReps, std::int16_t(4));
    InstallUi(std::make_unique<ScriptedUi>());
  }

  // The factor rows are checked before the response's name.
  void theQuickStudyRefusesBadFactorRowsAndOtherwiseBuildsAWholeProblem() {
    frmQuick d;
    d.txtName->setText("Bread");
    SetCells(d.grdFactors, 0, 0, {"Flour", "Strong"});
    QCOMPARE(ErrorAfter(*ui_, d.cmdOK), T("QCKerr8"));  // one level only
    SetCells(d.grdFactors, 0, 2, {"Wholemeal"});
    QCOMPARE(ErrorAfter(*ui_, d.cmdOK), T("QCKerr6"));  // a level name too long
    QCOMPARE(QString::fromStdString(gProblem->sName), QString("Plasma etch"));  // still the open problem
    d.txtRV->setText("Volume");
    SetCells(d.grdFactors, 0, 2, {"Plain"});
    SetCells(d.grdFactors, 1, 0, {"Proof", "30", "45", "60"});
    QCOMPARE(ErrorAfter(*ui_, d.cmdOK), T("QCKerr4"));  // no design yet
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
    QCOMPARE(s.iNumRuns, std::int16_t(6));
    QCOMPARE(s.StudyRespVars(1).sKey, std::string("v1"));
    QVERIFY(s.IsArrayEmpty());
    CheckRunOrder(s);
  }

  void theWizardLeadsFromNothingToADesignedStudy() {
    frmWizard w;
    auto next = [&w] {
      w.cmdNext->click();
      return w.Step();
    };
    w.txtProblem->setText("Coating");
    QCOMPARE(next(), 2);
    QCOMPARE(ErrorAfter(*ui_, w.cmdNext), T("WIZerr2"));  // no factor yet
    w.txtFactor->setText("Temperature");
    SetCells(w.grdLevels, 0, 1, {"150"});
    SetCells(w.grdLevels, 1, 1, {"180"});
    w.cmdAddFactor->click();
    w.txtFactor->setText("Speed");
    SetCells(w.grdLevels, 0, 1, {"1"});
    SetCells(w.grdLevels, 1, 1, {"2"});
    QCOMPARE(next(), 3);
    QCOMPARE(w.lstFactors->count(), 2);
    next();
    w.txtRV->setText("Thickness");
    w.txtTarget->setText("MAX");
    QCOMPARE(next(), 5);
    next();
    w.txtStudy->setText("First run");
    QCOMPARE(next(), 7);
    QCOMPARE(ErrorAfter(*ui_, w.cmdNext), T("WIZerre"));
    gStudyEdit.Factors.Add(Item{"f1"});
    gStudyEdit.Factors.Add(Item{"f2"});
    AcceptFullFactorialWhenTheTableOpens();
    w.cmdStudyDesign->click();
    QCOMPARE(next(), 8);
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

  // Going back from a page with text on it asks, under the wizard's own
  // title; No stays on the page with the text, Yes goes back.
  void theWizardsGoBackQuestionIsTitledKestrowWizard() {
    frmWizard w;
    w.txtProblem->setText("Coating");
    w.cmdNext->click();
    QCOMPARE(w.Step(), 2);
    w.txtFactor->setText("Temperature");
    ui_->messages.clear();
    ui_->answers.push_back(Answer::No);
    w.cmdPrev->click();
    QCOMPARE(w.Step(), 2);
    QCOMPARE(w.txtFactor->text(), QString("Temperature"));
    QCOMPARE(ui_->messages.size(), std::size_t(1));
    QCOMPARE(ui_->messages[0].kind, std::string("warn"));
    QCOMPARE(QString::fromStdString(ui_->messages[0].text),
             "[Kestrow Wizard]\n" + T("WIZerr6a") + "\r\n" + T("WIZerr6b"));
    ui_->answers.push_back(Answer::Yes);
    w.cmdPrev->click();
    QCOMPARE(w.Step(), 1);
  }

 private:
  ScriptedUi* ui_ = nullptr;
};

QTEST_MAIN(tst_frmStudy)
#include "tst_frmStudy.moc"
