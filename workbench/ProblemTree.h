// The problem as a tree: every factor, response variable, study, data set,
// analysis and report has a node, with a key that tells what it is.
#pragma once

#include <string>
#include <vector>

namespace kestrow {

class Problem;
class Study;

struct TreeNode {
  std::string key;      // "P", "F", "f3", "s1", "w1+f2", "z1+2", ...
  std::string parent;   // key of the parent; empty for the root
  std::string caption;
  std::string icon;     // "problem", "factor", "respvar", "study", "lock", "data", "graph", "report"
};

// The whole tree, parents before children, in the order the tree shows them.
std::vector<TreeNode> ProblemToTree(const Problem& problem);

// The analysis codes a study's tree offers, in order.
std::vector<int> AnalysisNodes(const Study& study);
// The tag that names an analysis node, and a report node.
std::string AnalysisTag(int code);
std::string ReportTag(int k);

// What a node key stands for.
struct NodeRef {
  char kind = 0;          // the key's first character
  std::string studyKey;   // for a node under a study: the study's key
  std::string detail;     // the part behind "+": a factor or response key, or a number
  int number = 0;         // that part read as a number: an analysis code or a report
};
NodeRef ParseNodeKey(const std::string& key);

}  // namespace kestrow
