#include "regression/ContourForms.h"

#include "core/Factor.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"
#include "data/Filter.h"
#include "regression/Regress.h"

namespace kestrow {

namespace {

// A value as the dialogs show it: the held value, else the middle of the
// factor's range.
std::string HeldText(const Study& study, int factor, float fValue) {
  if (fValue > FREE_AXIS) return ShortestText(fValue);
  const std::string key = study.GetFactorKey(factor);
  return ShortestText(static_cast<float>((study.FGetMinLevel(key) + study.FGetMaxLevel(key)) / 2));
}

float HeldValue(const Study& study, int factor) {
  const std::string key = std::to_string(factor);
  for (const Rterm& t : study.REGRESS_Rterms)
    if (t.sTerm == key) return t.fValue;
  return MISSING_VALUE;
}

}  // namespace

std::vector<int> ModelFactors(const Study& study) {
  std::vector<int> out;
  for (const Rterm& t : study.REGRESS_Rterms) {
    if (t.sTerm == "0" || t.sTerm.find(',') != std::string::npos) continue;
    int f = static_cast<int>(Val(t.sTerm));
    if (f >= 1 && f <= study.Factors.Count()) out.push_back(f);
  }
  return out;
}

Contour2Form::Contour2Form(Study& study, const Statistics&) : study_(study) {
  chkRainbow = (study.CONTOUR_flags & CONTOUR_RAINBOW) != 0;
  chkTgtContour = (study.CONTOUR_flags & CONTOUR_TARGET) != 0;
  sFilter = study.CONTOUR_sFilter;
  before_ = Snapshot();
}

std::string Contour2Form::Caption() const {
  return SubstituteCopy(GetText("CONcap"), study_.GetPRVDisplayName(study_.REGRESS_sRVkey));
}

std::string Contour2Form::img1() const {
  return std::string(chkRainbow ? "conFilled" : "conEmpty") + (chkTgtContour ? "Tgt" : "");
}

std::string Contour2Form::lblFilter() const {
  std::string text, rest = sFilter;
  while (!rest.empty()) {
    std::string token = Trim(PopToken(rest));
    if (!token.empty()) text += (text.empty() ? "" : ", ") + FilterToText(study_, token);
  }
  return text;
}

std::string Contour2Form::Snapshot() const {
  return std::string(chkRainbow ? "1" : "0") + (chkTgtContour ? "1" : "0") + "|" + sFilter;
}

bool Contour2Form::Edited() const { return Snapshot() != before_; }

FormOutcome Contour2Form::OK(std::string& message) {
  message.clear();
  if (Trim(sFilter).empty()) {
    message = GetText("CONerr1");
    return FormOutcome::Refused;
  }
  const auto flags = static_cast<std::int16_t>((chkRainbow ? CONTOUR_RAINBOW : 0) | (chkTgtContour ? CONTOUR_TARGET : 0));
  std::vector<int> factors = ModelFactors(study_);
  if (factors.size() != 2) {
    message = "The model has " + std::to_string(factors.size()) + " factors: choose the two to plot and the values of the others";
    return FormOutcome::Refused;
  }
  // The model's two factors, in the order the plot had them.
  std::string f1 = study_.GetFactorKey(factors[0]), f2 = study_.GetFactorKey(factors[1]);
  if (study_.sRSM_f1Key == f2 && study_.sRSM_f2Key == f1) std::swap(f1, f2);
  Regress fit;
  fit.Init(study_);
  bool changed = flags != study_.CONTOUR_flags || sFilter != study_.CONTOUR_sFilter || f1 != study_.sRSM_f1Key ||
                 f2 != study_.sRSM_f2Key || !study_.CONTOUR_KeyFactor.empty() || !study_.CONTOUR_KeyValues.empty();
  for (int f : factors) changed = fit.SetmRTerm(f, FREE_AXIS) != FREE_AXIS || changed;
  study_.CONTOUR_flags = flags;
  study_.CONTOUR_sFilter = sFilter;
  study_.CONTOUR_KeyFactor.clear();
  study_.CONTOUR_KeyValues.clear();
  study_.sRSM_f1Key = f1;
  study_.sRSM_f2Key = f2;
  stored = changed;
  return FormOutcome::Accepted;
}

MultiConForm::MultiConForm(Study& study, const Statistics&) : study_(study) {
  chkRainbow = (study.CONTOUR_flags & CONTOUR_RAINBOW) != 0;
  chkTgtContour = (study.CONTOUR_flags & CONTOUR_TARGET) != 0;
  // The key's values, from the pairs of label and value.
  std::vector<std::string> keyValues;
  for (std::string rest = study.CONTOUR_KeyValues; !rest.empty();) {
    PopBar(rest);
    std::string v = Trim(PopBar(rest));
    if (!v.empty() && keyValues.size() < VALUE_COLUMNS) keyValues.push_back(v);
  }
  for (int f : ModelFactors(study)) {
    Row r;
    r.factor = f;
    r.name = study.GetFactorName(f);
    const std::string key = study.GetFactorKey(f);
    r.plotted = key == study.sRSM_f1Key || key == study.sRSM_f2Key;
    r.key = !study.CONTOUR_KeyFactor.empty() && key == study.CONTOUR_KeyFactor;
    if (r.key && !keyValues.empty()) {
      for (std::size_t i = 0; i < keyValues.size(); ++i) r.values[i] = keyValues[i];
    } else if (!r.plotted) {
      r.values[0] = HeldText(study, f, HeldValue(study, f));
    }
    rows.push_back(r);
  }
  before_ = Snapshot();
}

void MultiConForm::SetKey(int row, bool on) {
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) rows[static_cast<std::size_t>(i)].key = on && i == row;
}

std::string MultiConForm::Snapshot() const {
  std::string s = std::string(chkRainbow ? "1" : "0") + (chkTgtContour ? "1" : "0");
  for (const Row& r : rows) {
    s += std::string("|") + (r.plotted ? "1" : "0") + (r.key ? "1" : "0");
    for (const std::string& v : r.values) s += ";" + v;
  }
  return s;
}

bool MultiConForm::Edited() const { return Snapshot() != before_; }

FormOutcome MultiConForm::OK(std::string& message) {
  message.clear();
  int plotted = 0, keys = 0;
  for (const Row& r : rows) {
    if ((r.plotted || r.key) && study_.ResolveFactor(study_.GetFactorKey(r.factor)) &&
        !study_.ResolveFactor(study_.GetFactorKey(r.factor))->IsNumeric()) {
      message = GetText("MCONerr1");
      return FormOutcome::Refused;
    }
    plotted += r.plotted ? 1 : 0;
    keys += r.key ? 1 : 0;
  }
  if (plotted != 2) {
    message = GetText("MCONerr2");
    return FormOutcome::Refused;
  }
  if (keys > 1) {
    message = "Tick one key factor at most";
    return FormOutcome::Refused;
  }
  // Every factor not plotted needs its value; the key at least one, and
  // each of its values a number.
  for (const Row& r : rows) {
    if (r.plotted && r.key) {
      message = "A plotted factor cannot be the key of a series: " + r.name;
      return FormOutcome::Refused;
    }
    if (r.plotted) continue;
    int given = 0;
    for (std::size_t i = 0; i < r.values.size(); ++i) {
      const std::string v = Trim(r.values[i]);
      if (!r.key && i > 0) break;  // a held factor has one value
      if (v.empty() && r.key) continue;
      if (!IsNumeric(v)) {
        message = GetText("MCONerr3");
        return FormOutcome::Refused;
      }
      ++given;
    }
    if (given == 0) {
      message = GetText("MCONerr3");
      return FormOutcome::Refused;
    }
  }

  const std::string before = study_.sRSM_f1Key + "|" + study_.sRSM_f2Key + "|" + study_.CONTOUR_KeyFactor + "|" +
                             study_.CONTOUR_KeyValues + "|" + std::to_string(study_.CONTOUR_flags);
  Regress fit;
  fit.Init(study_);
  bool changed = false;
  std::string f1, f2, keyFactor, keyValues;
  for (const Row& r : rows) {
    const std::string key = study_.GetFactorKey(r.factor);
    float value = FREE_AXIS;
    if (r.plotted) {
      (f1.empty() ? f1 : f2) = key;
    } else if (r.key) {
      keyFactor = key;
      for (const std::string& text : r.values) {
        const std::string v = Trim(text);
        if (v.empty()) continue;
        if (value == FREE_AXIS) value = ParseFloat(v);
        keyValues += (keyValues.empty() ? "" : "|") + r.name + " = " + ShortestText(ParseFloat(v)) + "|" + ShortestText(ParseFloat(v));
      }
    } else {
      value = ParseFloat(Trim(r.values[0]));
    }
    changed = fit.SetmRTerm(r.factor, value) != value || changed;
  }
  study_.sRSM_f1Key = f1;
  study_.sRSM_f2Key = f2;
  study_.CONTOUR_KeyFactor = keyFactor;
  study_.CONTOUR_KeyValues = keyValues;
  study_.CONTOUR_flags = static_cast<std::int16_t>((chkRainbow ? CONTOUR_RAINBOW : 0) | (chkTgtContour ? CONTOUR_TARGET : 0));
  const std::string after = study_.sRSM_f1Key + "|" + study_.sRSM_f2Key + "|" + study_.CONTOUR_KeyFactor + "|" +
                            study_.CONTOUR_KeyValues + "|" + std::to_string(study_.CONTOUR_flags);
  stored = changed || before != after;
  return FormOutcome::Accepted;
}

}  // namespace kestrow
