// The developers' bench: each row calls its routine with the arguments typed,
// the table readers at alpha 0.1, and shows the result or what was wrong in
// its own result field.
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"
#include "shell/frmMain.h"
#include "shell/frmTest.h"

using namespace kestrow;

namespace {
// Rows of the bench.
enum { FPROB, FVALUE, TPROB, NPROB, NVALUE, TABLEB, TABLEC, TABLED, TABLEF, TPERCENT, DUNCAN };

// Types the arguments of a row and presses its button; the row's result.
QString DoIt(frmTest& d, int row, const QStringList& args) {
  int typed = 0;
  for (QLineEdit* arg : d.txtArg[row])
    if (!arg->isReadOnly()) arg->setText(args.value(typed++));
  d.cmdDoIt[row]->click();
  return d.txtResult[row]->text();
}
}  // namespace

class tst_frmTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    SetProgramFolder(KESTROW_BIN);
    QVERIFY(OpenLanguage(KESTROW_BIN "/KSTlang.MDB", "English"));
    qputenv("KESTROW_CONFIG_DIR", config_.path().toUtf8());
  }

  void init() {
    ui_ = new ScriptedUi();
    InstallUi(std::unique_ptr<Ui>(ui_));
    gSettings = Settings();
  }

  void theButtonsAreNamedForTheLanguageFiles() {
    frmTest d;
    QCOMPARE(d.windowTitle(), QString("Test the Stats and Table Routines (alpha fixed at 0.1)"));
    for (int i = 0; i < frmTest::ROUTINES; ++i) {
      auto* b = d.findChild<QPushButton*>(QString("cmdDoIt_%1").arg(i));
      QCOMPARE(b, d.cmdDoIt[i]);
      QCOMPARE(b->text(), QString("Do It!"));
      QVERIFY(d.lblRoutine[i]->text().startsWith(QString(frmTest::ROUTINE_NAMES[i]) + "("));
    }
    QCOMPARE(d.lblRoutine[FVALUE]->text(), QString("FValue(P, v1, v2)"));
    QCOMPARE(d.findChild<QPushButton*>("cmdQuit")->text(), QString("Quit"));
  }

  void theNumericRoutinesGiveTheirPublishedValues() {
    frmTest d;
    // The upper 5% point of F(1, 10) is 4.96 (Fisher & Yates, Table V).
    QVERIFY(qAbs(DoIt(d, FVALUE, {"0.95", "1", "10"}).toDouble() - 4.965) < 0.005);
    QCOMPARE(DoIt(d, TPROB, {"0", "7"}), QString("0.5"));
    QCOMPARE(DoIt(d, NVALUE, {"0.5"}), QString("0"));
    // Phi(1.96) = 0.9750 (Abramowitz & Stegun, Table 26.1).
    QVERIFY(qAbs(DoIt(d, NPROB, {"1.96"}).toDouble() - 0.975) < 1e-4);
    QVERIFY(ui_->messages.empty());
  }

  void aBadArgumentShowsWhatWasWrongInItsOwnRow() {
    frmTest d;
    QCOMPARE(DoIt(d, NVALUE, {"0.5"}), QString("0"));
    QCOMPARE(DoIt(d, FVALUE, {"x", "1", "10"}), QString("FValue: x is not a number"));
    QCOMPARE(DoIt(d, TPROB, {"1", "2.5"}), QString("tProbability: v is a whole number from 1"));
    // A count the tables take as a 16-bit integer is refused beyond it.
    QCOMPARE(DoIt(d, TPERCENT, {"70000"}), QString("ReadtPercent: 70000 is out of range"));
    QCOMPARE(d.txtResult[NVALUE]->text(), QString("0"));
    QCOMPARE(d.txtArg[FVALUE][0]->text(), QString("x"));
    QVERIFY(d.txtResult[FPROB]->text().isEmpty());
    QVERIFY(ui_->messages.empty());
    // A good call afterwards replaces the complaint.
    bool number = false;
    DoIt(d, FVALUE, {"0.95", "1", "10"}).toDouble(&number);
    QVERIFY(number);
  }

  void theTableReadersUseAlphaFixedAtOneTenth() {
    frmTest d;
    for (int row : {TABLED, TABLEF, TPERCENT, DUNCAN}) {
      int fixed = 0;
      for (QLineEdit* arg : d.txtArg[row])
        if (arg->placeholderText() == "alpha") {
          ++fixed;
          QCOMPARE(arg->text(), QString("0.1"));
          QVERIFY(arg->isReadOnly() && !arg->isEnabled());
        }
      QCOMPARE(fixed, 1);
    }
    // The 10% points, not the 5% ones (4.96 and 1.812): F(1, 10) 3.29, t(10) 1.372.
    QCOMPARE(DoIt(d, TABLEF, {"1", "10"}), QString("3.29"));
    QCOMPARE(DoIt(d, TPERCENT, {"10"}), QString("1.372"));
    // Duncan's ranges have no 10% table: the 5% one is read, without a message.
    QVERIFY(DoIt(d, DUNCAN, {"10"}).startsWith("2: 3.15; 3: 3.29; "));
    QVERIFY(ui_->messages.empty());
  }

  void resultsOfSeveralLinesShowOnOneLine() {
    frmTest d;
    QCOMPARE(DoIt(d, TABLEB, {"5", "1"}), QString("3.83; 2.481"));  // v, then d2
    QCOMPARE(d.txtResult[TABLEB]->toolTip(), QString("3.83\n2.481"));
    QCOMPARE(DoIt(d, DUNCAN, {"10"}).count("; "), 12);  // 13 columns of p and range
    QCOMPARE(DoIt(d, TABLEC, {"5", "D4"}), QString("2.114"));
  }

  void returnInAnArgumentDoesItsRowAndLeavesTheDialogOpen() {
    frmTest d;
    d.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d));
    d.txtArg[NVALUE][0]->setText("0.5");
    d.txtArg[NVALUE][0]->setFocus();
    QTest::keyClick(d.txtArg[NVALUE][0], Qt::Key_Return);
    QCOMPARE(d.txtResult[NVALUE]->text(), QString("0"));
    QVERIFY(d.isVisible());
    d.cmdQuit->click();
    QVERIFY(!d.isVisible());
  }

  void theAdminMenuOpensTheBench() {
    frmMain w;
    w.Load();
    bool opened = false;
    QTimer::singleShot(0, [&] {
      auto* d = qobject_cast<frmTest*>(QApplication::activeModalWidget());
      opened = d != nullptr;
      if (d) d->cmdQuit->click();
    });
    w.Action("mnuAdminStats")->trigger();
    QVERIFY(opened);
  }

 private:
  ScriptedUi* ui_ = nullptr;
  QTemporaryDir config_;
};

QTEST_MAIN(tst_frmTest)
#include "tst_frmTest.moc"
