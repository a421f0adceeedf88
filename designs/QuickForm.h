// The rules of the quick study: a whole problem (factors, one response
// variable, one study with its design) from one screen. Everything is built
// in a problem of the form's own, which replaces the open one only at OK.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/Problem.h"

namespace kestrow {

class QuickForm {
 public:
  static constexpr int MAX_LEVELS = 8;
  struct FactorRow {
    std::string name;
    std::vector<std::string> levels;  // up to eight, from the first column; blanks after the last are unused
  };

  QuickForm();

  std::string txtName, txtRV;
  int cmbReps = 2;  // 0: none chosen
  std::vector<FactorRow> grdFactors;

  // Checks the factor rows and makes the factors ("f1", "f2", ...); the first
  // complaint, or empty. A level that is not numeric makes its factor discrete.
  std::string VetFactors();
  // Before the design table: the factors are checked and the study takes
  // them; the complaint, or empty.
  std::string DesignClick();
  // The study the design table works on.
  Study& WorkStudy() { return study_; }
  // The name of the chosen design, empty while none is chosen.
  const std::string& DesignName() const { return study_.sDesignName; }

  struct Complaint {
    std::string text;
    std::string control;
  };
  // OK: the checks in order; on success the new problem replaces the open one.
  Complaint QuickOK();

 private:
  std::unique_ptr<Problem> problem_;
  Study study_;
};

}  // namespace kestrow
