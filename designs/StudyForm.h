// The rules of the study dialog: what it starts with, the replications box,
// the factor and response choices, the design button, and the checks of OK.
// It works on the scratch study gStudyEdit; OK copies it into the problem.
#pragma once

#include <string>
#include <vector>

namespace kestrow {

class Study;

class StudyForm {
 public:
  // The fields of the dialog.
  std::string txtName, txtDesc, txtReps = "2";
  bool chkRandom = true;
  std::string lblDesign;
  std::string cmbPartial;  // the name of the factor of the partial reflection

  // The state of the controls, as the rules leave it.
  bool repsLocked = false, randomEnabled = true, viewDesEnabled = false, partialEnabled = false;

  int mode = 1;            // 1 new, 2 copy, 3 edit
  std::string key;         // the study's key in the problem (empty while new)
  bool changed = false;    // something was changed
  bool designReplaced = false;

  // Starts the dialog. For a new study: the refusal when the problem has no
  // factor beyond its noise factors, or no response variable (empty when it
  // may go on).
  std::string Begin(int m, const std::string& studyKey = std::string());

  // True while the scratch study holds data, so changes ask first.
  bool HasData() const;

  // The first change of the replications of a study with data asks whether
  // to go on; false means the old value comes back.
  bool RepsChanging();
  // The replications box loses the focus: the complaint, or empty. A changed
  // count resizes the data (kept, or made new) and clears the analyses on a
  // change to or from one.
  std::string RepsLostFocus();

  // Before the factor picker: false when the user declines to lose the data.
  bool FactorsClick();
  // The picker was accepted with these factors, in order: the design goes.
  void FactorsChosen(const std::vector<std::string>& keys);
  // Before the response list: false when the user declines.
  bool BrowseRespVars();
  // The responses chosen, in order.
  void RespVarsChosen(const std::vector<std::string>& keys);

  // Before the design table: the complaint (no factor), or empty.
  std::string DesignClick() const;
  // After the design table: shows the design and sets the controls its kind needs.
  void DesignChosen(bool designChanged);

  // The names the partial-reflection list offers (a reflectable design's factors).
  std::vector<std::string> PartialChoices() const;

  // OK: the checks in order; the first complaint comes back with the name of
  // the control to focus, and nothing is stored. Empty when the study was stored.
  struct Complaint {
    std::string text;
    std::string control;
  };
  Complaint StudyOK();

 private:
  bool askedData_ = false;
  std::string oldReps_;
};

}  // namespace kestrow
