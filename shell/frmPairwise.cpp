#include "shell/frmPairwise.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/Language.h"
#include "core/Ui.h"
#include "shell/AnalysisDialog.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmPairwise::frmPairwise(Study& study, const Statistics& stats, QWidget* parent)
    : AnalysisDialog(study, stats, parent) {
  setObjectName("frmPairwise");
  setWindowTitle(Q(GetText("PWCcap")));
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  cmbRV = ResponseRow(fields, this, form_.rvList, form_.rvIndex);
  cmbAlpha = AlphaRow(fields, this, form_.alphaList, form_.cmbAlpha);
  layout->addLayout(fields);
  const char* captions[2] = {" Least Significant Difference", " Duncan's multiple range test"};
  for (int i = 0; i < 2; ++i) {
    optAlgorithm[i] = new QRadioButton(captions[i], this);
    optAlgorithm[i]->setObjectName(QString("optAlgorithm_%1").arg(i));
    layout->addWidget(optAlgorithm[i]);
  }
  optAlgorithm[form_.optAlgorithm]->setChecked(true);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  resize(std::max(380, sizeHint().width()), sizeHint().height());
}

void frmPairwise::FromForm() {
  form_.rvIndex = cmbRV->currentIndex();
  form_.cmbAlpha = cmbAlpha->currentText().toStdString();
  form_.optAlgorithm = optAlgorithm[1]->isChecked() ? 1 : 0;
}

}  // namespace kestrow
