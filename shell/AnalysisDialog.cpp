#include "shell/AnalysisDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

#include "shell/Buttons.h"
#include "shell/QtText.h"

namespace kestrow {

namespace {

void AddRow(QFormLayout* rows, QWidget* parent, const char* name, const char* caption, QWidget* field) {
  auto* label = new QLabel(caption, parent);
  label->setObjectName(name);
  rows->addRow(label, field);
}

}  // namespace

QComboBox* ResponseRow(QFormLayout* rows, QWidget* parent, const std::vector<RVListEntry>& list, int index) {
  auto* box = new QComboBox(parent);
  box->setObjectName("cmbRV");
  for (const RVListEntry& e : list) box->addItem(Q(e.name));
  box->setCurrentIndex(index);
  AddRow(rows, parent, "lblRV", "Response variable:", box);
  return box;
}

QComboBox* AlphaRow(QFormLayout* rows, QWidget* parent, const std::vector<std::string>& choices,
                    const std::string& text) {
  auto* box = new QComboBox(parent);
  box->setObjectName("cmbAlpha");
  box->setEditable(true);
  for (const std::string& c : choices) box->addItem(Q(c));
  box->setCurrentText(Q(text));
  box->setToolTip("0.01=conservative, 0.05=exploratory");
  AddRow(rows, parent, "lblAlpha", "Alpha:", box);
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
