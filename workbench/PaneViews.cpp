#include "workbench/PaneViews.h"

#include "core/Language.h"
#include "core/Problem.h"
#include "core/Text.h"

namespace kestrow {

namespace {

std::string Join(const std::vector<std::string>& items) {
  std::string out;
  for (const std::string& s : items) out += (out.empty() ? "" : ", ") + s;
  return out;
}

PaneView FactorView(const Factor& f, int number, const std::vector<std::string>& usedBy) {
  PaneView v;
  v.title = GetText("Factor");
  std::vector<std::string> levels;
  for (const Level& l : f.Levels) levels.push_back(l.sName);
  v.rows = {{GetText("Name"), f.sName},
            {GetText("Abbrev"), f.sAbbr},
            {GetText("Desc"), f.sDesc},
            {GetText("levels"), Join(levels)},
            {GetText("NoiseF"), f.sIsNuisance()},
            {GetText("FacNum"), number > 0 ? std::to_string(number) : ""},
            {GetText("Used"), Join(usedBy)}};
  return v;
}

PaneView RespVarView(const RespVar& rv) {
  PaneView v;
  v.title = GetText("RespVar");
  v.rows = {{GetText("Name"), rv.sName},
            {GetText("Abbrev"), rv.sAbbr},
            {GetText("Desc"), rv.sDesc},
            {GetText("Units"), rv.sUnits},
            {GetText("Target"), TargetToText(rv.fTarget)}};
  return v;
}

}  // namespace

PaneView ShowProblem(const Problem& p) {
  PaneView v;
  v.title = p.sName;
  v.rows = {{GetText("Name"), p.sName}, {GetText("Desc"), p.sDesc}};
  return v;
}

PaneView ShowFactor(const Problem& p, const std::string& key) {
  const Factor* f = p.Factors.Find(key);
  if (!f) return {};
  std::vector<std::string> used;
  for (const Study& s : p.Studies)
    for (const Item& item : s.Factors)
      if (item.sKey == key) used.push_back(s.sName);
  return FactorView(*f, p.Factors.IndexOf(key), used);
}

PaneView ShowRespVar(const Problem& p, const std::string& key) {
  const RespVar* rv = p.RespVars.Find(key);
  return rv ? RespVarView(*rv) : PaneView{};
}

PaneView ShowStudyFactor(const Study& s, const std::string& key) {
  const Factor* f = s.ResolveFactor(key);
  if (!f) return {};
  return FactorView(*f, s.GetFactorNum(key), {s.sName});
}

PaneView ShowStudyRespVar(const Study& s, const std::string& key) {
  const RespVar* rv = s.ResolveRV(key);
  return rv ? RespVarView(*rv) : PaneView{};
}

PaneView ShowStudy(const Study& s) {
  PaneView v;
  v.title = GetText("Study");
  std::vector<std::string> factors, rvs, xforms;
  for (int i = 1; i <= s.Factors.Count(); ++i) factors.push_back(s.GetFactorName(i));
  for (const StudyRespVar& srv : s.StudyRespVars) {
    rvs.push_back(s.GetPRVName(srv.sKey));
    if (srv.iType != 0) xforms.push_back(s.TransformText(srv));
  }
  v.rows = {{GetText("Name"), s.sName + (s.IsLocked() ? " [" + GetText("Locked") + "]" : "")},
            {GetText("Desc"), s.sDesc},
            {GetText("Reps"), std::to_string(s.iReps)},
            {GetText("DatOrder"), s.sSequence()},
            {GetText("Design"), s.sDesignName},
            {GetText("Factors"), Join(factors)},
            {GetText("RVs"), Join(rvs)},
            {GetText("Xforms"), xforms.empty() ? "None" : Join(xforms)}};
  return v;
}

}  // namespace kestrow
