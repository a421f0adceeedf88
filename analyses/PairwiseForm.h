// The rules of the pairwise comparison dialog: the response, alpha and the
// test (least significant difference or Duncan's multiple range test, the
// latter at alpha 0.01 or 0.05 only).
#pragma once

#include <string>
#include <vector>

#include "analyses/FormParts.h"
#include "data/FillRVList.h"

namespace kestrow {

class Study;
class Statistics;

class PairwiseForm {
 public:
  PairwiseForm(Study& study, const Statistics& stats);
  FormOutcome OK(std::string& message);
  bool Edited() const;

  std::vector<RVListEntry> rvList;
  int rvIndex = -1;
  std::vector<std::string> alphaList;
  std::string cmbAlpha;
  int optAlgorithm = 0;  // 0 least significant difference, 1 Duncan
  bool stored = false;

 private:
  Study& study_;
  int rvBefore_ = -1, algorithmBefore_ = 0;
  std::string alphaBefore_;
};

}  // namespace kestrow
