#include "workbench/ProblemTree.h"

#include "core/Language.h"
#include "core/Problem.h"
#include "core/Settings.h"
#include "core/Text.h"

namespace kestrow {

namespace {

// The analyses in the order of the tree; the first eight need a structured design.
constexpr int ANALYSIS_ORDER[] = {1, 2, 13, 8, 3, 4, 5, 6, 15, 7, 14, 9, 10, 11};

}  // namespace

std::string AnalysisTag(int code) {
  switch (code) {
    case 1: return "ANOM";
    case 2: return "ANOVA";
    case 3: return "Residuals";
    case 4: return "FXPlot";
    case 5: return "ResPlot";
    case 6: return "MMeans";
    case 7: return "Regression";
    case 8: return "Pairwise";
    case 9: return "Residuals";
    case 10: return "ConPlot";
    case 11: return "RespSurf";
    case 13: return "ScreeNPP";
    case 14: return "Calculator";
    case 15: return "RunChart";
    default: return "";
  }
}

std::string ReportTag(int k) {
  switch (k) {
    case 1: return "IPOdiag";
    case 2: return "Stats";
    case 3: return "Mcharts";
    case 4: return "Datawk";
    default: return "";
  }
}

std::vector<int> AnalysisNodes(const Study& study) {
  std::vector<int> codes;
  bool unstructured = (study.iDesFlag & DES_UNSTRUCTURED) != 0;
  int i = 0;
  for (int code : ANALYSIS_ORDER)
    if (!(unstructured && i++ < 8)) codes.push_back(code);
  return codes;
}

std::vector<TreeNode> ProblemToTree(const Problem& p) {
  std::vector<TreeNode> t;
  t.push_back({"P", "", p.sName, "problem"});
  t.push_back({"F", "P", GetText("Factors"), "factor"});
  t.push_back({"V", "P", GetText("RVs"), "respvar"});
  t.push_back({"S", "P", GetText("Studies"), "study"});
  for (const RespVar& rv : p.RespVars) t.push_back({rv.sKey, "V", rv.sName, "respvar"});
  for (const Factor& f : p.Factors) t.push_back({f.sKey, "F", f.sName, "factor"});
  for (const Study& s : p.Studies) {
    std::string n = s.sKey.substr(1);
    bool locked = s.IsLocked();
    std::string caption = s.sName;
    if (locked && !gSettings.TreeIcons) caption += " [" + GetText("Locked") + "]";
    t.push_back({s.sKey, "S", caption, locked && gSettings.TreeIcons ? "lock" : "study"});
    if (!s.Factors.Empty()) {
      t.push_back({"w" + n, s.sKey, GetText("Factors"), "factor"});
      for (const Item& item : s.Factors)
        t.push_back({"w" + n + "+" + item.sKey, "w" + n, s.GetPFactorName(item.sKey), "factor"});
    }
    t.push_back({"x" + n, s.sKey, GetText("RespVars"), "respvar"});
    for (const StudyRespVar& srv : s.StudyRespVars)
      t.push_back({"x" + n + "+" + srv.sKey, "x" + n, s.GetPRVName(srv.sKey), "respvar"});
    t.push_back({"d" + n, s.sKey, GetText("Data"), "data"});
    t.push_back({"a" + n, s.sKey, GetText("Analysis"), "graph"});
    for (int code : AnalysisNodes(s))
      t.push_back({"z" + n + "+" + std::to_string(code), "a" + n, GetText(AnalysisTag(code)), "graph"});
    t.push_back({"r" + n, s.sKey, GetText("Reports"), "report"});
    for (int k = 1; k <= 4; ++k) t.push_back({"e" + n + "+" + std::to_string(k), "r" + n, GetText(ReportTag(k)), "report"});
  }
  return t;
}

NodeRef ParseNodeKey(const std::string& key) {
  NodeRef ref;
  if (key.empty()) return ref;
  ref.kind = key[0];
  static const std::string STUDY_KINDS = "swxdazer";
  if (ref.kind == 'f' || ref.kind == 'v' || ref.kind == 'P' || ref.kind == 'F' || ref.kind == 'V' || ref.kind == 'S')
    return ref;
  if (STUDY_KINDS.find(ref.kind) == std::string::npos) return ref;
  std::size_t plus = key.find('+');
  if (plus == std::string::npos) {
    ref.studyKey = "s" + key.substr(1);
  } else {
    ref.studyKey = "s" + key.substr(1, plus - 1);
    ref.detail = key.substr(plus + 1);
    ref.number = static_cast<int>(Val(ref.detail));
  }
  return ref;
}

}  // namespace kestrow
