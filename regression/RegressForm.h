// The rules of the regression dialog: the response, the variable modelled
// (the observations or each run's standard deviation), coded or actual
// units, the model type with its grid of terms kept hierarchical, the
// equation computed on demand, the search over subsets of the grid's terms
// with its copy-back, and what OK stores.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "analyses/FormParts.h"
#include "core/StudyParts.h"
#include "data/FillRVList.h"

namespace kestrow {

class Study;
class Statistics;

class RegressForm {
 public:
  struct Row {
    std::string text;   // "Constant", "A", "A x B"
    std::string sTerm;  // "0", "1", "1,2"
    int iLast = 0;
    bool checked = false;
    std::string coefficient, significance;  // after a compute
  };

  RegressForm(Study& study, const Statistics& stats);

  // optModel: rebuilds the grid for the model type, every term ticked.
  void optModel_Click(int model);
  // A tick of the grid, kept hierarchical: a product ticks its factors, an
  // unticked factor unticks every term that holds it. The constant stays.
  void Tick(std::size_t row, bool checked);
  // Compute: the equation of the ticked terms in the labels and the grid;
  // false when the checks or the fit stopped it (said).
  bool cmdRegress_Click();

  // Search: the checks the search needs (said); then the grid's terms and
  // the settings for the search dialog.
  bool VetForSearch();
  std::vector<std::pair<std::string, std::string>> TermGrid() const;
  std::string ModelName() const;
  const std::string& SearchRVkey() const { return msRVkey_; }
  int SearchFlag() const { return miFlag_; }
  // The search's best subset ticked (bit 0 the first term after the
  // constant), then computed.
  void CopyBack(std::uint32_t mask);

  // OK: Accepted (the model is stored), or Refused with the message (empty
  // when the fit said it already).
  FormOutcome OK(std::string& message);
  bool Edited() const;

  std::vector<RVListEntry> rvList;
  int rvIndex = -1;
  bool sdOffered = false;  // optVar: only a replicated study can model the SD
  int optVar = 0;          // 0 y-bar, 1 SD
  bool chkCoding = false;
  int optModel = 0;
  std::vector<Row> rows;
  std::string lblEquation, lblRsquared, lblMSE;
  bool stored = false;

 private:
  // The checks before a compute; unless keep, the working terms from the ticks.
  bool Vet(bool keep, std::string& message);
  bool ComputeRegression();
  void ClearLabels();
  void FillGrid(int model);
  std::string Snapshot() const;

  Study& study_;
  std::string msRVkey_;
  int miFlag_ = 0, miModel_ = 0;
  std::deque<Rterm> working_;
  std::string before_;
  bool computed_ = false;  // the labels hold the fit of the ticks as they stand
};

}  // namespace kestrow
