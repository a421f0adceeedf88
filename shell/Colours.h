// Colours of the settings (0x00BBGGRR) as Qt colours.
#pragma once

#include <QColor>

#include "core/Settings.h"

namespace kestrow {

inline QColor ToQColor(Colour c) { return QColor(int(c & 0xFF), int((c >> 8) & 0xFF), int((c >> 16) & 0xFF)); }

}  // namespace kestrow
