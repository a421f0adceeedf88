#include "data/Filter.h"

#include <cmath>

#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

namespace {
std::int16_t Rounded(const std::string& t) { return static_cast<std::int16_t>(std::nearbyint(Val(t))); }
}  // namespace

void Filter::InitnoRV(const Study& s, const std::string& t, int mode) {
  study = &s;
  text = t;
  iMode = static_cast<std::int16_t>(mode);
  std::size_t semi = t.find(';');
  iFactor = Rounded(t.substr(0, semi));
  iLevel = semi == std::string::npos ? 0 : Rounded(t.substr(semi + 1));
  ResetCount();
}

void Filter::Init(const Study& s, const std::string& t, int rv, int mode) {
  InitnoRV(s, t, mode);
  iRV = static_cast<std::int16_t>(rv);
}

bool Filter::bRunIsGood(int run) const {
  if (iFactor == 0) return true;
  return study && study->GetTreatmentLevel(iFactor, run) == iLevel;
}

std::int16_t Filter::CountItems() const {
  if (!study) return 0;
  int total = 0;
  for (int run = 1; run <= study->iNumRuns; ++run) {
    if (study->GetTreatmentLevel(iFactor, run) != iLevel) continue;
    int count = 0;
    for (int rep = 1; rep <= study->iReps; ++rep)
      if (study->GetData(iRV, run, rep) != MISSING_VALUE) ++count;
    total += iMode == 0 ? count : (count > 1 ? 1 : 0);
  }
  return static_cast<std::int16_t>(total);
}

float Filter::GetNextValue() {
  if (study)
    while (++iRunPtr <= study->iNumRuns)
      if (study->GetTreatmentLevel(iFactor, iRunPtr) == iLevel) break;
  return MISSING_VALUE;
}

std::string FilterToText(const Study& s, const std::string& text) {
  if (text == "0;0") return "All Data";
  std::size_t semi = text.find(';');
  if (semi == std::string::npos) return "";
  int factor = static_cast<int>(Val(text.substr(0, semi)));
  int level = static_cast<int>(Val(text.substr(semi + 1)));
  return s.GetFactorName(factor) + " = " + s.GetPFactorLevelName(s.GetFactorKey(factor), level);
}

}  // namespace kestrow
