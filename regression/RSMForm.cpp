#include "regression/RSMForm.h"

#include <algorithm>

#include "charts/Chart.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"
#include "regression/ContourForms.h"
#include "regression/ContourPlot.h"
#include "regression/Regress.h"
#include "regression/ResponseSurface.h"

namespace kestrow {

RSMForm::RSMForm(Study& study, const Statistics&) : study_(study) {
  // The preview draws the model: one read from a file is fitted first.
  EnsureCoefficients(study);
  sldAlpha = std::clamp<int>(study.REGRESS_RSM_iAlpha, ANGLE_MIN, ANGLE_MAX);
  sldBeta = std::clamp<int>(study.REGRESS_RSM_iBeta, ANGLE_MIN, ANGLE_MAX);
  sldNetsize = std::clamp<int>(study.REGRESS_RSM_iNetSize, NET_MIN, NET_MAX);
  chkShade = (study.REGRESS_RSM_flags & SHADE) != 0;
  chkFilled = (study.REGRESS_RSM_flags & FILLED) != 0;
  chkRainbow = (study.REGRESS_RSM_flags & RAINBOW) != 0;
  chkHideNet = (study.REGRESS_RSM_flags & HIDE_NET) != 0;
  const std::vector<int> factors = ModelFactors(study);
  bool stored = false;
  for (int f : factors) {
    const std::string key = study.GetFactorKey(f);
    stored = stored || key == study.sRSM_f1Key || key == study.sRSM_f2Key;
  }
  int ticked = 0;
  for (int f : factors) {
    Row r;
    r.factor = f;
    r.name = study.GetFactorName(f);
    const std::string key = study.GetFactorKey(f);
    // The factors of the last plot; the first two of a model never plotted.
    r.ticked = stored ? key == study.sRSM_f1Key || key == study.sRSM_f2Key : ticked < 2;
    ticked += r.ticked ? 1 : 0;
    float held = MISSING_VALUE;
    for (const Rterm& t : study.REGRESS_Rterms)
      if (t.sTerm == std::to_string(f)) held = t.fValue;
    r.value = held > FREE_AXIS ? ShortestText(held)
                               : ShortestText(static_cast<float>((study.FGetMinLevel(key) + study.FGetMaxLevel(key)) / 2));
    grdSelFac.push_back(r);
  }
  before_ = Snapshot();
}

int RSMForm::Flags() const {
  return (chkShade ? SHADE : 0) | (chkFilled ? FILLED : 0) | (chkRainbow ? RAINBOW : 0) | (chkHideNet ? HIDE_NET : 0);
}

std::string RSMForm::Snapshot() const {
  std::string s = std::to_string(sldAlpha) + "|" + std::to_string(sldBeta) + "|" + std::to_string(sldNetsize) + "|" +
                  std::to_string(Flags());
  for (const Row& r : grdSelFac) s += std::string("|") + (r.ticked ? "1" : "0") + r.value;
  return s;
}

bool RSMForm::Edited() const { return Snapshot() != before_; }

bool RSMForm::Apply(Study& study, std::string& message) const {
  int ticked = 0;
  for (const Row& r : grdSelFac) ticked += r.ticked ? 1 : 0;
  if (ticked != 2) {
    message = GetText("RSMerr1");
    return false;
  }
  for (const Row& r : grdSelFac)
    if (!r.ticked && !IsNumeric(r.value)) {
      message = GetText("RSMerr2");
      return false;
    }
  Regress fit;
  fit.Init(study);
  std::string f1, f2;
  for (const Row& r : grdSelFac) {
    if (r.ticked) (f1.empty() ? f1 : f2) = study.GetFactorKey(r.factor);
    fit.SetmRTerm(r.factor, r.ticked ? FREE_AXIS : ParseFloat(r.value));
  }
  study.sRSM_f1Key = f1;
  study.sRSM_f2Key = f2;
  study.REGRESS_RSM_iAlpha = static_cast<std::int16_t>(std::clamp(sldAlpha, ANGLE_MIN, ANGLE_MAX));
  study.REGRESS_RSM_iBeta = static_cast<std::int16_t>(std::clamp(sldBeta, ANGLE_MIN, ANGLE_MAX));
  study.REGRESS_RSM_iNetSize = static_cast<std::int16_t>(std::clamp(sldNetsize, NET_MIN, NET_MAX));
  study.REGRESS_RSM_flags = static_cast<std::int16_t>(Flags());
  return true;
}

FormOutcome RSMForm::OK(std::string& message) {
  message.clear();
  std::string before = study_.sRSM_f1Key + "|" + study_.sRSM_f2Key + "|" + std::to_string(study_.REGRESS_RSM_iAlpha) + "|" +
                       std::to_string(study_.REGRESS_RSM_iBeta) + "|" + std::to_string(study_.REGRESS_RSM_iNetSize) + "|" +
                       std::to_string(study_.REGRESS_RSM_flags);
  for (const Rterm& t : study_.REGRESS_Rterms) before += "|" + ShortestText(t.fValue);
  // Apply checks everything before it changes anything.
  if (!Apply(study_, message)) return FormOutcome::Refused;
  std::string after = study_.sRSM_f1Key + "|" + study_.sRSM_f2Key + "|" + std::to_string(study_.REGRESS_RSM_iAlpha) + "|" +
                      std::to_string(study_.REGRESS_RSM_iBeta) + "|" + std::to_string(study_.REGRESS_RSM_iNetSize) + "|" +
                      std::to_string(study_.REGRESS_RSM_flags);
  for (const Rterm& t : study_.REGRESS_Rterms) after += "|" + ShortestText(t.fValue);
  stored = before != after;
  return FormOutcome::Accepted;
}

bool RSMForm::Preview(Chart& chart) const {
  Study copy = study_;
  std::string message;
  if (!Apply(copy, message)) return false;
  for (const Rterm& t : copy.REGRESS_Rterms)
    if (t.fBeta == MISSING_VALUE) return false;
  return FillSurfaceChart(copy, chart, true);
}

}  // namespace kestrow
