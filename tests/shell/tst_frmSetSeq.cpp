// The run-order dialog as a user meets it: typing an order by clicking rows,
// and a close that is refused until every replication has its order.
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QtTest>

#include "ShellTestSupport.h"
#include "shell/frmSetSeq.h"

using namespace kestrow;
using test::T;

class tst_frmSetSeq : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(test::OpenEnglish()); }

  void init() {
    ui_ = test::FreshUi();
    QVERIFY(test::OpenSample("PlasmaEtch"));  // 8 runs, 2 reps
  }

  void clickingRowsTypesTheOrderAndOkThenCloses() {
    Study& study = gProblem->Studies(1);
    frmSetSeq d(study, nullptr);
    d.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d));
    QCOMPARE(d.grd1->columnCount(), 4);
    QCOMPARE(d.grd1->horizontalHeaderItem(1)->text(), QString("A"));
    QCOMPARE(d.grd1->item(4, 1)->text(), QString("325"));
    QCOMPARE(d.grd1->item(3, 0)->text(), QString("1"));  // treatment 4 runs first in rep 1
    d.cmdEdit->click();
    QVERIFY(!d.vsbRep->isEnabled() && !d.cmdPropagate->isEnabled());

    const int order[] = {5, 2, 8, 1, 7, 3, 6, 4};
    for (int t : order) {
      QRect cell = d.grd1->visualItemRect(d.grd1->item(t - 1, 1));
      QTest::mouseClick(d.grd1->viewport(), Qt::LeftButton, {}, cell.center());
    }
    for (int p = 1; p <= 8; ++p) {
      QCOMPARE(d.grd1->item(order[p - 1] - 1, 0)->text(), QString::number(p));
      QCOMPARE(int(study.GetSeq(p, 1)), order[p - 1]);
    }
    QVERIFY(d.vsbRep->isEnabled() && d.cmdPropagate->isEnabled());

    // Rep 2 has no order yet: neither OK nor the title-bar button closes.
    d.cmdOK->click();
    QVERIFY(d.isVisible());
    QVERIFY(!d.close());
    QCOMPARE(int(ui_->messages.size()), 2);
    QCOMPARE(QString::fromStdString(ui_->messages[0].text), T("SEQerr1"));

    d.vsbRep->setValue(d.vsbRep->maximum());  // one step past the last rep wraps to rep 1
    QCOMPARE(d.lblRep->text(), QString("Rep 1"));
    d.cmdPropagate->click();
    d.vsbRep->setValue(2);
    QCOMPARE(d.grd1->item(4, 0)->text(), QString("1"));
    d.cmdOK->click();
    QVERIFY(!d.isVisible());
    QCOMPARE(d.result(), int(QDialog::Accepted));
  }

 private:
  ScriptedUi* ui_ = nullptr;
};

QTEST_MAIN(tst_frmSetSeq)
#include "tst_frmSetSeq.moc"
