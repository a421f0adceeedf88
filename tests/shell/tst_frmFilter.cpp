// The data filter dialog over the plasma-etch sample (three factors of two
// levels each). The rules of the list are the engine's; here, the grid that
// shows them, the ticks it starts with and takes back, and what OK accepts.
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

#include "ShellTestSupport.h"
#include "shell/frmFilter.h"

using namespace kestrow;
using test::T;

namespace {
QStringList Column(const frmFilter& d, int column) {
  QStringList texts;
  for (int r = 0; r < d.grdFilter->rowCount(); ++r) texts << d.grdFilter->item(r, column)->text();
  return texts;
}

QStringList TickedKeys(const frmFilter& d) {
  QStringList keys;
  for (int r = 0; r < d.grdFilter->rowCount(); ++r)
    if (d.grdFilter->item(r, frmFilter::COL_CHECK)->checkState() == Qt::Checked)
      keys << d.grdFilter->item(r, frmFilter::COL_KEY)->text();
  return keys;
}

void Tick(frmFilter& d, int row) { d.grdFilter->item(row, frmFilter::COL_CHECK)->setCheckState(Qt::Checked); }
}  // namespace

class tst_frmFilter : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(test::OpenEnglish()); }

  void init() {
    ui_ = test::FreshUi();
    QVERIFY(test::OpenSample("PlasmaEtch"));
  }

  void theGridShowsAllDataThenEachLevelOfEachFactorLeftIn() {
    frmFilter d(Screening(), "", "");
    QVERIFY(d.grdFilter->isColumnHidden(frmFilter::COL_KEY));
    QCOMPARE(Column(d, frmFilter::COL_KEY), QStringList({"0;0", "1;1", "1;2", "2;1", "2;2", "3;1", "3;2"}));
    QCOMPARE(Column(d, frmFilter::COL_FACTOR),
             QStringList({T("AllData"), "Power", "Power", "Gap", "Gap", "Gas flow", "Gas flow"}));
    QCOMPARE(Column(d, frmFilter::COL_LEVEL), QStringList({"", "275", "325", "0.8", "1.2", "125", "200"}));
    // A factor left out has no rows; the others keep their numbers in the keys.
    QCOMPARE(Column(frmFilter(Screening(), "", "1,3"), frmFilter::COL_KEY), QStringList({"0;0", "2;1", "2;2"}));
  }

  // The ticks set from the filter list are no touch of the user's.
  void okTakesTheTicksAndMarksTheProblemChangedOnlyWhenOneWasTouched() {
    frmFilter untouched(Screening(), "0;0,2;2,3;1", "");
    QCOMPARE(TickedKeys(untouched), QStringList({"0;0", "2;2", "3;1"}));
    untouched.cmdOK->click();
    QCOMPARE(untouched.result(), int(QDialog::Accepted));
    QVERIFY(untouched.Result());
    QCOMPARE(untouched.FilterList(), std::string("0;0,2;2,3;1"));
    QVERIFY(!gProblem->bChanged);
    frmFilter d(Screening(), "", "");
    Tick(d, 5);  // 3;1
    Tick(d, 2);  // 1;2
    d.cmdOK->click();
    QVERIFY(d.Result());
    QCOMPARE(d.FilterList(), std::string("1;2,3;1"));  // in row order
    QVERIFY(gProblem->bChanged);
  }

  void okWithoutATickIsRefusedAndTheDialogStaysOpen() {
    frmFilter d(Screening(), "", "");
    d.show();
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), T("ANOMerr1"));
    QVERIFY(d.isVisible());
    QVERIFY(!d.Result());
  }

  void clickingAFactorOrLevelTogglesItsRowAndCancelTakesNoneOfIt() {
    frmFilter d(Screening(), "1;1", "");
    d.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d));
    for (auto [row, column] : {std::pair{3, int(frmFilter::COL_LEVEL)}, {1, int(frmFilter::COL_FACTOR)}}) {
      QRect cell = d.grdFilter->visualItemRect(d.grdFilter->item(row, column));
      QTest::mouseClick(d.grdFilter->viewport(), Qt::LeftButton, {}, cell.center());
    }
    QCOMPARE(TickedKeys(d), QStringList({"2;1"}));
    d.cmdCancel->click();
    QVERIFY(!d.Result());
    QCOMPARE(d.FilterList(), std::string("1;1"));
    QVERIFY(!gProblem->bChanged);
  }

 private:
  const Study& Screening() { return gProblem->Studies(1); }

  ScriptedUi* ui_ = nullptr;
};

QTEST_MAIN(tst_frmFilter)
#include "tst_frmFilter.moc"
