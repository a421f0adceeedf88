// The regression engine: one response of a study fitted by least squares to
// a polynomial in its factors, and every question the program asks of the
// fitted equation afterwards: coefficients with their standard errors, t and
// p; the fit statistics; the equation as text; its value at a run, at a point
// of the factor space, and on a slice of two free factors. Nothing else in
// the program solves a linear system.
#pragma once

#include <array>
#include <deque>
#include <string>
#include <vector>

#include "core/StudyParts.h"
#include "data/Statistics.h"

namespace kestrow {

class Study;
class Statistics;

// The marks of a term's value, beside MISSING_VALUE and BAD_NUMBER.
inline constexpr float NOT_MAIN_TERM = -999999680.0f;  // the constant and any product term
inline constexpr float FREE_AXIS = -999999616.0f;      // a factor free on a slice

// The bits of REGRESS_iFlag: the model is of each run's standard deviation;
// the factors enter coded; its residual charts are studentised.
inline constexpr std::int16_t REGRESS_SD = 1;
inline constexpr std::int16_t REGRESS_CODED = 2;
inline constexpr std::int16_t REGRESS_STUDENTISED = 4;

// The most factors an evaluation takes (value tables run from 1 to 31).
inline constexpr int MAX_EVAL_FACTORS = 31;

// A fresh term: no text, no coefficient, no value.
void InitRterm(Rterm& term);
// The factor numbers of a term's text ("1,1,3": 1, 1, 3; "0": the constant, 0).
std::vector<int> TermFactors(const std::string& sTerm);

// A factor's coding as a line, coded = slope x actual + offset, for loops
// that code many values: taken in double precision between the ends of the
// factor's range, so that a range far from zero keeps its digits (the line
// through the codes of 0 and 1 would lose them to the offset's rounding).
void CodingLine(const Study& study, const std::string& key, double& slope, double& offset);

class Regress {
 public:
  float fSSE = 0, fMSE = 0, fRSquared = 0, fRSquaredAdj = 0;

  // Takes the study's flags, response and terms; the terms are the study's
  // own, so a fit writes their coefficients.
  void Init(Study& study);
  // The flags as REGRESS_iFlag holds them: 1 the standard deviation, 2 coded.
  void SetFlag(int iFlag) {
    coded_ = (iFlag & REGRESS_CODED) != 0;
    useSD_ = (iFlag & REGRESS_SD) != 0;
  }
  // A term of the caller's, kept by the engine (as a search adds them).
  void AddTerm(const Rterm& term);
  // A term that stays the caller's: its coefficient is written there.
  void AddTermRef(Rterm& term);
  void ZapTerms();
  std::int16_t NumTerms() const { return static_cast<std::int16_t>(terms_.size()); }
  Rterm& Term(int i) { return *terms_[static_cast<std::size_t>(i - 1)]; }

  // The fit of the response key ss; true on success. A model in actual units
  // is fitted twice: its statistics come from the coded fit.
  bool Compute(const std::string& ss);
  // For evaluation only: a model in actual units is fitted again, on copies
  // of its terms, in coded units, which give the same surface without the
  // cancellation of large powers of values far from zero in 32-bit floats
  // and rounded coefficients. The study's terms are untouched. False, with
  // nothing changed and nothing said, when the model is coded already or
  // cannot be fitted again; then the stored coefficients stand.
  bool StandInCoded();

  double GetBeta(int iNdx) const;
  // 1 coefficient, 2 two-sided p, 3 |t|, 4 standard error.
  float GetStat(int iRow, int iStat) const;
  // The factor that makes the residual of observation v studentised.
  float GetStudentCoeff(int v) const;
  // The residual of observation v (from 1) as the fit found it, unrounded.
  double Residual(int v) const;
  // The run and the replicate of observation v (replicate 0 for a run's
  // standard deviation), and its value.
  int ObsRun(int v) const { return InObs(v) ? obsRun_[static_cast<std::size_t>(v - 1)] : 0; }
  int ObsRep(int v) const { return InObs(v) ? obsRep_[static_cast<std::size_t>(v - 1)] : 0; }
  double Observation(int v) const { return InObs(v) ? y_[static_cast<std::size_t>(v - 1)] : 0.0; }

  std::string GetRegressionEquation() const;
  std::string FactorListToText(const std::string& sList) const;
  std::string GetFactorString() const;
  std::string GetConditions(int iExceptFactor) const;
  std::string PackConstants() const;

  // The equation at values indexed by factor number (1 to 31), as they stand.
  float EvaluateRegressionEquation(const std::array<float, MAX_EVAL_FACTORS + 1>& values) const;
  // The equation at the treatment of a run.
  float EvaluateRE(int iRun) const;
  // Holds factor iFactorNumber at fValue on its own term; the former value,
  // or MISSING_VALUE without such a term.
  float SetmRTerm(int iFactorNumber, float fValue);
  // Reduces the equation to a polynomial in the free factors; false, said
  // ("Logic error #1"), when a product names a factor without a term.
  bool SetupFastConstants();
  float FastEvaluate(float x1, float x2) const;

  // The rows and the coded columns of the terms, as the fit takes them; false,
  // said, when the response cannot be read.
  bool PrepareColumns(const std::string& ss);
  const std::vector<std::vector<double>>& Columns() const { return x_; }
  const std::vector<double>& Observations() const { return y_; }

  std::int16_t NumObs() const { return numObs_; }
  bool Coded() const { return coded_; }
  bool UseSD() const { return useSD_; }
  const std::string& RVkey() const { return sRVkey_; }
  const Study* GetStudy() const { return study_; }

 private:
  // The value of factor f at a run: its level read as a number (a text that
  // is no number counts as 0), coded when asked.
  double LevelValue(int factor, int run, bool coded) const;
  void CheckInflation(const std::vector<double>& inverse, const std::vector<double>& diagonal, bool coded) const;
  void Prepare(const std::string& ss);
  void BuildColumns();
  bool Pass(bool wantActual, bool& finished);

  Study* study_ = nullptr;
  Statistics runStats_;
  std::string sRVkey_;
  std::int16_t numObs_ = 0;
  bool coded_ = false, useSD_ = false;
  std::vector<Rterm*> terms_;
  std::deque<Rterm> owned_;
  bool quiet_ = false;  // a stand-in fit says nothing of its failures
  std::vector<std::vector<int>> factors_;  // each term's factor numbers

  // Work arrays of the last pass, 0-based: x_[term][observation].
  std::vector<std::vector<double>> x_;
  std::vector<double> y_, beta_;
  std::vector<std::vector<double>> inverse_;
  std::vector<float> leverage_;
  std::vector<double> residual_;
  bool InObs(int v) const { return v >= 1 && v <= static_cast<int>(obsRun_.size()); }
  std::vector<int> obsRun_, obsRep_;  // the run and replicate of each observation
  std::vector<std::array<float, 6>> stats_;
  std::array<float, 10> fastK_{};
};

}  // namespace kestrow
