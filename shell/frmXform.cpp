#include "shell/frmXform.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/Study.h"
#include "core/Ui.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmXform::frmXform(Study& study, QWidget* parent) : QDialog(parent), form_(study) {
  setObjectName("frmXform");
  setWindowTitle("Data transformation setup");
  cmbRV = new QComboBox(this);
  cmbRV->setObjectName("cmbRV");
  for (const StudyRespVar& srv : study.StudyRespVars) cmbRV->addItem(Q(study.GetPRVName(srv.sKey)));
  const char* captions[3] = {" None", " Logarithmic (base 10):  y' = log(y + a)",
                             " Box-Cox power transform:  y' = ((y + a)^b - 1) / b"};
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(cmbRV);
  for (int i = 0; i < 3; ++i) {
    optXform[i] = new QRadioButton(captions[i], this);
    optXform[i]->setObjectName(QString("optXform_%1").arg(i));
    layout->addWidget(optXform[i]);
    connect(optXform[i], &QRadioButton::toggled, this, [this, i](bool on) {
      if (!on) return;
      form_.SetOption(i);
      txtA->setEnabled(form_.aEnabled);
      txtB->setEnabled(form_.bEnabled);
    });
  }
  txtA = new QLineEdit(this);
  txtA->setObjectName("txtA");
  txtB = new QLineEdit(this);
  txtB->setObjectName("txtB");
  auto* lblA = new QLabel("a = ", this);
  lblA->setObjectName("lblA");
  auto* lblB = new QLabel("b = ", this);
  lblB->setObjectName("lblB");
  auto* fields = new QFormLayout;
  fields->addRow(lblA, txtA);
  fields->addRow(lblB, txtB);
  layout->addLayout(fields);
  auto* buttons = new QDialogButtonBox(this);
  cmdCompute = AddButton(buttons, "cmdCompute", "Recompute", QDialogButtonBox::ActionRole);
  cmdOK = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  cmdOK->setDefault(true);
  cmdCancel = AddButton(buttons, "cmdCancel", "Cancel", QDialogButtonBox::RejectRole);
  layout->addWidget(buttons);

  connect(cmbRV, &QComboBox::currentIndexChanged, this, [this](int i) {
    form_.SelectRV(i + 1);
    ToForm();
  });
  connect(cmdCompute, &QPushButton::clicked, this, [this] {
    FromForm();
    form_.Recompute();
    ToForm();
  });
  connect(cmdOK, &QPushButton::clicked, this, &frmXform::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  form_.SelectRV(1);
  ToForm();
}

void frmXform::ToForm() {
  const QSignalBlocker b0(optXform[0]), b1(optXform[1]), b2(optXform[2]);
  optXform[form_.optXform]->setChecked(true);
  txtA->setText(Q(form_.txtA));
  txtB->setText(Q(form_.txtB));
  txtA->setEnabled(form_.aEnabled);
  txtB->setEnabled(form_.bEnabled);
}

void frmXform::FromForm() {
  form_.txtA = txtA->text().toStdString();
  form_.txtB = txtB->text().toStdString();
}

void frmXform::cmdOK_Click() {
  FromForm();
  bool declined = false;
  std::string complaint = form_.OK(declined);
  if (!complaint.empty()) {
    ErrorBox(complaint);
    return;
  }
  if (declined) return;
  changed_ = true;
  accept();
}

}  // namespace kestrow
