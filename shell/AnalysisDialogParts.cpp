#include "shell/AnalysisDialogParts.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>

#include "shell/Buttons.h"
#include "shell/QtText.h"

namespace kestrow {

QComboBox* ResponseBox(QWidget* parent, const std::vector<RVListEntry>& list, int index) {
  auto* box = new QComboBox(parent);
  box->setObjectName("cmbRV");
  for (const RVListEntry& e : list) box->addItem(Q(e.name));
  box->setCurrentIndex(index);
  return box;
}

QComboBox* AlphaBox(QWidget* parent, const std::vector<std::string>& choices, const std::string& text) {
  auto* box = new QComboBox(parent);
  box->setObjectName("cmbAlpha");
  box->setEditable(true);
  for (const std::string& c : choices) box->addItem(Q(c));
  box->setCurrentText(Q(text));
  box->setToolTip("0.01=conservative, 0.05=exploratory");
  return box;
}

QDialogButtonBox* OkCancel(QWidget* parent, QPushButton*& ok, QPushButton*& cancel) {
  auto* buttons = new QDialogButtonBox(parent);
  ok = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  ok->setDefault(true);
  cancel = AddButton(buttons, "cmdCancel", "Cancel", QDialogButtonBox::RejectRole);
  return buttons;
}

}  // namespace kestrow
