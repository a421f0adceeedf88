// The rules of the transformation dialog: for a response of the study, none,
// a base-10 logarithm of y + a, or a Box-Cox power of y + a with b; Recompute
// suggests a and b from the data.
#pragma once

#include <string>

namespace kestrow {

class Study;

class XformForm {
 public:
  explicit XformForm(Study& study) : study_(study) {}

  // Shows response rv (from 1): its transform and parameters.
  void SelectRV(int rv);
  // Chooses an option: 0 none, 1 logarithmic, 2 Box-Cox; sets the fields' use.
  void SetOption(int option);
  // Suggests a (so that y + a is at least 1 for all data) and, for Box-Cox,
  // b (1 with one replication, after a notice; else 0).
  void Recompute();
  // Checks and stores the transform; the complaint, or empty. Analyses stored
  // on the transformed response are out of date and are cleared. A transform
  // that would leave the response without any value (y + a at or below 0 for
  // every observation) is said first, and the user may go back: declined is
  // then true and nothing is stored.
  std::string OK(bool& declined);

  int rv = 1;
  int optXform = 0;
  std::string txtA, txtB;
  bool aEnabled = false, bEnabled = false;

 private:
  Study& study_;
};

}  // namespace kestrow
