// The design selection table: from the factors of a study, every design that
// fits, in a fixed order; accepting a row calls its family's builder. The
// advice of the design wizard reads the same counts.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "designs/Design.h"

namespace kestrow {

class Study;

class DesignSelection {
 public:
  explicit DesignSelection(Study& study) : study_(study) {}

  // Fills the table. False when the design catalogue cannot be read: the
  // message has been shown and the table is empty.
  bool DesSelLoad();
  // Accepts row `row` (from 1): the builder of its family fills the study,
  // which gets the design's name, parameter and flags; a builder that fails
  // leaves the study without a design. False, with nothing changed, when the
  // row's family cannot be built here.
  bool DesSelOK(int row);
  // The Latin-square rows for a single factor of L levels.
  void CheckForLatinSquares(int levels);

  struct Advice {
    std::string heading;     // the factors in words
    std::string suggestion;  // a card's text; "*" in front when the card was edited
  };
  Advice DesWizard() const;

  // True if the family of a row needs a dialog of its own to be built.
  static bool NeedsDialog(const Design& row);

  std::vector<Design> rows;
  bool DesignChanged = false;

  // The counts of the study's factors.
  std::int32_t FullRuns = 1;
  std::int16_t NumFactors = 0, Count2 = 0, Count3 = 0, Count4 = 0, CountGT4 = 0;
  bool AllNumeric = true;
  std::int16_t FactorialFlag8 = 0;
  std::int16_t CatalogueMask = 0;
  bool HasBlocked = false, HasLatin = false;

 private:
  void Count();
  Study& study_;
};

}  // namespace kestrow
