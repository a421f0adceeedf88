#include "shell/frmQuick.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Language.h"
#include "core/Ui.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"
#include "shell/frmDesSel.h"
#include "shell/frmViewDes.h"

namespace kestrow {

namespace {
constexpr int FACTOR_ROWS = 12;
}  // namespace

frmQuick::frmQuick(QWidget* parent) : QDialog(parent) {
  setObjectName("frmQuick");
  setWindowTitle("Create Quick Study");
  txtName = new QLineEdit(this);
  txtName->setObjectName("txtName");
  txtRV = new QLineEdit(this);
  txtRV->setObjectName("txtRV");
  grdFactors = new QTableWidget(FACTOR_ROWS, 1 + QuickForm::MAX_LEVELS, this);
  grdFactors->setObjectName("grdFactors");
  QStringList headings{"Name"};
  for (int l = 1; l <= QuickForm::MAX_LEVELS; ++l) headings << QString("%1 %2").arg(Tr("Level").isEmpty() ? "Level" : Tr("Level")).arg(l);
  grdFactors->setHorizontalHeaderLabels(headings);
  grdFactors->setColumnWidth(0, 140);
  for (int c = 1; c <= QuickForm::MAX_LEVELS; ++c) grdFactors->setColumnWidth(c, 64);
  cmbReps = new QComboBox(this);
  cmbReps->setObjectName("cmbReps");
  for (int r = 1; r <= 30; ++r) cmbReps->addItem(QString::number(r) + "  ", r);
  cmbReps->setCurrentIndex(1);
  lblDesign = new QLabel(this);
  lblDesign->setObjectName("lblDesign");
  lblDesign->setFrameShape(QFrame::StyledPanel);
  auto button = [&](const char* name, const char* caption) { return NamedButton(this, name, caption); };
  cmdDesign = button("cmdDesign", "&Design...");
  cmdViewDes = button("cmdViewDes", "&View design...");
  cmdViewDes->setEnabled(false);
  cmdOK = button("cmdOK", "OK");
  cmdOK->setDefault(true);
  cmdCancel = button("cmdCancel", "Cancel");

  auto label = [&](const char* name, const char* caption) {
    auto* l = new QLabel(caption, this);
    l->setObjectName(name);
    return l;
  };
  auto* form = new QFormLayout;
  form->addRow(label("lblName", "Problem name:"), txtName);
  form->addRow(label("lblRV", "Response variable:"), txtRV);
  form->addRow(label("lblReps", "Replications:"), cmbReps);
  auto* design = new QHBoxLayout;
  design->addWidget(cmdDesign);
  design->addWidget(lblDesign, 1);
  design->addWidget(cmdViewDes);
  auto* buttons = new QDialogButtonBox(this);
  buttons->addButton(cmdOK, QDialogButtonBox::AcceptRole);
  buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(label("lblFactors", "Factors (a name and two to eight levels each):"));
  layout->addWidget(grdFactors);
  layout->addLayout(design);
  layout->addWidget(buttons);

  connect(cmdDesign, &QPushButton::clicked, this, &frmQuick::cmdDesign_Click);
  connect(cmdViewDes, &QPushButton::clicked, this, [this] { frmViewDes(form_.WorkStudy(), this).exec(); });
  connect(cmdOK, &QPushButton::clicked, this, &frmQuick::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  std::string caption = GetText("QCKcap");
  if (!caption.empty()) setWindowTitle(Q(caption));
  resize(820, 560);
}

void frmQuick::FromForm() {
  form_.txtName = txtName->text().toStdString();
  form_.txtRV = txtRV->text().toStdString();
  form_.cmbReps = cmbReps->currentData().toInt();
  form_.grdFactors.clear();
  for (int r = 0; r < grdFactors->rowCount(); ++r) {
    auto text = [&](int c) { return grdFactors->item(r, c) ? grdFactors->item(r, c)->text().toStdString() : ""; };
    QuickForm::FactorRow row;
    row.name = text(0);
    for (int c = 1; c <= QuickForm::MAX_LEVELS; ++c) row.levels.push_back(text(c));
    form_.grdFactors.push_back(row);
  }
}

void frmQuick::cmdDesign_Click() {
  FromForm();
  std::string complaint = form_.DesignClick();
  if (!complaint.empty()) {
    ErrorBox(complaint);
    grdFactors->setFocus();
    return;
  }
  frmDesSel dialog(form_.WorkStudy(), this);
  dialog.exec();
  lblDesign->setText(Q(form_.DesignName()));
  cmdViewDes->setEnabled(!form_.DesignName().empty() && !(form_.WorkStudy().iDesFlag & DES_UNSTRUCTURED));
}

void frmQuick::cmdOK_Click() {
  FromForm();
  QuickForm::Complaint c = form_.QuickOK();
  if (!c.text.empty()) {
    ErrorBox(c.text);
    if (QWidget* w = findChild<QWidget*>(Q(c.control))) w->setFocus();
    return;
  }
  goToData_ = YesNoBox(GetText("QCKmsg1")) == Answer::Yes;
  accept();
}

}  // namespace kestrow
