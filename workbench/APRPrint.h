// The printout of the all-possible-regressions search: its title and the
// result grid's shown columns in the print log.
#pragma once

namespace kestrow {

class APRForm;

// False, with nothing written, when the grid holds no result or the log
// cannot be opened.
bool PrintAPR(const APRForm& form);

}  // namespace kestrow
