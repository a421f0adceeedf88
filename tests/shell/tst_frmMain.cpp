// The main window as a user meets it: opening a sample, walking the tree,
// typing into the data grid, saving, and adding and deleting a factor through
// the dialogs.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>
#include <tuple>

#include "ShellTestSupport.h"
#include "core/Sentinels.h"
#include "charts/ChartPage.h"
#include "shell/frmFactor.h"
#include "shell/frmMain.h"

using namespace kestrow;
using test::T;

namespace {
// Loads the window and opens a sample in it.
bool Open(frmMain& w, const char* sample) {
  w.Load();
  return w.OpenKSTFile(QString(KESTROW_SAMPDATA "/%1.KSW").arg(sample));
}

QWidget* Editor(frmMain& w) {
  // A closed editor lingers until it is deleted: take the one on show.
  for (QLineEdit* e : w.grdMain->viewport()->findChildren<QLineEdit*>())
    if (e->isVisible()) return e;
  return w.grdMain;
}
// Types into the current cell, whose edit began when it became current, and
// presses Return.
void Enter(frmMain& w, const QString& text) {
  QTest::keyClicks(Editor(w), text);
  QTest::keyClick(Editor(w), Qt::Key_Return);
}
}  // namespace

class tst_frmMain : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QVERIFY(OpenLanguage(KESTROW_BIN "/KSTlang.MDB", "English"));
    qputenv("KESTROW_CONFIG_DIR", config_.path().toUtf8());
  }

  void init() {
    ui_ = test::FreshUi();
    gsCommandFile.clear();
    gbAdmin = false;
    ReplaceProblem(std::make_unique<Problem>());
  }

  void aNewWindowIsUntitledAndAsksBeforeClosingAChangedProblem() {
    frmMain w;
    w.Load();
    QCOMPARE(w.windowTitle(), QString("Kestrow for Windows - untitled.KSW"));
    QVERIFY(!w.Menu("mnuAdmin")->menuAction()->isVisible());
    QVERIFY(!w.Action("mnuEditPaste")->isEnabled());  // the Edit menu acts on the data grid only
    w.show();
    gProblem->bChanged = true;
    ui_->answers.push_back(Answer::Cancel);
    QVERIFY(!w.close());
    QVERIFY(w.isVisible());
    ui_->answers.push_back(Answer::No);
    QVERIFY(w.close());
    // The settings were written at the close.
    QVERIFY(FileExists(SettingsFile()));
  }

  // A settings file that cannot be written (here a folder stands in its
  // place) is said once, at the close, and the close goes on.
  void settingsThatCannotBeWrittenAreSaidOnceAtTheClose() {
    QFile::remove(QString::fromStdString(SettingsFile()));
    QVERIFY(QDir().mkpath(QString::fromStdString(SettingsFile())));
    {
      frmMain w;
      w.Load();
      w.show();
      ui_->messages.clear();
      QVERIFY(w.close());
    }
    QDir(QString::fromStdString(SettingsFile())).removeRecursively();
    QCOMPARE(ui_->messages.size(), std::size_t(1));
    QCOMPARE(ui_->messages[0].kind, std::string("error"));
    QVERIFY(QString::fromStdString(ui_->messages[0].text).contains("settings cannot be written"));
  }

  void anOpenedSampleShowsItsTitleAndTreeAndEachKindOfNode() {
    frmMain w;
    QVERIFY(Open(w, "CatalystTrial"));
    QCOMPARE(w.windowTitle(), QString("Kestrow for Windows - CatalystTrial.KSW"));
    QVERIFY(w.Node("P") && w.Node("f1") && w.Node("v2") && w.Node("s1") && w.Node("d1") && w.Node("z1+2"));
    QCOMPARE(w.Node("P")->text(0), QString("Catalyst trial"));
    auto view = [&w](const char* node) {
      w.NodeClick(node);
      return w.txtView->toPlainText();
    };
    QVERIFY(view("f1").contains("Temperature"));
    QVERIFY(w.txtView->toPlainText().contains("150, 175, 200"));
    QVERIFY(view("v2").contains("MINimize"));
    QVERIFY(view("s1").contains("log10(Impurity + 1)"));
    QCOMPARE(gStudy, gProblem->Studies.Find("s1"));
    QVERIFY(view("w1+f2").contains("Borealis"));
    w.NodeClick("d1");
    QCOMPARE(w.PaneName(), std::string("Data"));
    QCOMPARE(w.grdMain->model()->data(w.grdMain->model()->index(2, 1)).toString(), QString("150"));
  }

  void theReportNodesShowTheirReportsInTheEditor() {
    frmMain w;
    QVERIFY(Open(w, "CatalystTrial"));
    QVERIFY(!w.Node("e1+2")->isDisabled() && !w.Node("e1+4")->isDisabled() && w.Node("e1+1")->isDisabled());
    gSettings.TextEd = "/usr/bin/editor";
    gSettings.ReportFile = config_.filePath("KSTREP.TXT").toStdString();
    w.NodeClick("e1+4");
    QCOMPARE(ui_->messages.back().kind, std::string("editor"));
    QVERIFY(QFile(config_.filePath("KSTREP.TXT")).size() > 0);
    w.NodeClick("e1+2");
    QCOMPARE(ui_->messages.back().text, "/usr/bin/editor " + gSettings.ReportFile);
  }

  void typingIntoTheGridKeepsTheFloatAndRefusesNonsense() {
    frmMain w;
    w.Load();
    w.show();
    QVERIFY(w.OpenKSTFile(KESTROW_SAMPDATA "/CatalystTrial.KSW"));
    w.NodeClick("d1");
    QAbstractItemModel* m = w.grdMain->model();
    int row, col;
    w.Data().CellOf(1, 3, 2, row, col);  // Yield, run 3, replication 2
    QCOMPARE(m->data(m->index(row, col)).toString(), QString("80.8"));

    w.grdMain->setCurrentIndex(m->index(row, col));
    Enter(w, "81.250");
    QCOMPARE(m->data(m->index(row, col)).toString(), QString("81.25"));  // the float's text, not what was typed
    QVERIFY(gProblem->bChanged);
    QCOMPARE(w.grdMain->currentIndex().row(), row + 1);  // Enter moves down

    // Run 4, replication 2 is excluded: it shows empty and refuses nonsense.
    int r2 = row + 1;
    QCOMPARE(m->data(m->index(r2, col)).toString(), QString(""));
    Enter(w, "abc");
    QCOMPARE(m->data(m->index(r2, col)).toString(), QString(""));
    QCOMPARE(ui_->beeps, 1);

    // Entries reach the study when the grid is left; the excluded cell stays excluded.
    w.NodeClick("P");
    QCOMPARE(gProblem->Studies(1).GetData(1, 3, 2), 81.25f);
    QCOMPARE(gProblem->Studies(1).GetData(1, 4, 2), MISSING_VALUE);
  }

  void savingWritesTheGridAndClearsTheChangeMark() {
    QTemporaryDir dir;
    QString path = dir.filePath("catalyst.KSW");
    QFile::copy(KESTROW_SAMPDATA "/CatalystTrial.KSW", path);
    frmMain w;
    w.Load();
    w.show();
    QVERIFY(w.OpenKSTFile(path));
    w.NodeClick("d1");
    int row, col;
    w.Data().CellOf(1, 1, 1, row, col);
    w.grdMain->setCurrentIndex(w.grdMain->model()->index(row, col));
    Enter(w, "70");
    QVERIFY(w.windowTitle().endsWith("*"));
    w.mnuFileSave_Click();
    QVERIFY(!gProblem->bChanged);
    QVERIFY(!w.windowTitle().endsWith("*"));
    Problem reread;
    QVERIFY(reread.Load(path.toStdString()));
    QCOMPARE(reread.Studies(1).GetData(1, 1, 1), 70.0f);
  }

  // A study of tiny values, notes on several replications of one run and an
  // excluded cell: viewing its grid in every layout, with
  // the tiny and the excluded cells made current (an edit opens and closes on
  // them), leaving it and saving writes the very cells, flags and notes that
  // were read, and so the very bytes.
  void viewingAndSavingChangesNoByteOfTheFile() {
    QTemporaryDir dir;
    auto p = std::make_unique<Problem>();
    QVERIFY(p->Load(KESTROW_SAMPDATA "/CatalystTrial.KSW"));
    Study& s = p->Studies(1);
    for (int rv = 1; rv <= s.StudyRespVars.Count(); ++rv)
      for (int run = 1; run <= s.iNumRuns; ++run)
        for (int rep = 1; rep <= s.iReps; ++rep)
          if (s.GetData(rv, run, rep) != MISSING_VALUE) s.SetData(rv, run, rep, 1.23e-6f * static_cast<float>(run + rep) / rv);
    s.SetData(1, 1, 1, 1.23e-6f);
    QCOMPARE(s.GetFlag(1, 4, 2) & CELL_EXCLUDED, int(CELL_EXCLUDED));  // saved as missing, the flag kept
    s.AddNote(2, 1, "first");
    s.AddNote(2, 3, "third | with a bar");
    s.AddNote(2, 2, "(3) looks like a mark");
    QString path = dir.filePath("tiny.KSW");
    QVERIFY(p->Save(path.toStdString()));
    QFile before(path);
    QVERIFY(before.open(QIODevice::ReadOnly));
    const QByteArray bytes = before.readAll();
    before.close();
    Problem read;
    QVERIFY(read.Load(path.toStdString()));

    frmMain w;
    w.Load();
    w.show();
    QVERIFY(w.OpenKSTFile(path));
    for (int mode : {0, 1, 2}) {
      gSettings.GridMode = static_cast<std::int16_t>(mode);
      w.NodeClick("d1");
      QAbstractItemModel* m = w.grdMain->model();
      int row, col;
      w.Data().CellOf(1, 1, 1, row, col);
      QCOMPARE(m->data(m->index(row, col)).toString(), QString("1.23E-06"));
      w.grdMain->setCurrentIndex(m->index(row, col));
      w.Data().CellOf(1, 4, 2, row, col);
      QCOMPARE(m->data(m->index(row, col)).toString(), QString(""));  // excluded: shown as missing
      w.grdMain->setCurrentIndex(m->index(row, col));
      w.Data().CellOf(1, 2, 1, row, col);
      w.grdMain->setCurrentIndex(m->index(row, w.Data().NotesColumn()));
      w.NodeClick("P");
    }
    QVERIFY(!gProblem->bChanged);
    w.mnuFileSave_Click();

    // Cell by cell first, so that a difference names its place.
    Problem reread;
    QVERIFY(reread.Load(path.toStdString()));
    const Study& a = read.Studies(1);
    const Study& b = reread.Studies(1);
    QCOMPARE(a.GetData(1, 1, 1), 1.23e-6f);
    for (int rv = 1; rv <= a.StudyRespVars.Count(); ++rv)
      for (int run = 1; run <= a.iNumRuns; ++run)
        for (int rep = 1; rep <= a.iReps; ++rep) {
          QString at = QString("response %1 run %2 rep %3").arg(rv).arg(run).arg(rep);
          QVERIFY2(a.GetStoredValue(rv, run, rep) == b.GetStoredValue(rv, run, rep), qPrintable(at));
          QVERIFY2(a.GetFlag(rv, run, rep) == b.GetFlag(rv, run, rep), qPrintable(at));
        }
    QCOMPARE(b.Notes.Count(), a.Notes.Count());
    for (int i = 1; i <= a.Notes.Count(); ++i) {
      QCOMPARE(b.Notes(i).iRun, a.Notes(i).iRun);
      QCOMPARE(b.Notes(i).iRep, a.Notes(i).iRep);
      QCOMPARE(b.Notes(i).sText, a.Notes(i).sText);
    }
    QFile after(path);
    QVERIFY(after.open(QIODevice::ReadOnly));
    QCOMPARE(after.readAll(), bytes);
  }

  // An untitled, changed problem, then New, Open, a recent file, the wizard,
  // the quick study or Exit: Yes to the save question and Cancel in the Save
  // As dialog mean "stay": the command goes no further (no dialog of its
  // own, no other problem, the window stays), and the problem stays open
  // and changed.
  void aCancelledSaveAsInTheSaveQuestionKeepsTheProblem() {
    frmMain w;
    w.Load();
    w.show();
    AddToRecentList(KESTROW_SAMPDATA "/PlasmaEtch.KSW");
    const char* commands[] = {"mnuFileNew", "mnuFileOpen", "Recent", "mnuNewWizard", "Quick", "mnuFileExit"};
    for (const char* command : commands) {
      gProblem->sName = "Bread";
      gProblem->bChanged = true;
      ui_->messages.clear();
      ui_->answers.push_back(Answer::Yes);  // save the changes; the dialog is cancelled
      // A dialog the command went on to open is recorded and closed.
      QString opened;
      QTimer::singleShot(0, [&] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
          opened = modal->metaObject()->className();
          modal->close();
        }
      });
      if (std::string(command) == "Quick")
        w.ToolsQuickStudy();
      else if (std::string(command) == "Recent")
        w.mnuRecentFile_Click(1);
      else
        w.Action(command)->trigger();
      QCoreApplication::processEvents();
      QVERIFY2(opened.isEmpty(), qPrintable(QString(command) + " opened " + opened));
      QCOMPARE(QString::fromStdString(gProblem->sName), QString("Bread"));
      QVERIFY2(gProblem->bChanged, command);
      QVERIFY2(w.isVisible(), command);
      QCOMPARE(ui_->messages.size(), std::size_t(2));
      QCOMPARE(ui_->messages[0].kind, std::string("yesnocancel"));
      QCOMPARE(ui_->messages[1].kind, std::string("savedialog"));
    }
    gProblem->bChanged = false;
  }

  // The cue-card button with no CueCards.TXT in the program folder says so,
  // rather than doing nothing.
  void theCueCardButtonSaysWhenTheCardsCannotBeRead() {
    frmMain w;
    w.Load();
    std::string home = ProgramFolder();
    QTemporaryDir empty;
    SetProgramFolder(empty.path().toStdString());
    ui_->messages.clear();
    w.ToolsCueCard();
    SetProgramFolder(home);
    QCOMPARE(ui_->messages.size(), std::size_t(1));
    QCOMPARE(ui_->messages[0].kind, std::string("error"));
    QVERIFY(QString::fromStdString(ui_->messages[0].text).contains("missing or unreadable"));
  }

  void addingAFactorThroughTheDialog() {
    frmMain w;
    QVERIFY(Open(w, "PlasmaEtch"));
    QTimer::singleShot(0, [&] {
      auto* d = qobject_cast<frmFactor*>(QApplication::activeModalWidget());
      QVERIFY(d);
      d->txtName->setText("Pressure");
      d->txtAbbr->setText("D");
      d->grdLevels->item(0, 1)->setText("300");
      d->grdLevels->item(1, 1)->setText("200.0");
      d->cmdOK->click();
    });
    w.mnuNewF_Click();
    const Factor* f = gProblem->Factors.Find("f4");
    QVERIFY(f);
    QCOMPARE(f->sName, std::string("Pressure"));
    QCOMPARE(f->Levels(1).sName, std::string("200"));  // sorted, and rewritten as the float's text
    QVERIFY(w.Node("f4"));
    QVERIFY(gProblem->bChanged);
  }

  void theFactorDialogRefusesInTheOrderOfItsChecks() {
    QVERIFY(test::OpenSample("PlasmaEtch"));  // Power, Gap and Gas flow
    frmFactor d(EditMode::New, "");
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), T("Ferr1"));
    d.txtName->setText("Power");
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), T("WIZerr3"));
    d.txtName->setText("Pressure");
    d.grdLevels->item(0, 1)->setText("1");
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), T("WIZerr4"));
    d.grdLevels->item(1, 1)->setText("wide");
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), T("Ferr5"));
    QCOMPARE(gProblem->Factors.Count(), 3);  // nothing stored yet
    d.chkNumeric->setChecked(true);  // discrete: any text is a level
    QCOMPARE(test::ErrorAfter(*ui_, d.cmdOK), QString());
    const Factor* f = gProblem->Factors.Find("f4");
    QVERIFY(f && (f->iFlag & FACTOR_DISCRETE));
  }

  void deletingAFactorTakesItsUnlockedStudiesWithIt() {
    frmMain w;
    QVERIFY(Open(w, "PlasmaEtch"));
    ui_->answers.push_back(Answer::Yes);
    gsNode = "f2";
    w.mnuPopDelete_Click();
    QVERIFY(!gProblem->Factors.Find("f2"));
    QCOMPARE(gProblem->Studies.Count(), 0);
    QVERIFY(!w.Node("f2"));
  }

  void aFailedOpenKeepsTheOpenProblemAndTree() {
    frmMain w;
    QVERIFY(Open(w, "CatalystTrial"));
    QTemporaryDir dir;
    QFile bad(dir.filePath("bad.KSW"));
    QVERIFY(bad.open(QIODevice::WriteOnly));
    bad.write("this is no problem file");
    bad.close();
    QVERIFY(!w.OpenKSTFile(bad.fileName()));
    QCOMPARE(w.windowTitle(), QString("Kestrow for Windows - CatalystTrial.KSW"));
    QVERIFY(w.Node("f1"));
  }

  // A page of charts on show: the chart commands come alive, Save Graphic
  // writes the format of the extension it is given, and an extension it does
  // not know is said with nothing written.
  void aChartPageOnShowCanBeSavedAsAGraphic() {
    frmMain w;
    QVERIFY(Open(w, "CatalystTrial"));
    QVERIFY(!w.Action("mnuFileSaveGraphic")->isEnabled());
    gphStart();
    for (int i = 0; i < 2; ++i) {
      Chart& c = gphNewChart(CHT_SCATTER);
      c.sTitle = "Chart " + std::to_string(i + 1);
      for (float x : {1.0f, 2.0f, 3.0f}) {
        DataPoint p;
        p.fX = x;
        p.fY = x * x + static_cast<float>(i);
        p.iDotType = 1;
        p.bJoined = x > 1;
        c.AddData(p);
      }
    }
    w.ShowChartPage("Scattergram");
    QVERIFY(w.ChartsOnShow());
    // With KESTROW_SHOTS set to a folder, the window is saved there to be looked at.
    if (qEnvironmentVariableIsSet("KESTROW_SHOTS")) {
      w.resize(1100, 700);
      w.show();
      QVERIFY(QTest::qWaitForWindowExposed(&w));
      w.grab().save(qEnvironmentVariable("KESTROW_SHOTS") + "/MainCharts.png");
    }
    QVERIFY(w.Action("mnuFileSaveGraphic")->isEnabled());
    QVERIFY(w.Action("tbAddLabel")->isEnabled());
    QVERIFY(!w.Action("tbUnZoom")->isEnabled());
    QVERIFY(w.Action("tbAddLog")->isEnabled());  // the charts' figures go to the log
    gPage.Zoom(gPage.Charts[0].ox + 1, gPage.Charts[0].oy + 1);
    w.ToolsUnZoom();
    QVERIFY(!gPage.bZoomed);

    QTemporaryDir dir;
    ui_->savePaths.push_back(dir.filePath("page.png").toStdString());
    w.mnuFileSaveGraphic_Click();
    QCOMPARE(ui_->messages.back().text, std::string("Save graphic as"));
    QImage saved(dir.filePath("page.png"));
    QVERIFY(!saved.isNull());
    QVERIFY(w.SaveGraphicFile(dir.filePath("page.WMF").toStdString()));
    QFile wmf(dir.filePath("page.WMF"));
    QVERIFY(wmf.open(QIODevice::ReadOnly));
    QCOMPARE(wmf.read(4), QByteArray("\xD7\xCD\xC6\x9A", 4));
    QVERIFY(!w.SaveGraphicFile(dir.filePath("page.gif").toStdString()));
    QCOMPARE(ui_->messages.back().text, std::string("Invalid extension for graphics file"));
    QVERIFY(!QFile::exists(dir.filePath("page.gif")));
    gphStart();
  }

  // The administrator's new dictionary holds the captions of every form,
  // the study dialogs included, which are made over an empty study for it.
  void aNewDictionaryCollectsTheCaptionsOfTheForms() {
    QTemporaryDir folder;
    QVERIFY(QFile::copy(KESTROW_BIN "/KSTlang.MDB", folder.filePath("KSTlang.MDB")));
    SetProgramFolder(folder.path().toStdString());
    frmMain w;
    w.Load();
    ui_->answers.push_back(Answer::Yes);
    w.mnuAdminDictionary_Click();
    std::string caption;
    QVERIFY(FormCaption("frmANOVA", "optVar", 2, caption));
    QCOMPARE(QString::fromStdString(caption), QString(" Mean-square deviation (MSD)"));
    for (auto [form, control, index] : {std::tuple{"frmNonLin", "lblDL", 0}, {"frmTest", "cmdDoIt", 10},
                                        {"frmFilter", "lblHead", 0}, {"frmXform", "cmdCompute", 0}})
      QVERIFY2(FormCaption(form, control, index, caption), form);
    CloseLanguage();
    SetProgramFolder("");
    QVERIFY(OpenLanguage(KESTROW_BIN "/KSTlang.MDB", "English"));
  }

 private:
  ScriptedUi* ui_ = nullptr;
  QTemporaryDir config_;
};

QTEST_MAIN(tst_frmMain)
#include "tst_frmMain.moc"
