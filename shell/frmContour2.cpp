#include "shell/frmContour2.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

#include "charts/GetScale.h"
#include "shell/Buttons.h"
#include "shell/Colours.h"
#include "shell/QtText.h"
#include "shell/Translate.h"
#include "shell/frmFilter.h"

namespace kestrow {

QPixmap ContourSample(const std::string& name, int size) {
  const bool filled = name.rfind("conFilled", 0) == 0;
  const bool target = name.size() > 3 && name.compare(name.size() - 3, 3, "Tgt") == 0;
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::white);
  QPainter p(&pixmap);
  p.setRenderHint(QPainter::Antialiasing);
  // Nested ellipses about an off-centre peak, the outer ones cut by the frame.
  const QPointF centre(size * 0.6, size * 0.42);
  const int rings = 5;
  for (int r = rings; r >= 1; --r) {
    const double w = size * 0.24 * r, h = size * 0.17 * r;
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(filled ? QBrush(ToQColor(RainbowColour(100 * (rings - r + 1) / (rings + 1)))) : Qt::NoBrush);
    p.drawEllipse(centre, w / 2, h / 2);
  }
  if (target) {
    p.setPen(QPen(Qt::red, 2));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(centre, size * 0.3, size * 0.21);
  }
  p.setPen(QPen(Qt::black, 1));
  p.setBrush(Qt::NoBrush);
  p.drawRect(0, 0, size - 1, size - 1);
  return pixmap;
}

frmContour2::frmContour2(Study& study, const Statistics& stats, QWidget* parent)
    : AnalysisDialog(study, stats, parent), study_(study) {
  setObjectName("frmContour2");
  setWindowTitle(Q(form_.Caption()));
  auto* layout = new QVBoxLayout(this);
  auto* top = new QHBoxLayout;
  auto* boxes = new QVBoxLayout;
  chkRainbow = new QCheckBox(" Use rainbow colours", this);
  chkRainbow->setObjectName("chkRainbow");
  chkRainbow->setChecked(form_.chkRainbow);
  chkTgtContour = new QCheckBox(" Show target contour", this);
  chkTgtContour->setObjectName("chkTgtContour");
  chkTgtContour->setChecked(form_.chkTgtContour);
  boxes->addWidget(chkRainbow);
  boxes->addWidget(chkTgtContour);
  boxes->addStretch();
  top->addLayout(boxes);
  img1 = new QLabel(this);
  img1->setObjectName("img1");
  top->addWidget(img1);
  layout->addLayout(top);
  auto* fields = new QFormLayout;
  cmdFilter = NamedButton(this, "cmdFilter", "F&ilter...");
  lblFilter = new QLabel(this);
  lblFilter->setObjectName("lblFilter");
  lblFilter->setWordWrap(true);
  fields->addRow(cmdFilter, lblFilter);
  layout->addLayout(fields);
  layout->addWidget(OkCancel(this, cmdOK, cmdCancel));
  connect(chkRainbow, &QCheckBox::toggled, this, [this] { ShowChoices(); });
  connect(chkTgtContour, &QCheckBox::toggled, this, [this] { ShowChoices(); });
  connect(cmdFilter, &QPushButton::clicked, this, &frmContour2::cmdFilter_Click);
  connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  TranslateForm(this);
  setWindowTitle(Q(form_.Caption()));  // the caption names the response
  ShowChoices();
  resize(std::max(380, sizeHint().width()), sizeHint().height());
}

void frmContour2::FromForm() {
  form_.chkRainbow = chkRainbow->isChecked();
  form_.chkTgtContour = chkTgtContour->isChecked();
}

void frmContour2::ShowChoices() {
  FromForm();
  img1->setPixmap(ContourSample(form_.img1(), 96));
  img1->setToolTip(Q(form_.img1()));
  lblFilter->setText(Q(form_.lblFilter()));
}

void frmContour2::cmdFilter_Click() {
  frmFilter filter(study_, form_.sFilter, "", this);
  filter.exec();
  if (!filter.Result()) return;
  form_.TakeFilters(filter.FilterList());
  ShowChoices();
}

}  // namespace kestrow
