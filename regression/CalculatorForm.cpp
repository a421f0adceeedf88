#include "regression/CalculatorForm.h"

#include <chrono>
#include <cmath>
#include <random>

#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Settings.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

namespace {

constexpr float MAXIMISE = 1e9f, MINIMISE = -1e9f;

bool IsNumber(const std::string& text, float& out) {
  std::string t = text;
  out = ParseTarget(t);
  return out != MISSING_VALUE && out != BAD_NUMBER && out != MAXIMISE && out != MINIMISE;
}

}  // namespace

CalculatorForm::CalculatorForm(Study& study) : study_(study) {
  // The model is read through copies of its terms: the calculator never
  // changes it. Terms stored without their coefficients are fitted first.
  fit_.Init(study);
  fit_.ZapTerms();
  bool fitted = true;
  for (int i = 1; i <= study.REGRESS_Rterms.Count(); ++i) {
    fit_.AddTerm(study.REGRESS_Rterms(i));
    fitted = fitted && study.REGRESS_Rterms(i).fBeta != MISSING_VALUE;
  }
  coded_ = (study.REGRESS_iFlag & REGRESS_CODED) != 0;
  const std::string& rv = study.REGRESS_sRVkey;
  const bool sd = (study.REGRESS_iFlag & REGRESS_SD) != 0;
  if (!rv.empty()) study.ConfigureRV(rv);
  const std::string name = rv.empty() ? std::string() : study.GetPRVDisplayAbbr(rv) + (sd ? " (SD)" : "");
  caption = SubstituteCopy(GetText("CALcap"), name);
  lblTarget = "Target for " + name;
  if (rv.empty() || fit_.NumTerms() < 2 || (!fitted && !fit_.Compute(rv))) {
    lblEquation = GetText("CALmsg1");
    return;
  }
  lblEquation = fit_.GetRegressionEquation();
  // The equation shown is the stored one; a model in actual units is worked
  // out through its coded stand-in, which keeps the digits far from zero.
  if (fit_.StandInCoded()) coded_ = true;
  txtTarget = sd ? std::string() : TargetToText(study.GetPRVTarget(rv));
  // The model's factors in the order of their terms: "name,number,..."
  std::string list = fit_.GetFactorString();
  while (!list.empty()) {
    Factor f;
    f.sName = PopToken(list);
    f.iFactor = static_cast<std::int16_t>(Val(PopToken(list)));
    if (f.iFactor < 1 || f.iFactor > MAX_EVAL_FACTORS) continue;
    f.sKey = study.GetFactorKey(f.iFactor);
    factors_.push_back(f);
  }
  values.assign(factors_.size(), "");
}

std::string CalculatorForm::RangeText(std::size_t i) const {
  if (i >= factors_.size()) return "";
  const std::string& key = factors_[i].sKey;
  return ShortestText(study_.FGetMinLevel(key)) + " - " + ShortestText(study_.FGetMaxLevel(key));
}

std::vector<std::string> CalculatorForm::Relations() { return {GetText("ISEQ"), GetText("ISLT"), GetText("ISGT")}; }

bool CalculatorForm::cmdEvaluate_Click() {
  errorRow = -1;
  table_.fill(MISSING_VALUE);
  for (std::size_t i = 0; i < factors_.size(); ++i) {
    float v = 0;
    if (i >= values.size() || !IsNumber(values[i], v)) {
      errorRow = static_cast<int>(i);
      ErrorBox(GetText("CALerr1"));
      return false;
    }
    table_[static_cast<std::size_t>(factors_[i].iFactor)] = coded_ ? study_.FValueToCode(factors_[i].sKey, v) : v;
  }
  const float z = fit_.EvaluateRegressionEquation(table_);
  lblValue = z <= BAD_NUMBER ? " Error!" : study_.GetRVname2() + " = " + FormatNumSF(z);
  return true;
}

// The limits of this search: the factors' level ranges, narrowed by the
// restraints.
bool CalculatorForm::SetLimits() {
  errorRow = -1;
  for (Factor& f : factors_) {
    // The deviation option widens by the maximum less the maximum: it is
    // offered and changes nothing.
    const float w = cmbRange == ALLOW_DEVIATION ? static_cast<float>(study_.FGetMaxLevel(f.sKey) - study_.FGetMaxLevel(f.sKey)) : 0;
    f.fMin = static_cast<float>(study_.FGetMinLevel(f.sKey)) - w / 2;
    f.fMax = static_cast<float>(study_.FGetMaxLevel(f.sKey)) + w / 2;
    f.fBest = 0;
  }
  const std::vector<std::string> relations = Relations();
  for (std::size_t r = 0; r < restraints.size(); ++r) {
    const Restraint& row = restraints[r];
    if (Trim(row.factor).empty() || Trim(row.value).empty()) continue;
    Factor* f = nullptr;
    for (Factor& candidate : factors_)
      if (candidate.sName == row.factor) f = &candidate;
    if (!f) continue;
    float v = 0;
    errorRow = static_cast<int>(r);
    if (!IsNumber(row.value, v)) {
      ErrorBox(GetText("CALerr3"));
      return false;
    }
    if (row.relation == relations[0]) {
      if (v < f->fMin || v > f->fMax) return OutOfRange();
      f->fMin = f->fMax = v;
    } else if (row.relation == relations[1]) {
      if (v < f->fMin) return OutOfRange();
      if (v <= f->fMax) f->fMax = v;
    } else if (row.relation == relations[2]) {
      if (v > f->fMax) return OutOfRange();
      if (v >= f->fMin) f->fMin = v;
    }
  }
  errorRow = -1;
  return true;
}

bool CalculatorForm::OutOfRange() {
  ErrorBox(GetText("CALerr4"));
  return false;
}

bool CalculatorForm::cmdSolve_Click() {
  if (running_ || factors_.empty()) return false;
  std::string target = txtTarget;
  fTarget_ = ParseTarget(target);
  if (fTarget_ == BAD_NUMBER || fTarget_ == MISSING_VALUE) {
    errorRow = -1;
    ErrorBox(GetText("CALerr2"));
    return false;
  }
  if (!SetLimits()) return false;
  table_.fill(MISSING_VALUE);
  for (Factor& f : factors_) {
    f.fSlope = 1, f.fOffset = 0;
    if (coded_) CodingLine(study_, f.sKey, f.fSlope, f.fOffset);
  }
  running_ = true;
  evaluations_ = iRunCount_ = 0;
  lblSolution = "working...";
  look_.Reset();
  if (cmbAlgorithm == MONTE_CARLO) {
    MonteCarlo();
  } else {
    int n = gSettings.OptNetSize;
    if (n < 5 || n > 50) n = Settings().OptNetSize;
    TwoPass(n);
  }
  running_ = false;
  ShowSolution();
  return true;
}

// The point of fNow: evaluated, and kept when it is better than the best so
// far; a tie keeps the earlier point.
void CalculatorForm::Better() {
  for (const Factor& f : factors_)
    table_[static_cast<std::size_t>(f.iFactor)] = static_cast<float>(f.fSlope * f.fNow + f.fOffset);
  const float z = fit_.EvaluateRegressionEquation(table_);
  ++evaluations_;
  bool better;
  if (fTarget_ == MAXIMISE) {
    better = z > fBestValue_;
  } else if (fTarget_ == MINIMISE) {
    better = z < fBestValue_;
  } else {
    better = std::fabs(z - fTarget_) < fBestGap_;
  }
  if (!better) return;
  fBestValue_ = z;
  fBestGap_ = std::fabs(z - fTarget_);
  for (Factor& f : factors_) f.fBest = f.fNow;
}

// The window's events every few milliseconds; false when the search is to end.
bool CalculatorForm::Look() {
  if (!look_.Due()) return running_;
  CurrentUi().DoEvents();
  if (keepGoing && !keepGoing()) running_ = false;
  return running_;
}

// An ordered grid of cell centres over the limits, then a finer grid of cell
// corners round the best cell; the factors walk like an odometer, the first
// fastest.
void CalculatorForm::TwoPass(int n) {
  fBestGap_ = 1e9f;
  fBestValue_ = -fTarget_;
  for (Factor& f : factors_) {
    f.fStep = (f.fMax - f.fMin) / static_cast<float>(n);
    f.fNow = f.fMin + f.fStep / 2;
  }
  for (;;) {
    Better();
    if (!Look()) return;
    std::size_t k = 0;
    for (; k < factors_.size(); ++k) {
      Factor& f = factors_[k];
      const float was = f.fNow;
      f.fNow += f.fStep;
      // A step too small to move the value (a narrow range far from zero)
      // ends the factor's walk as the range's end does.
      if (f.fNow < f.fMax && f.fNow != was) break;
      f.fNow = f.fMin + f.fStep / 2;
    }
    if (k == factors_.size()) break;
  }
  for (Factor& f : factors_) {
    f.fMin = f.fBest - f.fStep / 2;
    f.fMax = f.fBest + f.fStep / 2;
    f.fStep = (f.fMax - f.fMin) / static_cast<float>(n);
    f.iCount = 0;
    f.fNow = f.fMin;
  }
  fBestGap_ = 1e9f;
  fBestValue_ = -fTarget_;
  for (;;) {
    Better();
    if (!Look()) return;
    std::size_t k = 0;
    for (; k < factors_.size(); ++k) {
      Factor& f = factors_[k];
      if (++f.iCount <= n) {
        f.fNow = f.fMin + static_cast<float>(f.iCount) * f.fStep;
        break;
      }
      f.iCount = 0;
      f.fNow = f.fMin;
    }
    if (k == factors_.size()) break;
  }
}

// Points drawn at random over the limits until Stop; the label tells of each
// improvement.
void CalculatorForm::MonteCarlo() {
  fBestGap_ = 1e9f;
  fBestValue_ = -fTarget_;
  for (Factor& f : factors_) f.fStep = f.fMax - f.fMin;
  std::mt19937 random(static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count()));
  std::uniform_real_distribution<float> uniform(0.0f, 1.0f);
  for (;;) {
    ++iRunCount_;
    for (Factor& f : factors_) {
      float r = uniform(random);
      if (r >= 1.0f) r = 0;  // [0, 1) even where the float rounds up
      f.fNow = r * f.fStep + f.fMin;
    }
    const float before = fBestValue_;
    Better();
    if (fBestValue_ != before)
      lblSolution = FormatNumSF(fBestValue_) + "  (run = " + std::to_string(iRunCount_) + ").  Still working...";
    if (!Look()) return;
  }
}

void CalculatorForm::ShowSolution() {
  std::string text = SubstituteCopy(GetText("CALmsg3"), FormatNumSF(fBestValue_)) + " ";
  for (const Factor& f : factors_) text += f.sName + " = " + FormatNumSF(f.fBest) + ", ";
  lblSolution = text.substr(0, text.size() - 2);
}

std::vector<std::string> CalculatorForm::LogLines(int tab) const {
  std::vector<std::string> lines = {GetText("RegEq"), lblEquation, ""};
  if (tab == 0) {
    lines.push_back(GetText("CALlog2"));
    for (std::size_t i = 0; i < factors_.size(); ++i)
      lines.push_back(factors_[i].sName + " = " + (i < values.size() ? values[i] : std::string()));
    lines.push_back(lblValue);
    return lines;
  }
  lines.push_back(SubstituteCopy(GetText("CALlog3"), txtTarget));
  lines.push_back(GetText(cmbAlgorithm == MONTE_CARLO ? "CALlog5" : "CALlog4"));
  lines.push_back(GetText("CALlog6"));
  std::size_t shown = 0;
  for (const Restraint& r : restraints) {
    if (Trim(r.factor).empty()) continue;
    lines.push_back(r.factor + " " + r.relation + " " + r.value);
    ++shown;
  }
  if (shown == 0) lines.push_back("None");
  lines.push_back("");
  lines.push_back(lblSolution);
  return lines;
}

}  // namespace kestrow
