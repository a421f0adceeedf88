// All possible regressions: every subset of a model's terms (the constant
// always in) fitted to the response, each listed with its residual mean
// square, R-squared and Mallows' Cp, and the subset of the smallest Cp marked
// as the best.
//
// A subset's figures are those that the fit of that subset alone prints, bit
// for bit: the search shares the fit's arithmetic and only what is the same
// for every subset is done once: the columns, their cross products, and the
// elimination steps of a common leading part. Subsets are visited depth
// first, each one elimination step from the subset it extends, and listed in
// ascending order of their masks as the plain loop would list them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/PeriodicCheck.h"

namespace kestrow {

class Study;

// One term the search may take: its text, its factors, and the mask of the
// single-factor terms it needs (its own bit among them when it is one).
struct APRTerm {
  std::string sText, sTerm;
  std::uint32_t lBit = 0, lNeeds = 0;
};

// One fitted subset.
struct APRRow {
  std::uint32_t mask = 0;  // bit 0 is the first term after the constant
  float fSSE = 0, fMSE = 0, fRSquared = 0, fRSquaredAdj = 0;
};

class APRSearch {
 public:
  // The most terms, the constant included, that a 32-bit mask can carry.
  static constexpr int MAX_TERMS = 31;
  // The most rows the list holds (20 bytes each); a search that finds more
  // stops there as if stopped by the user.
  static constexpr std::size_t MAX_ROWS = std::size_t{1} << 24;

  // The table of terms from the texts and terms of a term grid, the constant
  // first: bits and needs.
  static std::vector<APRTerm> TermTable(const std::vector<std::pair<std::string, std::string>>& textAndTerm);

  // Reads the response rvKey of the study and forms the columns of every
  // term for the regression flags iFlag (the standard deviation or the
  // observations; the statistics come from coded values whatever the units);
  // false, said, when it cannot.
  bool Prepare(Study& study, const std::string& rvKey, int iFlag, const std::vector<APRTerm>& terms);

  // Fits every subset; keepGoing is asked every few milliseconds and a false
  // answer stops the search with the rows found so far. True when the search
  // ran to its end.
  bool Run(bool hierarchy, const std::function<bool()>& keepGoing);

  const std::vector<APRRow>& Rows() const { return rows_; }
  bool Finished() const { return finished_; }
  bool Full() const { return rows_.size() >= MAX_ROWS; }
  int NumTerms() const { return static_cast<int>(terms_.size()); }
  const std::vector<APRTerm>& Terms() const { return terms_; }
  std::int64_t Subsets() const { return (std::int64_t{1} << (terms_.size() - 1)) - 1; }

  // The terms of a row, the constant counted, and their texts joined.
  static int RowTerms(const APRRow& row);
  std::string RowText(const APRRow& row) const;
  // Cp of a row against the last row, the full model when it fitted; the
  // run count stands for n. Meaningful after a finished search.
  float Cp(const APRRow& row) const;
  // The first row of the smallest Cp, or -1 when the search did not finish.
  int BestRow() const { return best_; }

  // Subsets left out, by reason: too few degrees of freedom, terms too
  // nearly collinear, an exact fit.
  std::int64_t TooFewDF() const { return tooFewDF_; }
  std::int64_t Collinear() const { return collinear_; }
  std::int64_t ExactFits() const { return exact_; }

 private:
  // The state of one depth of the search: the terms still in play (the
  // subset so far in front, then the candidates after its last term) and
  // their matrix with the subset's terms pivoted.
  struct Node {
    std::vector<int> live, pick;
    std::vector<double> m;
    int chosen = 0;  // how many of live are the subset
  };
  void Visit(int depth, std::uint32_t mask, std::uint32_t pending);
  void Record(const double* inverse, int stride, const int* live, int p, std::uint32_t mask);
  void SortByMask();
  void FindBest();

  std::vector<APRTerm> terms_;
  int numRuns_ = 0, n_ = 0;
  bool hierarchy_ = true, stopped_ = false, finished_ = false;
  std::vector<std::vector<double>> columns_;
  std::vector<double> y_, xtx_, xty_, diagonal_;
  double sst_ = 0, yScale_ = 0;
  std::vector<Node> levels_;
  std::vector<double> beta_, pred_, xtyOf_, diagOf_;
  std::vector<const double*> colsOf_;
  std::vector<APRRow> rows_;
  std::function<bool()> keepGoing_;
  PeriodicCheck look_;
  double msFull_ = 0;
  int best_ = -1;
  std::int64_t tooFewDF_ = 0, collinear_ = 0, exact_ = 0;
};

}  // namespace kestrow
