// Cue cards: small help cards in "CueCards.TXT" in the program folder. A card
// is a line "!" tag "," and four hexadecimal digits of its check value, a
// title line, and text lines; an empty line is a paragraph break. "!EOF" ends
// the file. A card whose lines no longer add up to its check value was edited
// by hand, and says so.
#pragma once

#include <string>
#include <string_view>

namespace kestrow {

// The check value of one line: over its characters (Windows-1252 codes), for
// position i from 1, the sum of (code - 31) * i.
long CueCardCheckValue(std::string_view line);

struct CueCard {
  bool found = false;
  std::string title;   // UTF-8
  std::string text;    // UTF-8; paragraphs separated by two line breaks
  bool edited = false; // the check value does not match
};

// Reads one card of a cue-card file.
CueCard ReadCueCard(const std::string& file, const std::string& tag);

// The card of a tag as the card window shows it: title (with " (Edited)" for
// an edited card), "|", and the text; empty when there is no such card. Also
// kept as the global card text.
std::string CueCards(const std::string& tag);
// The card text for the design wizard's panes: an edited card starts with "*".
std::string DesWizText(const std::string& tag);
// Why the card of a tag cannot be shown (the file missing or unreadable, or
// no such card in it), or empty when it can.
std::string CueCardComplaint(const std::string& tag);

// The global card text of the last CueCards call.
const std::string& CueCardText();

// The path of "CueCards.TXT" in the program folder.
std::string CueCardFile();

// Makes every card's check value true again (at most 50 cards), through a
// copy that replaces the file. False with the reason when it cannot, and for
// a file that holds no card at all, which is left as it is.
bool AdminResetCueCards(const std::string& file, std::string& error);

}  // namespace kestrow
