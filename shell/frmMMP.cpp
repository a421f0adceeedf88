#include "shell/frmMMP.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/Ui.h"
#include "shell/AnalysisDialog.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmMMP::frmMMP(Study& study, const Statistics& stats, QWidget* parent) : AnalysisDialog(study, stats, parent) {
  setObjectName("frmMMP");
  setWindowTitle("Marginal Means Plot");
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  cmbRV = ResponseRow(fields, this, form_.rvList, form_.rvIndex);
  layout->addLayout(fields);
  const char* captions[2] = {" Show main effects", " Show contrasts only"};
  for (int i = 0; i < 2; ++i) {
    optWhat[i] = new QRadioButton(captions[i], this);
    optWhat[i]->setObjectName(QString("optWhat_%1").arg(i));
    layout->addWidget(optWhat[i]);
  }
  optWhat[form_.optWhat]->setChecked(true);
  chkReduce = new QCheckBox(" Use a reduced font on the x-axis", this);
  chkReduce->setObjectName("chkReduce");
  chkReduce->setChecked(form_.chkReduce);
  chkIncSD = new QCheckBox(" Include chart for Standard Deviation", this);
  chkIncSD->setObjectName("chkIncSD");
  chkIncSD->setChecked(form_.chkIncSD);
  chkIncSD->setEnabled(form_.incSDEnabled);
  layout->addWidget(chkReduce);
  layout->addWidget(chkIncSD);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  resize(std::max(380, sizeHint().width()), sizeHint().height());
}

void frmMMP::FromForm() {
  form_.rvIndex = cmbRV->currentIndex();
  form_.optWhat = optWhat[1]->isChecked() ? 1 : 0;
  form_.chkReduce = chkReduce->isChecked();
  form_.chkIncSD = chkIncSD->isChecked();
}

}  // namespace kestrow
