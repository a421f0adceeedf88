// The algebra of contrast words: a word is a sorted set of contrast letters,
// and the product of two words is their symmetric difference.
#pragma once

#include <string>

namespace kestrow {

// The product of two words. Each is padded with "z" to sixteen letters first,
// so products hold at most fifteen letters and "z" cannot be a factor letter.
std::string MultiplyWords(const std::string& a, const std::string& b);

// The Roman numeral of a resolution: "" for 0, "I" to "IX" for 1 to 9,
// "Full" for anything else.
std::string ResolutionText(int resolution);

// How a contrast column varies with a factor of L levels: the side lists of
// sMain ("12v3"), or empty when the column is not a function of the level.
// signs[i] is the sign of the column ('P', 'N' or '0') at a run whose level
// of the factor is levels[i].
std::string ClassifyContrast(const std::string& signs, const std::string& levels, int levelCount);

}  // namespace kestrow
