#include "workbench/PictureEvents.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "charts/ChartPage.h"

namespace kestrow {

namespace {

bool IsProbabilityPlot(const Chart& c) {
  return c.chtType == CHT_RES_NPP || c.chtType == CHT_NPP || c.chtType == CHT_REG_NPP;
}

// The gap between the pointer and its message.
constexpr int MESSAGE_GAP = 12;
// The least drag, in pixels, that makes a box.
constexpr int MIN_BOX = 3;

}  // namespace

double NewLabelHeight(const ChartPage& page) { return std::clamp(14.0 / std::max(1, page.height), 0.005, 0.2); }

void PictureEvents::FitModeToPage(bool status) {
  mode_ = status ? MODE_STATUS : 0;
  for (const Chart& c : page_.Charts)
    if (c.bVisible && IsProbabilityPlot(c)) mode_ |= MODE_DRAG;
}

std::string PictureEvents::Move(int x, int y, bool ctrl) {
  if (grabbed_ >= 0 && grabbed_ < static_cast<int>(page_.Labels.size())) {
    page_.PlaceLabel(page_.Labels[static_cast<std::size_t>(grabbed_)], x - grabDX_, y - grabDY_);
    return {};
  }
  if (box_) {
    boxX2_ = x;
    boxY2_ = y;
  }
  return (mode_ & MODE_STATUS) ? page_.Click(x, y, ctrl) : std::string();
}

CanvasPoint PictureEvents::PlaceMessage(int x, int y, int width, int height, int pictureWidth, int pictureHeight) {
  CanvasPoint at{x + MESSAGE_GAP, y + MESSAGE_GAP};
  // Beyond the right or bottom edge it goes to the other side of the pointer.
  if (at.x + width > pictureWidth) at.x = x - MESSAGE_GAP - width;
  if (at.y + height > pictureHeight) at.y = y - MESSAGE_GAP - height;
  at.x = std::max(0, std::min(at.x, pictureWidth - width));
  at.y = std::max(0, std::min(at.y, pictureHeight - height));
  return at;
}

void PictureEvents::Down(int x, int y) {
  grabbed_ = page_.LabelUnder(x, y);
  if (grabbed_ >= 0) {
    const AnnotationLabel& l = page_.Labels[static_cast<std::size_t>(grabbed_)];
    grabDX_ = x - (l.left + l.right) / 2;
    grabDY_ = y - (l.top + l.bottom) / 2;
    return;
  }
  box_ = (mode_ & MODE_DRAG) != 0;
  boxX1_ = boxX2_ = x;
  boxY1_ = boxY2_ = y;
}

PictureEvents::Release PictureEvents::Up(int x, int y, bool right, bool shift, bool ctrl, const std::string& message) {
  bool wasBox = box_;
  box_ = false;
  if ((right || shift) && ctrl && !message.empty()) {
    grabbed_ = -1;
    AddLabel(message, x, y);
    return Release::LabelMade;
  }
  if (grabbed_ >= 0) {
    if (grabbed_ < static_cast<int>(page_.Labels.size()))
      page_.PlaceLabel(page_.Labels[static_cast<std::size_t>(grabbed_)], x - grabDX_, y - grabDY_);
    grabbed_ = -1;
    return Release::LabelMoved;
  }
  if (!wasBox) return Release::Nothing;
  boxX2_ = x;
  boxY2_ = y;
  // A click is no box.
  if (std::abs(boxX2_ - boxX1_) < MIN_BOX && std::abs(boxY2_ - boxY1_) < MIN_BOX) return Release::Nothing;
  Chart* first = page_.ChartAt(boxX1_, boxY1_);
  if (!first || first != page_.ChartAt(boxX2_, boxY2_) || !IsProbabilityPlot(*first)) return Release::Nothing;
  return first->ComputeLOBF(boxX1_, boxY1_, boxX2_, boxY2_) ? Release::LineFitted : Release::Nothing;
}

void PictureEvents::AddLabel(const std::string& text, int x, int y) {
  AnnotationLabel label;
  label.text = text;
  label.hfrac = NewLabelHeight(page_);
  page_.PlaceLabel(label, x, y);
  page_.Labels.push_back(label);
}

void PictureEvents::EraseLabels() {
  page_.Labels.clear();
  grabbed_ = -1;
}

bool PictureEvents::Zoom(int x, int y) {
  box_ = false;
  grabbed_ = -1;
  return page_.Zoom(x, y);
}

}  // namespace kestrow
