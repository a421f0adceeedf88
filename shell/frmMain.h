// The main window. For now it shows the open problem as its text export; the
// tree, the data grid and the analyses come in here.
#pragma once

#include <QMainWindow>

class QPlainTextEdit;

namespace kestrow {

class frmMain : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmMain(QWidget* parent = nullptr);

  // Opens a problem file; a failed open leaves the open problem as it was.
  bool OpenKSTFile(const QString& path);
  // Shows the open problem and puts its file name in the title bar.
  void ShowProblem();

 private:
  void mnuFileOpen_Click();

  QPlainTextEdit* txtProblem_;
};

}  // namespace kestrow
