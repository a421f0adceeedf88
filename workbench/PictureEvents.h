// The mouse on the chart pane: the text about the point under the pointer,
// the box dragged across a probability plot for a line of best fit, the
// annotation labels made, moved and erased, and zoom. The pane's widget
// passes its events here in the page's pixels and paints what these rules
// decide.
#pragma once

#include <string>

#include "charts/Canvas.h"

namespace kestrow {

class ChartPage;

class PictureEvents {
 public:
  // The bits of the mode word.
  static constexpr int MODE_DRAG = 1;    // a box may be dragged
  static constexpr int MODE_STATUS = 2;  // the text about the point is shown

  explicit PictureEvents(ChartPage& page) : page_(page) {}

  // The mode word for the page on show: the status option as given; the drag
  // option when a visible chart is a probability plot.
  void FitModeToPage(bool status);
  int Mode() const { return mode_; }

  // The pointer moved to the point: the text to show beside it ("" hides
  // it), moving a grabbed label or the free corner of a box on the way.
  std::string Move(int x, int y, bool ctrl);
  // Where a message of that size stands beside a pointer at the point,
  // inside a picture of that size.
  static CanvasPoint PlaceMessage(int x, int y, int width, int height, int pictureWidth, int pictureHeight);

  // The left button went down: a label under the point is grabbed; else,
  // with the drag option, a box starts there.
  void Down(int x, int y);

  // What a release did.
  enum class Release { Nothing, LabelMade, LabelMoved, LineFitted };
  // A button came up at the point. With the right button, or the left with
  // shift, and control held, a label is made of the message on show (a
  // label made by the mouse). Otherwise a grabbed label is dropped, or a box
  // whose corners lie in one chart fits a line of best fit on it.
  Release Up(int x, int y, bool right, bool shift, bool ctrl, const std::string& message);

  // A label of the text, centred at the point.
  void AddLabel(const std::string& text, int x, int y);
  void EraseLabels();
  // Zooms at the point (ToolsUnZoom passes 1, 1); false when nothing was
  // there to zoom.
  bool Zoom(int x, int y);

  bool BoxUnderWay() const { return box_; }
  // The corners of the box under way.
  int BoxX1() const { return boxX1_; }
  int BoxY1() const { return boxY1_; }
  int BoxX2() const { return boxX2_; }
  int BoxY2() const { return boxY2_; }
  bool LabelGrabbed() const { return grabbed_ >= 0; }

 private:
  ChartPage& page_;
  int mode_ = MODE_STATUS;
  bool box_ = false;
  int boxX1_ = 0, boxY1_ = 0, boxX2_ = 0, boxY2_ = 0;
  int grabbed_ = -1;          // the label being dragged
  int grabDX_ = 0, grabDY_ = 0;  // the grab's offset from the label's centre
};

// The font height of a new label, as a fraction of the page's height: about
// 14 pixels on the page of the last drawing.
double NewLabelHeight(const ChartPage& page);

}  // namespace kestrow
