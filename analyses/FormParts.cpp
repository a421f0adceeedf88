#include "analyses/FormParts.h"

#include <cmath>

#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
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

std::string ResponseComplaint(int rvIndex, std::size_t rvCount) {
  return rvIndex < 0 || rvIndex >= static_cast<int>(rvCount) ? GetText("ANOMerr3") : std::string();
}

std::string ResponseAndAlphaComplaint(int rvIndex, std::size_t rvCount, const std::string& alphaText, float& alpha) {
  std::string complaint = ResponseComplaint(rvIndex, rvCount);
  if (!complaint.empty()) return complaint;
  alpha = AlphaOf(alphaText);
  return alpha == 0 ? GetText("ANOMerr4") : std::string();
}

CheckList FactorChoices(const Study& study, const std::vector<std::string>& chosen, int least, int most,
                        const std::string& countTag) {
  CheckList list;
  list.Init();
  for (int f = 1; f <= study.Factors.Count(); ++f) list.Add(study.GetFactorName(f), study.GetFactorKey(f), false);
  std::vector<int> order;
  for (const std::string& key : chosen)
    for (std::size_t i = 0; i < list.Rows().size(); ++i)
      if (!key.empty() && list.Rows()[i].key == key) order.push_back(static_cast<int>(i));
  std::string unused;
  list.Accept(order, unused);
  list.check = [least, most, countTag](const std::vector<bool>& ticks) {
    int count = 0;
    for (bool t : ticks) count += t ? 1 : 0;
    if (count == 0) return GetText("ANOMerr1");
    if (count < least || count > most) return GetText(countTag);
    return std::string();
  };
  return list;
}

std::vector<std::string> ChosenFactors(const CheckList& list) {
  std::vector<std::string> keys;
  for (int row : list.OrderOfChoice()) keys.push_back(list.Rows()[static_cast<std::size_t>(row)].key);
  return keys;
}

bool IsTabledAlpha(float alpha) {
  for (float level : LEVELS)
    if (std::fabs(alpha - level) < 1e-6f) return true;
  return false;
}

}  // namespace kestrow
