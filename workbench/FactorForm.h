// The rules of the factor dialog: what it starts with in each mode, the
// checks of OK in their order, and what OK stores. The dialog only moves
// values between its widgets and this class.
#pragma once

#include <array>
#include <string>

#include "core/Factor.h"

namespace kestrow {

enum class EditMode { New = 1, Copy = 2, Edit = 3 };

class FactorForm {
 public:
  static constexpr int LEVEL_ROWS = 8;
  struct LevelRow {
    std::string coding;  // the first column, read as a target text
    std::string value;   // the level's name (its value for a numeric factor)
    std::string desc;
  };

  // The dialog's fields.
  std::string txtName, txtAbbr, txtDesc;
  bool chkNumeric = false;     // "Factor is discrete / non-numeric"
  bool chkControlled = false;  // "This is a known, controllable noise factor"
  std::array<LevelRow, LEVEL_ROWS> grdLevels;

  EditMode mode = EditMode::New;
  std::string key;  // the factor's key

  // Starts the dialog: a new factor, a copy of the factor with the key, or
  // the factor itself.
  void Begin(EditMode m, const std::string& selectedKey = std::string());

  // Checks the fields in order; the first complaint comes back (empty when
  // all is well), and the factor made from the fields goes to `out`.
  std::string ValidateForm(Factor& out) const;

  // True if OK needs the question of a changed factor used in a study.
  bool NeedsUsedQuestion() const;

  // OK: validates, asks where needed, and stores the factor in the problem.
  // The complaint or an empty text; `stored` tells whether it went in.
  std::string OK(bool& stored);
};

}  // namespace kestrow
