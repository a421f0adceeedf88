#include "shell/frmSelFac.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Ui.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

namespace {
QListWidgetItem* FactorItem(const Factor& f) {
  auto* item = new QListWidgetItem(Q(f.sName));
  item->setData(Qt::UserRole, Q(f.sKey));
  return item;
}
}  // namespace

frmSelFac::frmSelFac(const std::vector<std::string>& used, QWidget* parent) : QDialog(parent) {
  setObjectName("frmSelFac");
  setWindowTitle("Select factors");
  lstAvailable = new QListWidget(this);
  lstAvailable->setObjectName("lstAvailable");
  lstUsed = new QListWidget(this);
  lstUsed->setObjectName("lstUsed");
  // The used factors can be dragged into the order wanted.
  lstUsed->setDragDropMode(QAbstractItemView::InternalMove);
  for (auto* l : {lstAvailable, lstUsed}) l->setSelectionMode(QAbstractItemView::ExtendedSelection);
  auto button = [&](const char* name, const char* caption) { return NamedButton(this, name, caption); };
  cmdLR = button("cmdLR", ">");
  cmdLRMany = button("cmdLRMany", ">>");
  cmdRL = button("cmdRL", "<");
  cmdRLMany = button("cmdRLMany", "<<");
  cmdOK = button("cmdOK", "OK");
  cmdOK->setDefault(true);
  cmdCancel = button("cmdCancel", "Cancel");

  for (const std::string& key : used)
    if (const Factor* f = gProblem->Factors.Find(key)) lstUsed->addItem(FactorItem(*f));
  for (const Factor& f : gProblem->Factors) {
    bool inUse = false;
    for (const std::string& key : used) inUse = inUse || key == f.sKey;
    if (!inUse) lstAvailable->addItem(FactorItem(f));
  }

  auto* lblAvailable = new QLabel("Available factors:", this);
  lblAvailable->setObjectName("lblAvailable");
  auto* lblUsed = new QLabel("Factors in the study:", this);
  lblUsed->setObjectName("lblUsed");
  auto* lblNotes = new QLabel(
      "The factor at the top of the study's list is the hardest to change, the one at the bottom the easiest. "
      "The order sets the columns of the design; drag the factors to change it.",
      this);
  lblNotes->setObjectName("lblNotes");
  lblNotes->setWordWrap(true);
  auto* arrows = new QVBoxLayout;
  arrows->addStretch();
  for (auto* b : {cmdLR, cmdLRMany, cmdRL, cmdRLMany}) arrows->addWidget(b);
  arrows->addStretch();
  auto* grid = new QGridLayout;
  grid->addWidget(lblAvailable, 0, 0);
  grid->addWidget(lblUsed, 0, 2);
  grid->addWidget(lstAvailable, 1, 0);
  grid->addLayout(arrows, 1, 1);
  grid->addWidget(lstUsed, 1, 2);
  auto* buttons = new QDialogButtonBox(this);
  buttons->addButton(cmdOK, QDialogButtonBox::AcceptRole);
  buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addWidget(lblNotes);
  layout->addWidget(buttons);

  connect(cmdLR, &QPushButton::clicked, this, [this] { Move(lstAvailable, lstUsed, false); });
  connect(cmdLRMany, &QPushButton::clicked, this, [this] { Move(lstAvailable, lstUsed, true); });
  connect(cmdRL, &QPushButton::clicked, this, [this] { Move(lstUsed, lstAvailable, false); });
  connect(cmdRLMany, &QPushButton::clicked, this, [this] { Move(lstUsed, lstAvailable, true); });
  connect(lstAvailable, &QListWidget::itemDoubleClicked, this, [this] { Move(lstAvailable, lstUsed, false); });
  connect(lstUsed, &QListWidget::itemDoubleClicked, this, [this] { Move(lstUsed, lstAvailable, false); });
  connect(cmdOK, &QPushButton::clicked, this, &frmSelFac::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  std::string caption = GetText("SFcap");
  if (!caption.empty()) setWindowTitle(Q(caption));
  resize(520, 360);
}

void frmSelFac::Move(QListWidget* from, QListWidget* to, bool all) {
  for (int i = 0; i < from->count();) {
    if (all || from->item(i)->isSelected()) {
      to->addItem(from->takeItem(i));
    } else {
      ++i;
    }
  }
}

std::vector<std::string> frmSelFac::Used() const {
  std::vector<std::string> keys;
  for (int i = 0; i < lstUsed->count(); ++i) keys.push_back(lstUsed->item(i)->data(Qt::UserRole).toString().toStdString());
  return keys;
}

void frmSelFac::cmdOK_Click() {
  if (lstUsed->count() == 0) {
    ErrorBox(GetText("SFerr1"));
    return;
  }
  accept();
}

}  // namespace kestrow
