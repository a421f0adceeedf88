#include "shell/frmMChart.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmMChart::frmMChart(Study& study, const Statistics& stats, QWidget* parent) : AnalysisDialog(study, stats, parent) {
  setObjectName("frmMChart");
  setWindowTitle("Multi-chart");
  auto* layout = new QVBoxLayout(this);
  lblSelect = new QLabel("Select up to 6 charts from the list below", this);
  lblSelect->setObjectName("lblSelect");
  layout->addWidget(lblSelect);
  grdMChart = new QListWidget(this);
  grdMChart->setObjectName("grdMChart");
  for (const MultiChartForm::Row& row : form_.rows) {
    auto* item = new QListWidgetItem(Q(row.text), grdMChart);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(row.checked ? Qt::Checked : Qt::Unchecked);
  }
  layout->addWidget(grdMChart);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  resize(std::clamp(grdMChart->sizeHintForColumn(0) + 60, 460, 1000), 420);
}

void frmMChart::FromForm() {
  for (int i = 0; i < grdMChart->count(); ++i)
    form_.rows[static_cast<std::size_t>(i)].checked = grdMChart->item(i)->checkState() == Qt::Checked;
}

}  // namespace kestrow
