// The regression dialogs in the print log: the all-possible-regressions
// search's title and the result grid's shown columns; the calculator's
// equation with the values evaluated or the target, method, restraints and
// solution.
#pragma once

namespace kestrow {

class APRForm;
class CalculatorForm;

// False, with nothing written, when the grid holds no result or the log
// cannot be opened.
bool PrintAPR(const APRForm& form);

// The lines of the tab on show (0 Evaluate, 1 Solve); false when the log
// cannot be opened.
bool PrintCalculator(const CalculatorForm& form, int tab);

}  // namespace kestrow
