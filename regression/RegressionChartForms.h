// The rules of the dialogs of the regression's charts: the residuals of the
// stored model (up to six charts, plain or studentised) and the scattergram
// (a response and a factor, with the degree of its fitted line).
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "analyses/ChartChoiceForms.h"
#include "analyses/FormParts.h"
#include "data/FillRVList.h"
#include "regression/Scattergram.h"

namespace kestrow {

class Study;
class Statistics;

class Residuals2Form {
 public:
  Residuals2Form(Study& study, const Statistics& stats);
  FormOutcome OK(std::string& message);
  bool Edited() const;

  std::vector<ResidualChartRow> rows;  // the charts, then the factors of the model
  bool chkStudent = false;
  bool stored = false;

 private:
  std::string Snapshot() const;
  Study& study_;
  std::string before_;
};

class ScattergramForm {
 public:
  ScattergramForm(Study& study, const Statistics& stats);
  // OK: Accepted with the choice made, or Refused with the message. Nothing
  // is stored in the study.
  FormOutcome OK(std::string& message);
  bool Edited() const { return false; }

  std::vector<RVListEntry> rvList;
  int rvIndex = -1;
  std::vector<std::pair<std::string, std::string>> factorList;  // key, name: the numeric factors
  int factorIndex = -1;
  int optDegree = 0;  // 0 a straight line, 1 a quadratic, 2 a cubic
  ScatterChoice choice;
  bool stored = false;
};

}  // namespace kestrow
