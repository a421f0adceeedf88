#include "shell/frmAPR.h"

#include <algorithm>

#include <QCheckBox>
#include <QColor>
#include <QDialogButtonBox>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <limits>

#include "core/Grid.h"
#include "core/Language.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"
#include "shell/frmCueCard.h"
#include "workbench/RegressionPrint.h"

namespace kestrow {

// ---- the result model ---------------------------------------------------------

int APRResultsModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int APRResultsModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : APRForm::COLUMNS; }

QVariant APRResultsModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_) return {};
  const std::int64_t row = index.row() + 1;  // the form's row 0 is the heading
  if (role == Qt::DisplayRole) return Q(form_.Cell(row, index.column()));
  if (role == Qt::ToolTipRole && index.column() == APRForm::TERMS) return Q(form_.Cell(row, APRForm::TERMS));
  if (role == Qt::BackgroundRole) {
    Colour c = form_.Back(row);
    if (c != DEFAULT_COLOUR) return QColor(static_cast<int>(c & 0xFF), static_cast<int>((c >> 8) & 0xFF), static_cast<int>((c >> 16) & 0xFF));
  }
  if (role == Qt::TextAlignmentRole && index.column() != APRForm::TERMS)
    return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QVariant APRResultsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Horizontal) return Q(form_.Heading(section));
  return section + 1;
}

void APRResultsModel::Freeze() {
  beginResetModel();
  rows_ = 0;
  endResetModel();
}

void APRResultsModel::Thaw() {
  beginResetModel();
  // A view counts its rows in an int; a search holds at most 2^24 rows.
  rows_ = static_cast<int>(std::min<std::int64_t>(form_.Rows() - 1, std::numeric_limits<int>::max()));
  endResetModel();
}

// ---- the dialog ------------------------------------------------------------------

frmAPR::frmAPR(Study& study, const std::string& rvKey, int flag,
               const std::vector<std::pair<std::string, std::string>>& grid, const std::string& modelName,
               QWidget* parent)
    : QDialog(parent), form_(study, rvKey, flag, grid, modelName) {
  setObjectName("frmAPR");
  setWindowTitle(Q(GetText("APRcap")));
  auto* layout = new QVBoxLayout(this);
  lblModelType = new QLabel(Q(form_.lblModelType), this);
  lblModelType->setObjectName("lblModelType");
  layout->addWidget(lblModelType);
  chkHierarchy = new QCheckBox(" Keep the model hierarchical", this);
  chkHierarchy->setObjectName("chkHierarchy");
  chkHierarchy->setChecked(form_.chkHierarchy);
  chkCopyBack = new QCheckBox(" Copy the best model back on Exit", this);
  chkCopyBack->setObjectName("chkCopyBack");
  chkCopyBack->setChecked(form_.chkCopyBack);
  layout->addWidget(chkHierarchy);
  layout->addWidget(chkCopyBack);
  lblWarning = new QLabel(this);
  lblWarning->setObjectName("lblWarning");
  lblWarning->setWordWrap(true);
  lblWarning->setText(
      "Every subset of the terms is fitted. With many terms this can take a long time; Stop ends the search.");
  layout->addWidget(lblWarning);

  model_ = new APRResultsModel(form_, this);
  grdResults = new QTableView(this);
  grdResults->setObjectName("grdResults");
  grdResults->setModel(model_);
  grdResults->setSelectionBehavior(QAbstractItemView::SelectRows);
  grdResults->setEditTriggers(QAbstractItemView::NoEditTriggers);
  // Rows of one height: the view never measures a million of them.
  grdResults->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  grdResults->verticalHeader()->setDefaultSectionSize(grdResults->fontMetrics().height() + 6);
  grdResults->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
  const int twips[APRForm::COLUMNS] = {4275, 1200, 960, 960, 240, 960, 960, 960};
  // The designed widths, but never narrower than the heading.
  const QFontMetrics heading(grdResults->horizontalHeader()->font());
  for (int c = 0; c < APRForm::COLUMNS; ++c)
    grdResults->setColumnWidth(c, std::max(twips[c] / 15, heading.horizontalAdvance(Q(form_.Heading(c))) + 16));
  grdResults->setColumnHidden(APRForm::SS, true);
  grdResults->setColumnHidden(APRForm::NUMTERMS, true);
  grdResults->setMinimumSize(640, 300);
  layout->addWidget(grdResults);
  lblProgress = new QLabel(this);
  lblProgress->setObjectName("lblProgress");
  layout->addWidget(lblProgress);

  auto* buttons = new QDialogButtonBox(this);
  cmdStart = AddButton(buttons, "cmdStart", Q(form_.cmdStartCaption()), QDialogButtonBox::ActionRole);
  cmdPrint = AddButton(buttons, "cmdPrint", "&Print", QDialogButtonBox::ActionRole);
  cmdCueCard = AddButton(buttons, "cmdCueCard", "Cue card", QDialogButtonBox::HelpRole);
  cmdExit = AddButton(buttons, "cmdExit", "E&xit", QDialogButtonBox::AcceptRole);
  layout->addWidget(buttons);
  cmdPrint->setEnabled(false);
  connect(cmdStart, &QPushButton::clicked, this, [this] { cmdStart_Click(); });
  connect(cmdExit, &QPushButton::clicked, this, [this] { cmdExit_Click(); });
  connect(cmdPrint, &QPushButton::clicked, this, [this] { PrintAPR(form_); });
  connect(cmdCueCard, &QPushButton::clicked, this, [this] { ShowCueCard("frmAPR", this); });
  // While the search runs, a count of the fits so far.
  progress_ = new QTimer(this);
  progress_->setInterval(200);
  connect(progress_, &QTimer::timeout, this, [this] {
    lblProgress->setText(QString::number(static_cast<qlonglong>(form_.Search().Rows().size())) + " models fitted");
  });
  TranslateForm(this);
  resize(760, 480);
}

// Start runs the search here, the window kept alive by the search's calls
// for events; a click while it runs is Stop, which the same handler serves.
void frmAPR::cmdStart_Click() {
  form_.chkHierarchy = chkHierarchy->isChecked();
  form_.chkCopyBack = chkCopyBack->isChecked();
  if (form_.Running()) {
    form_.cmdStart_Click();  // Stop: the running search ends at its next look
    return;
  }
  model_->Freeze();
  cmdStart->setText(Q(GetText("Stop")));
  cmdPrint->setEnabled(false);
  chkHierarchy->setEnabled(false);
  lblProgress->clear();
  progress_->start();
  form_.cmdStart_Click();
  progress_->stop();
  cmdStart->setText(Q(form_.cmdStartCaption()));
  chkHierarchy->setEnabled(true);
  model_->Thaw();
  cmdPrint->setEnabled(form_.Rows() >= 2);
  const std::int64_t fitted = form_.Rows() - 1;
  lblProgress->setText(QString::number(static_cast<qlonglong>(fitted)) + " models fitted" +
                       (form_.Search().Finished() ? QString() : QString(" before the search was stopped")));
  if (form_.BestRow() > 0) {
    QModelIndex best = model_->index(static_cast<int>(form_.BestRow() - 1), 0);
    grdResults->scrollTo(best, QAbstractItemView::PositionAtCenter);  // in its own colour, not selected
  }
}

void frmAPR::cmdExit_Click() {
  form_.chkCopyBack = chkCopyBack->isChecked();
  mask_ = form_.cmdExit_Click();
  accept();
}

// Closing the window stops a running search and copies nothing back.
void frmAPR::reject() {
  form_.cmdExit_Click();
  mask_ = 0;
  QDialog::reject();
}

}  // namespace kestrow
