// The rules of the marginal means dialog: the response, main effects or
// contrasts, a reduced font, and the chart of standard deviations (offered
// with replicates only).
#pragma once

#include <string>
#include <vector>

#include "analyses/FormParts.h"
#include "data/FillRVList.h"

namespace kestrow {

class Study;
class Statistics;

class MMPForm {
 public:
  MMPForm(Study& study, const Statistics& stats);
  FormOutcome OK(std::string& message);
  bool Edited() const;

  std::vector<RVListEntry> rvList;
  int rvIndex = -1;
  int optWhat = 0;  // 0 main effects, 1 contrasts only
  bool chkReduce = false;
  bool chkIncSD = false;
  bool incSDEnabled = false;
  bool stored = false;

 private:
  std::string Snapshot() const;
  Study& study_;
  std::string before_;
};

}  // namespace kestrow
