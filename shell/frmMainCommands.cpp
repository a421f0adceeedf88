// The command handlers of the main window.
#include <algorithm>

#include <QClipboard>
#include <QItemSelectionModel>
#include <QFileDialog>
#include <QGuiApplication>
#include <QTableView>
#include <QMessageBox>
#include <QStackedWidget>
#include <QTreeWidget>

#include "core/CueCards.h"
#include "core/Globals.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/GridCommands.h"
#include "data/Statistics.h"
#include "shell/QtText.h"
#include "shell/Translate.h"
#include "shell/frmANOVA.h"
#include "shell/frmCueCard.h"
#include "shell/frmDesSel.h"
#include "shell/frmFactor.h"
#include "shell/frmFilter.h"
#include "shell/frmMain.h"
#include "shell/frmNonLin.h"
#include "shell/frmQuick.h"
#include "shell/frmRV.h"
#include "shell/frmSelFac.h"
#include "shell/frmSetSeq.h"
#include "shell/frmStudy.h"
#include "shell/frmTest.h"
#include "shell/frmViewDes.h"
#include "shell/frmWizard.h"
#include "shell/frmXform.h"
#include "workbench/MainCommands.h"
#include "workbench/PrintLog.h"
#include "workbench/ProblemTree.h"

namespace kestrow {

bool frmMain::OpenKSTFile(const QString& path) {
  UnLoadDataGrid();
  if (!kestrow::OpenKSTFile(path.toStdString())) return false;
  ProblemToTree();
  ClearPane();
  FixRecentMenu();
  if (QTreeWidgetItem* root = Node("P")) {
    sstv1->setCurrentItem(root);
    root->setExpanded(true);
  }
  UpdateMenus();
  return true;
}

void frmMain::mnuFileNew_Click() {
  UnLoadDataGrid();
  if (!SaveLogic()) return;
  CreateNew();
  ProblemToTree();
  ClearPane();
  UpdateMenus();
}

void frmMain::mnuFileOpen_Click() {
  UnLoadDataGrid();
  if (!SaveLogic()) return;
  QString path = QFileDialog::getOpenFileName(this, Tr("LoadKST"), Q(DataDir()), "Kestrow (*.KSW *.ksw)");
  if (!path.isEmpty()) OpenKSTFile(path);
}

void frmMain::mnuFileSave_Click() {
  UnLoadDataGrid();
  if (FileSave()) FixRecentMenu();
  UpdateMenus();
}

void frmMain::mnuFileSaveAs_Click() {
  UnLoadDataGrid();
  if (FileSaveAs()) FixRecentMenu();
  UpdateMenus();
}

void frmMain::mnuFileExport_Click() {
  UnLoadDataGrid();
  std::string offered = gProblem->sPathFileName;
  if (UCase(GetFExt(offered)) == "KSW") offered = offered.substr(0, offered.size() - 3) + "txt";
  QString path = QFileDialog::getSaveFileName(this, Tr("MNmsg9"), Q(offered), "Text (*.txt)");
  if (path.isEmpty()) return;
  if (!gProblem->Export(path.toStdString())) ErrorBox(GetText("MNerr4"));
}

void frmMain::mnuRecentFile_Click(int i) {
  std::string path = RecentFileFromCaption(RecentMenuCaption(i));
  UnLoadDataGrid();
  if (!FileExists(path)) {
    ErrorBox(GetText("MNerr7"));
    return;
  }
  if (SaveLogic()) OpenKSTFile(Q(path));
}

void frmMain::AddEditFactor(int mode) {
  UnLoadDataGrid();
  std::string selected = gsNode.empty() ? gsKey : gsNode;
  frmFactor dialog(static_cast<EditMode>(mode), selected, this);
  dialog.exec();
  if (dialog.stored.empty()) return;
  ProblemToTree(true);
  std::string shown = dialog.stored.back();
  if (QTreeWidgetItem* node = Node(shown)) sstv1->setCurrentItem(node);
  NodeClick(shown);
}

void frmMain::AddEditRV(int mode) {
  UnLoadDataGrid();
  std::string selected = gsNode.empty() ? gsKey : gsNode;
  frmRV dialog(static_cast<EditMode>(mode), selected, this);
  if (dialog.exec() != QDialog::Accepted || dialog.storedKey.empty()) return;
  ProblemToTree(true);
  if (QTreeWidgetItem* node = Node(dialog.storedKey)) sstv1->setCurrentItem(node);
  NodeClick(dialog.storedKey);
}

void frmMain::AddEditStudy(int mode) {
  UnLoadDataGrid();
  std::string key = gsNode.empty() || gsNode[0] != 's' ? (gStudy ? gStudy->sKey : "") : gsNode;
  frmStudy dialog(mode, mode == 1 ? "" : key, this);
  if (!dialog.Refusal().empty()) {
    ErrorBox(dialog.Refusal());
    return;
  }
  if (dialog.exec() != QDialog::Accepted || dialog.StoredKey().empty()) return;
  ProblemToTree(true);
  if (QTreeWidgetItem* node = Node(dialog.StoredKey())) sstv1->setCurrentItem(node);
  NodeClick(dialog.StoredKey());
}

void frmMain::ToolsQuickStudy() {
  UnLoadDataGrid();
  if (!SaveLogic()) return;
  frmQuick dialog(this);
  if (dialog.exec() != QDialog::Accepted) return;
  ProblemToTree();
  ClearPane();
  if (dialog.GoToData()) {
    if (QTreeWidgetItem* node = Node("d1")) sstv1->setCurrentItem(node);
    NodeClick("d1");
  }
  UpdateMenus();
}

void frmMain::NewWizard() {
  UnLoadDataGrid();
  if (!SaveLogic()) return;
  frmWizard dialog(this);
  dialog.exec();
  // A cancelled wizard keeps what the problem holds by then.
  ProblemToTree();
  ClearPane();
  UpdateMenus();
}

void frmMain::ToolsViewLog() { ViewLog(); }

void frmMain::ToolsViewDes() {
  if (!gStudy || gStudy->sDesignName.empty()) return;
  UnLoadDataGrid();
  frmViewDes(*gStudy, this).exec();
}

void frmMain::mnuStudyRandomise_Click() {
  if (!gStudy) return;
  UnLoadDataGrid();
  frmSetSeq dialog(*gStudy, this);
  dialog.exec();
  gProblem->bChanged = true;
  if (PaneName() == "Data") NodeClick("d" + gStudy->sKey.substr(1));
  UpdateMenus();
}

void frmMain::mnuStudyTransform_Click() {
  if (!gStudy || gStudy->StudyRespVars.Empty()) return;
  UnLoadDataGrid();
  frmXform dialog(*gStudy, this);
  if (dialog.exec() != QDialog::Accepted || !dialog.Changed()) return;
  gProblem->bChanged = true;
  // The study's view and its grid show the transformed columns.
  std::string shown = gsKey;
  ProblemToTree(true);
  // Making the node current again shows it, as a click does.
  if (QTreeWidgetItem* node = Node(shown))
    sstv1->setCurrentItem(node);
  else
    NodeClick(shown);
}

void frmMain::mnuEditCopy_Click() {
  if (PaneName() != "Data" || !gStudy) return;
  // The bounding rectangle of the selection, when it holds more than one cell.
  Grid::Range selection{0, 0, 0, 0};
  const QModelIndexList picked = grdMain->selectionModel() ? grdMain->selectionModel()->selectedIndexes()
                                                            : QModelIndexList();
  if (!picked.isEmpty()) {
    int top = picked.first().row(), bottom = top, left = picked.first().column(), right = left;
    for (const QModelIndex& i : picked) {
      top = std::min(top, i.row());
      bottom = std::max(bottom, i.row());
      left = std::min(left, i.column());
      right = std::max(right, i.column());
    }
    selection = {top, left, bottom - top + 1, right - left + 1};
  }
  QGuiApplication::clipboard()->setText(Q(CopyData(dataGrid_, grid_, *gStudy, &selection)));
}

void frmMain::mnuEditPaste_Click() {
  if (PaneName() != "Data" || !gStudy) return;
  UnLoadDataGrid();  // ends a running edit
  std::string text = QGuiApplication::clipboard()->text().toStdString();
  if (PasteData(dataGrid_, grid_, *gProblem, *gStudy, text)) UnLoadDataGrid();
  UpdateMenus();
}

void frmMain::mnuEditPasteToC_Click() {
  if (PaneName() != "Data" || !gStudy) return;
  QModelIndex at = grdMain->currentIndex();
  UnLoadDataGrid();
  std::string text = QGuiApplication::clipboard()->text().toStdString();
  if (PasteToCursor(dataGrid_, grid_, *gProblem, *gStudy, text, at.row(), at.column())) UnLoadDataGrid();
  UpdateMenus();
}

void frmMain::mnuEditClear_Click() {
  if (PaneName() != "Data" || !gStudy) return;
  if (!ClearData(*gProblem, *gStudy)) return;
  dataGrid_.FixUpDataGrid(*gStudy);
  dataGrid_.LoadDataGrid(*gStudy);
  UpdateMenus();
}

void frmMain::mnuEditExtrapolate_Click() {
  if (!gStudy) return;
  UnLoadDataGrid();
  Extrapolate(*gProblem, *gStudy);
  if (PaneName() == "Data") dataGrid_.LoadDataGrid(*gStudy);
  UpdateMenus();
}

void frmMain::mnuEditWipe_Click() {
  if (!gStudy) return;
  UnLoadDataGrid();
  if (WipeExtrapolated(*gProblem, *gStudy) && PaneName() == "Data") dataGrid_.LoadDataGrid(*gStudy);
  UpdateMenus();
}

void frmMain::mnuHlpDesigns_Click() { frmDesHelp2(this).exec(); }

void frmMain::mnuNewF_Click() {
  gsNode.clear();
  AddEditFactor(static_cast<int>(EditMode::New));
}

void frmMain::mnuNewRV_Click() {
  gsNode.clear();
  AddEditRV(static_cast<int>(EditMode::New));
}

void frmMain::mnuPopCopy_Click() {
  if (!gsNode.empty() && gsNode[0] == 'f') AddEditFactor(static_cast<int>(EditMode::Copy));
  else if (!gsNode.empty() && gsNode[0] == 'v') AddEditRV(static_cast<int>(EditMode::Copy));
}

void frmMain::mnuPopEdit_Click() {
  if (!gsNode.empty() && gsNode[0] == 'f') AddEditFactor(static_cast<int>(EditMode::Edit));
  else if (!gsNode.empty() && gsNode[0] == 'v') AddEditRV(static_cast<int>(EditMode::Edit));
}

void frmMain::mnuPopDelete_Click() {
  UnLoadDataGrid();
  bool done = !gsNode.empty() && (gsNode[0] == 'f' ? DeleteFactor(gsNode) : DeleteRespVar(gsNode));
  if (!done) return;
  ProblemToTree(true);
  ClearPane();
  UpdateMenus();
}

void frmMain::mnuPopDelete3_Click() {
  UnLoadDataGrid();
  if (!DeleteStudy(gsNode)) return;
  ProblemToTree(true);
  ClearPane();
  UpdateMenus();
}

void frmMain::mnuLockStudy_Click() {
  if (!gStudy) return;
  gsNode = gStudy->sKey;
  mnuPopLock_Click();
}

void frmMain::mnuPopLock_Click() {
  UnLoadDataGrid();
  std::string key = gsNode;
  if (!LockStudy(key)) return;
  ProblemToTree(true);
  if (QTreeWidgetItem* node = Node(key)) sstv1->setCurrentItem(node);
  NodeClick(key);
}

void frmMain::mnuAdminStats_Click() {
  frmTest dialog(this);
  dialog.exec();
}

void frmMain::mnuAdminReset_Click() {
  std::string error;
  if (!AdminResetCueCards(CueCardFile(), error)) ReportError(error, "AdminReset");
}

namespace {

// Every form of the program, for the dictionary commands.
std::vector<FormCaptionRow> AllCaptions(frmMain* main) {
  std::vector<FormCaptionRow> rows = FormCaptions(main);
  auto add = [&](QWidget* form) {
    auto more = FormCaptions(form);
    rows.insert(rows.end(), more.begin(), more.end());
    delete form;
  };
  add(new frmFactor(EditMode::New, "", nullptr));
  add(new frmRV(EditMode::New, "", nullptr));
  add(new frmCueCard("Cue card|", nullptr));
  add(new frmSelFac({}, nullptr));
  add(new frmDesHelp2(nullptr));
  add(new frmTest(nullptr));
  // The study dialogs, over an empty study.
  Study scratch;
  Statistics none;
  add(new frmXform(scratch, nullptr));
  add(new frmFilter(scratch, "", "", nullptr));
  add(new frmANOVA(scratch, none, nullptr));
  add(new frmNonLin(scratch, none, nullptr));
  return rows;
}

}  // namespace

// Runs a dictionary command on the language database with it closed, and
// opens it again afterwards.
static void RewriteDictionary(frmMain* main, bool fresh, const char* procedure) {
  std::string path = JoinPath(ProgramFolder(), "KSTlang.MDB");
  std::vector<FormCaptionRow> rows = AllCaptions(main);
  CloseLanguage();
  std::string error;
  bool ok = fresh ? BuildDictionary(path, rows, error) : UpdateDictionary(path, rows, error);
  if (!ok) ReportError(error, procedure);
  OpenLanguage(path, gSettings.Language);
}

void frmMain::mnuAdminDictionary_Click() {
  if (!WarnYesNo("This makes a new and incomplete language database, KSTlang.MDB, with the captions of the "
                 "forms and no message texts. Forms will report errors as they load; answer them with OK. "
                 "Go on?"))
    return;
  RewriteDictionary(this, true, "BuildDictionary");
}

void frmMain::mnuAdminUpdate_Click() { RewriteDictionary(this, false, "UpdateDictionary"); }

void frmMain::mnuHlpAbout_Click() {
  QMessageBox::about(this, Q(PROGRAM_TITLE),
                     QString("<b>%1</b><br>Version %2.%3.%4<br><br>Design and analysis of experiments.")
                         .arg(PROGRAM_TITLE)
                         .arg(KESTROW_VERSION_MAJOR)
                         .arg(KESTROW_VERSION_MINOR)
                         .arg(KESTROW_VERSION_PATCH));
}

void frmMain::ToolsFlipTree() {
  bool show = !sstv1->isVisible();
  sstv1->setVisible(show);
  QAction* a = Action("tbTreeYes");
  a->setToolTip(Tr(show ? "TreeNo" : "TreeYes"));
}

void frmMain::ToolsToggle() {
  // Between the data grid and what else the pane shows.
  if (PaneName() == "Data") {
    NodeClick(gStudy ? gStudy->sKey : "P");
  } else if (gStudy) {
    NodeClick("d" + gStudy->sKey.substr(1));
  }
}

void frmMain::ToolsCueCard() {
  // The card of what is on show.
  NodeRef ref = ParseNodeKey(gsKey);
  std::string tag;
  switch (ref.kind) {
    case 'P': tag = "Problem"; break;
    case 'f': case 'w': tag = "Factor"; break;
    case 'v': case 'x': tag = "RespVar"; break;
    case 's': tag = "Study"; break;
    case 'd': tag = "Data"; break;
    case 'z': tag = AnalysisTag(ref.number); break;
    default: tag = "Problem"; break;
  }
  ShowCueCard(tag, this);
}

}  // namespace kestrow
