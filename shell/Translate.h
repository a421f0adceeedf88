// Captions of a form from the language database: every widget and action
// with an object name that has a row there takes its text; the built-in
// caption stays otherwise. A control of an array is named "name_index".
#pragma once

#include <QString>
#include <vector>

#include "core/Language.h"

class QWidget;

namespace kestrow {

void TranslateForm(QWidget* form);
// The captions a form has now, as the administrator's dictionary collects them.
std::vector<FormCaptionRow> FormCaptions(QWidget* form);
// A tag's text as a QString.
QString Tr(const char* tag);

}  // namespace kestrow
