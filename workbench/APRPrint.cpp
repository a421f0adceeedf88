#include "workbench/APRPrint.h"

#include "core/Language.h"
#include "regression/APRForm.h"
#include "workbench/PrintLog.h"

namespace kestrow {

bool PrintAPR(const APRForm& form) {
  if (form.Rows() < 2) return false;
  if (!OpenLog(true)) return false;
  LogLine(GetText("APRres"));
  LogLine(form.lblModelType);
  // The columns shown in the window; the sum of squares and the term count
  // stay hidden there and here.
  static const int shown[] = {APRForm::TERMS, APRForm::MSRES, APRForm::RSQ, APRForm::RSQADJ, APRForm::BEST, APRForm::CP};
  LogTable(form.Rows(), 6, 1, [&](std::int64_t r, int c) { return form.Cell(r, shown[c]); });
  CloseLog();
  return true;
}

}  // namespace kestrow
