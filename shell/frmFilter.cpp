#include "shell/frmFilter.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "core/Ui.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

namespace {
QTableWidgetItem* TextItem(const std::string& text) {
  auto* item = new QTableWidgetItem(Q(text));
  item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
  return item;
}
}  // namespace

frmFilter::frmFilter(const Study& study, const std::string& sFilterList, const std::string& sExcludeList,
                     QWidget* parent)
    : QDialog(parent) {
  setObjectName("frmFilter");
  setWindowTitle("Kestrow data filter");
  lblHead = new QLabel(
      "You can create up to 6 different filters for use with this analysis.  Each filter will define a new chart",
      this);
  lblHead->setObjectName("lblHead");
  lblHead->setWordWrap(true);

  form_.Load(study, sFilterList, sExcludeList);
  grdFilter = new QTableWidget(int(form_.rows.size()), COLUMNS, this);
  grdFilter->setObjectName("grdFilter");
  grdFilter->setHorizontalHeaderLabels({"", Tr("Filter"), Tr("Level"), "Key"});
  grdFilter->verticalHeader()->hide();
  grdFilter->setColumnHidden(COL_KEY, true);
  grdFilter->setSelectionBehavior(QAbstractItemView::SelectRows);
  grdFilter->setSelectionMode(QAbstractItemView::SingleSelection);
  for (int r = 0; r < int(form_.rows.size()); ++r) {
    const FilterForm::Row& row = form_.rows[std::size_t(r)];
    auto* check = new QTableWidgetItem;
    check->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    check->setCheckState(row.checked ? Qt::Checked : Qt::Unchecked);
    grdFilter->setItem(r, COL_CHECK, check);
    grdFilter->setItem(r, COL_FACTOR, TextItem(row.factor));
    grdFilter->setItem(r, COL_LEVEL, TextItem(row.level));
    grdFilter->setItem(r, COL_KEY, TextItem(row.key));
  }
  grdFilter->resizeColumnsToContents();
  grdFilter->horizontalHeader()->setStretchLastSection(true);
  // Only the ticks can change: any change of an item is the user's touch.
  connect(grdFilter, &QTableWidget::itemChanged, this, [this] { form_.changed = true; });
  // A click on a factor or level ticks its row as a click on the box would.
  connect(grdFilter, &QTableWidget::cellClicked, this, [this](int r, int c) {
    if (c == COL_CHECK) return;
    QTableWidgetItem* check = grdFilter->item(r, COL_CHECK);
    check->setCheckState(check->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
  });

  auto* buttons = new QDialogButtonBox(this);
  cmdOK = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  cmdOK->setDefault(true);
  cmdCancel = AddButton(buttons, "cmdCancel", "Cancel", QDialogButtonBox::RejectRole);
  connect(cmdOK, &QPushButton::clicked, this, &frmFilter::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(lblHead);
  layout->addWidget(grdFilter);
  layout->addWidget(buttons);
  TranslateForm(this);
  std::string caption = GetText("FILcap");
  if (!caption.empty()) setWindowTitle(Q(caption));
  resize(420, 380);
}

void frmFilter::cmdOK_Click() {
  for (int r = 0; r < grdFilter->rowCount(); ++r)
    form_.rows[std::size_t(r)].checked = grdFilter->item(r, COL_CHECK)->checkState() == Qt::Checked;
  std::string complaint = form_.OK();
  if (!complaint.empty()) {
    ErrorBox(complaint);
    return;
  }
  result_ = true;
  // The filters are part of the analysis's settings, which the problem saves.
  if (form_.changed) gProblem->bChanged = true;
  accept();
}

}  // namespace kestrow
