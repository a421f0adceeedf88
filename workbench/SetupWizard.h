// The rules of the eight-step setup wizard: a new problem, its factors and
// response variables, and one study with its design. Each step's Next checks
// what is on its page; a cancel keeps what the problem holds by then.
#pragma once

#include <string>
#include <vector>

#include "workbench/FactorForm.h"
#include "workbench/RVForm.h"

namespace kestrow {

class SetupWizard {
 public:
  // Starts from a new problem.
  void Begin();

  // Step 1: the problem's name and description.
  std::string Wiz01OK(const std::string& name, const std::string& desc);
  // Step 2: a factor as the factor dialog takes it. Add stores it and starts
  // an empty one; Next stores one that was begun, and needs at least one.
  FactorForm factor;
  std::string Wiz02Add();
  std::string Wiz02OK();
  bool Wiz02HasText() const;
  // Step 4: a response variable, the same way.
  RVForm respVar;
  std::string Wiz04Add();
  std::string Wiz04OK();
  bool Wiz04HasText() const;
  // Step 6: the study's name and description.
  std::string Wiz06OK(const std::string& name, const std::string& desc);
  // Step 7: the study's factors and design (chosen through their dialogs on gStudyEdit).
  std::string Wiz07OK() const;
  // Step 8: the response variables ticked, the replications and the run order;
  // Finish adds the study to the problem.
  std::string Wiz08OK(const std::vector<std::string>& respVars, const std::string& reps, bool randomise);

  // The question when going back from a page with text on it: true to go back.
  static bool ConfirmBack(const std::string& tag);
};

}  // namespace kestrow
