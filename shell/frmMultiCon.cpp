#include "shell/frmMultiCon.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Language.h"
#include "core/Study.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

namespace {

QTableWidgetItem* CheckItem(bool checked) {
  auto* item = new QTableWidgetItem;
  item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
  item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
  return item;
}

}  // namespace

frmMultiCon::frmMultiCon(Study& study, const Statistics& stats, QWidget* parent)
    : AnalysisDialog(study, stats, parent) {
  setObjectName("frmMultiCon");
  setWindowTitle(Q(SubstituteCopy(GetText("CONcap"), study.GetPRVDisplayName(study.REGRESS_sRVkey))));
  auto* layout = new QVBoxLayout(this);
  auto* lblHead = new QLabel("Tick the two factors to plot (2), give the others a value, and tick a key factor "
                             "to draw one plot for each of its values.", this);
  lblHead->setObjectName("lblHead");
  lblHead->setWordWrap(true);
  layout->addWidget(lblHead);
  grdFactors = new QTableWidget(static_cast<int>(form_.rows.size()), COL_VALUE + MultiConForm::VALUE_COLUMNS, this);
  grdFactors->setObjectName("grdFactors");
  QStringList heads{"Factor", "2", "Key"};
  for (int v = 1; v <= MultiConForm::VALUE_COLUMNS; ++v) heads << QString("Value %1").arg(v);
  grdFactors->setHorizontalHeaderLabels(heads);
  grdFactors->verticalHeader()->hide();
  filling_ = true;
  for (int r = 0; r < static_cast<int>(form_.rows.size()); ++r) {
    const MultiConForm::Row& row = form_.rows[static_cast<std::size_t>(r)];
    auto* name = new QTableWidgetItem(Q(row.name));
    name->setFlags(Qt::ItemIsEnabled);
    grdFactors->setItem(r, COL_FACTOR, name);
    grdFactors->setItem(r, COL_PLOT, CheckItem(row.plotted));
    grdFactors->setItem(r, COL_KEY, CheckItem(row.key));
    for (int v = 0; v < MultiConForm::VALUE_COLUMNS; ++v)
      grdFactors->setItem(r, COL_VALUE + v, new QTableWidgetItem(Q(row.values[static_cast<std::size_t>(v)])));
  }
  filling_ = false;
  grdFactors->resizeColumnsToContents();
  layout->addWidget(grdFactors);
  // One key at most: ticking one clears the others.
  connect(grdFactors, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
    if (filling_ || item->column() != COL_KEY || item->checkState() != Qt::Checked) return;
    filling_ = true;
    for (int r = 0; r < grdFactors->rowCount(); ++r)
      if (r != item->row()) grdFactors->item(r, COL_KEY)->setCheckState(Qt::Unchecked);
    filling_ = false;
  });
  chkRainbow = new QCheckBox(" Use rainbow colours", this);
  chkRainbow->setObjectName("chkRainbow");
  chkRainbow->setChecked(form_.chkRainbow);
  chkTgtContour = new QCheckBox(" Show target contour", this);
  chkTgtContour->setObjectName("chkTgtContour");
  chkTgtContour->setChecked(form_.chkTgtContour);
  layout->addWidget(chkRainbow);
  layout->addWidget(chkTgtContour);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  setWindowTitle(Q(SubstituteCopy(GetText("CONcap"), study.GetPRVDisplayName(study.REGRESS_sRVkey))));
  resize(std::max(640, sizeHint().width()), std::max(300, sizeHint().height()));
}

void frmMultiCon::FromForm() {
  for (int r = 0; r < grdFactors->rowCount(); ++r) {
    MultiConForm::Row& row = form_.rows[static_cast<std::size_t>(r)];
    row.plotted = grdFactors->item(r, COL_PLOT)->checkState() == Qt::Checked;
    row.key = grdFactors->item(r, COL_KEY)->checkState() == Qt::Checked;
    for (int v = 0; v < MultiConForm::VALUE_COLUMNS; ++v)
      row.values[static_cast<std::size_t>(v)] = grdFactors->item(r, COL_VALUE + v)->text().toStdString();
  }
  form_.chkRainbow = chkRainbow->isChecked();
  form_.chkTgtContour = chkTgtContour->isChecked();
}

}  // namespace kestrow
