// The design viewer: its table goes to the print log by tab-separated lines.
// The log's own layout is checked in ReportTest.
#include <QAction>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include "ShellTestSupport.h"
#include "shell/frmViewDes.h"

using namespace kestrow;

class tst_frmViewDes : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { QVERIFY(test::OpenEnglish()); }

  void theTableGoesToThePrintLogByTabSeparatedLines() {
    ScriptedUi* ui = test::FreshUi();
    QTemporaryDir folder;
    gSettings.PrintLog = folder.filePath("log.txt").toStdString();
    QVERIFY(test::OpenSample("PlasmaEtch"));
    gStudy = &gProblem->Studies(1);
    frmViewDes d(*gStudy);
    auto* log = d.findChild<QAction*>("mnuFileAddLog");
    QVERIFY(log && log->isEnabled());
    log->trigger();
    QFile file(folder.filePath("log.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    QVERIFY(lines.size() > 10);
    QCOMPARE(lines[2], "Study: " + QString::fromStdString(gStudy->sName));
    // The heading of runs and contrasts, then one line a run, cut by tabs.
    QVERIFY(!lines.filter(QRegularExpression("^1(\t.*)?\t\\+1")).isEmpty());
    QVERIFY(ui->messages.back().text.find(" lines written") != std::string::npos);  // the log was closed
    gStudy = nullptr;
  }
};

QTEST_MAIN(tst_frmViewDes)
#include "tst_frmViewDes.moc"
