// The cue-card window: the card's title as its caption and its text, sized to
// the text, in the font size of the setting CardFontSize.
#pragma once

#include <QDialog>

class QLabel;

namespace kestrow {

class frmCueCard : public QDialog {
  Q_OBJECT

 public:
  // cardText is "title|text".
  explicit frmCueCard(const std::string& cardText, QWidget* parent = nullptr);
  QLabel* lblCueText;
};

// Shows the card of the tag, if there is one.
void ShowCueCard(const std::string& tag, QWidget* parent);

}  // namespace kestrow
