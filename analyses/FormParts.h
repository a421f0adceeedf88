// What the analysis dialogs share: the response list with the stored
// response chosen, and the alpha box with its three levels.
#pragma once

#include <string>
#include <vector>

#include "data/FillRVList.h"

namespace kestrow {

// The position of the stored key in the list, else the first entry, else -1.
int ChosenRV(const std::vector<RVListEntry>& list, const std::string& key);

// The alpha box's entries: "0.01", "0.05", "0.10", and the stored alpha as
// text when it is none of them.
std::vector<std::string> AlphaChoices(float stored);

// The alpha of the box's text, or 0 when it is no number strictly between 0
// and 1.
float AlphaOf(const std::string& text);

// Whether alpha is one of the three tabled levels.
bool IsTabledAlpha(float alpha);

}  // namespace kestrow
