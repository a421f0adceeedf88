// kestrow: the desktop workbench.
#include <QApplication>
#include <QStringList>

#include "core/CommandLine.h"
#include "core/Globals.h"
#include "shell/QtUi.h"
#include "shell/frmMain.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  using namespace kestrow;

  auto* ui = new QtUi();
  InstallUi(std::unique_ptr<Ui>(ui));

  // The whole command line is one file name, with the switch -admin.
  QStringList words = QApplication::arguments().mid(1);
  TakeCommandLine(words.join(' ').toStdString());

  gProblem->Clear();
  frmMain window;
  ui->SetParent(&window);
  if (!gsCommandFile.empty()) window.OpenKSTFile(QString::fromStdString(gsCommandFile));
  window.show();
  return app.exec();
}
