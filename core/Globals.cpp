#include "core/Globals.h"

namespace kestrow {

void ReplaceProblem(std::unique_ptr<Problem> problem) {
  gStudy = nullptr;
  gFactor = nullptr;
  gRespVar = nullptr;
  // The scratch study follows whatever problem is open.
  gStudyEdit.pProblem = nullptr;
  gProblem = std::move(problem);
}

}  // namespace kestrow
