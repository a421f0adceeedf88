// The rules of the analysis-of-means dialog: the response, alpha, the charts
// chosen from a check list (the one-way charts and a main-effect chart per
// factor, at most six, the one-way item counting twice on a replicated
// study), the order of the runs on the one-way charts, and its two options.
#pragma once

#include <string>
#include <vector>

#include "core/CheckList.h"
#include "analyses/FormParts.h"
#include "data/FillRVList.h"

namespace kestrow {

class Study;
class Statistics;

class ANOMForm {
 public:
  // stats must hold every response of the study (Compute).
  ANOMForm(Study& study, const Statistics& stats);

  // The check list of charts, ticked as the form stands, with its prompt
  // and the check that refuses none or more than six charts.
  CheckList ChartList() const;
  // Takes the ticks of an accepted chart list.
  void TakeCharts(const CheckList& list);
  // cmdCharts: shows the chart list; true when it was accepted.
  bool cmdCharts_Click();
  // The choices as lblCharts shows them, joined by ", ".
  std::string lblCharts() const;

  // OK: Accepted (the settings are stored), or Refused with the message.
  FormOutcome OK(std::string& message);
  // Whether anything was changed in the dialog.
  bool Edited() const;

  std::vector<RVListEntry> rvList;
  int rvIndex = -1;
  std::vector<std::string> alphaList;
  std::string cmbAlpha;
  std::string charts;        // the chart tokens, comma-joined
  int optSG = 0;             // 0 runs in run order, 1 ordered by the factor of cmbSG
  int cmbSG = 0;             // a factor of the study, from 0
  std::vector<std::string> factorNames;  // the entries of cmbSG
  bool chkExclude = false;
  bool chk1in5 = false;
  bool excludeEnabled = false;
  bool stored = false;  // OK changed what the study holds

 private:
  std::string Snapshot() const;

  Study& study_;
  std::string before_;
};

}  // namespace kestrow
