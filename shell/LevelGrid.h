// The level table of a factor (coding, value, description for up to eight
// levels) between a FactorForm and a table widget: the factor dialog and the
// setup wizard both use it.
#pragma once

#include "workbench/FactorForm.h"

class QTableWidget;

namespace kestrow {

void LevelsToGrid(const FactorForm& form, QTableWidget* grid);
void LevelsFromGrid(const QTableWidget* grid, FactorForm& form);

}  // namespace kestrow
