#include "data/FilterForm.h"

#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

namespace {
// A chart list holds at most this many filters, and as many factors can be left out.
constexpr int MAX_FILTERS = 6;
}  // namespace

void FilterForm::Load(const Study& s, const std::string& filterList, const std::string& excludeList) {
  rows.clear();
  changed = false;
  sFilterList = filterList;
  std::vector<int> excluded;
  std::string ex = excludeList;
  for (int i = 0; i < MAX_FILTERS && !ex.empty(); ++i) excluded.push_back(static_cast<int>(Val(PopToken(ex))));
  rows.push_back({"0;0", GetText("AllData"), "", false});
  for (int f = 1; f <= s.Factors.Count(); ++f) {
    bool out = false;
    for (int e : excluded) out = out || e == f;
    if (out) continue;
    std::string key = s.GetFactorKey(f);
    for (int l = 1; l <= s.GetPFactorLevelsCount(key); ++l)
      rows.push_back({std::to_string(f) + ";" + std::to_string(l), s.GetFactorName(f), s.GetPFactorLevelName(key, l),
                      false});
  }
  // A row starts ticked when it is the next unused filter of the list, taken
  // in order: the list must stand in row order.
  std::string list = filterList;
  std::string next = PopToken(list);
  for (Row& r : rows)
    if (!next.empty() && r.key == next) {
      r.checked = true;
      next = PopToken(list);
    }
}

std::string FilterForm::OK() {
  std::string keys;
  int ticked = 0;
  for (const Row& r : rows)
    if (r.checked) {
      keys += (ticked++ ? "," : "") + r.key;
    }
  if (ticked < 1) return GetText("ANOMerr1");
  if (ticked > MAX_FILTERS) return GetText("MCerr1");
  sFilterList = keys;
  return "";
}

}  // namespace kestrow
