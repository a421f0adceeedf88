// The rules of the search dialog: the terms of the regression form's grid,
// Start and Stop on one button, hierarchy, the result list as a grid of
// texts (a model over a million rows asks for a cell at a time), the best
// row and the copy-back on Exit.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/Settings.h"
#include "regression/APRSearch.h"

namespace kestrow {

class Study;

class APRForm {
 public:
  // The result grid's columns.
  enum Column { TERMS, MSRES, RSQ, RSQADJ, BEST, SS, NUMTERMS, CP, COLUMNS };
  // The back colour of the best row, 0x00BBGGRR.
  static constexpr Colour BEST_COLOUR = 0x8080FF;

  // The grid's terms (texts and terms, the constant first), the response and
  // the regression flags to search with, and the name of the model type.
  APRForm(Study& study, const std::string& rvKey, int flag, const std::vector<std::pair<std::string, std::string>>& grid,
          const std::string& modelName);

  // Start: runs the search to its end or to Stop, asking the Ui to do its
  // events every few milliseconds; Stop (the same button while running)
  // ends it at the next of them.
  void cmdStart_Click();
  bool Running() const { return running_; }
  std::string cmdStartCaption() const;

  // Exit: stops a running search; the mask of the best row when the model is
  // to be copied back, else 0.
  std::uint32_t cmdExit_Click();

  // The grid: the heading row, then one row for each fitted subset.
  std::int64_t Rows() const { return static_cast<std::int64_t>(search_.Rows().size()) + 1; }
  std::string Heading(int col) const;
  std::string Cell(std::int64_t row, int col) const;
  // The row's back colour, DEFAULT_COLOUR but on the best row.
  Colour Back(std::int64_t row) const;
  // The grid row of the best subset, or 0.
  std::int64_t BestRow() const { return search_.BestRow() < 0 ? 0 : search_.BestRow() + 1; }

  const APRSearch& Search() const { return search_; }
  std::string lblModelType;
  bool chkHierarchy = true, chkCopyBack = true;

 private:
  void Start();

  Study& study_;
  std::string rvKey_;
  int flag_;
  std::vector<APRTerm> terms_;
  APRSearch search_;
  bool running_ = false;
};

}  // namespace kestrow
