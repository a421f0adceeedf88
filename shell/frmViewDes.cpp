#include "shell/frmViewDes.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QTableView>
#include <QVBoxLayout>

#include "core/GridText.h"
#include "core/Language.h"
#include "core/Study.h"
#include "designs/DesignView.h"
#include "shell/GridModel.h"
#include "shell/Translate.h"
#include "workbench/PrintLog.h"

namespace kestrow {

frmViewDes::frmViewDes(const Study& study, QWidget* parent) : QDialog(parent), study_(study) {
  setObjectName("frmViewDes");
  FillDesignView(study_, grid_);
  model_ = new GridModel(grid_, this);
  grdDesign = new QTableView(this);
  grdDesign->setObjectName("grdDesign");
  grdDesign->setModel(model_);
  grdDesign->horizontalHeader()->hide();
  grdDesign->verticalHeader()->hide();
  grdDesign->setEditTriggers(QAbstractItemView::NoEditTriggers);
  model_->ApplyLayout(grdDesign);
  GridModel::FitColumns(grdDesign, 12);
  lblSource = new QLabel(this);
  lblSource->setObjectName("lblSource");
  lblSource->setWordWrap(true);
  lblSource->setMinimumHeight(lblSource->fontMetrics().height() * 2);

  auto* menu = new QMenuBar(this);
  QMenu* file = menu->addMenu("&File");
  file->setObjectName("mnuFile");
  QAction* print = file->addAction("Print");
  print->setObjectName("mnuFilePrint");
  print->setEnabled(false);  // printing comes with the print log
  QAction* log = file->addAction("Add to Print Log");
  log->setObjectName("mnuFileAddLog");
  // The table by tab-separated lines.
  connect(log, &QAction::triggered, this, [this] {
    if (!OpenLog(true)) return;
    std::string text = GridToTsv(grid_);
    for (std::size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos; at = end + 1)
      LogLine(text.substr(at, end - at));
    CloseLog();
  });
  file->addSeparator();
  QAction* exit = file->addAction("Exit");
  exit->setObjectName("mnuFileExit");
  connect(exit, &QAction::triggered, this, &QDialog::accept);

  auto* layout = new QVBoxLayout(this);
  layout->setMenuBar(menu);
  layout->addWidget(grdDesign);
  layout->addWidget(lblSource);
  connect(grdDesign, &QTableView::clicked, this, [this](const QModelIndex& i) { CellClicked(i.row(), i.column()); });
  TranslateForm(this);
  setWindowTitle(Tr("DVcap") + " " + QString::fromStdString(study_.sDesignName));
  resize(820, 560);
}

void frmViewDes::CellClicked(int row, int col) {
  int contrast = grid_.ColData(col);
  if (row > 1 || contrast < 1) return;
  const Contrast& c = study_.Contrasts(contrast);
  QString text = QString::fromStdString(c.sName + ": " + study_.GetContrastSource(contrast));
  if (c.iMain > 0) text += QString::fromStdString("   (" + c.sMain + ")");
  lblSource->setText(text);
}

}  // namespace kestrow
