#include "analyses/FormParts.h"

#include <cmath>

#include "core/Sentinels.h"
#include "core/Text.h"

namespace kestrow {

namespace {
const float LEVELS[3] = {0.01f, 0.05f, 0.1f};
}  // namespace

int ChosenRV(const std::vector<RVListEntry>& list, const std::string& key) {
  for (std::size_t i = 0; i < list.size(); ++i)
    if (list[i].key == key) return static_cast<int>(i);
  return list.empty() ? -1 : 0;
}

std::vector<std::string> AlphaChoices(float stored) {
  std::vector<std::string> choices = {"0.01", "0.05", "0.10"};
  if (!IsTabledAlpha(stored) && stored > 0) choices.push_back(ShortestText(stored));
  return choices;
}

float AlphaOf(const std::string& text) {
  float alpha = ParseFloat(Trim(text));
  if (alpha == BAD_NUMBER || alpha == MISSING_VALUE || !(alpha > 0 && alpha < 1)) return 0;
  for (float level : LEVELS)
    if (std::fabs(alpha - level) < 1e-6f) return level;  // "0.10" is the level 0.1 itself
  return alpha;
}

bool IsTabledAlpha(float alpha) {
  for (float level : LEVELS)
    if (std::fabs(alpha - level) < 1e-6f) return true;
  return false;
}

}  // namespace kestrow
