// The rules of the regression calculator: the stored model evaluated at
// factor values typed in coded or actual units, and solved for a target (a
// number, the maximum or the minimum) within the factors' ranges and the
// user's restraints, by a two-pass ordered grid or by random sampling until
// Stop. Nothing is stored in the study: the model is read, never changed.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/PeriodicCheck.h"
#include "regression/Regress.h"

namespace kestrow {

class Study;

class CalculatorForm {
 public:
  // A factor of the model: one with a term of its own.
  struct Factor {
    float fMin = 0, fMax = 0, fStep = 0, fBest = 0, fNow = 0;
    double fSlope = 1, fOffset = 0;  // coded = slope x actual + offset, in a coded model
    std::string sKey, sName;
    std::int16_t iFactor = 0, iCount = 0;
  };
  // A row of the restraints grid; a row without a factor is not read.
  struct Restraint {
    std::string factor;    // the factor's name
    std::string relation;  // the text of ISEQ, ISLT or ISGT
    std::string value;
  };
  enum Algorithm { TWO_PASS = 0, MONTE_CARLO = 1 };
  enum Range { LIMIT_TO_LEVELS = 0, ALLOW_DEVIATION = 1 };

  explicit CalculatorForm(Study& study);

  bool HasModel() const { return !factors_.empty(); }
  const std::vector<Factor>& Factors() const { return factors_; }
  // The grid's Range column of factor row i: "min - max".
  std::string RangeText(std::size_t i) const;
  // The relations offered, in the order of the drop-down.
  static std::vector<std::string> Relations();

  // Evaluate: the Value cells, one for each factor row, in the units of the
  // model. False with the message said and errorRow the cell to focus.
  bool cmdEvaluate_Click();

  // Solve: runs the search to its end (two passes) or until Stop (the
  // Monte-Carlo method never ends by itself), asking the Ui to do its events
  // every few milliseconds. False when the checks refused it (said, with
  // errorRow the restraint or -1).
  bool cmdSolve_Click();
  void cmdStop_Click() { running_ = false; }
  bool Running() const { return running_; }
  // An extra condition for the search to go on, asked with each look at the
  // window (the command line's time limit).
  std::function<bool()> keepGoing;

  // The print log's lines of the tab on show (0 Evaluate, 1 Solve).
  std::vector<std::string> LogLines(int tab) const;

  // The results of the last search, in actual units.
  float BestValue() const { return fBestValue_; }
  float BestGap() const { return fBestGap_; }
  float Target() const { return fTarget_; }
  std::int64_t Evaluations() const { return evaluations_; }

  std::string caption, lblEquation, lblTarget, lblValue, lblSolution;
  std::vector<std::string> values;  // the Evaluate grid's Value column
  std::string txtTarget;
  std::vector<Restraint> restraints;
  int cmbRange = LIMIT_TO_LEVELS, cmbAlgorithm = TWO_PASS;
  int errorRow = -1;

 private:
  bool SetLimits();
  bool OutOfRange();
  void Better();
  void TwoPass(int n);
  void MonteCarlo();
  bool Look();
  void ShowSolution();

  Study& study_;
  Regress fit_;
  bool coded_ = false;
  std::vector<Factor> factors_;
  std::array<float, MAX_EVAL_FACTORS + 1> table_{};
  float fTarget_ = 0, fBestValue_ = 0, fBestGap_ = 0;
  std::int64_t iRunCount_ = 0, evaluations_ = 0;
  bool running_ = false;
  PeriodicCheck look_;
};

}  // namespace kestrow
