#include "designs/DesignView.h"

#include <vector>

#include "core/Language.h"
#include "core/Settings.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

void FillDesignView(const Study& s, Grid& grid) {
  grid.BeginBatch();
  int nF = s.Factors.Count();
  int nC = s.Contrasts.Count();
  int runs = s.iNumRuns;
  std::vector<std::vector<std::string>> aliases(static_cast<std::size_t>(nC));
  std::size_t widest = 0;
  for (int c = 1; c <= nC; ++c) {
    std::string list = s.Contrasts(c).sAliases;
    while (!list.empty()) {
      std::string word = Trim(PopToken(list));
      if (!word.empty() && s.bAliasIsOK(word)) aliases[static_cast<std::size_t>(c - 1)].push_back(word);
    }
    widest = std::max(widest, aliases[static_cast<std::size_t>(c - 1)].size());
  }
  int aliasRows = widest > 0 ? static_cast<int>(widest) + 1 : 0;
  grid.SetSize(2 + runs + aliasRows, 1 + nF + nC);
  grid.FixedRows = 2;
  grid.FixedCols = 1;

  grid.SetText(1, 0, GetText("Run"));
  if (nF > 0) {
    grid.SetText(0, 1, GetText("Treatments"));
    grid.Merges.push_back({0, 1, 1, nF});
  }
  if (nC > 0) {
    grid.SetText(0, 1 + nF, GetText("Contrasts"));
    grid.Merges.push_back({0, 1 + nF, 1, nC});
  }
  for (int f = 1; f <= nF; ++f) grid.SetText(1, f, s.GetPFactorName2(s.GetFactorKey(f)));
  for (int c = 1; c <= nC; ++c) {
    grid.SetText(1, nF + c, s.Contrasts(c).sName);
    grid.SetColData(nF + c, c);
  }
  for (int run = 1; run <= runs; ++run) {
    int row = run + 1;
    grid.SetText(row, 0, std::to_string(run));
    for (int f = 1; f <= nF; ++f) {
      grid.SetText(row, f, s.GetTreatmentLevelName(f, run));
      grid.SetBack(row, f, gSettings.DesTreatments);
    }
    for (int c = 1; c <= nC; ++c) {
      float v = s.GetContrastEntry(c, run);
      grid.SetText(row, nF + c, (v > 0 ? "+" : "") + ShortestText(v));
      grid.SetBack(row, nF + c, gSettings.DesContrasts);
    }
  }
  if (aliasRows > 0) {
    int top = runs + 2;
    grid.SetText(top, 0, GetText("Alias") + ":");
    for (int c = 1; c <= nC; ++c) {
      const auto& list = aliases[static_cast<std::size_t>(c - 1)];
      for (std::size_t a = 0; a < widest; ++a) {
        int row = top + 1 + static_cast<int>(a);
        grid.SetText(row, nF + c, a < list.size() ? list[a] : "");
        grid.SetBack(row, nF + c, gSettings.DesAliases);
      }
    }
  }
  grid.EndBatch();
}

}  // namespace kestrow
