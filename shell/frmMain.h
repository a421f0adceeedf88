// The main window: the problem tree on the left; on the right the pane that
// shows what was clicked (the problem, a factor, a response variable, a
// study), the data grid, or the chart pane of the analyses. Menus, toolbar and
// context menus carry every command; the rules behind them are the engine's.
#pragma once

#include <QMainWindow>
#include <map>
#include <memory>
#include <string>

#include "core/Grid.h"
#include "data/DataGrid.h"
#include "workbench/PaneViews.h"

class QAction;
class QLabel;
class QMenu;
class QSplitter;
class QStackedWidget;
class QTableView;
class QTextBrowser;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;

namespace kestrow {

class ChartPane;
class GridModel;
class DataGridDelegate;

class frmMain : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmMain(QWidget* parent = nullptr);
  ~frmMain() override;

  // The load sequence: captions, tool-tips, placement, a new problem, the
  // colours, the menus that depend on settings, and the file of the command
  // line.
  void Load();

  // Opens a problem file; a failed open leaves everything as it was.
  bool OpenKSTFile(const QString& path);
  // Rebuilds the tree from the open problem.
  void ProblemToTree(bool keepState = false);
  // Acts on a click on a tree node.
  void NodeClick(const std::string& key);

  // What the right-hand pane shows: "" (nothing), "View", or "Data".
  const std::string& PaneName() const { return paneName_; }

  QTreeWidget* sstv1;
  QTableView* grdMain;
  QTextBrowser* txtView;
  ChartPane* picChart;
  // Whether the pane shows the chart page of an analysis.
  bool ChartsOnShow() const;
  // Brings the chart page (gPage) forward under the pane name of what drew it.
  void ShowChartPage(const std::string& name);
  QAction* Action(const std::string& name) const;
  QMenu* Menu(const std::string& name) const;
  QTreeWidgetItem* Node(const std::string& key) const;
  Grid& MainGrid() { return grid_; }
  DataGrid& Data() { return dataGrid_; }

  // The commands, by the names of their menu entries.
  void mnuFileNew_Click();
  void mnuFileOpen_Click();
  void mnuFileSave_Click();
  void mnuFileSaveAs_Click();
  void mnuFileExport_Click();
  void mnuRecentFile_Click(int i);
  void mnuNewF_Click();
  void mnuNewRV_Click();
  void mnuLockStudy_Click();
  void mnuPopCopy_Click();
  void mnuPopEdit_Click();
  void mnuPopDelete_Click();
  void mnuPopDelete3_Click();
  void mnuPopLock_Click();
  void mnuAdminStats_Click();
  void mnuAdminReset_Click();
  void mnuAdminDictionary_Click();
  void mnuAdminUpdate_Click();
  void mnuHlpAbout_Click();
  void ToolsFlipTree();
  void ToolsToggle();
  void ToolsCueCard();
  void ToolsUnZoom();
  void ToolsEraseLabels();
  void ToolsAddLabel();
  void mnuFileSaveGraphic_Click();
  // Saves the chart page on show as a picture file of that name; a failure
  // is said and leaves the page as it was.
  bool SaveGraphicFile(const std::string& path);

  // Factors and response variables through their dialogs: 1 new, 2 copy, 3 edit.
  void AddEditFactor(int mode);
  void AddEditRV(int mode);
  // Studies through the study dialog: 1 new, 2 copy, 3 edit.
  void AddEditStudy(int mode);
  void ToolsQuickStudy();
  void NewWizard();
  void ToolsViewDes();
  void ToolsViewLog();
  void mnuStudyRandomise_Click();
  void mnuStudyTransform_Click();
  void mnuStudyNonlin_Click();
  void mnuScattergram_Click();
  // Shows the analysis of giAnalysis for gStudy: mode 1 shows it, opening its
  // dialog first when it has no settings yet; any other mode opens the dialog
  // first.
  void ShowEditAnalysis(int mode);
  // The study's multi-chart; its dialog first when asked or when it holds no
  // charts yet.
  void ShowEditMultiChart(bool edit);
  // Appends what the pane shows to the print log.
  void ToolsAddLog();
  void mnuEditCopy_Click();
  void mnuEditPaste_Click();
  void mnuEditPasteToC_Click();
  void mnuEditClear_Click();
  void mnuEditExtrapolate_Click();
  void mnuEditWipe_Click();
  void mnuHlpDesigns_Click();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildMenus();
  void BuildToolbar();
  QAction* AddAction(QMenu* menu, const char* name, const char* caption, void (frmMain::*handler)() = nullptr);
  void FixRecentMenu();
  void SetTitle();
  void ShowView(const struct PaneView& view);
  void ShowDataGrid();
  void ClearPane();
  void UnLoadDataGrid();
  void UpdateMenus();
  void SaveAppState();
  void ContextMenu(const QPoint& at);
  void TreeExpanded(QTreeWidgetItem* item);
  void GridEntry(int row, int col, const QString& text, bool& accepted);

  QSplitter* split_;
  QStackedWidget* pane_;
  QToolBar* toolbar_;
  std::map<std::string, QAction*> actions_;
  std::map<std::string, QMenu*> menus_;
  std::map<std::string, QTreeWidgetItem*> nodes_;
  Grid grid_;
  DataGrid dataGrid_;
  GridModel* gridModel_;
  DataGridDelegate* delegate_;
  std::string paneName_;
  PaneView view_;  // the view on show when the pane name is "View"
  bool gridShownOnce_ = false;
};

}  // namespace kestrow
