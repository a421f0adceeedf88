// The developers' bench: each row calls its routine with the arguments typed,
// the table readers at alpha 0.1, and shows the result or what was wrong in
// its own result field. The routines themselves are tested in the engine;
// here, only what the dialog adds.
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include "ShellTestSupport.h"
#include "shell/frmMain.h"
#include "shell/frmTest.h"

using namespace kestrow;

namespace {
// Rows of the bench.
enum { FPROB, FVALUE, TPROB, NPROB, NVALUE, TABLEB, TABLEC, TABLED, TABLEF, TPERCENT, DUNCAN };

// Types the arguments of a row, leaving a fixed alpha alone, and presses its
// button; the row's result.
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
    QVERIFY(test::OpenEnglish());
    qputenv("KESTROW_CONFIG_DIR", config_.path().toUtf8());
  }

  void init() { ui_ = test::FreshUi(); }

  void eachRowShowsItsRoutinesResultOrWhatWasWrongInItsOwnField() {
    frmTest d;
    // The 10% points, not the 5% ones (4.96 and 1.812): F(1, 10) 3.29, t(10) 1.372.
    QCOMPARE(DoIt(d, TABLEF, {"1", "10"}), QString("3.29"));
    QCOMPARE(DoIt(d, TPERCENT, {"10"}), QString("1.372"));
    // A result of several lines shows on one line, and whole in the tooltip.
    QCOMPARE(DoIt(d, TABLEB, {"5", "1"}), QString("3.83; 2.481"));  // v, then d2
    QCOMPARE(d.txtResult[TABLEB]->toolTip(), QString("3.83\n2.481"));
    QVERIFY(DoIt(d, DUNCAN, {"10"}).startsWith("2: 3.15; 3: 3.29; "));  // p: range
    // What was wrong replaces the result and its tooltip, in its own row only,
    // and no message box is shown.
    QCOMPARE(DoIt(d, TABLEB, {"5", "x"}), QString("ReadTableB: x is not a number"));
    QVERIFY(d.txtResult[TABLEB]->toolTip().isEmpty());
    QCOMPARE(d.txtResult[TABLEF]->text(), QString("3.29"));
    QVERIFY(ui_->messages.empty());
  }

  // ReadTableC's column is picked from the table's names, not typed; a lookup
  // that finds nothing says so, in the reader's message and in the result
  // field, instead of showing the missing-value mark.
  void theControlChartColumnIsPickedFromTheTablesNames() {
    frmTest d;
    QVERIFY(d.cboColumn && !d.cboColumn->isEditable());
    QStringList names;
    for (int i = 0; i < d.cboColumn->count(); ++i) names << d.cboColumn->itemText(i);
    QCOMPARE(names, QStringList({"d2", "c4", "A2", "A3", "B3", "B4", "D3", "D4"}));
    QCOMPARE(d.txtArg[TABLEC].size(), std::size_t(1));  // n only
    d.cboColumn->setCurrentText("d2");
    QCOMPARE(DoIt(d, TABLEC, {"5"}), QString("2.326"));  // d2 for subgroups of 5 (ASTM STP 15D)
    QString none = DoIt(d, TABLEC, {"1000"});
    QVERIFY2(none.startsWith("ReadTableC: no value"), qPrintable(none));
    QVERIFY(!none.contains("-9999"));
    // The reader itself says what the table lacked, as it does everywhere.
    QCOMPARE(ui_->messages.size(), std::size_t(1));
    QVERIFY(QString::fromStdString(ui_->messages[0].text).endsWith("[ReadTableC]"));
  }

  // Return in an argument does its row; it must not reach a default button
  // that would close the bench.
  void theAdminMenuOpensTheBenchAndReturnDoesARowWithoutClosingIt() {
    frmMain w;
    w.Load();
    QString result;
    bool open = false;
    QTimer::singleShot(0, [&] {
      auto* d = qobject_cast<frmTest*>(QApplication::activeModalWidget());
      if (!d) return;
      d->txtArg[NVALUE][0]->setText("0.5");
      d->txtArg[NVALUE][0]->setFocus();
      QTest::keyClick(d->txtArg[NVALUE][0], Qt::Key_Return);
      result = d->txtResult[NVALUE]->text();
      open = d->isVisible();
      d->cmdQuit->click();
    });
    w.Action("mnuAdminStats")->trigger();
    QCOMPARE(result, QString("0"));
    QVERIFY(open);
  }

 private:
  ScriptedUi* ui_ = nullptr;
  QTemporaryDir config_;
};

QTEST_MAIN(tst_frmTest)
#include "tst_frmTest.moc"
