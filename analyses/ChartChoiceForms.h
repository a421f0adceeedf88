// The rules of the dialogs that choose charts of an analysis: the ANOVA
// graphics (scree, normal probability and Pareto plots of the contrasts),
// the residuals (up to six charts of the response chosen) and the run chart
// (its scale, a range chart, every fifth label).
#pragma once

#include <string>
#include <vector>

#include "analyses/FormParts.h"
#include "data/FillRVList.h"

namespace kestrow {

class Study;
class Statistics;

// "ANOVA graphics": which of the three charts of the contrasts are drawn.
class ScreeForm {
 public:
  ScreeForm(Study& study, const Statistics& stats);
  FormOutcome OK(std::string& message);
  bool Edited() const;

  bool chkScree = false, chkLHNPP = false, chkPareto = false;
  bool stored = false;

 private:
  std::string Tokens() const;
  Study& study_;
  std::string before_;
};

// A row of the check grid of residual charts.
struct ResidualChartRow {
  std::string text;
  int token = 0;  // -3 probability plot, -2 run order, -1 fitted values, n factor n
  bool checked = false;
};

// The grid of residual charts: the probability plot, the run order where
// offered, the fitted values, and the factors given; ticked as the stored
// list has them, or the first three when nothing is stored.
std::vector<ResidualChartRow> ResidualChartRows(const std::string& stored, bool runOrder,
                                                const std::vector<std::pair<int, std::string>>& factors);
// The list of the ticked rows; empty with the complaint for none (REGerr1)
// or more than six (MCerr1).
std::string ResidualChartList(const std::vector<ResidualChartRow>& rows, std::string& complaint);

// The residuals: a response and a check grid of charts, one to six.
class ResidualsForm {
 public:
  using Row = ResidualChartRow;

  ResidualsForm(Study& study, const Statistics& stats);
  FormOutcome OK(std::string& message);
  bool Edited() const;

  std::vector<RVListEntry> rvList;
  int rvIndex = -1;
  std::vector<Row> rows;
  bool stored = false;

 private:
  std::string Snapshot() const;
  Study& study_;
  std::string before_;
};

// The run chart: its scale and two options.
class RunChartForm {
 public:
  RunChartForm(Study& study, const Statistics& stats);
  FormOutcome OK(std::string& message);
  bool Edited() const;

  int optScale = 0;  // 0 natural, 1 coded to [-1, +1], 2 sigma deviations
  bool chkShowRange = false, chk1in5 = false;
  bool stored = false;

 private:
  Study& study_;
  int scaleBefore_ = 0;
  bool rangeBefore_ = false, fifthBefore_ = false;
};

}  // namespace kestrow
