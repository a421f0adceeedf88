// The widgets every analysis dialog has: the response box, the editable
// alpha box, and OK and Cancel at the foot.
#pragma once

#include <string>
#include <vector>

#include "data/FillRVList.h"

class QComboBox;
class QDialogButtonBox;
class QPushButton;
class QWidget;

namespace kestrow {

// "cmbRV", filled from the list, showing the entry at index (-1 for none).
QComboBox* ResponseBox(QWidget* parent, const std::vector<RVListEntry>& list, int index);
// "cmbAlpha", editable, with its choices and the text shown.
QComboBox* AlphaBox(QWidget* parent, const std::vector<std::string>& choices, const std::string& text);
// "cmdOK" (the default) and "cmdCancel" in a box.
QDialogButtonBox* OkCancel(QWidget* parent, QPushButton*& ok, QPushButton*& cancel);

}  // namespace kestrow
