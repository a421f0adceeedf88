// The rules of the response-variable dialog.
#pragma once

#include <string>

#include "core/RespVar.h"
#include "workbench/FactorForm.h"

namespace kestrow {

class RVForm {
 public:
  std::string txtName, txtAbbr, txtDesc, txtUnits, txtTarget;
  EditMode mode = EditMode::New;
  std::string key;

  void Begin(EditMode m, const std::string& selectedKey = std::string());
  // The first complaint, in order, or empty; the response variable goes to `out`.
  std::string RVOK(RespVar& out) const;
  // OK: validates and stores; the complaint or an empty text.
  std::string OK(bool& stored);
};

}  // namespace kestrow
