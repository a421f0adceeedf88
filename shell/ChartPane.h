// The chart pane of the main window: the page of charts drawn whole at the
// pane's size in the screen's own pixels, the text about the point under
// the pointer, the box dragged for a line of best fit, annotation labels
// that the mouse makes and moves, and zoom by double click. The rules are
// the engine's (PictureEvents); this widget turns Qt's events into page
// pixels and paints.
#pragma once

#include <QImage>
#include <QWidget>

#include "workbench/PictureEvents.h"

class QLabel;

namespace kestrow {

class ChartPage;

class ChartPane : public QWidget {
  Q_OBJECT

 public:
  ChartPane(ChartPage& page, QWidget* parent = nullptr);

  // Draws the page again, at once if the pane is on show.
  void Redraw();
  // Whether the text about the point under the pointer is shown.
  void SetStatusOption(bool on);
  bool StatusOption() const { return status_; }
  // Zoom back to the whole page; labels go with it.
  void UnZoom();
  void EraseLabels();
  // A label of the text at the last point of the pointer on the pane, or at
  // its centre.
  void AddLabel(const QString& text);

  // The page pixel under a position of the widget.
  QPoint ToPage(const QPointF& at) const;
  // The picture as last drawn, in the page's pixels.
  const QImage& Picture() const { return image_; }
  PictureEvents& Events() { return events_; }
  QLabel* lblMsg;

 signals:
  // The page zoomed onto one chart, or back.
  void Zoomed(bool zoomed);
  // A double click on a pane with no charts.
  void EmptyDoubleClick();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void Render();
  void ShowMessage(const std::string& text, const QPointF& at);

  ChartPage& page_;
  PictureEvents events_;
  QImage image_;
  bool dirty_ = true;
  bool status_ = true;
  QPoint last_{-1, -1};  // the last pointer position, in page pixels
};

}  // namespace kestrow
