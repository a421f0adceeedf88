// The list of responses an analysis dialog offers.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kestrow {

class Study;
class Statistics;

struct RVListEntry {
  std::string name;  // the display name; "*" in front for the transformed form
  std::string key;   // the key; "*" behind for the transformed form
};

// By analysis code: 1 (ANOM) only complete responses, 2 (ANOVA) only those
// with every run holding an observation, any other code all but those without
// data. A response with a transform comes twice: plain and transformed. The
// statistics must have been computed for all responses of the study.
std::vector<RVListEntry> FillRVList(const Study& study, const Statistics& stats, int code);

}  // namespace kestrow
