#include "shell/frmRegress.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Language.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"
#include "shell/frmAPR.h"

namespace kestrow {

namespace {

QLabel* Value(QWidget* parent, const char* name) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setWordWrap(true);
  label->setFrameShape(QFrame::StyledPanel);
  label->setMinimumWidth(80);
  return label;
}

}  // namespace

frmRegress::frmRegress(Study& study, const Statistics& stats, QWidget* parent)
    : AnalysisDialog(study, stats, parent), study_(study) {
  setObjectName("frmRegress");
  setWindowTitle(Q(GetText("REGcap")));
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  cmbRV = ResponseRow(fields, this, form_.rvList, form_.rvIndex);
  layout->addLayout(fields);

  auto* options = new QHBoxLayout;
  auto* variable = new QGroupBox(this);
  auto* variableRows = new QVBoxLayout(variable);
  const char* varCaptions[2] = {" y-bar (location)", " SD (variation)"};
  for (int i = 0; i < 2; ++i) {
    optVar[i] = new QRadioButton(varCaptions[i], variable);
    optVar[i]->setObjectName(QString("optVar_%1").arg(i));
    variableRows->addWidget(optVar[i]);
  }
  optVar[form_.optVar]->setChecked(true);
  optVar[1]->setEnabled(form_.sdOffered);
  chkCoding = new QCheckBox(" Use data coding", variable);
  chkCoding->setObjectName("chkCoding");
  chkCoding->setChecked(form_.chkCoding);
  variableRows->addWidget(chkCoding);
  options->addWidget(variable);
  auto* model = new QGroupBox(this);
  auto* modelRows = new QVBoxLayout(model);
  const char* modelCaptions[4] = {" Linear", " Interactions", " Quadratic + Interactions", " Cubic"};
  for (int i = 0; i < 4; ++i) {
    optModel[i] = new QRadioButton(modelCaptions[i], model);
    optModel[i]->setObjectName(QString("optModel_%1").arg(i));
    modelRows->addWidget(optModel[i]);
  }
  // The stored type is set before the toggles are heard: the grid is not built yet.
  optModel[form_.optModel]->setChecked(true);
  for (int i = 0; i < 4; ++i)
    connect(optModel[i], &QRadioButton::toggled, this, [this, i](bool on) {
      if (!on) return;
      form_.optModel_Click(i);
      ToGrid();
    });
  options->addWidget(model);
  layout->addLayout(options);

  auto* lblTerms = new QLabel("Select terms for regression", this);
  lblTerms->setObjectName("lblTerms");
  layout->addWidget(lblTerms);
  grdTerms = new QTableWidget(0, 4, this);
  grdTerms->setObjectName("grdTerms");
  grdTerms->setHorizontalHeaderLabels({Q(GetText("Variable")), "", Q(GetText("Coeff")), Q(GetText("pvalue"))});
  grdTerms->verticalHeader()->hide();
  grdTerms->setSelectionMode(QAbstractItemView::NoSelection);
  grdTerms->setEditTriggers(QAbstractItemView::NoEditTriggers);
  grdTerms->horizontalHeader()->setStretchLastSection(true);
  grdTerms->setMinimumSize(420, 220);
  layout->addWidget(grdTerms);
  connect(grdTerms, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
    if (item->column() != COL_TICK) return;
    form_.Tick(static_cast<std::size_t>(item->row()), item->checkState() == Qt::Checked);
    ToGrid();
  });

  auto* labels = new QFormLayout;
  lblEquation = Value(this, "lblEquation");
  lblRsquared = Value(this, "lblRsquared");
  lblMSE = Value(this, "lblMSE");
  auto* capEquation = new QLabel("Regression equation", this);
  capEquation->setObjectName("capEquation");
  auto* capRsquared = new QLabel("R-squared", this);
  capRsquared->setObjectName("capRsquared");
  auto* capMSE = new QLabel("MSE", this);
  capMSE->setObjectName("capMSE");
  labels->addRow(capEquation, lblEquation);
  labels->addRow(capRsquared, lblRsquared);
  labels->addRow(capMSE, lblMSE);
  layout->addLayout(labels);

  auto* buttons = OkCancel(this, cmdOK, cmdCancel);
  cmdRegress = AddButton(buttons, "cmdRegress", "Compute", QDialogButtonBox::ActionRole);
  cmdSearch = AddButton(buttons, "cmdSearch", "Search", QDialogButtonBox::ActionRole);
  layout->addWidget(buttons);
  connect(cmdRegress, &QPushButton::clicked, this, [this] { cmdRegress_Click(); });
  connect(cmdSearch, &QPushButton::clicked, this, [this] { cmdSearch_Click(); });
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  ToGrid();
}

void frmRegress::FromForm() {
  form_.rvIndex = cmbRV->currentIndex();
  form_.optVar = optVar[1]->isChecked() ? 1 : 0;
  form_.chkCoding = chkCoding->isChecked();
}

void frmRegress::ToGrid() {
  const QSignalBlocker block(grdTerms);
  grdTerms->setRowCount(static_cast<int>(form_.rows.size()));
  // The items are kept and set: a tick arrives from inside the item it changes.
  auto cell = [this](int r, int c) {
    QTableWidgetItem* item = grdTerms->item(r, c);
    if (!item) grdTerms->setItem(r, c, item = new QTableWidgetItem);
    return item;
  };
  for (int r = 0; r < grdTerms->rowCount(); ++r) {
    const RegressForm::Row& row = form_.rows[static_cast<std::size_t>(r)];
    cell(r, COL_TERM)->setText(Q(row.text));
    QTableWidgetItem* tick = cell(r, COL_TICK);
    // The constant is always in the model.
    tick->setFlags(row.sTerm == "0" ? Qt::ItemIsUserCheckable : Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
    tick->setCheckState(row.checked ? Qt::Checked : Qt::Unchecked);
    cell(r, COL_COEFF)->setText(Q(row.coefficient));
    cell(r, COL_P)->setText(Q(row.significance));
  }
  grdTerms->resizeColumnsToContents();
  ShowLabels();
}

void frmRegress::ShowLabels() {
  lblEquation->setText(Q(form_.lblEquation));
  lblRsquared->setText(Q(form_.lblRsquared));
  lblMSE->setText(Q(form_.lblMSE));
}

void frmRegress::cmdRegress_Click() {
  FromForm();
  form_.cmdRegress_Click();
  ToGrid();
}

// The search works on the grid's terms with the response and options as the
// dialog stands; its best model comes back ticked and computed.
void frmRegress::cmdSearch_Click() {
  FromForm();
  if (!form_.VetForSearch()) return;
  frmAPR search(study_, form_.SearchRVkey(), form_.SearchFlag(), form_.TermGrid(), form_.ModelName(), this);
  search.exec();
  if (std::uint32_t mask = search.CopyBackMask()) {
    form_.CopyBack(mask);
    ToGrid();
  }
}

}  // namespace kestrow
