// The data filter dialog over the plasma-etch sample (three factors of two
// levels each): its rows, the ticks it starts with, and what OK accepts.
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"
#include "shell/frmFilter.h"

using namespace kestrow;

namespace {
QString T(const char* tag) { return QString::fromStdString(GetText(tag)); }

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

  void allDataComesFirstThenEachLevelOfEachFactor() {
    frmFilter d(Screening(), "", "");
    QCOMPARE(d.windowTitle(), T("FILcap"));
    QVERIFY(d.lblHead->text().startsWith("You can create up to 6 different filters"));
    QCOMPARE(d.grdFilter->horizontalHeaderItem(frmFilter::COL_FACTOR)->text(), T("Filter"));
    QCOMPARE(d.grdFilter->horizontalHeaderItem(frmFilter::COL_LEVEL)->text(), T("Level"));
    QVERIFY(d.grdFilter->isColumnHidden(frmFilter::COL_KEY));
    QCOMPARE(Column(d, frmFilter::COL_KEY), QStringList({"0;0", "1;1", "1;2", "2;1", "2;2", "3;1", "3;2"}));
    QCOMPARE(Column(d, frmFilter::COL_FACTOR),
             QStringList({T("AllData"), "Power", "Power", "Gap", "Gap", "Gas flow", "Gas flow"}));
    QCOMPARE(Column(d, frmFilter::COL_LEVEL), QStringList({"", "275", "325", "0.8", "1.2", "125", "200"}));
    QVERIFY(TickedKeys(d).isEmpty());
  }

  void excludedFactorsHaveNoRowsAndKeepTheirNumbersInTheKeys() {
    frmFilter one(Screening(), "", "2");
    QCOMPARE(Column(one, frmFilter::COL_KEY), QStringList({"0;0", "1;1", "1;2", "3;1", "3;2"}));
    frmFilter two(Screening(), "", "1,3");
    QCOMPARE(Column(two, frmFilter::COL_FACTOR), QStringList({T("AllData"), "Gap", "Gap"}));
  }

  void theFilterListTicksItsRowsAndOKWithoutATouchChangesNothing() {
    frmFilter d(Screening(), "0;0,2;2,3;1", "");
    QCOMPARE(TickedKeys(d), QStringList({"0;0", "2;2", "3;1"}));
    d.cmdOK->click();
    QVERIFY(d.Result());
    QCOMPARE(d.result(), int(QDialog::Accepted));
    QCOMPARE(d.FilterList(), std::string("0;0,2;2,3;1"));
    QVERIFY(!d.Changed());
    QVERIFY(!gProblem->bChanged);
  }

  void okWantsOneToSixTicksAndStaysOpenOtherwise() {
    frmFilter d(Screening(), "", "");
    d.show();
    d.cmdOK->click();
    QCOMPARE(LastError(), T("ANOMerr1"));
    QVERIFY(d.isVisible());
    QVERIFY(!d.Result());
    for (int r = 0; r < d.grdFilter->rowCount(); ++r) Tick(d, r);
    d.cmdOK->click();
    QCOMPARE(LastError(), T("MCerr1"));
    QVERIFY(d.isVisible());
    QVERIFY(!d.Result());
    QCOMPARE(d.FilterList(), std::string());  // not taken from a refused OK
    QCOMPARE(int(ui_->messages.size()), 2);
  }

  void okGathersTheTickedKeysInRowOrderAndMarksTheProblemChanged() {
    frmFilter d(Screening(), "", "");
    d.show();
    Tick(d, 5);  // 3;1
    Tick(d, 2);  // 1;2
    QVERIFY(d.Changed());
    d.cmdOK->click();
    QVERIFY(ui_->messages.empty());
    QVERIFY(d.Result());
    QVERIFY(!d.isVisible());
    QCOMPARE(d.FilterList(), std::string("1;2,3;1"));
    QVERIFY(gProblem->bChanged);
  }

  void clickingAFactorOrLevelTicksItsRow() {
    frmFilter d(Screening(), "1;1", "");
    d.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d));
    auto click = [&](int row, int column) {
      QRect cell = d.grdFilter->visualItemRect(d.grdFilter->item(row, column));
      QTest::mouseClick(d.grdFilter->viewport(), Qt::LeftButton, {}, cell.center());
    };
    click(3, frmFilter::COL_LEVEL);
    click(1, frmFilter::COL_FACTOR);
    QCOMPARE(TickedKeys(d), QStringList({"2;1"}));
  }

  void cancelLeavesTheResultFalseAndTheListAsItWas() {
    frmFilter d(Screening(), "1;1", "");
    Tick(d, 0);
    d.cmdCancel->click();
    QVERIFY(!d.Result());
    QCOMPARE(d.result(), int(QDialog::Rejected));
    QCOMPARE(d.FilterList(), std::string("1;1"));
    QVERIFY(!gProblem->bChanged);
  }

 private:
  const Study& Screening() { return gProblem->Studies(1); }
  QString LastError() {
    if (ui_->messages.empty() || ui_->messages.back().kind != "error") return QString();
    return QString::fromStdString(ui_->messages.back().text);
  }

  ScriptedUi* ui_ = nullptr;
};

QTEST_MAIN(tst_frmFilter)
#include "tst_frmFilter.moc"
