// The scale rule of every automatic axis, and the rainbow colours of surface
// and Pareto fills.
#pragma once

#include <string>

#include "core/Settings.h"

namespace kestrow {

// Widens fmin..fmax to multiples of a "nice" major step that gives about
// seven intervals (1, 2 or 5 times a power of ten), sets the major and minor
// steps, and gives the number format of the labels ("#########0.00" for a
// step of 0.05). Equal limits are first moved 1 apart each way. Limits no
// float step can widen (1e9 with a spread of 1) keep their upper end.
std::string GetScale(float& fmin, float& fmax, float& fMajor, float& fMinor);

// The count of decimals of such a format.
int FormatDecimalsOf(const std::string& format);

// A colour of the rainbow for a percentage (0 purple to 100 red with the
// setting RainbowScheme 0, the reverse with 1), as 0x00BBGGRR.
Colour RainbowColour(int iPercent);

}  // namespace kestrow
