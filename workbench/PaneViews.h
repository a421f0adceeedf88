// What the right-hand pane shows for a node of the tree: rows of a heading
// and a value, the headings being the language's texts.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kestrow {

class Problem;
class Study;

struct PaneView {
  std::string title;
  std::vector<std::pair<std::string, std::string>> rows;
};

PaneView ShowProblem(const Problem& problem);
PaneView ShowFactor(const Problem& problem, const std::string& key);
PaneView ShowRespVar(const Problem& problem, const std::string& key);
PaneView ShowStudy(const Study& study);

// A factor seen through a study (a locked study shows its own copy).
PaneView ShowStudyFactor(const Study& study, const std::string& key);
PaneView ShowStudyRespVar(const Study& study, const std::string& key);

}  // namespace kestrow
