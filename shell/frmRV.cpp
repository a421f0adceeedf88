#include "shell/frmRV.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/Ui.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmRV::frmRV(EditMode mode, const std::string& key, QWidget* parent) : QDialog(parent) {
  setObjectName("frmRV");
  setWindowTitle("Response Variable");
  auto* fields = new QFormLayout;
  auto field = [&](const char* name, const char* label, const char* labelName) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(name);
    auto* l = new QLabel(label, this);
    l->setObjectName(labelName);
    fields->addRow(l, edit);
    connect(edit, &QLineEdit::textEdited, this, [this] { changed_ = true; });
    return edit;
  };
  txtName = field("txtName", "Name:", "lblName");
  txtAbbr = field("txtAbbr", "Abbreviation:", "lblAbbr");
  txtDesc = field("txtDesc", "Description:", "lblDesc");
  txtUnits = field("txtUnits", "Units:", "lblUnits");
  txtTarget = field("txtTarget", "Target:", "lblTarget");

  auto* buttons = new QDialogButtonBox(this);
  cmdOK = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  cmdOK->setDefault(true);
  cmdCancel = AddButton(buttons, "cmdCancel", "Cancel", QDialogButtonBox::RejectRole);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(fields);
  layout->addWidget(buttons);
  connect(cmdOK, &QPushButton::clicked, this, &frmRV::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &frmRV::reject);

  TranslateForm(this);
  form_.Begin(mode, key);
  txtName->setText(Q(form_.txtName));
  txtAbbr->setText(Q(form_.txtAbbr));
  txtDesc->setText(Q(form_.txtDesc));
  txtUnits->setText(Q(form_.txtUnits));
  txtTarget->setText(Q(form_.txtTarget));
  resize(440, sizeHint().height());
}

void frmRV::cmdOK_Click() {
  form_.txtName = txtName->text().toStdString();
  form_.txtAbbr = txtAbbr->text().toStdString();
  form_.txtDesc = txtDesc->text().toStdString();
  form_.txtUnits = txtUnits->text().toStdString();
  form_.txtTarget = txtTarget->text().toStdString();
  bool stored = false;
  std::string complaint = form_.OK(stored);
  if (!complaint.empty()) {
    ErrorBox(complaint);
    return;
  }
  if (stored) {
    storedKey = form_.key;
    accept();
  }
}

void frmRV::reject() {
  if (ConfirmCancel(changed_)) QDialog::reject();
}

}  // namespace kestrow
