#include "shell/Buttons.h"

#include <QPushButton>

namespace kestrow {

QPushButton* NamedButton(QWidget* parent, const char* name, const QString& caption) {
  auto* button = new QPushButton(caption, parent);
  button->setObjectName(name);
  return button;
}

QPushButton* AddButton(QDialogButtonBox* box, const char* name, const QString& caption,
                       QDialogButtonBox::ButtonRole role) {
  QPushButton* button = NamedButton(box, name, caption);
  box->addButton(button, role);
  return button;
}

}  // namespace kestrow
