// The rules of the effects plot dialog: the response, one or two factors in
// the order of their choice (Flip swaps them), and up to six data filters
// that never filter on a chosen factor.
#pragma once

#include <string>
#include <vector>

#include "core/CheckList.h"
#include "analyses/FormParts.h"
#include "data/FillRVList.h"

namespace kestrow {

class Study;
class Statistics;

class FXPlotForm {
 public:
  FXPlotForm(Study& study, const Statistics& stats);

  // The factor list, ticked as chosen, whose check asks for one or two.
  CheckList FactorList() const;
  // Takes the factors of an accepted list in the order they were ticked.
  void TakeFactors(const CheckList& list);
  bool cmdBrowse_Click();
  // Swaps the first and second factor.
  void cmdFlip_Click();
  // The chosen factors as numbers, comma-joined: the filters leave them out.
  std::string ExcludeList() const;
  // Takes the filters of the filter dialog (its sFilterList).
  void TakeFilters(const std::string& filterList);

  // The labels: the chosen factors' names, and the filters' captions.
  std::string lblFactors() const;
  std::string lblFilter() const;

  FormOutcome OK(std::string& message);
  bool Edited() const;

  std::vector<RVListEntry> rvList;
  int rvIndex = -1;
  std::string f1Key, f2Key;
  std::string sFilter;  // "f;l" tokens joined by commas
  bool stored = false;

 private:
  std::string Snapshot() const;
  // The filters that do not filter on a chosen factor; all data when none.
  std::string FiltersWithoutChosen() const;

  Study& study_;
  std::string before_;
};

}  // namespace kestrow
