// The terms that a model type offers for a study's numeric factors, in the
// order of the term grid: the constant, the factors, then (as the type asks)
// the products of two factors, the squares and the products of three.
#pragma once

#include <string>
#include <vector>

namespace kestrow {

class Study;

struct TermEntry {
  std::string sText;  // "A x B"
  std::string sTerm;  // "1,2"
  int iLast = 0;      // the highest factor number in the term
};

// The model types.
enum ModelType { MODEL_LINEAR = 0, MODEL_INTERACTIONS = 1, MODEL_QUADRATIC = 2, MODEL_CUBIC = 3 };

// The grid holds at most this many terms, the constant included; a model
// with more is cut there and the cut reported.
inline constexpr int MAX_GRID_TERMS = 100;

std::vector<TermEntry> RegressionTerms(const Study& study, int modelType);

}  // namespace kestrow
