#include "shell/frmStudy.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/CheckList.h"
#include "core/Globals.h"
#include "core/Language.h"
#include "core/Ui.h"
#include "shell/QtText.h"
#include "shell/Translate.h"
#include "shell/frmDesSel.h"
#include "shell/frmSelFac.h"
#include "shell/frmViewDes.h"

namespace kestrow {

frmStudy::frmStudy(int mode, const std::string& key, QWidget* parent) : QDialog(parent) {
  setObjectName("frmStudy");
  auto edit = [&](const char* name) {
    auto* e = new QLineEdit(this);
    e->setObjectName(name);
    return e;
  };
  auto button = [&](const char* name, const char* caption) {
    auto* b = new QPushButton(caption, this);
    b->setObjectName(name);
    return b;
  };
  auto label = [&](const char* name, const char* caption) {
    auto* l = new QLabel(caption, this);
    l->setObjectName(name);
    return l;
  };
  txtName = edit("txtName");
  txtDesc = edit("txtDesc");
  txtReps = edit("txtReps");
  txtReps->setMaximumWidth(60);
  txtReps->installEventFilter(this);
  chkRandom = new QCheckBox("Randomization", this);
  chkRandom->setObjectName("chkRandom");
  lblDesign = label("lblDesign", "");
  lblDesign->setFrameShape(QFrame::StyledPanel);
  lblDesign->setMinimumWidth(260);
  // The lists show one name a line and scroll, so that long names and many
  // factors never push the dialog off the screen or get cut.
  auto list = [&](const char* name) {
    auto* l = new QListWidget(this);
    l->setObjectName(name);
    l->setSelectionMode(QAbstractItemView::NoSelection);
    l->setFocusPolicy(Qt::NoFocus);
    l->setWordWrap(true);
    l->setTextElideMode(Qt::ElideNone);
    l->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    l->setMaximumHeight(l->fontMetrics().lineSpacing() * 6 + 8);
    return l;
  };
  lblFactors = list("lblFactorList");
  lblRespVars = list("lblRespVarList");
  cmdFactors = button("cmdFactors", "&Factors...");
  cmdRespVars = button("cmdRespVars", "&Response variables...");
  cmdDesign = button("cmdDesign", "&Design...");
  cmdViewDes = button("cmdViewDes", "&View design...");
  cmbPartial = new QComboBox(this);
  cmbPartial->setObjectName("cmbPartial");
  cmdOK = button("cmdOK", "OK");
  cmdOK->setDefault(true);
  cmdCancel = button("cmdCancel", "Cancel");

  auto* form = new QFormLayout;
  form->addRow(label("lblName", "Name:"), txtName);
  form->addRow(label("lblDesc", "Description:"), txtDesc);
  auto row = [&](QWidget* a, QWidget* b) {
    auto* h = new QHBoxLayout;
    h->addWidget(a);
    h->addWidget(b, 1);
    return h;
  };
  form->addRow(cmdFactors, lblFactors);
  form->addRow(cmdRespVars, lblRespVars);
  auto* design = new QHBoxLayout;
  design->addWidget(lblDesign, 1);
  design->addWidget(cmdViewDes);
  form->addRow(cmdDesign, design);
  form->addRow(label("lblReps", "Replications:"), row(txtReps, chkRandom));
  form->addRow(label("lblPartial", "Partial reflection:"), cmbPartial);
  auto* buttons = new QDialogButtonBox(this);
  buttons->addButton(cmdOK, QDialogButtonBox::AcceptRole);
  buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(buttons);

  connect(cmdFactors, &QPushButton::clicked, this, &frmStudy::cmdFactors_Click);
  connect(cmdRespVars, &QPushButton::clicked, this, &frmStudy::cmdRespVars_Click);
  connect(cmdDesign, &QPushButton::clicked, this, &frmStudy::cmdDesign_Click);
  connect(cmdViewDes, &QPushButton::clicked, this, &frmStudy::cmdViewDes_Click);
  connect(cmdOK, &QPushButton::clicked, this, &frmStudy::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &frmStudy::reject);
  connect(txtName, &QLineEdit::textEdited, this, [this] { form_.changed = true; });
  connect(txtDesc, &QLineEdit::textEdited, this, [this] { form_.changed = true; });
  connect(txtReps, &QLineEdit::textEdited, this, [this] {
    std::string typed = txtReps->text().toStdString();
    if (!form_.RepsChanging()) {
      txtReps->setText(Q(form_.txtReps));
      return;
    }
    form_.txtReps = typed;
    form_.changed = true;
  });
  connect(chkRandom, &QCheckBox::toggled, this, [this](bool on) {
    form_.chkRandom = on;
    form_.changed = true;
  });
  connect(cmbPartial, &QComboBox::currentTextChanged, this, [this](const QString& t) {
    form_.cmbPartial = t.toStdString();
    form_.changed = true;
  });

  TranslateForm(this);
  refusal_ = form_.Begin(mode, key);
  std::string caption = GetText(mode == 3 ? "EditStu" : "AddStu");
  setWindowTitle(caption.empty() ? "Study" : Q(caption));
  if (!refusal_.empty()) return;  // the caller shows why, and the dialog does not open
  ToForm();
  resize(560, sizeHint().height());
}

void frmStudy::ToForm() {
  const QSignalBlocker b1(txtReps), b2(chkRandom), b3(cmbPartial);
  txtName->setText(Q(form_.txtName));
  txtDesc->setText(Q(form_.txtDesc));
  txtReps->setText(Q(form_.txtReps));
  txtReps->setReadOnly(form_.repsLocked);
  chkRandom->setChecked(form_.chkRandom);
  chkRandom->setEnabled(form_.randomEnabled);
  lblDesign->setText(Q(form_.lblDesign));
  cmdViewDes->setEnabled(form_.viewDesEnabled);
  cmbPartial->clear();
  cmbPartial->addItem("");
  for (const std::string& name : form_.PartialChoices()) cmbPartial->addItem(Q(name));
  cmbPartial->setCurrentText(Q(form_.cmbPartial));
  cmbPartial->setEnabled(form_.partialEnabled);
  ShowLists();
}

void frmStudy::ShowLists() {
  lblFactors->clear();
  lblRespVars->clear();
  for (int f = 1; f <= gStudyEdit.Factors.Count(); ++f) lblFactors->addItem(Q(gStudyEdit.GetFactorName(f)));
  for (const StudyRespVar& srv : gStudyEdit.StudyRespVars) lblRespVars->addItem(Q(gStudyEdit.GetPRVName(srv.sKey)));
}

void frmStudy::FromForm() {
  form_.txtName = txtName->text().toStdString();
  form_.txtDesc = txtDesc->text().toStdString();
  form_.txtReps = txtReps->text().toStdString();
  form_.chkRandom = chkRandom->isChecked();
  form_.cmbPartial = cmbPartial->currentText().toStdString();
}

bool frmStudy::eventFilter(QObject* watched, QEvent* event) {
  // The box is left only for another control of this dialog: a question or
  // an error box taking the focus is not a leaving (its answer is still to
  // come), and neither is Cancel, which must close the dialog whatever the
  // box holds. Qt names the new focus before it tells the old one.
  if (watched == txtReps && event->type() == QEvent::FocusOut) {
    QWidget* next = QApplication::focusWidget();
    if (next && next != cmdCancel && isAncestorOf(next)) txtReps_LostFocus();
  }
  return QDialog::eventFilter(watched, event);
}

void frmStudy::txtReps_LostFocus() {
  form_.txtReps = txtReps->text().toStdString();
  std::string complaint = form_.RepsLostFocus();
  if (!complaint.empty()) {
    ErrorBox(complaint);
    txtReps->setFocus();
  }
}

void frmStudy::cmdFactors_Click() {
  FromForm();
  if (!form_.FactorsClick()) return;
  std::vector<std::string> used;
  for (const Item& item : gStudyEdit.Factors) used.push_back(item.sKey);
  frmSelFac dialog(used, this);
  if (dialog.exec() != QDialog::Accepted) return;
  form_.FactorsChosen(dialog.Used());
  ToForm();
}

void frmStudy::cmdRespVars_Click() {
  FromForm();
  if (!form_.BrowseRespVars()) {
    ShowLists();
    return;
  }
  CheckList list;
  list.Init();
  list.caption = GetText("RVs");
  for (const RespVar& rv : gProblem->RespVars) list.Add(rv.sName, rv.sKey, gStudyEdit.GetRVnum(rv.sKey) > 0);
  if (!list.Show()) return;
  std::vector<std::string> keys;
  for (const CheckList::Row& row : list.Rows())
    if (row.checked) keys.push_back(row.key);
  form_.RespVarsChosen(keys);
  ShowLists();
}

void frmStudy::cmdDesign_Click() {
  FromForm();
  std::string complaint = form_.DesignClick();
  if (!complaint.empty()) {
    ErrorBox(complaint);
    return;
  }
  frmDesSel dialog(gStudyEdit, this);
  dialog.exec();
  form_.DesignChosen(dialog.DesignChanged());
  ToForm();
}

void frmStudy::cmdViewDes_Click() { frmViewDes(gStudyEdit, this).exec(); }

void frmStudy::cmdOK_Click() {
  FromForm();
  StudyForm::Complaint c = form_.StudyOK();
  if (!c.text.empty()) {
    ErrorBox(c.text);
    if (QWidget* w = findChild<QWidget*>(Q(c.control))) w->setFocus();
    return;
  }
  accept();
}

void frmStudy::reject() {
  if (ConfirmCancel(form_.changed)) QDialog::reject();
}

}  // namespace kestrow
