#include "shell/Buttons.h"

#include <QPushButton>

namespace kestrow {

QPushButton* AddButton(QDialogButtonBox* box, const char* name, const QString& caption,
                       QDialogButtonBox::ButtonRole role) {
  auto* button = new QPushButton(caption, box);
  button->setObjectName(name);
  box->addButton(button, role);
  return button;
}

}  // namespace kestrow
