#include "shell/ChartChoiceDialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/Language.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

namespace {

QCheckBox* Box(QWidget* parent, const char* name, const char* caption, bool checked) {
  auto* box = new QCheckBox(caption, parent);
  box->setObjectName(name);
  box->setChecked(checked);
  return box;
}

}  // namespace

frmScree::frmScree(Study& study, const Statistics& stats, QWidget* parent) : AnalysisDialog(study, stats, parent) {
  setObjectName("frmScree");
  setWindowTitle("ANOVA graphics");
  auto* layout = new QVBoxLayout(this);
  chkScree = Box(this, "chkScree", " Scree plot", form_.chkScree);
  chkLHNPP = Box(this, "chkLHNPP", " NPP of estimated contrast effects", form_.chkLHNPP);
  chkPareto = Box(this, "chkPareto", " Pareto plot of half-effects", form_.chkPareto);
  for (QCheckBox* box : {chkScree, chkLHNPP, chkPareto}) layout->addWidget(box);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
}

void frmScree::FromForm() {
  form_.chkScree = chkScree->isChecked();
  form_.chkLHNPP = chkLHNPP->isChecked();
  form_.chkPareto = chkPareto->isChecked();
}

frmResiduals::frmResiduals(Study& study, const Statistics& stats, QWidget* parent)
    : AnalysisDialog(study, stats, parent) {
  setObjectName("frmResiduals");
  setWindowTitle("Residuals Analysis");
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  cmbRV = ResponseRow(fields, this, form_.rvList, form_.rvIndex);
  layout->addLayout(fields);
  auto* lblCharts = new QLabel(Q(GetText("REScap")), this);
  lblCharts->setObjectName("lblCharts");
  layout->addWidget(lblCharts);
  grd1 = new QListWidget(this);
  grd1->setObjectName("grd1");
  for (const ResidualsForm::Row& row : form_.rows) {
    auto* item = new QListWidgetItem(Q(row.text), grd1);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(row.checked ? Qt::Checked : Qt::Unchecked);
  }
  layout->addWidget(grd1);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  resize(std::max(400, sizeHint().width()), 360);
}

void frmResiduals::FromForm() {
  form_.rvIndex = cmbRV->currentIndex();
  for (int i = 0; i < grd1->count(); ++i)
    form_.rows[static_cast<std::size_t>(i)].checked = grd1->item(i)->checkState() == Qt::Checked;
}

frmRunChart::frmRunChart(Study& study, const Statistics& stats, QWidget* parent)
    : AnalysisDialog(study, stats, parent) {
  setObjectName("frmRunChart");
  setWindowTitle("Run chart");
  auto* layout = new QVBoxLayout(this);
  const char* captions[3] = {" Use a 'natural' scale", " Transform each value to the range [-1, +1]",
                             " Sigma deviation from mean value"};
  for (int i = 0; i < 3; ++i) {
    optScale[i] = new QRadioButton(captions[i], this);
    optScale[i]->setObjectName(QString("optScale_%1").arg(i));
    layout->addWidget(optScale[i]);
  }
  optScale[form_.optScale]->setChecked(true);
  chkShowRange = Box(this, "chkShowRange", " Display a range chart", form_.chkShowRange);
  chk1in5 = Box(this, "chk1in5", " Label every 5th point on the x-axis", form_.chk1in5);
  layout->addWidget(chkShowRange);
  layout->addWidget(chk1in5);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
}

void frmRunChart::FromForm() {
  for (int i = 0; i < 3; ++i)
    if (optScale[i]->isChecked()) form_.optScale = i;
  form_.chkShowRange = chkShowRange->isChecked();
  form_.chk1in5 = chk1in5->isChecked();
}

}  // namespace kestrow
