// The scattergram: every observation of a response against the value of one
// factor, with the least-squares polynomial of that factor alone (a line, a
// quadratic or a cubic) drawn through them.
#pragma once

#include <string>

namespace kestrow {

class Study;
class Statistics;

struct ScatterChoice {
  std::string rvKey, factorKey;
  int degree = 1;  // 1 a straight line, 2 a quadratic, 3 a cubic
};

// What a study offers first: the response of its regression model (else the
// first with data), the first factor of the model (else the first numeric
// factor), and the degree of the model type (a line for a linear or
// interactions model).
ScatterChoice DefaultScatterChoice(const Study& study, const Statistics& stats);

// The choice a detail text makes, "FACTOR[|RESPONSE[|DEGREE]]" by keys, each
// part left out taking the default; false with the complaint for a key the
// study does not have or a degree outside 1 to 3.
bool ParseScatterChoice(const Study& study, const Statistics& stats, const std::string& detail, ScatterChoice& out,
                        std::string& complaint);

// Adds the chart to the chart page. A polynomial that cannot be fitted (too
// few distinct values) leaves the points without a line, with the fit's
// message. False when the choice names nothing the study has.
bool SetupScattergram(Study& study, Statistics& stats, const ScatterChoice& choice);

}  // namespace kestrow
