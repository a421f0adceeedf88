// The report of a study's stored regression model on the main grid: the
// coefficients with their standard errors, t and p; R-squared; and each
// observation with its fitted value, residual and studentised residual.
#pragma once

namespace kestrow {

class Grid;
class Study;

// Fits the stored model and fills the grid; false when the fit stopped on a
// message, which has been shown.
bool DrawRegression(Study& study, Grid& grid);

}  // namespace kestrow
