#include "shell/frmResponse.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "core/Ui.h"
#include "shell/AnalysisDialog.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmResponse::frmResponse(Study& study, const Statistics& stats, QWidget* parent)
    : AnalysisDialog(study, stats, parent) {
  setObjectName("frmResponse");
  setWindowTitle("Response Plot");
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  cmbRV = ResponseRow(fields, this, form_.rvList, form_.rvIndex);
  layout->addLayout(fields);
  const char* captions[3] = {" Response averages (y-bar)", " Standard deviation (s)", " Mean-square deviation (MSD)"};
  for (int i = 0; i < 3; ++i) {
    optVar[i] = new QRadioButton(captions[i], this);
    optVar[i]->setObjectName(QString("optVar_%1").arg(i));
    layout->addWidget(optVar[i]);
    connect(optVar[i], &QRadioButton::toggled, this, [this, i](bool on) {
      if (on) form_.SetOption(i);
    });
  }
  chkAngled = new QCheckBox(" Use angled text for factor names", this);
  chkAngled->setObjectName("chkAngled");
  chkAngled->setChecked(form_.chkAngled);
  layout->addWidget(chkAngled);
  auto* factors = new QHBoxLayout;
  cmdBrowse = NamedButton(this, "cmdBrowse", "&Factors...");
  lblFactors = new QLabel(this);
  lblFactors->setObjectName("lblFactors");
  lblFactors->setWordWrap(true);
  factors->addWidget(cmdBrowse);
  factors->addWidget(lblFactors, 1);
  layout->addLayout(factors);
  auto* buttons = OkCancel(this, cmdOK, cmdCancel);
  cmdCycle = AddButton(buttons, "cmdCycle", "C&ycle", QDialogButtonBox::ActionRole);
  layout->addWidget(buttons);
  connect(cmbRV, &QComboBox::currentIndexChanged, this, [this](int i) {
    form_.SelectRV(i);
    ToForm();
  });
  connect(cmdBrowse, &QPushButton::clicked, this, [this] {
    if (form_.cmdBrowse_Click()) ToForm();
  });
  connect(cmdCycle, &QPushButton::clicked, this, [this] {
    form_.cmdCycle_Click();
    ToForm();
  });
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  ToForm();
  resize(std::max(420, sizeHint().width()), sizeHint().height());
}

void frmResponse::ToForm() {
  for (int i = 0; i < 3; ++i) {
    const QSignalBlocker block(optVar[i]);
    optVar[i]->setEnabled(form_.optionEnabled[i]);
    optVar[i]->setChecked(form_.option == i);
  }
  lblFactors->setText(Q(form_.lblFactors()));
  cmdCycle->setEnabled(form_.factors.size() > 1);
}

void frmResponse::FromForm() {
  form_.chkAngled = chkAngled->isChecked();
}

}  // namespace kestrow
