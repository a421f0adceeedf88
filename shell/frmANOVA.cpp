#include "shell/frmANOVA.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmANOVA::frmANOVA(Study& study, const Statistics& stats, QWidget* parent) : QDialog(parent), form_(study, stats) {
  setObjectName("frmANOVA");
  setWindowTitle(Q(GetText("ANOVAcap")));
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  cmbRV = new QComboBox(this);
  cmbRV->setObjectName("cmbRV");
  for (const RVListEntry& e : form_.rvList) cmbRV->addItem(Q(e.name));
  txtAlpha = new QLineEdit(this);
  txtAlpha->setObjectName("txtAlpha");
  txtAlpha->setToolTip("0.01=conservative, 0.10=exploratory");
  auto* lblRV = new QLabel("Response variable:", this);
  lblRV->setObjectName("lblRV");
  auto* lblAlpha = new QLabel("Alpha:", this);
  lblAlpha->setObjectName("lblAlpha");
  fields->addRow(lblRV, cmbRV);
  fields->addRow(lblAlpha, txtAlpha);
  layout->addLayout(fields);
  const char* captions[3] = {" Response averages (y-bar)", " Standard deviation (s)", " Mean-square deviation (MSD)"};
  for (int i = 0; i < 3; ++i) {
    optVar[i] = new QRadioButton(captions[i], this);
    optVar[i]->setObjectName(QString("optVar_%1").arg(i));
    layout->addWidget(optVar[i]);
    connect(optVar[i], &QRadioButton::toggled, this, [this, i](bool on) {
      if (!on) return;
      form_.SetOption(i);
      ToForm();
    });
  }

  fra1 = new QGroupBox("Pooled contrasts", this);
  fra1->setObjectName("fra1");
  auto* pooling = new QVBoxLayout(fra1);
  grdPool = new QTableWidget(0, 4, fra1);
  grdPool->setObjectName("grdPool");
  std::string headings = GetText("ANOVAhdr");
  grdPool->setHorizontalHeaderLabels({"", Q(PopBar(headings)), Q(GetText("SS")), Q(GetText("Aliases"))});
  grdPool->verticalHeader()->hide();
  grdPool->setEditTriggers(QAbstractItemView::NoEditTriggers);
  grdPool->setSelectionMode(QAbstractItemView::NoSelection);
  grdPool->horizontalHeader()->setStretchLastSection(true);
  grdPool->setMinimumSize(340, 180);
  pooling->addWidget(grdPool);
  auto* totals = new QFormLayout;
  lblDF = new QLabel(fra1);
  lblDF->setObjectName("lblDF");
  lblErrorSS = new QLabel(fra1);
  lblErrorSS->setObjectName("lblErrorSS");
  lblTotalSS = new QLabel(fra1);
  lblTotalSS->setObjectName("lblTotalSS");
  lblPooling = new QLabel(fra1);
  lblPooling->setObjectName("lblPooling");
  lblPooling->setWordWrap(true);
  totals->addRow("df:", lblDF);
  totals->addRow(Q(GetText("Error")) + " SS:", lblErrorSS);
  totals->addRow(Q(GetText("TOTAL")) + " SS:", lblTotalSS);
  totals->addRow(lblPooling);
  pooling->addLayout(totals);
  layout->addWidget(fra1);
  fra1->hide();

  auto* buttons = new QDialogButtonBox(this);
  cmdPooling = AddButton(buttons, "cmdPooling", "Pooling >>", QDialogButtonBox::ActionRole);
  cmdOK = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  cmdOK->setDefault(true);
  cmdCancel = AddButton(buttons, "cmdCancel", "Cancel", QDialogButtonBox::RejectRole);
  layout->addWidget(buttons);

  connect(cmbRV, &QComboBox::currentIndexChanged, this, [this](int i) {
    form_.SelectRV(i);
    ToForm();
  });
  // A click anywhere on a row flips its tick.
  connect(grdPool, &QTableWidget::cellClicked, this, [this](int row, int) {
    form_.TogglePool(row);
    const QSignalBlocker block(grdPool);
    grdPool->item(row, 0)->setCheckState(form_.pool[static_cast<std::size_t>(row)].checked ? Qt::Checked
                                                                                             : Qt::Unchecked);
    ShowTotals();
  });
  connect(cmdPooling, &QPushButton::clicked, this, &frmANOVA::cmdPooling_Click);
  connect(cmdOK, &QPushButton::clicked, this, &frmANOVA::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &frmANOVA::reject);
  TranslateForm(this);
  txtAlpha->setText(Q(form_.txtAlpha));
  {
    const QSignalBlocker block(cmbRV);
    cmbRV->setCurrentIndex(form_.rvIndex);
  }
  ToForm();
}

void frmANOVA::ToForm() {
  for (int i = 0; i < 3; ++i) {
    const QSignalBlocker block(optVar[i]);
    optVar[i]->setEnabled(form_.optionEnabled[i]);
    optVar[i]->setChecked(form_.option == i);
  }
  cmdPooling->setEnabled(form_.poolingEnabled);
  if (!form_.poolingEnabled && fra1->isVisible()) cmdPooling_Click();
  FillPool();
}

void frmANOVA::FillPool() {
  const QSignalBlocker block(grdPool);
  grdPool->setRowCount(static_cast<int>(form_.pool.size()));
  for (int r = 0; r < grdPool->rowCount(); ++r) {
    const ANOVAForm::PoolRow& row = form_.pool[static_cast<std::size_t>(r)];
    auto* check = new QTableWidgetItem;
    check->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
    check->setCheckState(row.checked ? Qt::Checked : Qt::Unchecked);
    grdPool->setItem(r, 0, check);
    grdPool->setItem(r, 1, new QTableWidgetItem(Q(row.name)));
    grdPool->setItem(r, 2, new QTableWidgetItem(Q(row.ss)));
    grdPool->setItem(r, 3, new QTableWidgetItem(Q(row.aliases)));
  }
  grdPool->resizeColumnsToContents();
  ShowTotals();
}

void frmANOVA::ShowTotals() {
  lblDF->setText(Q(form_.lblDF()));
  lblErrorSS->setText(Q(form_.lblErrorSS()));
  lblTotalSS->setText(Q(form_.lblTotalSS()));
  lblPooling->setText(Q(form_.lblPooling()));
}

// Opens or closes the pooling panel; the button tells what a click will do.
void frmANOVA::cmdPooling_Click() {
  bool open = !fra1->isVisible();
  fra1->setVisible(open);
  cmdPooling->setText(Q(GetText(open ? "ANOVAmsg2" : "ANOVAmsg3")));
  adjustSize();
}

void frmANOVA::cmdOK_Click() {
  form_.txtAlpha = txtAlpha->text().toStdString();
  std::string message;
  switch (form_.OK(message)) {
    case ANOVAForm::Outcome::Refused:
      ErrorBox(message);
      return;
    case ANOVAForm::Outcome::Noticed:
      InfoBox(message);
      return;
    case ANOVAForm::Outcome::Accepted:
      accept();
  }
}

void frmANOVA::reject() {
  form_.txtAlpha = txtAlpha->text().toStdString();
  if (!ConfirmCancel(form_.Edited())) return;
  form_.Cancel();
  QDialog::reject();
}

}  // namespace kestrow
