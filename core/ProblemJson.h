// The problem as JSON: every field the problem file stores, under its own
// name and in file order. Reading it back and saving gives the same file.
#pragma once

#include <string>

namespace kestrow {

class Problem;

std::string ProblemToJson(const Problem& problem);

// Fills a new, empty problem from a JSON document. A malformed or incomplete
// document is refused with a message that names what is wrong and where
// ("Studies[0].iReps: expected a whole number from -32768 to 32767"); the
// problem is then left partly filled and must be dropped.
bool ProblemFromJson(const std::string& json, Problem& problem, std::string& error);

}  // namespace kestrow
