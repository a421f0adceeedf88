#include "shell/frmDesSel.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Language.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmDesSel::frmDesSel(Study& study, QWidget* parent) : QDialog(parent), table_(study) {
  setObjectName("frmDesSel");
  setWindowTitle("Design Selection Table");
  grdDesigns = new QTableWidget(0, 2, this);
  grdDesigns->setObjectName("grdDesigns");
  grdDesigns->setHorizontalHeaderLabels({Tr("Design"), "Runs"});
  grdDesigns->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  grdDesigns->verticalHeader()->hide();
  grdDesigns->setSelectionBehavior(QAbstractItemView::SelectRows);
  grdDesigns->setSelectionMode(QAbstractItemView::SingleSelection);
  grdDesigns->setEditTriggers(QAbstractItemView::NoEditTriggers);
  auto* buttons = new QDialogButtonBox(this);
  cmdOK = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  cmdOK->setDefault(true);
  cmdCancel = AddButton(buttons, "cmdCancel", "Cancel", QDialogButtonBox::RejectRole);
  cmdWizard = AddButton(buttons, "cmdWizard", "&Wizard...", QDialogButtonBox::HelpRole);
  cmdCriteria = AddButton(buttons, "cmdCriteria", "&Criteria...", QDialogButtonBox::HelpRole);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(grdDesigns);
  layout->addWidget(buttons);
  connect(cmdOK, &QPushButton::clicked, this, &frmDesSel::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(cmdWizard, &QPushButton::clicked, this, &frmDesSel::cmdWizard_Click);
  connect(cmdCriteria, &QPushButton::clicked, this, [this] { frmDesHelp2(this).exec(); });
  connect(grdDesigns, &QTableWidget::cellDoubleClicked, this, &frmDesSel::cmdOK_Click);
  TranslateForm(this);
  std::string caption = GetText("DScap");
  if (!caption.empty()) setWindowTitle(Q(caption));

  if (table_.DesSelLoad()) {
    grdDesigns->setRowCount(static_cast<int>(table_.rows.size()));
    for (int r = 0; r < static_cast<int>(table_.rows.size()); ++r) {
      const Design& d = table_.rows[static_cast<std::size_t>(r)];
      grdDesigns->setItem(r, 0, new QTableWidgetItem(Q(d.sName).trimmed()));
      auto* runs = new QTableWidgetItem(Q(d.sRuns).trimmed());
      runs->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      grdDesigns->setItem(r, 1, runs);
    }
    if (grdDesigns->rowCount() > 0) grdDesigns->selectRow(0);
  }
  grdDesigns->resizeColumnToContents(1);
  resize(520, 420);
}

void frmDesSel::cmdOK_Click() {
  int row = grdDesigns->currentRow();
  if (row < 0) return;
  if (table_.DesSelOK(row + 1)) accept();
}

void frmDesSel::cmdWizard_Click() { frmDesWiz1(table_.DesWizard(), this).exec(); }

frmDesWiz1::frmDesWiz1(const DesignSelection::Advice& advice, QWidget* parent) : QDialog(parent) {
  setObjectName("frmDesWiz1");
  QString suggestion = Q(advice.suggestion).trimmed();
  QString caption = Tr("DW1Cap");
  // A card that was edited by hand starts with "*": the caption says so.
  if (suggestion.startsWith('*')) {
    suggestion.remove(0, 1);
    caption += " " + Tr("Edited");
  }
  suggestion.replace(QStringLiteral(" \n\n "), QStringLiteral("\n\n"));
  auto* l1 = new QLabel("Factors:", this);
  l1->setObjectName("lblFactorsHead");
  auto* lblFactors = new QLabel(Q(advice.heading), this);
  lblFactors->setObjectName("lblFactors");
  lblFactors->setWordWrap(true);
  auto* l2 = new QLabel("Suggestion:", this);
  l2->setObjectName("lblSuggestionHead");
  auto* lblSuggestion = new QLabel(suggestion, this);
  lblSuggestion->setObjectName("lblSuggestion");
  lblSuggestion->setWordWrap(true);
  lblSuggestion->setMinimumWidth(460);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("cmdOK");
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  auto* layout = new QVBoxLayout(this);
  for (QWidget* w : {static_cast<QWidget*>(l1), static_cast<QWidget*>(lblFactors), static_cast<QWidget*>(l2),
                     static_cast<QWidget*>(lblSuggestion)})
    layout->addWidget(w);
  layout->addWidget(ok, 0, Qt::AlignRight);
  QFont bold = l1->font();
  bold.setBold(true);
  l1->setFont(bold);
  l2->setFont(bold);
  TranslateForm(this);
  setWindowTitle(caption.isEmpty() ? "Design wizard" : caption);
}

frmDesHelp2::frmDesHelp2(QWidget* parent) : QDialog(parent) {
  setObjectName("frmDesHelp2");
  setWindowTitle("Kestrow designs");
  struct Row {
    const char* design;
    const char* needs;
  };
  const Row rows[] = {
      {"User defined", "Any"},
      {"Unstructured", "Any combination of numeric factors"},
      {"Full factorial", "Any"},
      {"Fractional factorial", "n factors @ 2 levels"},
      {"Randomized block", "1 factor, 1 noise factor"},
      {"Latin square", "1 factor, 2 noise factors"},
      {"Plackett-Burman", "n factors @ 2 levels\n2-13 factors @ 3 levels"},
      {"Plackett-Burman hybrid",
       "n factors @ 2 levels, 1-9 factors @ 4 levels\nn factors @ 2 levels, 1 factor @ 5-8 levels"},
      {"Taguchi array", "n factors @ 2 levels\n1 factor @ 2 levels, 4-7 factors @ 3 levels\n2-7 factors @ 3 levels"},
      {"Central composite face", "2-4 factors @ 3 equi-spaced levels"},
      {"Central composite", "2-6 numeric factors @ 2 levels\nNote: 5 actual levels are required"},
      {"Box-Behnken", "3-5 factors @ 3 levels"},
  };
  auto* heading = new QLabel("Kestrow Design Selection Criteria", this);
  heading->setObjectName("lblHeading");
  QFont f = heading->font();
  f.setBold(true);
  f.setPointSizeF(f.pointSizeF() * 1.2);
  heading->setFont(f);
  auto* grid = new QTableWidget(static_cast<int>(std::size(rows)), 2, this);
  grid->setObjectName("grdCriteria");
  grid->setHorizontalHeaderLabels({"Design", "Needs"});
  grid->verticalHeader()->hide();
  grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
  for (int r = 0; r < static_cast<int>(std::size(rows)); ++r) {
    grid->setItem(r, 0, new QTableWidgetItem(rows[r].design));
    grid->setItem(r, 1, new QTableWidgetItem(rows[r].needs));
  }
  grid->resizeColumnsToContents();
  grid->resizeRowsToContents();
  grid->horizontalHeader()->setStretchLastSection(true);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("cmdOK");
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(heading);
  layout->addWidget(grid);
  layout->addWidget(ok, 0, Qt::AlignRight);
  resize(620, 560);
}

}  // namespace kestrow
