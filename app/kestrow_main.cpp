// kestrow: the desktop workbench.
#include <QApplication>
#include <QStringList>

#include "core/Globals.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "shell/QtUi.h"
#include "shell/frmMain.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  using namespace kestrow;

  auto* ui = new QtUi();
  InstallUi(std::unique_ptr<Ui>(ui));

  // The whole command line is one file name, with the switch -admin.
  QStringList words = QApplication::arguments().mid(1);
  if (!StartUp(words.join(' ').toStdString())) return 1;

  frmMain window;
  ui->SetParent(&window);
  window.Load();
  if (gSettings.MainState == 2) window.showMaximized();
  else window.show();
  return app.exec();
}
