#include "workbench/RegressionPrint.h"

#include "core/Language.h"
#include "regression/APRForm.h"
#include "regression/CalculatorForm.h"
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

bool PrintCalculator(const CalculatorForm& form, int tab) {
  if (!OpenLog(true)) return false;
  for (const std::string& line : form.LogLines(tab)) LogLine(line);
  CloseLog();
  return true;
}

}  // namespace kestrow
