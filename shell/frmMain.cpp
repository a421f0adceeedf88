#include "shell/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QTableView>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <set>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Settings.h"
#include "core/Ui.h"
#include "data/StudyReports.h"
#include "charts/ChartPage.h"
#include "shell/ChartPane.h"
#include "shell/Colours.h"
#include "shell/DataGridDelegate.h"
#include "shell/GridModel.h"
#include "shell/Icons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"
#include "workbench/MainCommands.h"
#include "workbench/PaneViews.h"
#include "workbench/ProblemTree.h"
#include "workbench/ShowAnalysis.h"

namespace kestrow {

namespace {

QString Html(const std::string& s) { return Q(s).toHtmlEscaped(); }

// The pane names of the right-hand side.
const char* PANE_VIEW = "View";
const char* PANE_DATA = "Data";

}  // namespace

frmMain::frmMain(QWidget* parent) : QMainWindow(parent), dataGrid_(grid_) {
  setObjectName("frmMain");
  setWindowTitle(PROGRAM_TITLE);

  split_ = new QSplitter(this);
  split_->setObjectName("split");
  sstv1 = new QTreeWidget(split_);
  sstv1->setObjectName("sstv1");
  sstv1->setHeaderHidden(true);
  sstv1->setContextMenuPolicy(Qt::CustomContextMenu);
  sstv1->setIconSize(QSize(18, 18));

  pane_ = new QStackedWidget(split_);
  txtView = new QTextBrowser(pane_);
  txtView->setObjectName("txtView");
  grdMain = new QTableView(pane_);
  grdMain->setObjectName("grdMain");
  grdMain->horizontalHeader()->hide();
  grdMain->verticalHeader()->hide();
  grdMain->setSelectionMode(QAbstractItemView::SingleSelection);
  // A cell's edit begins as soon as it becomes current, so a click or Enter
  // leaves the user typing into the cell at once.
  grdMain->setEditTriggers(QAbstractItemView::CurrentChanged | QAbstractItemView::DoubleClicked |
                           QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed);
  grdMain->verticalHeader()->setDefaultSectionSize(grdMain->fontMetrics().height() + 8);
  picChart = new ChartPane(gPage, pane_);
  pane_->addWidget(txtView);
  pane_->addWidget(grdMain);
  pane_->addWidget(picChart);
  connect(picChart, &ChartPane::Zoomed, this, [this] { UpdateMenus(); });
  connect(picChart, &ChartPane::EmptyDoubleClick, this, [this] {
    if (ParseNodeKey(gsKey).kind == 'z') ShowEditAnalysis(2);
  });
  split_->addWidget(sstv1);
  split_->addWidget(pane_);
  split_->setStretchFactor(1, 1);
  setCentralWidget(split_);

  gridModel_ = new GridModel(grid_, this);
  gridModel_->Editable = [this](int row, int col) {
    std::string start;
    return paneName_ == PANE_DATA && dataGrid_.BeforeEdit(row, col, start);
  };
  gridModel_->Commit = [this](int row, int col, const QString& text) {
    bool accepted = true;
    GridEntry(row, col, text, accepted);
    return accepted;
  };
  grdMain->setModel(gridModel_);
  delegate_ = new DataGridDelegate(this);
  delegate_->StartText = [this](int row, int col) {
    std::string start;
    dataGrid_.BeforeEdit(row, col, start);
    return Q(start);
  };
  delegate_->EnterMove = [this](int& row, int& col) { dataGrid_.EnterKey(row, col); };
  connect(delegate_, &DataGridDelegate::moveTo, this,
          [this](int row, int col) { grdMain->setCurrentIndex(gridModel_->index(row, col)); });
  grdMain->setItemDelegate(delegate_);

  BuildMenus();
  BuildToolbar();
  statusBar();

  connect(sstv1, &QTreeWidget::itemClicked, this,
          [this](QTreeWidgetItem* item) { NodeClick(item->data(0, Qt::UserRole).toString().toStdString()); });
  connect(sstv1, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item, QTreeWidgetItem*) {
    if (item && QApplication::mouseButtons() == Qt::NoButton)
      NodeClick(item->data(0, Qt::UserRole).toString().toStdString());
  });
  // A double click on an analysis opens its settings first.
  connect(sstv1, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
    NodeRef ref = ParseNodeKey(item->data(0, Qt::UserRole).toString().toStdString());
    if (ref.kind == 'z' && IsAnalysisBuilt(ref.number) && gStudy) ShowEditAnalysis(2);
    if (ref.kind == 'e' && ref.number == 3 && gStudy) ShowEditMultiChart(true);
  });
  connect(sstv1, &QTreeWidget::customContextMenuRequested, this, &frmMain::ContextMenu);
  connect(sstv1, &QTreeWidget::itemExpanded, this, &frmMain::TreeExpanded);
}

frmMain::~frmMain() = default;

QAction* frmMain::AddAction(QMenu* menu, const char* name, const char* caption, void (frmMain::*handler)()) {
  auto* a = new QAction(caption, this);
  a->setObjectName(name);
  menu->addAction(a);
  actions_[name] = a;
  if (handler) {
    connect(a, &QAction::triggered, this, handler);
  } else {
    a->setEnabled(false);  // its work comes with a later part of the program
  }
  return a;
}

QAction* frmMain::Action(const std::string& name) const {
  auto it = actions_.find(name);
  return it == actions_.end() ? nullptr : it->second;
}

QMenu* frmMain::Menu(const std::string& name) const {
  auto it = menus_.find(name);
  return it == menus_.end() ? nullptr : it->second;
}

QTreeWidgetItem* frmMain::Node(const std::string& key) const {
  auto it = nodes_.find(key);
  return it == nodes_.end() ? nullptr : it->second;
}

void frmMain::BuildMenus() {
  auto menu = [&](const char* name, const char* caption, bool popup = false) {
    QMenu* m = popup ? new QMenu(caption, this) : menuBar()->addMenu(caption);
    m->setObjectName(name);
    menus_[name] = m;
    return m;
  };
  QMenu* file = menu("mnuFile", "&File");
  AddAction(file, "mnuFileNew", "&New", &frmMain::mnuFileNew_Click)->setShortcut(QKeySequence::New);
  AddAction(file, "mnuNewWizard", "New with &Wizard...", &frmMain::NewWizard);
  AddAction(file, "mnuFileOpen", "&Open...", &frmMain::mnuFileOpen_Click)->setShortcut(QKeySequence::Open);
  AddAction(file, "mnuFileSave", "&Save", &frmMain::mnuFileSave_Click)->setShortcut(QKeySequence::Save);
  AddAction(file, "mnuFileSaveAs", "Save &As...", &frmMain::mnuFileSaveAs_Click);
  file->addSeparator();
  AddAction(file, "mnuFileSaveGraphic", "Save &Graphic...", &frmMain::mnuFileSaveGraphic_Click);
  AddAction(file, "mnuFilePrint", "&Print");
  AddAction(file, "mnuFilePrintSetup", "Print Set&up...");
  AddAction(file, "mnuFileExport", "&Export as Text...", &frmMain::mnuFileExport_Click);
  QAction* gap = file->addSeparator();
  gap->setObjectName("mnuFileGap6");
  actions_["mnuFileGap6"] = gap;
  for (int i = 1; i <= 4; ++i) {
    auto* a = new QAction(this);
    a->setObjectName(QString("mnuRecentFile_%1").arg(i));
    file->addAction(a);
    actions_["mnuRecentFile_" + std::to_string(i)] = a;
    connect(a, &QAction::triggered, this, [this, i] { mnuRecentFile_Click(i); });
  }
  file->addSeparator();
  AddAction(file, "mnuFileExit", "E&xit", nullptr)->setEnabled(true);
  connect(Action("mnuFileExit"), &QAction::triggered, this, &QWidget::close);

  QMenu* edit = menu("mnuEdit", "&Edit");
  AddAction(edit, "mnuEditCopy", "&Copy", &frmMain::mnuEditCopy_Click);
  AddAction(edit, "mnuEditPaste", "&Paste", &frmMain::mnuEditPaste_Click);
  AddAction(edit, "mnuEditPasteToC", "Paste at C&ursor", &frmMain::mnuEditPasteToC_Click);
  AddAction(edit, "mnuEditClear", "C&lear All Data...", &frmMain::mnuEditClear_Click);
  AddAction(edit, "mnuEditExtrapolate", "E&xtrapolate Missing Values", &frmMain::mnuEditExtrapolate_Click);
  AddAction(edit, "mnuEditWipe", "&Wipe Extrapolated Values...", &frmMain::mnuEditWipe_Click);

  QMenu* tools = menu("mnuTools", "&Tools");
  AddAction(tools, "mnuNewF", "New &Factor...", &frmMain::mnuNewF_Click);
  AddAction(tools, "mnuNewRV", "New &Response Variable...", &frmMain::mnuNewRV_Click);
  AddAction(tools, "mnuNewS", "New &Study...", nullptr)->setEnabled(true);
  connect(Action("mnuNewS"), &QAction::triggered, this, [this] { AddEditStudy(1); });
  tools->addSeparator();
  AddAction(tools, "mnuRunCheck", "Run &Check...");
  AddAction(tools, "mnuRankOrder", "Ran&k Order of Runs...");
  AddAction(tools, "mnuLockStudy", "&Lock Study...", &frmMain::mnuLockStudy_Click);
  tools->addSeparator();
  // The status option of the chart pane: the text about the point under the
  // pointer.
  QAction* details = AddAction(tools, "mnuPointDetails", "Show Point &Details", nullptr);
  details->setCheckable(true);
  details->setChecked(true);
  details->setEnabled(true);
  connect(details, &QAction::toggled, this, [this](bool on) { picChart->SetStatusOption(on); });
  AddAction(tools, "mnuToolsPrefs", "&Preferences...");

  QMenu* study = menu("mnuStudy", "&Study");
  AddAction(study, "mnuStudyRandomise", "&Run Order...", &frmMain::mnuStudyRandomise_Click);
  AddAction(study, "mnuStudyTransform", "&Transform Data...", &frmMain::mnuStudyTransform_Click);
  AddAction(study, "mnuStudyCentre", "Add &Center Points...");
  AddAction(study, "mnuStudyAxial", "Add &Axial Points...");
  AddAction(study, "mnuStudyNonlin", "&Non-linearity Test...", &frmMain::mnuStudyNonlin_Click);
  AddAction(study, "mnuStudyFoldover", "&Fold-over...");

  QMenu* device = menu("mnuDevice", "&Device");
  for (auto [name, caption] : {std::pair{"mnuDevConfigure", "&Configure..."}, {"mnuDevStart", "&Start"},
                               {"mnuDevStop", "S&top"}})
    AddAction(device, name, caption);

  QMenu* admin = menu("mnuAdmin", "&Admin");
  AddAction(admin, "mnuAdminStats", "&Test Stats and Table Routines...", &frmMain::mnuAdminStats_Click);
  AddAction(admin, "mnuAdminReset", "&Reset Cue Card Checks", &frmMain::mnuAdminReset_Click);
  AddAction(admin, "mnuValidate", "&Validate Designs Database...");
  AddAction(admin, "mnuAdminDictionary", "&Build Language Database...", &frmMain::mnuAdminDictionary_Click);
  AddAction(admin, "mnuAdminUpdate", "&Update Language Database", &frmMain::mnuAdminUpdate_Click);

  auto* scatter = new QAction("S&cattergram", this);
  scatter->setObjectName("mnuScattergram");
  scatter->setEnabled(false);
  connect(scatter, &QAction::triggered, this, &frmMain::mnuScattergram_Click);
  menuBar()->addAction(scatter);
  actions_["mnuScattergram"] = scatter;

  QMenu* help = menu("mnuHelp", "&Help");
  AddAction(help, "mnuHlpContents", "&Contents");
  AddAction(help, "mnuHelpSupport", "&Support");
  AddAction(help, "mnuHlpDesigns", "&Design Selection Criteria", &frmMain::mnuHlpDesigns_Click);
  help->addSeparator();
  AddAction(help, "mnuHlpAbout", "&About Kestrow...", &frmMain::mnuHlpAbout_Click);

  // Context menus of the tree.
  QMenu* pop1 = menu("mnuPopup1", "Problem", true);
  AddAction(pop1, "mnuPopNewS", "New &Study...", nullptr)->setEnabled(true);
  connect(Action("mnuPopNewS"), &QAction::triggered, this, [this] { AddEditStudy(1); });
  QMenu* pop2 = menu("mnuPopup2", "Item", true);
  AddAction(pop2, "mnuPopCopy", "&Copy", &frmMain::mnuPopCopy_Click);
  AddAction(pop2, "mnuPopEdit", "&Edit...", &frmMain::mnuPopEdit_Click);
  AddAction(pop2, "mnuPopDelete", "&Delete", &frmMain::mnuPopDelete_Click);
  QMenu* pop3 = menu("mnuPopUp3", "Study", true);
  AddAction(pop3, "mnuPopCopy3", "&Copy", nullptr)->setEnabled(true);
  connect(Action("mnuPopCopy3"), &QAction::triggered, this, [this] { AddEditStudy(2); });
  AddAction(pop3, "mnuPopEdit3", "&Edit...", nullptr)->setEnabled(true);
  connect(Action("mnuPopEdit3"), &QAction::triggered, this, [this] { AddEditStudy(3); });
  AddAction(pop3, "mnuPopDelete3", "&Delete", &frmMain::mnuPopDelete3_Click);
  AddAction(pop3, "mnuPopLock", "&Lock", &frmMain::mnuPopLock_Click);
  QMenu* pop4 = menu("mnuPopUp4", "Factors", true);
  AddAction(pop4, "mnuPopNewF", "New &Factor...", &frmMain::mnuNewF_Click);
  QMenu* pop5 = menu("mnuPopUp5", "Response Variables", true);
  AddAction(pop5, "mnuPopNewRV", "New &Response Variable...", &frmMain::mnuNewRV_Click);
}

void frmMain::BuildToolbar() {
  toolbar_ = addToolBar("Toolbar");
  toolbar_->setObjectName("Toolbar1");
  toolbar_->setMovable(false);
  toolbar_->setIconSize(QSize(22, 22));
  // Buttons 4, 8, 10 and 14 are separators; the others carry tool-tips TBRtt1 and on.
  struct Button {
    int number;
    const char* key;
    void (frmMain::*handler)();
  };
  const Button buttons[] = {{1, "New", &frmMain::mnuFileNew_Click},
                            {2, "Open", &frmMain::mnuFileOpen_Click},
                            {3, "Save", &frmMain::mnuFileSave_Click},
                            {4, nullptr, nullptr},
                            {5, "Print", nullptr},
                            {6, "Quick", &frmMain::ToolsQuickStudy},
                            {7, "Toggle", &frmMain::ToolsToggle},
                            {8, nullptr, nullptr},
                            {9, "CueCard", &frmMain::ToolsCueCard},
                            {10, nullptr, nullptr},
                            {11, "ViewLog", &frmMain::ToolsViewLog},
                            {12, "ViewDes", &frmMain::ToolsViewDes},
                            {13, "TreeYes", &frmMain::ToolsFlipTree},
                            {14, nullptr, nullptr},
                            {15, "UnZoom", &frmMain::ToolsUnZoom},
                            {16, "EraseLabels", &frmMain::ToolsEraseLabels},
                            {17, "AddLabel", &frmMain::ToolsAddLabel},
                            {18, "AddLog", &frmMain::ToolsAddLog},
                            {19, "Help", nullptr}};
  for (const Button& b : buttons) {
    if (!b.key) {
      toolbar_->addSeparator();
      continue;
    }
    QAction* a = toolbar_->addAction(ToolIcon(b.key), b.key);
    a->setObjectName(QString("tb") + b.key);
    a->setData(b.number);
    actions_[std::string("tb") + b.key] = a;
    if (b.handler) connect(a, &QAction::triggered, this, b.handler);
    else a->setEnabled(false);
  }
}

void frmMain::Load() {
  TranslateForm(this);
  for (const auto& [name, action] : actions_) {
    if (name.rfind("tb", 0) != 0) continue;
    int number = action->data().toInt();
    QString tip = Q(GetText("TBRtt" + std::to_string(number)));
    action->setToolTip(tip);
    action->setText(tip);
  }
  // Placement from the settings; the splitter position is kept in twips.
  move(gSettings.MainX, gSettings.MainY);
  resize(std::max<int>(gSettings.MainWidth, 480), std::max<int>(gSettings.MainHeight, 320));
  split_->setSizes({std::max(120, gSettings.SplitX / 15), std::max(300, width() - gSettings.SplitX / 15)});

  CreateNew();
  ProblemToTree();
  ClearPane();
  SetTitle();
  QPalette pal = pane_->palette();
  pal.setColor(QPalette::Window, ToQColor(gSettings.DataWindow));
  pane_->setPalette(pal);
  pane_->setAutoFillBackground(true);
  grid_.BackColour = gSettings.DataGrid;

  // Printing stays off without a printer, the device without a device.
  Action("mnuFilePrint")->setEnabled(false);
  Action("mnuDevStart")->setEnabled(false);
  Menu("mnuAdmin")->menuAction()->setVisible(gbAdmin);
  FixRecentMenu();
  UpdateMenus();
  if (!gsCommandFile.empty()) OpenKSTFile(Q(gsCommandFile));
}

void frmMain::SetTitle() { setWindowTitle(Q(MainTitle()) + (gProblem->bChanged ? " *" : "")); }

void frmMain::FixRecentMenu() {
  bool any = false;
  for (int i = 1; i <= 4; ++i) {
    QAction* a = Action("mnuRecentFile_" + std::to_string(i));
    std::string caption = RecentMenuCaption(i);
    a->setVisible(!caption.empty());
    a->setText(Q(caption));
    any = any || !caption.empty();
  }
  Action("mnuFileGap6")->setVisible(any);
}

void frmMain::ProblemToTree(bool keepState) {
  // A command that edits the problem keeps what the user had opened.
  std::set<std::string> expanded;
  if (keepState)
    for (const auto& [key, node] : nodes_)
      if (node->isExpanded()) expanded.insert(key);
  sstv1->clear();
  nodes_.clear();
  for (const TreeNode& n : kestrow::ProblemToTree(*gProblem)) {
    QTreeWidgetItem* parent = n.parent.empty() ? nullptr : Node(n.parent);
    auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(sstv1);
    item->setText(0, Q(n.caption));
    item->setData(0, Qt::UserRole, Q(n.key));
    if (gSettings.TreeIcons) item->setIcon(0, TreeIcon(n.icon));
    // The analyses not yet built, and the reports other than the statistics
    // report and the worksheet, come with later parts of the program.
    NodeRef ref = ParseNodeKey(n.key);
    if ((ref.kind == 'z' && !IsAnalysisBuilt(ref.number)) || (ref.kind == 'e' && ref.number != 2 && ref.number != 4))
      item->setDisabled(true);
    nodes_[n.key] = item;
  }
  for (const char* key : {"P", "F", "V", "S"})
    if (QTreeWidgetItem* item = Node(key)) item->setExpanded(true);
  for (const std::string& key : expanded)
    if (QTreeWidgetItem* item = Node(key)) item->setExpanded(true);
}

void frmMain::TreeExpanded(QTreeWidgetItem* item) {
  // With SoloStudy, opening a study's branch closes the others.
  std::string key = item->data(0, Qt::UserRole).toString().toStdString();
  if (!gSettings.SoloStudy || key.empty() || key[0] != 's') return;
  for (const auto& [k, node] : nodes_)
    if (k[0] == 's' && k != key && node->isExpanded()) node->setExpanded(false);
}

void frmMain::ClearPane() {
  UnLoadDataGrid();
  paneName_.clear();
  txtView->clear();
  pane_->setCurrentWidget(txtView);
}

void frmMain::ShowView(const PaneView& view) {
  view_ = view;
  QString html = "<h2>" + Html(view.title) + "</h2><table cellspacing='0' cellpadding='4'>";
  for (const auto& [label, value] : view.rows)
    html += "<tr><td valign='top' style='font-weight:bold; padding-right:16px'>" + Html(label) +
            "</td><td>" + Html(value).replace("\n", "<br>") + "</td></tr>";
  html += "</table>";
  txtView->setHtml(html);
  pane_->setCurrentWidget(txtView);
  paneName_ = PANE_VIEW;
}

void frmMain::ShowDataGrid() {
  if (!gStudy) return;
  dataGrid_.FixUpDataGrid(*gStudy);
  dataGrid_.LoadDataGrid(*gStudy);
  gridModel_->ApplyLayout(grdMain);
  pane_->setCurrentWidget(grdMain);
  paneName_ = PANE_DATA;
  gridShownOnce_ = true;
  grdMain->setCurrentIndex(gridModel_->index(grid_.FixedRows, grid_.FixedCols + gStudy->Factors.Count()));
  grdMain->setFocus();
}

void frmMain::UnLoadDataGrid() {
  if (paneName_ != PANE_DATA || !gStudy) return;
  // Moving the current cell commits and closes an edit that is open.
  QModelIndex at = grdMain->currentIndex();
  grdMain->setCurrentIndex(QModelIndex());
  grdMain->setCurrentIndex(at);
  dataGrid_.UnLoadDataGrid(*gStudy);
}

void frmMain::GridEntry(int row, int col, const QString& text, bool& accepted) {
  if (!gStudy) return;
  std::string start;
  dataGrid_.BeforeEdit(row, col, start);
  DataGrid::EditResult r = dataGrid_.AfterEdit(*gProblem, *gStudy, row, col, text.toStdString(), start);
  accepted = r.accepted;
  if (!r.accepted) CurrentUi().Beep();
  if (r.changed) SetTitle();
}

void frmMain::NodeClick(const std::string& key) {
  UnLoadDataGrid();
  NodeRef ref = ParseNodeKey(key);
  if (!ref.studyKey.empty()) {
    gStudy = gProblem->Studies.Find(ref.studyKey);
    if (!gStudy) return;
    if (ref.kind == 'z') giAnalysis = static_cast<std::int16_t>(ref.number);
  }
  gsKey = key;
  switch (ref.kind) {
    case 'P':
      ShowView(ShowProblem(*gProblem));
      break;
    case 'f':
      gFactor = gProblem->Factors.Find(key);
      ShowView(ShowFactor(*gProblem, key));
      break;
    case 'v':
      gRespVar = gProblem->RespVars.Find(key);
      ShowView(ShowRespVar(*gProblem, key));
      break;
    case 's':
      ShowView(ShowStudy(*gStudy));
      break;
    case 'w':
      if (ref.detail.empty()) ClearPane();
      else ShowView(ShowStudyFactor(*gStudy, ref.detail));
      break;
    case 'x':
      if (ref.detail.empty()) ClearPane();
      else ShowView(ShowStudyRespVar(*gStudy, ref.detail));
      break;
    case 'd':
      ShowDataGrid();
      break;
    case 'z':
      ShowEditAnalysis(1);
      break;
    case 'e':
      ClearPane();
      if (ref.number == 1) {
        DrawIPOReport(*gStudy);
        ShowChartPage("IPO");
      }
      if (ref.number == 2) ShowStats(*gProblem, gStudy);
      if (ref.number == 3) ShowEditMultiChart(false);
      if (ref.number == 4) ShowWorksheet(*gProblem, gStudy);
      break;
    default:
      ClearPane();
      break;
  }
  UpdateMenus();
}

void frmMain::UpdateMenus() {
  bool locked = gStudy && gStudy->IsLocked();
  Action("mnuLockStudy")->setEnabled(gStudy && !locked);
  Action("mnuPopLock")->setEnabled(gStudy && !locked);
  Action("mnuPopEdit3")->setEnabled(gStudy && !locked);
  // The run order can be changed only while a randomised study holds no data.
  Action("mnuStudyRandomise")
      ->setEnabled(gStudy && gStudy->iSequence == 0 && gStudy->DoesArrayExist() && gStudy->IsArrayEmpty() &&
                   gStudy->iNumRuns > 0);
  // The Edit menu acts on the data grid only.
  for (const char* name : {"mnuEditCopy", "mnuEditPaste", "mnuEditPasteToC", "mnuEditClear", "mnuEditExtrapolate",
                           "mnuEditWipe"})
    Action(name)->setEnabled(paneName_ == PANE_DATA && gStudy);
  Action("mnuStudyTransform")->setEnabled(gStudy && !gStudy->StudyRespVars.Empty());
  Action("mnuStudyNonlin")->setEnabled(gStudy && (gStudy->iDesFlag & DES_CENTRE_POINTS) && gStudy->iReps > 1);
  Action("mnuScattergram")->setEnabled(gStudy != nullptr);
  bool charts = ChartsOnShow();
  Action("tbAddLog")->setEnabled(!paneName_.empty());
  Action("mnuFileSaveGraphic")->setEnabled(charts && !gPage.Charts.empty());
  Action("tbUnZoom")->setEnabled(charts && gPage.bZoomed);
  Action("tbEraseLabels")->setEnabled(charts && !gPage.Labels.empty());
  Action("tbAddLabel")->setEnabled(charts && !gPage.Charts.empty());
  Action("tbViewDes")->setEnabled(gStudy && !gStudy->sDesignName.empty() && gStudy->iNumRuns > 0);
  SetTitle();
}

void frmMain::ContextMenu(const QPoint& at) {
  QTreeWidgetItem* item = sstv1->itemAt(at);
  if (!item) return;
  std::string key = item->data(0, Qt::UserRole).toString().toStdString();
  gsNode = key;
  NodeRef ref = ParseNodeKey(key);
  if (ref.kind == 's') gStudy = gProblem->Studies.Find(key);
  UpdateMenus();
  const char* menu = nullptr;
  switch (ref.kind) {
    case 'P': case 'S': menu = "mnuPopup1"; break;
    case 'F': menu = "mnuPopUp4"; break;
    case 'V': menu = "mnuPopUp5"; break;
    case 'f': case 'v': menu = "mnuPopup2"; break;
    case 's': menu = "mnuPopUp3"; break;
    default: return;
  }
  Menu(menu)->exec(sstv1->viewport()->mapToGlobal(at));
}

void frmMain::SaveAppState() {
  QRect g = isMaximized() ? normalGeometry() : geometry();
  gSettings.MainX = static_cast<std::int16_t>(g.x());
  gSettings.MainY = static_cast<std::int16_t>(g.y());
  gSettings.MainWidth = static_cast<std::int16_t>(g.width());
  gSettings.MainHeight = static_cast<std::int16_t>(g.height());
  gSettings.MainState = static_cast<std::int16_t>(isMaximized() ? 2 : 0);
  if (!split_->sizes().isEmpty()) gSettings.SplitX = static_cast<std::int16_t>(std::min(32767, split_->sizes()[0] * 15));
}

void frmMain::closeEvent(QCloseEvent* event) {
  UnLoadDataGrid();
  if (!SaveLogic()) {
    event->ignore();
    return;
  }
  SaveAppState();
  // Said once, here: the settings are written at every start too, silently.
  std::string error;
  if (!SaveSettings(SettingsFile(), &error))
    ErrorBox("The settings cannot be written to " + SettingsFile() + ": " + error +
             ". The changes to the settings made in this session are lost.");
  event->accept();
}

}  // namespace kestrow
