#include "shell/frmConProg.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/Language.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmConProg::frmConProg(QWidget* parent) : QDialog(parent) {
  setObjectName("frmConProg");
  setWindowTitle("Contour plot");
  // While it shows, the rest of the program waits for the tracing.
  setWindowModality(Qt::ApplicationModal);
  auto* layout = new QVBoxLayout(this);
  lblMsg = new QLabel(this);
  lblMsg->setObjectName("lblMsg");
  lblMsg->setMinimumWidth(300);
  layout->addWidget(lblMsg);
  cmdStop = NamedButton(this, "cmdStop", "&Stop");
  layout->addWidget(cmdStop, 0, Qt::AlignCenter);
  connect(cmdStop, &QPushButton::clicked, this, [this] { stopped_ = true; });
  TranslateForm(this);
}

void frmConProg::Show() {
  stopped_ = false;
  show();
  QApplication::processEvents();
}

void frmConProg::Progress(float fContour, const std::string& sRV) {
  lblMsg->setText(Q(ContourProgressText(fContour, sRV)));
  QApplication::processEvents();
}

void frmConProg::Hide() { hide(); }

}  // namespace kestrow
