// The buttons along the foot of a dialog, each named so that tests and the
// language files can find it.
#pragma once

#include <QDialogButtonBox>

class QPushButton;

namespace kestrow {

// A button with the given object name and caption.
QPushButton* NamedButton(QWidget* parent, const char* name, const QString& caption);

// Makes a named button and puts it in the box in the given role.
QPushButton* AddButton(QDialogButtonBox* box, const char* name, const QString& caption,
                       QDialogButtonBox::ButtonRole role);

}  // namespace kestrow
