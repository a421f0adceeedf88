#include "shell/frmFXplot.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/Ui.h"
#include "shell/AnalysisDialog.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"
#include "shell/frmFilter.h"

namespace kestrow {

frmFXplot::frmFXplot(Study& study, const Statistics& stats, QWidget* parent)
    : AnalysisDialog(study, stats, parent), study_(study) {
  setObjectName("frmFXplot");
  setWindowTitle("Effects Plot");
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  cmbRV = ResponseRow(fields, this, form_.rvList, form_.rvIndex);
  cmdBrowse = NamedButton(this, "cmdBrowse", "&Factors...");
  lblFactors = new QLabel(this);
  lblFactors->setObjectName("lblFactors");
  lblFactors->setWordWrap(true);
  fields->addRow(cmdBrowse, lblFactors);
  cmdFilter = NamedButton(this, "cmdFilter", "F&ilter...");
  lblFilter = new QLabel(this);
  lblFilter->setObjectName("lblFilter");
  lblFilter->setWordWrap(true);
  fields->addRow(cmdFilter, lblFilter);
  layout->addLayout(fields);
  auto* buttons = OkCancel(this, cmdOK, cmdCancel);
  cmdFlip = AddButton(buttons, "cmdFlip", "F&lip", QDialogButtonBox::ActionRole);
  layout->addWidget(buttons);
  connect(cmdBrowse, &QPushButton::clicked, this, [this] {
    if (form_.cmdBrowse_Click()) ShowChoices();
  });
  connect(cmdFlip, &QPushButton::clicked, this, [this] {
    form_.cmdFlip_Click();
    ShowChoices();
  });
  connect(cmdFilter, &QPushButton::clicked, this, &frmFXplot::cmdFilter_Click);
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  ShowChoices();
  resize(std::max(420, sizeHint().width()), sizeHint().height());
}

void frmFXplot::ShowChoices() {
  lblFactors->setText(Q(form_.lblFactors()));
  lblFilter->setText(Q(form_.lblFilter()));
  cmdFlip->setEnabled(!form_.f2Key.empty());
}

void frmFXplot::FromForm() { form_.rvIndex = cmbRV->currentIndex(); }

void frmFXplot::cmdFilter_Click() {
  frmFilter filter(study_, form_.sFilter, form_.ExcludeList(), this);
  filter.exec();
  if (!filter.Result()) return;
  form_.TakeFilters(filter.FilterList());
  ShowChoices();
}

}  // namespace kestrow
