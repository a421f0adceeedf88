// The main window opens a problem, shows it, and keeps it when an open fails.
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QtTest>

#include "core/Globals.h"
#include "core/ScriptedUi.h"
#include "shell/frmMain.h"

using namespace kestrow;

class tst_frmMain : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    ui_ = new ScriptedUi();
    InstallUi(std::unique_ptr<Ui>(ui_));
    ReplaceProblem(std::make_unique<Problem>());
    gProblem->Clear();
  }

  void aNewWindowIsTitledUntitled() {
    frmMain w;
    QCOMPARE(w.windowTitle(), QString("Kestrow for Windows - untitled.KSW"));
  }

  void openingASampleShowsItAndItsName() {
    frmMain w;
    QVERIFY(w.OpenKSTFile(KESTROW_SAMPDATA "/PlasmaEtch.KSW"));
    QCOMPARE(w.windowTitle(), QString("Kestrow for Windows - PlasmaEtch.KSW"));
    auto* text = w.findChild<QPlainTextEdit*>();
    QVERIFY(text);
    QVERIFY(text->toPlainText().startsWith("Problem name: Plasma etch\n"));
    QCOMPARE(QString::fromStdString(gProblem->sName), QString("Plasma etch"));
  }

  void aFailedOpenKeepsTheOpenProblem() {
    frmMain w;
    QVERIFY(w.OpenKSTFile(KESTROW_SAMPDATA "/CatalystTrial.KSW"));
    QTemporaryDir dir;
    QFile bad(dir.filePath("bad.KSW"));
    QVERIFY(bad.open(QIODevice::WriteOnly));
    bad.write("this is no problem file");
    bad.close();
    QVERIFY(!w.OpenKSTFile(bad.fileName()));
    QCOMPARE(QString::fromStdString(gProblem->sName), QString("Catalyst trial"));
    QCOMPARE(w.windowTitle(), QString("Kestrow for Windows - CatalystTrial.KSW"));
    QCOMPARE(ui_->messages.size(), size_t(1));
    QCOMPARE(QString::fromStdString(ui_->messages[0].text), QString("This is not a valid .KSW file!"));
  }

 private:
  ScriptedUi* ui_ = nullptr;
};

QTEST_MAIN(tst_frmMain)
#include "tst_frmMain.moc"
