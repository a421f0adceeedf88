#include "shell/ChartPane.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "charts/ChartPage.h"
#include "shell/Colours.h"
#include "shell/QtCanvas.h"
#include "shell/QtText.h"

namespace kestrow {

ChartPane::ChartPane(ChartPage& page, QWidget* parent) : QWidget(parent), page_(page), events_(page) {
  setObjectName("picChart");
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  lblMsg = new QLabel(this);
  lblMsg->setObjectName("lblMsg");
  lblMsg->setFrameShape(QFrame::Box);
  lblMsg->setAutoFillBackground(true);
  lblMsg->setMargin(2);
  lblMsg->setTextFormat(Qt::PlainText);
  lblMsg->setAttribute(Qt::WA_TransparentForMouseEvents);
  lblMsg->hide();
}

void ChartPane::Redraw() {
  dirty_ = true;
  events_.FitModeToPage(status_);
  update();
}

void ChartPane::SetStatusOption(bool on) {
  status_ = on;
  events_.FitModeToPage(status_);
  if (!on) lblMsg->hide();
}

void ChartPane::UnZoom() {
  if (!page_.bZoomed) return;
  events_.Zoom(1, 1);
  Redraw();
  emit Zoomed(page_.bZoomed);
}

void ChartPane::EraseLabels() {
  events_.EraseLabels();
  Redraw();
}

void ChartPane::AddLabel(const QString& text) {
  QPoint at = last_.x() >= 0 ? last_ : QPoint(image_.width() / 2, image_.height() / 2);
  events_.AddLabel(text.toStdString(), at.x(), at.y());
  Redraw();
}

QPoint ChartPane::ToPage(const QPointF& at) const {
  qreal ratio = devicePixelRatioF();
  return QPoint(static_cast<int>(std::floor(at.x() * ratio)), static_cast<int>(std::floor(at.y() * ratio)));
}

void ChartPane::Render() {
  // The page is drawn in the screen's own pixels, so that a chart's pixel
  // space is the device's at any scale.
  qreal ratio = devicePixelRatioF();
  QSize size(std::max(1, static_cast<int>(std::lround(width() * ratio))),
             std::max(1, static_cast<int>(std::lround(height() * ratio))));
  if (image_.size() != size) image_ = QImage(size, QImage::Format_RGB32);
  image_.setDevicePixelRatio(1);
  image_.fill(ToQColor(gSettings.ChartBackground));
  {
    QtCanvas canvas(image_);
    page_.DrawAll(canvas, size.width(), size.height(), PAGE_SCREEN);
  }
  image_.setDevicePixelRatio(ratio);
  events_.FitModeToPage(status_);
  dirty_ = false;
}

void ChartPane::paintEvent(QPaintEvent*) {
  qreal ratio = devicePixelRatioF();
  if (dirty_ || image_.width() != std::lround(width() * ratio) || image_.height() != std::lround(height() * ratio))
    Render();
  QPainter p(this);
  p.drawImage(0, 0, image_);
  if (events_.BoxUnderWay()) {
    // The box in both black and white dashes reads on any colour.
    QRectF box(QPointF(events_.BoxX1(), events_.BoxY1()) / ratio, QPointF(events_.BoxX2(), events_.BoxY2()) / ratio);
    QPen pen(Qt::white);
    p.setPen(pen);
    p.drawRect(box.normalized());
    pen.setColor(Qt::black);
    pen.setStyle(Qt::DashLine);
    p.setPen(pen);
    p.drawRect(box.normalized());
  }
}

void ChartPane::resizeEvent(QResizeEvent*) { dirty_ = true; }

void ChartPane::ShowMessage(const std::string& text, const QPointF& at) {
  if (text.empty()) {
    lblMsg->hide();
    lblMsg->clear();
    return;
  }
  QPalette pal = lblMsg->palette();
  pal.setColor(QPalette::Window, ToQColor(gSettings.LabelBackground));
  pal.setColor(QPalette::WindowText, ToQColor(gSettings.LabelText));
  lblMsg->setPalette(pal);
  lblMsg->setText(Q(text));
  lblMsg->adjustSize();
  CanvasPoint place = PictureEvents::PlaceMessage(static_cast<int>(at.x()), static_cast<int>(at.y()), lblMsg->width(),
                                                  lblMsg->height(), width(), height());
  lblMsg->move(place.x, place.y);
  lblMsg->show();
  lblMsg->raise();
}

void ChartPane::mouseMoveEvent(QMouseEvent* event) {
  QPoint at = ToPage(event->position());
  last_ = at;
  bool labelHeld = events_.LabelGrabbed();
  std::string text = events_.Move(at.x(), at.y(), event->modifiers() & Qt::ControlModifier);
  ShowMessage(text, event->position());
  if (labelHeld) Redraw();
  else if (events_.BoxUnderWay()) update();
}

void ChartPane::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  QPoint at = ToPage(event->position());
  events_.Down(at.x(), at.y());
}

void ChartPane::mouseReleaseEvent(QMouseEvent* event) {
  QPoint at = ToPage(event->position());
  bool right = event->button() == Qt::RightButton;
  bool shift = event->modifiers() & Qt::ShiftModifier;
  bool ctrl = event->modifiers() & Qt::ControlModifier;
  bool wasBox = events_.BoxUnderWay();
  std::string message = lblMsg->isVisible() ? lblMsg->text().toStdString() : std::string();
  if (events_.Up(at.x(), at.y(), right, shift, ctrl, message) != PictureEvents::Release::Nothing) {
    if (!message.empty()) lblMsg->hide();
    Redraw();
  } else if (wasBox) {
    Redraw();  // the points inside a box too small for a line stay marked
  }
}

void ChartPane::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (page_.Charts.empty()) {
    emit EmptyDoubleClick();
    return;
  }
  QPoint at = ToPage(event->position());
  if (events_.Zoom(at.x(), at.y())) {
    lblMsg->hide();
    Redraw();
    emit Zoomed(page_.bZoomed);
  }
}

void ChartPane::leaveEvent(QEvent*) { lblMsg->hide(); }

}  // namespace kestrow
