#include "shell/frmRSM.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QSlider>
#include <QTableWidget>
#include <QVBoxLayout>

#include "charts/Chart.h"
#include "core/Language.h"
#include "shell/QtCanvas.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

namespace {

QSlider* Slider(QWidget* parent, const char* name, int low, int high, int value) {
  auto* s = new QSlider(Qt::Horizontal, parent);
  s->setObjectName(name);
  s->setRange(low, high);
  s->setValue(value);
  return s;
}

QCheckBox* Box(QWidget* parent, const char* name, const char* caption, bool checked) {
  auto* b = new QCheckBox(caption, parent);
  b->setObjectName(name);
  b->setChecked(checked);
  return b;
}

}  // namespace

frmRSM::frmRSM(Study& study, const Statistics& stats, QWidget* parent) : AnalysisDialog(study, stats, parent) {
  setObjectName("frmRSM");
  setWindowTitle(Q(GetText("RSMcap")));
  auto* layout = new QVBoxLayout(this);
  auto* top = new QHBoxLayout;
  auto* fields = new QFormLayout;
  sldAlpha = Slider(this, "sldAlpha", RSMForm::ANGLE_MIN, RSMForm::ANGLE_MAX, form_.sldAlpha);
  sldBeta = Slider(this, "sldBeta", RSMForm::ANGLE_MIN, RSMForm::ANGLE_MAX, form_.sldBeta);
  sldNetsize = Slider(this, "sldNetsize", RSMForm::NET_MIN, RSMForm::NET_MAX, form_.sldNetsize);
  lblAlpha = new QLabel("x-Axis angle", this);
  lblAlpha->setObjectName("lblAlpha");
  lblBeta = new QLabel("y-Axis angle", this);
  lblBeta->setObjectName("lblBeta");
  lblNetsize = new QLabel("Net size", this);
  lblNetsize->setObjectName("lblNetsize");
  fields->addRow(lblAlpha, sldAlpha);
  fields->addRow(lblBeta, sldBeta);
  fields->addRow(lblNetsize, sldNetsize);
  chkFilled = Box(this, "chkFilled", " Draw the net filled", form_.chkFilled);
  chkShade = Box(this, "chkShade", " Shade the walls", form_.chkShade);
  chkRainbow = Box(this, "chkRainbow", " Use rainbow colors", form_.chkRainbow);
  chkHideNet = Box(this, "chkHideNet", " Don't show the net", form_.chkHideNet);
  for (QCheckBox* b : {chkFilled, chkShade, chkRainbow, chkHideNet}) fields->addRow(b);
  top->addLayout(fields, 1);
  pic1 = new QLabel(this);
  pic1->setObjectName("pic1");
  pic1->setFixedSize(220, 180);
  top->addWidget(pic1);
  layout->addLayout(top);

  const int rows = static_cast<int>(form_.grdSelFac.size());
  grdSelFac = new QTableWidget(rows, 3, this);
  grdSelFac->setObjectName("grdSelFac");
  grdSelFac->setHorizontalHeaderLabels({"Plot", "Factor", "Value"});
  grdSelFac->verticalHeader()->hide();
  filling_ = true;
  for (int r = 0; r < rows; ++r) {
    const RSMForm::Row& row = form_.grdSelFac[static_cast<std::size_t>(r)];
    auto* tick = new QTableWidgetItem;
    tick->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
    tick->setCheckState(row.ticked ? Qt::Checked : Qt::Unchecked);
    grdSelFac->setItem(r, COL_PLOT, tick);
    auto* name = new QTableWidgetItem(Q(row.name));
    name->setFlags(Qt::ItemIsEnabled);
    grdSelFac->setItem(r, COL_FACTOR, name);
    grdSelFac->setItem(r, COL_VALUE, new QTableWidgetItem(Q(row.value)));
  }
  filling_ = false;
  grdSelFac->horizontalHeader()->setStretchLastSection(true);
  // Up to six factors in the grid's own height; with more it grows with them.
  const int rowHeight = grdSelFac->verticalHeader()->defaultSectionSize();
  grdSelFac->setMinimumHeight(grdSelFac->horizontalHeader()->sizeHint().height() + rowHeight * std::max(2, std::min(rows, 6)) + 4);
  if (rows > 6) grdSelFac->setMinimumHeight(grdSelFac->horizontalHeader()->sizeHint().height() + rowHeight * rows + 4);
  // Two factors are the only choice there is.
  grdSelFac->setVisible(rows > 2);
  layout->addWidget(grdSelFac);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));

  for (QSlider* s : {sldAlpha, sldBeta, sldNetsize}) connect(s, &QSlider::valueChanged, this, [this] { RepaintPreview(); });
  for (QCheckBox* b : {chkFilled, chkShade, chkRainbow, chkHideNet})
    connect(b, &QCheckBox::toggled, this, [this] { RepaintPreview(); });
  connect(grdSelFac, &QTableWidget::itemChanged, this, [this] {
    if (!filling_) RepaintPreview();
  });
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  RepaintPreview();
}

void frmRSM::FromForm() {
  form_.sldAlpha = sldAlpha->value();
  form_.sldBeta = sldBeta->value();
  form_.sldNetsize = sldNetsize->value();
  form_.chkFilled = chkFilled->isChecked();
  form_.chkShade = chkShade->isChecked();
  form_.chkRainbow = chkRainbow->isChecked();
  form_.chkHideNet = chkHideNet->isChecked();
  for (int r = 0; r < grdSelFac->rowCount(); ++r) {
    RSMForm::Row& row = form_.grdSelFac[static_cast<std::size_t>(r)];
    row.ticked = grdSelFac->item(r, COL_PLOT)->checkState() == Qt::Checked;
    row.value = grdSelFac->item(r, COL_VALUE)->text().toStdString();
  }
}

void frmRSM::RepaintPreview() {
  FromForm();
  QImage image(pic1->width(), pic1->height(), QImage::Format_RGB32);
  image.fill(Qt::white);
  Chart chart;
  if (form_.Preview(chart)) {
    chart.sTitle.clear();
    chart.sText1.clear();
    chart.ox = 0;
    chart.oy = 0;
    chart.SetWidth(static_cast<std::int16_t>(image.width()));
    chart.SetHeight(static_cast<std::int16_t>(image.height()));
    chart.SetScaling();
    QtCanvas canvas(image);
    chart.Draw(canvas);
  }
  pic1->setPixmap(QPixmap::fromImage(image));
}

}  // namespace kestrow
