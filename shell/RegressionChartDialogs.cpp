#include "shell/RegressionChartDialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/Language.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmResiduals2::frmResiduals2(Study& study, const Statistics& stats, QWidget* parent)
    : AnalysisDialog(study, stats, parent) {
  setObjectName("frmResiduals2");
  setWindowTitle(Q(GetText("RSRcap")));
  auto* layout = new QVBoxLayout(this);
  auto* lblCharts = new QLabel("Select up to 6 charts", this);
  lblCharts->setObjectName("lblCharts");
  layout->addWidget(lblCharts);
  grd1 = new QListWidget(this);
  grd1->setObjectName("grd1");
  for (const ResidualChartRow& row : form_.rows) {
    auto* item = new QListWidgetItem(Q(row.text), grd1);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(row.checked ? Qt::Checked : Qt::Unchecked);
  }
  layout->addWidget(grd1);
  chkStudent = new QCheckBox(" Use studentized residuals", this);
  chkStudent->setObjectName("chkStudent");
  chkStudent->setChecked(form_.chkStudent);
  layout->addWidget(chkStudent);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  resize(std::max(400, sizeHint().width()), 360);
}

void frmResiduals2::FromForm() {
  for (int i = 0; i < grd1->count(); ++i)
    form_.rows[static_cast<std::size_t>(i)].checked = grd1->item(i)->checkState() == Qt::Checked;
  form_.chkStudent = chkStudent->isChecked();
}

frmScattergram::frmScattergram(Study& study, const Statistics& stats, QWidget* parent)
    : AnalysisDialog(study, stats, parent) {
  setObjectName("frmScattergram");
  setWindowTitle("Scattergram");
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  cmbRV = ResponseRow(fields, this, form_.rvList, form_.rvIndex);
  cmbFactor = new QComboBox(this);
  cmbFactor->setObjectName("cmbFactor");
  for (const auto& [key, name] : form_.factorList) cmbFactor->addItem(Q(name));
  cmbFactor->setCurrentIndex(form_.factorIndex);
  auto* lblFactor = new QLabel("Factor:", this);
  lblFactor->setObjectName("lblFactor");
  fields->addRow(lblFactor, cmbFactor);
  layout->addLayout(fields);
  auto* line = new QGroupBox("Fitted line", this);
  line->setObjectName("fraLine");
  auto* lineRows = new QVBoxLayout(line);
  const char* captions[3] = {" Straight line", " Quadratic", " Cubic"};
  for (int i = 0; i < 3; ++i) {
    optDegree[i] = new QRadioButton(captions[i], line);
    optDegree[i]->setObjectName(QString("optDegree_%1").arg(i));
    lineRows->addWidget(optDegree[i]);
  }
  optDegree[std::clamp(form_.optDegree, 0, 2)]->setChecked(true);
  layout->addWidget(line);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
}

void frmScattergram::FromForm() {
  form_.rvIndex = cmbRV->currentIndex();
  form_.factorIndex = cmbFactor->currentIndex();
  for (int i = 0; i < 3; ++i)
    if (optDegree[i]->isChecked()) form_.optDegree = i;
}

}  // namespace kestrow
