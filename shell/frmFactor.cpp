#include "shell/frmFactor.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Language.h"
#include "core/Ui.h"
#include "shell/Buttons.h"
#include "shell/LevelGrid.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmFactor::frmFactor(EditMode mode, const std::string& key, QWidget* parent) : QDialog(parent) {
  setObjectName("frmFactor");
  setWindowTitle("Factor");
  txtName = new QLineEdit(this);
  txtName->setObjectName("txtName");
  txtAbbr = new QLineEdit(this);
  txtAbbr->setObjectName("txtAbbr");
  txtDesc = new QLineEdit(this);
  txtDesc->setObjectName("txtDesc");
  chkNumeric = new QCheckBox("Factor is discrete / non-numeric", this);
  chkNumeric->setObjectName("chkNumeric");
  chkControlled = new QCheckBox("This is a known, controllable noise factor", this);
  chkControlled->setObjectName("chkControlled");
  grdLevels = new QTableWidget(FactorForm::LEVEL_ROWS, 3, this);
  grdLevels->setObjectName("grdLevels");
  grdLevels->setHorizontalHeaderLabels({Tr("Coding"), Tr("Value"), Tr("Desc")});
  grdLevels->horizontalHeader()->setStretchLastSection(true);
  grdLevels->setColumnWidth(0, 80);
  grdLevels->setColumnWidth(1, 100);
  grdLevels->setMinimumHeight(grdLevels->verticalHeader()->defaultSectionSize() * 9 + 8);

  auto* lblName = new QLabel("Name:", this);
  lblName->setObjectName("lblName");
  auto* lblAbbr = new QLabel("Abbreviation:", this);
  lblAbbr->setObjectName("lblAbbr");
  auto* lblDesc = new QLabel("Description:", this);
  lblDesc->setObjectName("lblDesc");
  auto* lblLevels = new QLabel("Levels:", this);
  lblLevels->setObjectName("lblLevels");

  auto* fields = new QFormLayout;
  fields->addRow(lblName, txtName);
  fields->addRow(lblAbbr, txtAbbr);
  fields->addRow(lblDesc, txtDesc);

  auto* buttons = new QDialogButtonBox(this);
  cmdNext = AddButton(buttons, "cmdNext", "&Next", QDialogButtonBox::ActionRole);
  cmdOK = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  cmdOK->setDefault(true);
  cmdCancel = AddButton(buttons, "cmdCancel", "Cancel", QDialogButtonBox::RejectRole);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(fields);
  layout->addWidget(chkNumeric);
  layout->addWidget(chkControlled);
  layout->addWidget(lblLevels);
  layout->addWidget(grdLevels);
  layout->addWidget(buttons);

  connect(cmdOK, &QPushButton::clicked, this, &frmFactor::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &frmFactor::cmdCancel_Click);
  connect(cmdNext, &QPushButton::clicked, this, &frmFactor::cmdNext_Click);
  // Next confirms a new factor and opens another: it has no place in an edit.
  cmdNext->setVisible(mode == EditMode::New);

  TranslateForm(this);
  form_.Begin(mode, key);
  ToForm();
  for (auto* e : {txtName, txtAbbr, txtDesc})
    connect(e, &QLineEdit::textEdited, this, [this] { changed_ = true; });
  connect(grdLevels, &QTableWidget::cellChanged, this, [this] { changed_ = true; });
  connect(chkNumeric, &QCheckBox::toggled, this, [this] { changed_ = true; });
  connect(chkControlled, &QCheckBox::toggled, this, [this] { changed_ = true; });
  resize(520, sizeHint().height());
}

void frmFactor::ToForm() {
  txtName->setText(Q(form_.txtName));
  txtAbbr->setText(Q(form_.txtAbbr));
  txtDesc->setText(Q(form_.txtDesc));
  chkNumeric->setChecked(form_.chkNumeric);
  chkControlled->setChecked(form_.chkControlled);
  LevelsToGrid(form_, grdLevels);
  changed_ = false;
}

void frmFactor::FromForm() {
  form_.txtName = txtName->text().toStdString();
  form_.txtAbbr = txtAbbr->text().toStdString();
  form_.txtDesc = txtDesc->text().toStdString();
  form_.chkNumeric = chkNumeric->isChecked();
  form_.chkControlled = chkControlled->isChecked();
  LevelsFromGrid(grdLevels, form_);
}

bool frmFactor::Store() {
  FromForm();
  bool ok = false;
  std::string complaint = form_.OK(ok);
  if (!complaint.empty()) {
    ErrorBox(complaint);
    return false;
  }
  if (ok) stored.push_back(form_.key);
  return ok;
}

void frmFactor::cmdOK_Click() {
  if (Store()) accept();
}

void frmFactor::cmdNext_Click() {
  if (!Store()) return;
  form_.Begin(EditMode::New);
  ToForm();
  txtName->setFocus();
}

void frmFactor::cmdCancel_Click() { reject(); }

void frmFactor::reject() {
  if (ConfirmCancel(changed_)) QDialog::reject();
}

}  // namespace kestrow
