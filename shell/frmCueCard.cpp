#include "shell/frmCueCard.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/CueCards.h"
#include "core/Settings.h"
#include "core/Ui.h"
#include "shell/Buttons.h"
#include "shell/Translate.h"

namespace kestrow {

frmCueCard::frmCueCard(const std::string& cardText, QWidget* parent) : QDialog(parent) {
  setObjectName("frmCueCard");
  std::size_t bar = cardText.find('|');
  QString title = QString::fromStdString(cardText.substr(0, bar));
  QString text = QString::fromStdString(bar == std::string::npos ? "" : cardText.substr(bar + 1)).trimmed();
  // Paragraphs arrive as two line breaks with the joining blanks around them.
  text.replace(QStringLiteral(" \n\n "), QStringLiteral("\n\n"));
  lblCueText = new QLabel(text, this);
  lblCueText->setObjectName("lblCueText");
  lblCueText->setWordWrap(true);
  lblCueText->setTextInteractionFlags(Qt::TextSelectableByMouse);
  QFont f = lblCueText->font();
  f.setPointSizeF(f.pointSizeF() * (1.0 + 0.2 * gSettings.CardFontSize));
  lblCueText->setFont(f);
  auto* buttons = new QDialogButtonBox(this);
  auto* ok = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(lblCueText);
  layout->addWidget(buttons);
  TranslateForm(this);
  setWindowTitle(title);
  lblCueText->setMinimumWidth(420);
  adjustSize();
}

void ShowCueCard(const std::string& tag, QWidget* parent) {
  std::string card = CueCards(tag);
  if (card.empty()) {
    ErrorBox(CueCardComplaint(tag));
    return;
  }
  frmCueCard dialog(card, parent);
  dialog.exec();
}

}  // namespace kestrow
