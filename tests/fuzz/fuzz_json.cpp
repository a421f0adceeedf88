// Fuzz target: the JSON reader of problems.
#include <cstdint>
#include <string>

#include "core/Problem.h"
#include "core/ProblemJson.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrow;
  Problem p;
  std::string error;
  std::string text(reinterpret_cast<const char*>(data), size);
  if (ProblemFromJson(text, p, error)) {
    std::string again = ProblemToJson(p);
    Problem q;
    if (!ProblemFromJson(again, q, error)) __builtin_trap();  // what we write, we read
  }
  return 0;
}
