#include "regression/TermGrid.h"

#include "core/Study.h"
#include "core/Ui.h"

namespace kestrow {

std::vector<TermEntry> RegressionTerms(const Study& study, int modelType) {
  std::vector<TermEntry> grid{{"Constant", "0", 0}};
  std::vector<int> numeric;
  for (int i = 1; i <= study.Factors.Count(); ++i)
    if ((study.GetPFactorFlag(study.GetFactorKey(i)) & FACTOR_DISCRETE) == 0) numeric.push_back(i);
  for (int i : numeric) grid.push_back({study.GetFactorAbbr(i), std::to_string(i), i});
  const std::vector<TermEntry> mains(grid.begin() + 1, grid.end());
  const auto extend = [&](const TermEntry& e, int i) {
    grid.push_back({e.sText + " x " + study.GetFactorAbbr(i), e.sTerm + "," + std::to_string(i), i});
  };
  const std::size_t firstProduct = grid.size();
  if (modelType > MODEL_LINEAR)
    for (int i : numeric)
      for (const TermEntry& e : mains)
        if (i > e.iLast) extend(e, i);
  if (modelType > MODEL_INTERACTIONS)
    for (int i : numeric)
      for (const TermEntry& e : mains)
        if (e.iLast == i) extend(e, i);
  if (modelType > MODEL_QUADRATIC) {
    const std::vector<TermEntry> products(grid.begin() + static_cast<std::ptrdiff_t>(firstProduct), grid.end());
    for (int i : numeric)
      for (const TermEntry& e : products)
        if (i >= e.iLast) extend(e, i);
  }
  if (static_cast<int>(grid.size()) > MAX_GRID_TERMS) {
    ReportError("This model has " + std::to_string(grid.size()) + " terms; the grid holds the first " +
                    std::to_string(MAX_GRID_TERMS),
                "SetRegressionGrid");
    grid.resize(MAX_GRID_TERMS);
  }
  return grid;
}

}  // namespace kestrow
