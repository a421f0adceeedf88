#include "shell/frmANOM.h"

#include <QCheckBox>
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
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmANOM::frmANOM(Study& study, const Statistics& stats, QWidget* parent) : AnalysisDialog(study, stats, parent) {
  setObjectName("frmANOM");
  setWindowTitle(Q(GetText("ANOMcap")));
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  cmbRV = ResponseRow(fields, this, form_.rvList, form_.rvIndex);
  cmbAlpha = AlphaRow(fields, this, form_.alphaList, form_.cmbAlpha);
  cmbAlpha->setToolTip(Q(GetText("ANOMtt1")));
  layout->addLayout(fields);

  auto* charts = new QHBoxLayout;
  cmdCharts = NamedButton(this, "cmdCharts", "&Charts...");
  lblCharts = new QLabel(Q(form_.lblCharts()), this);
  lblCharts->setObjectName("lblCharts");
  lblCharts->setWordWrap(true);
  charts->addWidget(cmdCharts);
  charts->addWidget(lblCharts, 1);
  layout->addLayout(charts);

  optSG[0] = new QRadioButton(" Runs in run order", this);
  optSG[0]->setObjectName("optSG_0");
  optSG[1] = new QRadioButton(" Ordered by the factor:", this);
  optSG[1]->setObjectName("optSG_1");
  cmbSG = new QComboBox(this);
  cmbSG->setObjectName("cmbSG");
  for (const std::string& name : form_.factorNames) cmbSG->addItem(Q(name));
  cmbSG->setCurrentIndex(form_.cmbSG);
  optSG[form_.optSG == 1 ? 1 : 0]->setChecked(true);
  cmbSG->setEnabled(form_.optSG == 1 && !form_.factorNames.empty());
  optSG[1]->setEnabled(!form_.factorNames.empty());
  auto* order = new QHBoxLayout;
  order->addWidget(optSG[1]);
  order->addWidget(cmbSG, 1);
  layout->addWidget(optSG[0]);
  layout->addLayout(order);
  chkExclude = new QCheckBox(" Exclude points with out of control ranges", this);
  chkExclude->setObjectName("chkExclude");
  chkExclude->setChecked(form_.chkExclude);
  chkExclude->setEnabled(form_.excludeEnabled);
  chk1in5 = new QCheckBox(" Label every 5th point on the x-axis", this);
  chk1in5->setObjectName("chk1in5");
  chk1in5->setChecked(form_.chk1in5);
  layout->addWidget(chkExclude);
  layout->addWidget(chk1in5);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));

  connect(optSG[1], &QRadioButton::toggled, cmbSG, &QWidget::setEnabled);
  connect(cmdCharts, &QPushButton::clicked, this, [this] {
    if (form_.cmdCharts_Click()) lblCharts->setText(Q(form_.lblCharts()));
  });
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  resize(std::max(440, sizeHint().width()), sizeHint().height());
}

void frmANOM::FromForm() {
  form_.rvIndex = cmbRV->currentIndex();
  form_.cmbAlpha = cmbAlpha->currentText().toStdString();
  form_.optSG = optSG[1]->isChecked() ? 1 : 0;
  form_.cmbSG = std::max(0, cmbSG->currentIndex());
  form_.chkExclude = chkExclude->isChecked();
  form_.chk1in5 = chk1in5->isChecked();
}

}  // namespace kestrow
