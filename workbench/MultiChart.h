// The multi-chart: up to six of a study's charts, from any of its analyses
// that are set up, on one sheet. Its list (sMultiChart) holds entries of an
// analysis code and a chart of that analysis ("1+1WX", "13+1", "4+2;1").
#pragma once

#include <string>
#include <vector>

#include "analyses/FormParts.h"

namespace kestrow {

class Study;
class Statistics;

// Draws the entries of the study's list on the chart page; an entry whose
// analysis cannot run or is not set up is left out without a message. False
// when a failure stopped it, which has been shown.
bool ShowMultiChart(Study& study, Statistics& stats);

// The rules of the multi-chart dialog: every chart the study's set-up
// analyses offer, ticked as the list stands; OK takes one to six.
class MultiChartForm {
 public:
  struct Row {
    std::string text, key;
    bool checked = false;
  };

  // stats must hold every response of the study (Compute).
  MultiChartForm(Study& study, const Statistics& stats);
  // OK: stores the ticked rows' keys in row order; else the complaint (none
  // or more than six), with nothing stored.
  std::string MChartOK();
  // As the other analysis forms: Refused with the complaint, or Accepted.
  FormOutcome OK(std::string& message);
  bool Edited() const;

  std::vector<Row> rows;
  bool stored = false;

 private:
  std::string before_;
  void LoadMultiChart(const Statistics& stats);
  Study& study_;
};

}  // namespace kestrow
