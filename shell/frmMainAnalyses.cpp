// The main window's analysis commands: showing and editing an analysis, the
// non-linearity test, and adding what the pane shows to the print log.
#include <QHeaderView>
#include <QStackedWidget>
#include <QTableView>

#include "core/Globals.h"
#include "core/Study.h"
#include "core/Ui.h"
#include "charts/ChartPage.h"
#include "data/Statistics.h"
#include "shell/ChartPane.h"
#include "shell/GridModel.h"
#include "shell/ChartChoiceDialogs.h"
#include "shell/frmANOM.h"
#include "shell/frmConProg.h"
#include "shell/frmContour2.h"
#include "shell/frmMultiCon.h"
#include "shell/frmRSM.h"
#include "shell/frmANOVA.h"
#include "shell/frmFXplot.h"
#include "shell/frmMChart.h"
#include "shell/frmMMP.h"
#include "shell/frmPairwise.h"
#include "shell/frmCalculator.h"
#include "shell/frmRegress.h"
#include "shell/RegressionChartDialogs.h"
#include "shell/frmResponse.h"
#include "shell/frmMain.h"
#include "shell/frmNonLin.h"
#include "regression/Scattergram.h"
#include "workbench/Availability.h"
#include "workbench/MultiChart.h"
#include "workbench/ChartLog.h"
#include "workbench/PrintLog.h"
#include "workbench/ProblemTree.h"
#include "workbench/ShowAnalysis.h"

namespace kestrow {

namespace {

// A dialog of an analysis, run modally; true on OK, with changed telling
// whether OK changed what the study holds.
template <class Dialog>
bool Run(Study& study, QWidget* parent, bool& changed) {
  Dialog dialog(study, gStats, parent);
  if (dialog.exec() != QDialog::Accepted) return false;
  changed = dialog.Stored();
  return true;
}

bool EditAnalysis(int code, Study& study, QWidget* parent, bool& changed) {
  switch (code) {
    case ANALYSIS_ANOM: return Run<frmANOM>(study, parent, changed);
    case ANALYSIS_ANOVA: return Run<frmANOVA>(study, parent, changed);
    case ANALYSIS_RESIDUALS: return Run<frmResiduals>(study, parent, changed);
    case ANALYSIS_SCREE: return Run<frmScree>(study, parent, changed);
    case ANALYSIS_RUNCHART: return Run<frmRunChart>(study, parent, changed);
    case ANALYSIS_FXPLOT: return Run<frmFXplot>(study, parent, changed);
    case ANALYSIS_RESPLOT: return Run<frmResponse>(study, parent, changed);
    case ANALYSIS_MMEANS: return Run<frmMMP>(study, parent, changed);
    case ANALYSIS_PAIRWISE: return Run<frmPairwise>(study, parent, changed);
    case ANALYSIS_REGRESSION: return Run<frmRegress>(study, parent, changed);
    case ANALYSIS_REGRESSION_RESIDUALS: return Run<frmResiduals2>(study, parent, changed);
    // A model of two factors has only the look of its plot to choose.
    case ANALYSIS_CONPLOT:
      return study.CountREFactors() == 2 ? Run<frmContour2>(study, parent, changed) : Run<frmMultiCon>(study, parent, changed);
    case ANALYSIS_RESPSURF: return Run<frmRSM>(study, parent, changed);
    default: return false;
  }
}

}  // namespace

void frmMain::ShowEditAnalysis(int mode) {
  // A long drawing lets the window's events through: a click that asks for
  // another analysis meanwhile is not taken.
  static bool drawing = false;
  if (!gStudy || drawing) return;
  struct Busy {
    bool& flag;
    explicit Busy(bool& f) : flag(f) { flag = true; }
    ~Busy() { flag = false; }
  } busy(drawing);
  UnLoadDataGrid();
  int code = giAnalysis;
  gStats.Compute(*gStudy);
  std::string reason = AnalysisUnavailableReason(*gStudy, gStats, code);
  if (!reason.empty()) {
    ErrorBox(reason);
    return;
  }
  if (code == ANALYSIS_CALCULATOR) {
    // A dialog with nothing to show: it reads the model and changes nothing.
    frmCalculator calculator(*gStudy, this);
    calculator.exec();
    return;
  }
  if (mode != 1 || !IsAnalysisSetUp(*gStudy, gStats, code)) {
    // The dialog works on its own copy of the statistics.
    bool changed = true;
    if (!EditAnalysis(code, *gStudy, this, changed)) return;
    if (changed) gProblem->bChanged = true;
  }
  ClearPane();
  if (IsChartAnalysis(code)) {
    gphStart();
    frmConProg progress(this);
    ConProgScope scope(progress);
    DrawAnalysis(code, *gStudy, gStats, grid_);  // charts stopped on a message show what was made
    ShowChartPage(AnalysisPaneName(code));
    return;
  }
  DrawAnalysis(code, *gStudy, gStats, grid_);  // a report stopped on a message keeps what it drew
  gridModel_->ApplyLayout(grdMain);
  GridModel::FitColumns(grdMain, 48);
  pane_->setCurrentWidget(grdMain);
  paneName_ = AnalysisPaneName(code);
  UpdateMenus();
}

void frmMain::ShowEditMultiChart(bool edit) {
  if (!gStudy) return;
  UnLoadDataGrid();
  gStats.Compute(*gStudy);
  if (edit || gStudy->sMultiChart.empty()) {
    bool changed = true;
    if (!Run<frmMChart>(*gStudy, this, changed)) return;
    if (changed) gProblem->bChanged = true;
  }
  ClearPane();
  ShowMultiChart(*gStudy, gStats);  // the charts made before a failure stay on show
  ShowChartPage("MultiChart");
}

// The scattergram has no node: the menu asks for its response and factor
// each time, and nothing is stored.
void frmMain::mnuScattergram_Click() {
  if (!gStudy) return;
  UnLoadDataGrid();
  gStats.Compute(*gStudy);
  std::string reason = AnalysisUnavailableReason(*gStudy, gStats, ANALYSIS_SCATTERGRAM);
  if (!reason.empty()) {
    ErrorBox(reason);
    return;
  }
  frmScattergram dialog(*gStudy, gStats, this);
  if (dialog.exec() != QDialog::Accepted) return;
  ClearPane();
  gphStart();
  SetupScattergram(*gStudy, gStats, dialog.Choice());
  ShowChartPage(AnalysisPaneName(ANALYSIS_SCATTERGRAM));
}

void frmMain::mnuStudyNonlin_Click() {
  if (!gStudy || !(gStudy->iDesFlag & DES_CENTRE_POINTS) || gStudy->iReps < 2) return;
  UnLoadDataGrid();
  gStats.Compute(*gStudy);
  frmNonLin dialog(*gStudy, gStats, this);
  dialog.exec();
}

void frmMain::ToolsAddLog() {
  if (PaneName().empty()) return;
  UnLoadDataGrid();
  bool study = gStudy && !ParseNodeKey(gsKey).studyKey.empty();
  if (!OpenLog(study)) return;
  if (ChartsOnShow()) {
    LogCharts(gPage);
  } else if (PaneName() == "View") {
    LogLine(view_.title);
    for (const auto& [label, value] : view_.rows) {
      std::string text = value;
      std::string lead = label + ": ";
      std::size_t at;
      while ((at = text.find('\n')) != std::string::npos) {
        LogLine(lead + text.substr(0, at));
        text.erase(0, at + 1);
        lead = std::string(label.size() + 2, ' ');
      }
      LogLine(lead + text);
    }
  } else {
    LogGrid(0, grid_.Cols() - 1, grid_);
  }
  CloseLog();
}

}  // namespace kestrow
