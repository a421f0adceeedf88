#include "core/Globals.h"

namespace kestrow {

void ReplaceProblem(std::unique_ptr<Problem> problem) {
  gStudy = nullptr;
  gFactor = nullptr;
  gRespVar = nullptr;
  gProblem = std::move(problem);
}

}  // namespace kestrow
