// What the analysis dialogs share: the response list with the stored
// response chosen, and the alpha box with its three levels.
#pragma once

#include <string>
#include <vector>

#include "core/CheckList.h"
#include "data/FillRVList.h"

namespace kestrow {

class Study;

// What OK of a dialog's form comes to: the settings stored, or a refusal
// with its message, and the dialog stays.
enum class FormOutcome { Accepted, Refused };

// The position of the stored key in the list, else the first entry, else -1.
int ChosenRV(const std::vector<RVListEntry>& list, const std::string& key);

// The alpha box's entries: "0.01", "0.05", "0.10", and the stored alpha as
// text when it is none of them.
std::vector<std::string> AlphaChoices(float stored);

// The alpha of the box's text, or 0 when it is no number strictly between 0
// and 1.
float AlphaOf(const std::string& text);

// The first checks of OK: a response chosen (else ANOMerr3), and, when the
// dialog has an alpha box, an alpha (else ANOMerr4), which then goes to
// alpha. The complaint, or empty.
std::string ResponseComplaint(int rvIndex, std::size_t rvCount);
std::string ResponseAndAlphaComplaint(int rvIndex, std::size_t rvCount, const std::string& alphaText, float& alpha);

// The factors of the study as a check list, the chosen keys ticked in their
// order; its check refuses no factor (ANOMerr1) and fewer than least or more
// than most (the tag's text).
CheckList FactorChoices(const Study& study, const std::vector<std::string>& chosen, int least, int most,
                        const std::string& countTag);
// The keys of an accepted factor list, in the order of their choice.
std::vector<std::string> ChosenFactors(const CheckList& list);

// Whether alpha is one of the three tabled levels.
bool IsTabledAlpha(float alpha);

}  // namespace kestrow
