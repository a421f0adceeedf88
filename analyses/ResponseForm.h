// The rules of the response plot dialog: the response, what is plotted
// (averages, standard deviations, or the mean-square deviation from the
// target), angled factor names, and two or three factors in the order of
// their choice, which Cycle rotates.
#pragma once

#include <string>
#include <vector>

#include "core/CheckList.h"
#include "analyses/FormParts.h"
#include "data/FillRVList.h"

namespace kestrow {

class Study;
class Statistics;

class ResponseForm {
 public:
  ResponseForm(Study& study, const Statistics& stats);

  // A response of rvList (from 0), or -1 for none; the options follow it.
  void SelectRV(int index);
  // 0 averages, 1 standard deviations, 2 MSD; a disabled one falls back to 0.
  void SetOption(int option);

  // The factor list, ticked as chosen, whose check asks for two or three.
  CheckList FactorList() const;
  void TakeFactors(const CheckList& list);
  bool cmdBrowse_Click();
  // The first factor becomes the second, the second the third, the last the first.
  void cmdCycle_Click();
  std::string lblFactors() const;

  FormOutcome OK(std::string& message);
  bool Edited() const;

  std::vector<RVListEntry> rvList;
  int rvIndex = -1;
  int option = 0;
  bool optionEnabled[3] = {true, false, false};
  bool chkAngled = false;
  std::vector<std::string> factors;  // keys, in order
  bool stored = false;

 private:
  std::string Snapshot() const;
  Study& study_;
  std::string before_;
};

}  // namespace kestrow
