#include "shell/frmMain.h"

#include <QFileDialog>
#include <QFontDatabase>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <sstream>

#include "core/Globals.h"
#include "core/Paths.h"
#include "core/Sentinels.h"
#include "core/Settings.h"

namespace kestrow {

frmMain::frmMain(QWidget* parent) : QMainWindow(parent) {
  txtProblem_ = new QPlainTextEdit(this);
  txtProblem_->setReadOnly(true);
  txtProblem_->setLineWrapMode(QPlainTextEdit::NoWrap);
  txtProblem_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  setCentralWidget(txtProblem_);

  QMenu* file = menuBar()->addMenu(tr("&File"));
  QAction* open = file->addAction(tr("&Open..."));
  open->setShortcut(QKeySequence::Open);
  connect(open, &QAction::triggered, this, &frmMain::mnuFileOpen_Click);
  file->addSeparator();
  QAction* exit = file->addAction(tr("E&xit"));
  connect(exit, &QAction::triggered, this, &QWidget::close);

  resize(900, 640);
  ShowProblem();
}

void frmMain::ShowProblem() {
  std::ostringstream text;
  gProblem->Export(text);
  txtProblem_->setPlainText(QString::fromStdString(text.str()));
  std::string name = GetFName(gProblem->sPathFileName);
  if (name.empty()) name = "untitled.KSW";
  setWindowTitle(QString(PROGRAM_TITLE) + " - " + QString::fromStdString(name));
}

bool frmMain::OpenKSTFile(const QString& path) {
  auto problem = std::make_unique<Problem>();
  if (!problem->Load(path.toStdString())) return false;
  ReplaceProblem(std::move(problem));
  ShowProblem();
  return true;
}

void frmMain::mnuFileOpen_Click() {
  QString path = QFileDialog::getOpenFileName(this, tr("Open"), QString::fromStdString(DataDir()),
                                              tr("Kestrow problems (*.KSW *.ksw)"));
  if (!path.isEmpty()) OpenKSTFile(path);
}

}  // namespace kestrow
