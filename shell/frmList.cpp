#include "shell/frmList.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "core/CheckList.h"
#include "core/Ui.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmList::frmList(CheckList& list, QWidget* parent) : QDialog(parent), list_(list) {
  setObjectName("frmList");
  setWindowTitle("Select...");
  auto* layout = new QVBoxLayout(this);
  lblPrompt = new QLabel(Q(list.prompt), this);
  lblPrompt->setObjectName("lblPrompt");
  lblPrompt->setWordWrap(true);
  lblPrompt->setVisible(!list.prompt.empty());
  layout->addWidget(lblPrompt);
  auto* rows = new QWidget(this);
  auto* rowLayout = new QVBoxLayout(rows);
  order_ = list.OrderOfChoice();
  for (std::size_t i = 0; i < list.Rows().size(); ++i) {
    auto* box = new QCheckBox(Q(list.Rows()[i].text), rows);
    box->setObjectName(QString("chkItem_%1").arg(i));
    box->setChecked(list.Rows()[i].checked);
    int row = static_cast<int>(i);
    connect(box, &QCheckBox::toggled, this, [this, row](bool on) {
      order_.erase(std::remove(order_.begin(), order_.end(), row), order_.end());
      if (on) order_.push_back(row);
    });
    rowLayout->addWidget(box);
    chkItem.push_back(box);
  }
  rowLayout->addStretch();
  // Fifty rows would pass a screen: the rows scroll.
  auto* scroll = new QScrollArea(this);
  scroll->setWidget(rows);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  layout->addWidget(scroll);
  auto* buttons = new QDialogButtonBox(this);
  cmdOK = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  cmdOK->setDefault(true);
  cmdCancel = AddButton(buttons, "cmdCancel", "Cancel", QDialogButtonBox::RejectRole);
  connect(cmdOK, &QPushButton::clicked, this, &frmList::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  layout->addWidget(buttons);
  TranslateForm(this);
  if (list.caption != "Select...") setWindowTitle(Q(list.caption));
  // As wide as the longest row, within a screen; as tall as the rows, within 600.
  int height = std::min(600, 120 + 28 * static_cast<int>(list.Rows().size()));
  int width = std::clamp(rows->sizeHint().width() + 60, 360, 1000);
  resize(width, height);
}

void frmList::cmdOK_Click() {
  std::string complaint;
  if (!list_.Accept(order_, complaint)) {
    ErrorBox(complaint);
    return;
  }
  accept();
}

}  // namespace kestrow
