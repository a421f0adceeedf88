#include "regression/Regress.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "core/Formatters.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"
#include "regression/NormalEquations.h"
#include "stats/tProbability.h"

namespace kestrow {

namespace {

const char* TAG = "ComputeRegression";

}  // namespace

void InitRterm(Rterm& term) {
  term.sTerm.clear();
  term.fBeta = MISSING_VALUE;
  term.fValue = NOT_MAIN_TERM;
}

std::vector<int> TermFactors(const std::string& sTerm) {
  std::vector<int> out;
  std::string rest = sTerm;
  while (!rest.empty()) out.push_back(static_cast<int>(Val(PopToken(rest))));
  return out;
}

void Regress::Init(Study& study) {
  study_ = &study;
  ZapTerms();
  SetFlag(study.REGRESS_iFlag);
  sRVkey_ = study.REGRESS_sRVkey;
  for (int i = 1; i <= study.REGRESS_Rterms.Count(); ++i) AddTermRef(study.REGRESS_Rterms(i));
}

void Regress::AddTerm(const Rterm& term) {
  owned_.push_back(term);
  AddTermRef(owned_.back());
}

void Regress::AddTermRef(Rterm& term) {
  terms_.push_back(&term);
  factors_.push_back(TermFactors(term.sTerm));
}

void Regress::ZapTerms() {
  terms_.clear();
  factors_.clear();
  owned_.clear();
}

// An axial run's value is taken whole: its name is rounded for showing.
double Regress::LevelValue(int factor, int run, bool coded) const {
  double x = study_->GetTreatmentLevelValue(factor, run);
  return coded ? study_->FValueToCode(study_->GetFactorKey(factor), x) : x;
}

void Regress::Prepare(const std::string& ss) {
  sRVkey_ = ss;
  study_->ConfigureRV(ss);
  runStats_.ComputeRV(*study_);
  stats_.assign(terms_.size() + 1, {});
  // The rows: run by run, each replicate with a value, or each run's
  // standard deviation.
  obsRun_.clear();
  obsRep_.clear();
  y_.clear();
  for (int run = 1; run <= study_->iNumRuns; ++run) {
    if (useSD_) {
      float s = runStats_.SampSigRV(run);
      if (s > MISSING_VALUE) {
        obsRun_.push_back(run);
        obsRep_.push_back(0);
        y_.push_back(s);
      }
      continue;
    }
    for (int rep = 1; rep <= study_->iReps; ++rep) {
      float v = study_->GetDataRV(run, rep);
      if (v == MISSING_VALUE) continue;
      obsRun_.push_back(run);
      obsRep_.push_back(rep);
      y_.push_back(v);
    }
  }
  numObs_ = static_cast<std::int16_t>(obsRun_.size());
}

bool Regress::PrepareColumns(const std::string& ss) {
  coded_ = true;
  try {
    Prepare(ss);
    BuildColumns();
    return true;
  } catch (const std::exception& e) {
    if (!quiet_) ReportError(e.what(), TAG);
    return false;
  }
}

bool Regress::Compute(const std::string& ss) {
  const bool wantActual = !coded_;
  coded_ = true;
  bool ok = false;
  try {
    Prepare(ss);
    bool finished = false;
    ok = Pass(wantActual, finished);
    if (ok && !finished) {
      coded_ = false;  // the second pass, in actual units
      ok = Pass(wantActual, finished);
    }
  } catch (const std::exception& e) {
    if (!quiet_) ReportError(e.what(), TAG);
    ok = false;
  }
  coded_ = true;  // a model in actual units leaves the flag set, as the readers expect
  return ok;
}

// The design matrix of the rows: the constant, then each term's product of
// its factors' values at the row's run, coded or actual as the pass is.
void Regress::BuildColumns() {
  const std::size_t p = terms_.size(), n = obsRun_.size();
  x_.assign(p, std::vector<double>(n, 0.0));
  // The factor values of each run, once.
  std::vector<std::vector<double>> value(static_cast<std::size_t>(study_->iNumRuns) + 1);
  for (std::size_t i = 0; i < n; ++i) {
    int run = obsRun_[i];
    std::vector<double>& v = value[static_cast<std::size_t>(run)];
    if (v.empty()) {
      v.assign(static_cast<std::size_t>(study_->Factors.Count()) + 1, 0.0);
      for (int f = 1; f <= study_->Factors.Count(); ++f) v[static_cast<std::size_t>(f)] = LevelValue(f, run, coded_);
    }
    if (p > 0) x_[0][i] = 1;
    for (std::size_t j = 1; j < p; ++j) {
      double product = 1;
      for (int f : factors_[j])
        product = product * (f >= 1 && f < static_cast<int>(v.size()) ? v[static_cast<std::size_t>(f)] : 0.0);
      x_[j][i] = product;
    }
  }
}

// One fit: design matrix, normal equations, coefficients, leverages; on the
// coded pass the statistics. finished tells whether no second pass follows.
//
// In actual units the columns are centred and scaled before the elimination
// and the coefficients brought back after it: factor values of thousands
// beside values of thousandths, and their squares, would otherwise leave the
// normal equations with no digit to spare. The residuals and the sums of
// squares are taken in double precision from the unrounded coefficients, so
// that responses far from zero keep their digits.
bool Regress::Pass(bool wantActual, bool& finished) {
  const std::size_t p = terms_.size(), n = obsRun_.size();
  BuildColumns();
  std::vector<double> centre(p, 0.0), scale(p, 1.0);
  if (!coded_) {
    for (std::size_t j = 1; j < p; ++j) {
      std::vector<double>& x = x_[j];
      double sum = 0;
      for (double v : x) sum += v;
      centre[j] = n > 0 ? sum / static_cast<double>(n) : 0;
      double ss = 0;
      for (double& v : x) {
        v -= centre[j];
        ss += v * v;
      }
      if (ss > 0) {
        scale[j] = std::sqrt(ss);
        for (double& v : x) v /= scale[j];
      }
    }
  }
  std::vector<const double*> columns(p);
  for (std::size_t j = 0; j < p; ++j) columns[j] = x_[j].data();
  std::vector<double> xtx(p * p), xty(p), diagonal(p);
  CrossProducts(columns.data(), static_cast<int>(p), y_.data(), static_cast<int>(n), xtx.data(), xty.data());
  for (std::size_t a = 0; a < p; ++a) diagonal[a] = xtx[a * p + a];
  std::vector<int> all(p);
  for (std::size_t k = 0; k < p; ++k) all[k] = static_cast<int>(k);
  std::vector<double> work = xtx, next(p * p);
  for (std::size_t k = 0; k < p; ++k) {
    PivotStep(work.data(), static_cast<int>(p), all.data(), static_cast<int>(p), static_cast<int>(k), next.data());
    work.swap(next);
  }
  inverse_.assign(p, std::vector<double>(p, 0.0));
  for (std::size_t a = 0; a < p; ++a)
    for (std::size_t b = 0; b < p; ++b) inverse_[a][b] = work[a * p + b];
  beta_.assign(p, 0.0);
  Solve(work.data(), static_cast<int>(p), static_cast<int>(p), xty.data(), beta_.data());
  std::vector<double> fitted(beta_);  // the coefficients of the columns as they stand
  if (!coded_ && p > 0) {
    for (std::size_t j = 1; j < p; ++j) {
      beta_[j] = fitted[j] / scale[j];
      beta_[0] -= beta_[j] * centre[j];
    }
  }
  for (std::size_t j = 0; j < p; ++j) {
    terms_[j]->fBeta = static_cast<float>(beta_[j]);
    stats_[j + 1][1] = static_cast<float>(beta_[j]);
  }
  leverage_.assign(n, 0.0f);
  for (std::size_t i = 0; i < n; ++i) {
    double h = 0;
    for (std::size_t j = 0; j < p; ++j) {
      double xinv = 0;
      for (std::size_t k = 0; k < p; ++k) xinv = xinv + x_[k][i] * inverse_[j][k];
      h = h + xinv * x_[j][i];
    }
    leverage_[i] = static_cast<float>(h);
  }
  if (wantActual && !coded_) {
    finished = true;  // the second pass leaves the statistics of the first
    CheckInflation(work, diagonal, false);
    return true;
  }

  const int df = static_cast<std::int16_t>(numObs_ - static_cast<std::int16_t>(p));
  if (df <= 1) {
    if (!quiet_) ErrorBox("Insufficent D.O.F. to compute this equation");
    return false;
  }
  CheckInflation(work, diagonal, true);
  std::vector<double> pred(n);
  const double sse = ResidualSS(columns.data(), fitted.data(), static_cast<int>(p), y_.data(), static_cast<int>(n), pred.data());
  residual_.resize(n);
  for (std::size_t i = 0; i < n; ++i) residual_[i] = y_[i] - pred[i];
  const FitFigures fig = Figures(sse, TotalSS(y_.data(), static_cast<int>(n)), LargestSize(y_.data(), static_cast<int>(n)), static_cast<int>(n), static_cast<int>(p));
  if (fig.verdict == FitFigures::NO_VARIATION) throw std::runtime_error("The response does not vary: there is nothing to fit");
  if (fig.verdict == FitFigures::EXACT_FIT)
    throw std::runtime_error("The model fits every observation exactly: no error is left to test its terms against");
  fSSE = fig.fSSE;
  fMSE = fig.fMSE;
  fRSquared = fig.fRSquared;
  fRSquaredAdj = fig.fRSquaredAdj;
  for (std::size_t j = 0; j < p; ++j) {
    double se = std::sqrt(std::fabs(inverse_[j][j]) * fig.mse);
    auto t = static_cast<float>(std::fabs(beta_[j]) / se);
    stats_[j + 1][4] = static_cast<float>(se);
    stats_[j + 1][3] = t;
    stats_[j + 1][2] = static_cast<float>(2 - 2 * tProbability(t, df - 1));
  }
  finished = !wantActual;
  return true;
}

// Refuses a fit whose terms are too nearly collinear for the elimination to
// keep the printed digits, naming the worst term and its closest partner.
void Regress::CheckInflation(const std::vector<double>& inverse, const std::vector<double>& diagonal, bool coded) const {
  const int p = static_cast<int>(diagonal.size());
  if (Inflation(inverse.data(), p, p, diagonal.data()) < MAX_INFLATION) return;
  int worst = 0, partner = -1;
  double big = -1, link = -1;
  for (int j = 0; j < p; ++j) {
    double v = std::fabs(inverse[static_cast<std::size_t>(j * p + j)]) * diagonal[static_cast<std::size_t>(j)];
    if (!(v <= big)) big = v, worst = j;
  }
  for (int k = 0; k < p; ++k) {
    if (k == worst) continue;
    double v = std::fabs(inverse[static_cast<std::size_t>(worst * p + k)]) *
               std::sqrt(diagonal[static_cast<std::size_t>(worst)] * diagonal[static_cast<std::size_t>(k)]);
    if (!(v <= link)) link = v, partner = k;
  }
  const auto name = [&](int j) {
    const std::string& t = terms_[static_cast<std::size_t>(j)]->sTerm;
    return t == "0" ? std::string("Constant") : FactorListToText(t);
  };
  std::string pair = partner < 0 ? name(worst) : name(std::min(worst, partner)) + " and " + name(std::max(worst, partner));
  if (coded)
    throw std::runtime_error("The model cannot be fitted: the terms " + pair + " are too nearly collinear to be told apart");
  throw std::runtime_error("The model cannot be fitted in actual units: at these factor values the terms " + pair +
                           " are too nearly collinear to be told apart. Use data coding");
}

double Regress::Residual(int v) const {
  return v >= 1 && v <= static_cast<int>(residual_.size()) ? residual_[static_cast<std::size_t>(v - 1)] : 0.0;
}

double Regress::GetBeta(int iNdx) const {
  return iNdx >= 1 && iNdx <= static_cast<int>(beta_.size()) ? beta_[static_cast<std::size_t>(iNdx - 1)] : 0.0;
}

float Regress::GetStat(int iRow, int iStat) const {
  if (iRow < 0 || iRow >= static_cast<int>(stats_.size()) || iStat < 0 || iStat > 5) return 0;
  return stats_[static_cast<std::size_t>(iRow)][static_cast<std::size_t>(iStat)];
}

float Regress::GetStudentCoeff(int v) const {
  if (v < 1 || v > static_cast<int>(leverage_.size())) return 0;
  float h = leverage_[static_cast<std::size_t>(v - 1)];
  if (fMSE != 0 && h < 1) return 1 / std::sqrt((1 - h) * fMSE);
  return 0;
}

std::string Regress::FactorListToText(const std::string& sList) const {
  std::string text;
  for (int f : TermFactors(sList)) text += (text.empty() ? "" : " x ") + study_->GetFactorAbbr(f);
  return text;
}

std::string Regress::GetRegressionEquation() const {
  std::string text = study_->GetRVname2() + (useSD_ ? " (SD)" : "") + " = ";
  if (terms_.empty()) return text;
  text += FormatSF(3, terms_[0]->fBeta);
  for (const Rterm* t : terms_) {
    if (!(t->sTerm > "0") || t->fBeta == 0) continue;
    text += t->fBeta < 0 ? " - " : " + ";
    text += FormatSF(3, std::fabs(t->fBeta)) + FactorListToText(t->sTerm);
  }
  return text;
}

std::string Regress::GetFactorString() const {
  std::string text;
  for (std::size_t j = 0; j < terms_.size(); ++j)
    if (factors_[j].size() == 1 && factors_[j][0] > 0)
      text += "," + study_->GetPFactorName(study_->GetFactorKey(factors_[j][0])) + "," + std::to_string(factors_[j][0]);
  return text.empty() ? text : text.substr(1);
}

std::string Regress::GetConditions(int iExceptFactor) const {
  std::string text;
  for (std::size_t j = 0; j < terms_.size(); ++j) {
    const Rterm& t = *terms_[j];
    if (factors_[j].empty() || factors_[j][0] == iExceptFactor) continue;
    if (t.fValue == NOT_MAIN_TERM || t.fValue == FREE_AXIS) continue;
    text += " " + study_->GetFactorName(factors_[j][0]) + " = " + ShortestText(t.fValue);
  }
  return text.empty() ? text : "Subject to:" + text;
}

std::string Regress::PackConstants() const {
  std::string text = coded_ ? "1" : "0";
  for (float k : fastK_) text += "|" + ShortestText(k);
  return text;
}

void CodingLine(const Study& study, const std::string& key, double& slope, double& offset) {
  const double lo = study.FGetMinLevel(key), hi = study.FGetMaxLevel(key);
  if (hi > lo) {
    const double codeLo = study.FValueToCode(key, lo), codeHi = study.FValueToCode(key, hi);
    slope = (codeHi - codeLo) / (hi - lo);
    offset = codeLo - slope * lo;
  } else {
    offset = study.FValueToCode(key, 0);
    slope = study.FValueToCode(key, 1) - offset;
  }
}

bool Regress::StandInCoded() {
  if (coded_ || study_ == nullptr || terms_.empty() || sRVkey_.empty()) return false;
  Regress trial;
  trial.study_ = study_;
  trial.useSD_ = useSD_;
  trial.coded_ = true;
  trial.quiet_ = true;
  for (const Rterm* t : terms_) trial.AddTerm(*t);
  if (!trial.Compute(sRVkey_)) return false;
  ZapTerms();
  for (const Rterm& t : trial.owned_) AddTerm(t);
  coded_ = true;
  return true;
}

float Regress::EvaluateRegressionEquation(const std::array<float, MAX_EVAL_FACTORS + 1>& values) const {
  if (terms_.empty()) return 0;
  float sum = terms_[0]->fBeta;
  for (std::size_t j = 0; j < terms_.size(); ++j) {
    if (terms_[j]->sTerm == "0") continue;
    float product = terms_[j]->fBeta;
    for (int f : factors_[j]) {
      float v = f >= 1 && f <= MAX_EVAL_FACTORS ? values[static_cast<std::size_t>(f)] : MISSING_VALUE;
      if (v == MISSING_VALUE) return BAD_NUMBER;
      product *= v;
    }
    sum += product;
  }
  return sum;
}

float Regress::EvaluateRE(int iRun) const {
  std::array<float, MAX_EVAL_FACTORS + 1> values;
  values.fill(MISSING_VALUE);
  const bool coded = (study_->REGRESS_iFlag & REGRESS_CODED) != 0;
  for (int f = 1; f <= MAX_EVAL_FACTORS && f <= study_->Factors.Count(); ++f)
    values[static_cast<std::size_t>(f)] = static_cast<float>(LevelValue(f, iRun, coded));
  return EvaluateRegressionEquation(values);
}

float Regress::SetmRTerm(int iFactorNumber, float fValue) {
  const std::string key = std::to_string(iFactorNumber);
  for (Rterm* t : terms_)
    if (t->sTerm == key) {
      float before = t->fValue;
      t->fValue = fValue;
      return before;
    }
  return MISSING_VALUE;
}

bool Regress::SetupFastConstants() {
  std::array<float, MAX_EVAL_FACTORS + 1> values;
  values.fill(MISSING_VALUE);
  int xFactor = -1, yFactor = -1;
  for (std::size_t j = 0; j < terms_.size(); ++j) {
    if (factors_[j].size() != 1) continue;
    int f = factors_[j][0];
    if (f < 0 || f > MAX_EVAL_FACTORS) continue;
    float v = terms_[j]->fValue;
    if (f == 0) {
      v = 1;
    } else if (v > FREE_AXIS && coded_) {
      v = study_->FValueToCode(study_->GetFactorKey(f), v);
    }
    values[static_cast<std::size_t>(f)] = v;
    if (v == FREE_AXIS) (xFactor < 0 ? xFactor : yFactor) = f;
  }
  float k[4][4] = {};
  for (std::size_t j = 0; j < terms_.size(); ++j) {
    float c = terms_[j]->fBeta;
    int px = 0, py = 0;
    for (int f : factors_[j]) {
      if (f == xFactor) {
        ++px;
      } else if (f == yFactor) {
        ++py;
      } else if (f != 0) {
        float v = f >= 1 && f <= MAX_EVAL_FACTORS ? values[static_cast<std::size_t>(f)] : MISSING_VALUE;
        if (v == MISSING_VALUE) {
          ReportError("Logic error #1", "SetupFastConstants");
          return false;
        }
        c *= v;
      }
    }
    if (px > 3 || py > 3) {
      ReportError("A power above 3 has no place in the slice", "SetupFastConstants");
      return false;
    }
    k[px][py] += c;
  }
  fastK_ = {k[0][0], k[1][0], k[0][1], k[1][1], k[2][0], k[0][2], k[3][0], k[2][1], k[1][2], k[0][3]};
  return true;
}

float Regress::FastEvaluate(float x1, float x2) const {
  const float x = x1, y = x2;
  const auto& K = fastK_;
  return K[0] + K[1] * x + K[2] * y + K[3] * x * y + K[4] * x * x + K[5] * y * y + K[6] * x * x * x +
         K[7] * x * x * y + K[8] * x * y * y + K[9] * y * y * y;
}

}  // namespace kestrow
