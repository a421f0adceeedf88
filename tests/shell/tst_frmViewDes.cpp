// The design viewer: its table goes to the print log by tab-separated lines.
#include <QAction>
#include <QTemporaryDir>
#include <QtTest>
#include <fstream>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"
#include "shell/frmViewDes.h"

using namespace kestrow;

class tst_frmViewDes : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    SetProgramFolder(KESTROW_BIN);
    QVERIFY(OpenLanguage(KESTROW_BIN "/KSTlang.MDB", "English"));
  }

  void theTableGoesToThePrintLogByTabSeparatedLines() {
    auto* ui = new ScriptedUi();
    InstallUi(std::unique_ptr<Ui>(ui));
    gSettings = Settings();
    QTemporaryDir folder;
    gSettings.PrintLog = folder.filePath("log.txt").toStdString();
    auto p = std::make_unique<Problem>();
    QVERIFY(p->Load(KESTROW_SAMPDATA "/PlasmaEtch.KSW"));
    ReplaceProblem(std::move(p));
    gStudy = &gProblem->Studies(1);
    frmViewDes d(*gStudy);
    auto* log = d.findChild<QAction*>("mnuFileAddLog");
    QVERIFY(log && log->isEnabled());
    log->trigger();
    std::ifstream in(gSettings.PrintLog);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    QVERIFY(lines.size() > 10);
    QCOMPARE(QString::fromStdString(lines[2]), "Study: " + QString::fromStdString(gStudy->sName));
    // The heading of runs and contrasts, then one line a run, cut by tabs.
    bool sawRun = false;
    for (const std::string& line : lines) sawRun = sawRun || (line.rfind("1\t", 0) == 0 && line.find("\t+1") != std::string::npos);
    QVERIFY(sawRun);
    QCOMPARE(QString::fromStdString(lines.back()), QString(80, '-'));
    QVERIFY(ui->messages.back().text.find(" lines written") != std::string::npos);
    gStudy = nullptr;
  }
};

QTEST_MAIN(tst_frmViewDes)
#include "tst_frmViewDes.moc"
