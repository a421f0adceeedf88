#include "shell/frmSetSeq.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Language.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmSetSeq::frmSetSeq(Study& study, QWidget* parent) : QDialog(parent), form_(study) {
  setObjectName("frmSetSeq");

  grd1 = new QTableWidget(this);
  grd1->setObjectName("grd1");
  grd1->setEditTriggers(QAbstractItemView::NoEditTriggers);
  grd1->setSelectionBehavior(QAbstractItemView::SelectRows);
  grd1->setSelectionMode(QAbstractItemView::SingleSelection);
  grd1->horizontalHeader()->setStretchLastSection(true);
  grd1->setMinimumSize(360, 260);

  lblRep = new QLabel(this);
  lblRep->setObjectName("lblRep");
  // The value runs one step past each end so that stepping there wraps around.
  vsbRep = new QScrollBar(Qt::Vertical, this);
  vsbRep->setObjectName("vsbRep");
  vsbRep->setRange(0, study.iReps + 1);
  vsbRep->setSingleStep(1);
  vsbRep->setPageStep(1);
  vsbRep->setFixedHeight(48);

  cmdScramble = new QPushButton("Scramble run order", this);
  cmdScramble->setObjectName("cmdScramble");
  cmdEdit = new QPushButton("Edit run order", this);
  cmdEdit->setObjectName("cmdEdit");
  cmdPropagate = new QPushButton("Make all reps like this one", this);
  cmdPropagate->setObjectName("cmdPropagate");
  cmdOK = new QPushButton("OK", this);
  cmdOK->setObjectName("cmdOK");
  cmdOK->setDefault(true);

  auto* repRow = new QHBoxLayout;
  repRow->addWidget(lblRep);
  repRow->addWidget(vsbRep);
  repRow->addStretch();
  auto* side = new QVBoxLayout;
  side->addLayout(repRow);
  side->addWidget(cmdScramble);
  side->addWidget(cmdEdit);
  side->addWidget(cmdPropagate);
  side->addStretch();
  side->addWidget(cmdOK);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(grd1, 1);
  layout->addLayout(side);

  connect(cmdScramble, &QPushButton::clicked, this, &frmSetSeq::cmdScramble_Click);
  connect(cmdEdit, &QPushButton::clicked, this, &frmSetSeq::cmdEdit_Click);
  connect(cmdPropagate, &QPushButton::clicked, this, &frmSetSeq::cmdPropagate_Click);
  connect(cmdOK, &QPushButton::clicked, this, &frmSetSeq::cmdOK_Click);
  connect(grd1, &QTableWidget::cellClicked, this, &frmSetSeq::grd1_Click);
  connect(vsbRep, &QScrollBar::valueChanged, this, &frmSetSeq::vsbRep_Change);

  TranslateForm(this);
  std::string caption = GetText("SEQcap");
  setWindowTitle(caption.empty() ? QString("Edit run sequence") : Q(caption));
  LoadGrid();
  Refresh();
  // Columns share the table's width; the table is as wide and tall as the
  // design needs, within reason.
  grd1->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  grd1->resizeRowsToContents();
  int height = grd1->horizontalHeader()->sizeHint().height() + 6;
  for (int r = 0; r < grd1->rowCount(); ++r) height += grd1->rowHeight(r);
  grd1->setMinimumSize(std::min(110 * grd1->columnCount() + 60, 900), std::min(std::max(height, 200), 560));
  adjustSize();
}

// The headings and level names do not change while the dialog is open.
void frmSetSeq::LoadGrid() {
  std::vector<std::string> heads = form_.ColumnHeads();
  grd1->setColumnCount(static_cast<int>(heads.size()));
  grd1->setRowCount(form_.RowCount());
  QStringList labels;
  for (const std::string& h : heads) labels << Q(h);
  grd1->setHorizontalHeaderLabels(labels);
  for (int t = 1; t <= form_.RowCount(); ++t) {
    grd1->setItem(t - 1, 0, new QTableWidgetItem);
    for (int f = 1; f < static_cast<int>(heads.size()); ++f)
      grd1->setItem(t - 1, f, new QTableWidgetItem(Q(form_.LevelCell(t, f))));
  }
}

void frmSetSeq::Refresh() {
  for (int t = 1; t <= form_.RowCount(); ++t) grd1->item(t - 1, 0)->setText(Q(form_.SeqCell(t)));
  lblRep->setText(Q(form_.RepCaption()));
  {
    QSignalBlocker block(vsbRep);
    vsbRep->setValue(form_.iRep());
  }
  vsbRep->setEnabled(form_.ScrollEnabled());
  cmdPropagate->setEnabled(form_.PropagateEnabled());
}

void frmSetSeq::cmdScramble_Click() {
  form_.cmdScramble_Click();
  Refresh();
}

void frmSetSeq::cmdEdit_Click() {
  form_.cmdEdit_Click();
  Refresh();
}

void frmSetSeq::cmdPropagate_Click() {
  form_.cmdPropagate_Click();
  Refresh();
}

void frmSetSeq::grd1_Click(int row, int /*column*/) {
  form_.RowClick(row + 1);
  Refresh();
}

void frmSetSeq::vsbRep_Change(int value) {
  form_.vsbRep_Change(value);
  Refresh();
}

void frmSetSeq::cmdOK_Click() {
  if (form_.cmdOK_Click()) accept();
}

// The title-bar button and Escape end here: they are OK, since there is no
// Cancel.
void frmSetSeq::reject() { cmdOK_Click(); }

}  // namespace kestrow
