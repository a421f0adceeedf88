#include "regression/RegressForm.h"

#include <algorithm>
#include <cstring>

#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Study.h"
#include "core/Ui.h"
#include "regression/Regress.h"
#include "regression/TermGrid.h"

namespace kestrow {

namespace {

const char* MODEL_CAPTIONS[] = {" Linear", " Interactions", " Quadratic + Interactions", " Cubic"};

bool Holds(const std::string& sTerm, int factor) {
  for (int f : TermFactors(sTerm))
    if (f == factor) return true;
  return false;
}

bool IsProduct(const std::string& sTerm) { return sTerm.find(',') != std::string::npos; }

}  // namespace

RegressForm::RegressForm(Study& study, const Statistics& stats) : study_(study) {
  rvList = FillRVList(study, stats, 7);
  rvIndex = ChosenRV(rvList, study.REGRESS_sRVkey);
  if (!study.REGRESS_sRVkey.empty()) study.ConfigureRV(study.REGRESS_sRVkey);
  sdOffered = study.iReps >= 2;
  optVar = sdOffered && (study.REGRESS_iFlag & REGRESS_SD) ? 1 : 0;
  chkCoding = (study.REGRESS_iFlag & REGRESS_CODED) != 0;
  optModel = std::clamp<int>(study.REGRESS_iModelType, 0, 3);
  FillGrid(optModel);
  // The stored model's terms are ticked; with none stored, every term.
  if (!study.REGRESS_Rterms.Empty()) {
    for (Row& r : rows) {
      r.checked = r.sTerm == "0";
      for (int i = 1; i <= study.REGRESS_Rterms.Count(); ++i) r.checked = r.checked || study.REGRESS_Rterms(i).sTerm == r.sTerm;
    }
  }
  before_ = Snapshot();
}

void RegressForm::FillGrid(int model) {
  rows.clear();
  for (const TermEntry& e : RegressionTerms(study_, model)) rows.push_back(Row{e.sText, e.sTerm, e.iLast, true, "", ""});
}

std::string RegressForm::Snapshot() const {
  std::string s = std::to_string(rvIndex) + "|" + std::to_string(optVar) + (chkCoding ? "1" : "0") + std::to_string(optModel) + "|";
  for (const Row& r : rows) s += r.checked ? "1" : "0";
  return s;
}

bool RegressForm::Edited() const { return Snapshot() != before_; }

void RegressForm::ClearLabels() {
  lblEquation.clear();
  lblRsquared.clear();
  lblMSE.clear();
  for (Row& r : rows) r.coefficient.clear(), r.significance.clear();
  computed_ = false;
}

void RegressForm::optModel_Click(int model) {
  if (model < 0 || model > 3 || model == optModel) return;
  optModel = model;
  FillGrid(model);
  ClearLabels();
}

void RegressForm::Tick(std::size_t row, bool checked) {
  if (row >= rows.size() || rows[row].sTerm == "0" || rows[row].checked == checked) return;
  rows[row].checked = checked;
  const std::string& term = rows[row].sTerm;
  if (checked && IsProduct(term)) {
    for (int f : TermFactors(term))
      for (Row& r : rows)
        if (r.sTerm == std::to_string(f)) r.checked = true;
  } else if (!checked && !IsProduct(term)) {
    const int f = static_cast<int>(Val(term));
    for (Row& r : rows)
      if (Holds(r.sTerm, f)) r.checked = false;
  }
  ClearLabels();
}

bool RegressForm::Vet(bool keep, std::string& message) {
  message.clear();
  if (rvIndex < 0 || rvIndex >= static_cast<int>(rvList.size())) {
    message = GetText("REGerr1");
    return false;
  }
  msRVkey_ = rvList[static_cast<std::size_t>(rvIndex)].key;
  miFlag_ = (sdOffered && optVar == 1 ? REGRESS_SD : 0) | (chkCoding ? REGRESS_CODED : 0);
  miModel_ = optModel;
  if (keep) return true;
  working_.clear();
  for (Row& r : rows) {
    if (!r.checked) continue;
    Rterm t;
    InitRterm(t);
    t.sTerm = r.sTerm;
    if (!IsProduct(r.sTerm) && r.sTerm != "0") t.fValue = FREE_AXIS;
    working_.push_back(t);
    r.significance.clear();
  }
  if (working_.size() < 2) {
    message = GetText("REGerr2");
    return false;
  }
  return true;
}

// The fit of the working terms; the coefficient and p value of each ticked
// row, the equation, R-squared and the mean square error in the labels.
bool RegressForm::ComputeRegression() {
  Regress fit;
  fit.Init(study_);
  fit.SetFlag(miFlag_);
  fit.ZapTerms();
  for (Rterm& t : working_) fit.AddTermRef(t);
  if (!fit.Compute(msRVkey_)) {
    ClearLabels();
    return false;
  }
  int t = 0;
  for (Row& r : rows) {
    if (!r.checked) continue;
    ++t;
    r.coefficient = FormatNumSF(fit.Term(t).fBeta);
    r.significance = FormatDecimals(3, fit.GetStat(t, 2));
  }
  lblEquation = fit.GetRegressionEquation();
  lblMSE = FormatDecimals(3, fit.fMSE);
  lblRsquared = FormatDecimals(3, fit.fRSquared);
  computed_ = true;
  return true;
}

bool RegressForm::cmdRegress_Click() {
  std::string message;
  if (!Vet(false, message)) {
    ErrorBox(message);
    return false;
  }
  return ComputeRegression();
}

bool RegressForm::VetForSearch() {
  std::string message;
  if (Vet(true, message)) return true;
  ErrorBox(message);
  return false;
}

std::vector<std::pair<std::string, std::string>> RegressForm::TermGrid() const {
  std::vector<std::pair<std::string, std::string>> grid;
  for (const Row& r : rows) grid.emplace_back(r.text, r.sTerm);
  return grid;
}

std::string RegressForm::ModelName() const {
  std::string caption = MODEL_CAPTIONS[optModel];
  FormCaption("frmRegress", "optModel", optModel, caption);
  return Trim(caption);
}

void RegressForm::CopyBack(std::uint32_t mask) {
  std::uint32_t bit = 1;
  for (std::size_t r = 1; r < rows.size() && bit != 0; ++r, bit <<= 1) rows[r].checked = (mask & bit) != 0;
  ClearLabels();
  cmdRegress_Click();
}

FormOutcome RegressForm::OK(std::string& message) {
  if (!Vet(false, message)) return FormOutcome::Refused;
  if (!ComputeRegression()) return FormOutcome::Refused;  // the fit has said why
  const int kept = study_.REGRESS_iFlag & REGRESS_STUDENTISED;  // the residual charts' own choice
  bool same = msRVkey_ == study_.REGRESS_sRVkey && miFlag_ == (study_.REGRESS_iFlag & ~REGRESS_STUDENTISED) &&
              static_cast<int>(working_.size()) == study_.REGRESS_Rterms.Count();
  for (std::size_t i = 0; same && i < working_.size(); ++i)
    same = working_[i].sTerm == study_.REGRESS_Rterms(static_cast<int>(i) + 1).sTerm;
  bool sameBetas = same;
  for (std::size_t i = 0; sameBetas && i < working_.size(); ++i) {
    float a = working_[i].fBeta, b = study_.REGRESS_Rterms(static_cast<int>(i) + 1).fBeta;
    sameBetas = std::memcmp(&a, &b, sizeof a) == 0;
  }
  stored = !sameBetas || miModel_ != study_.REGRESS_iModelType;
  if (!same) {
    // What rests on the former model goes with it: the charts of its
    // residuals and the factors held on its surfaces.
    study_.REGRESS_RES_sCharts.clear();
    study_.CONTOUR_KeyFactor.clear();
    study_.CONTOUR_KeyValues.clear();
  }
  study_.REGRESS_iFlag = static_cast<std::int16_t>(miFlag_ | kept);
  study_.REGRESS_iModelType = static_cast<std::int16_t>(miModel_);
  study_.REGRESS_sRVkey = msRVkey_;
  study_.REGRESS_Rterms.Clear();
  for (const Rterm& t : working_) study_.REGRESS_Rterms.Add(t);
  return FormOutcome::Accepted;
}

}  // namespace kestrow
