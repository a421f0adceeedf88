// Run statistics in one pass over the data. Per-run sums, and the total of
// them behind the grand average, are 64-bit and take each observation by way
// of its shortest decimal text, so that a value entered as 0.1 enters the
// sums as 0.1 and not as the float's binary expansion; the overall sums
// behind SigInd stay 32-bit and take the float as it is.
#include "data/Statistics.h"

#include <cmath>
#include <cstdlib>

#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"

namespace kestrow {

namespace {

double Decimal(float value) {
  std::string text = ShortestText(value);
  return std::strtod(text.c_str(), nullptr);
}

}  // namespace

void Statistics::Clear() {
  numRuns_ = 0;
  for (auto* v : {&flag_, &goodObs_, &goodSamps_, &obsGoodPerRun_}) v->clear();
  for (auto* v : {&obsMin_, &obsMax_, &avgAvg_, &rngAvg_, &sigAvg_, &sigInd_, &sampAvg_, &sampRng_, &sampSig_})
    v->clear();
}

void Statistics::Size(int nRV, int runs) {
  Clear();
  numRuns_ = static_cast<std::int16_t>(runs);
  std::size_t r = static_cast<std::size_t>(nRV + 1);
  std::size_t cells = r * static_cast<std::size_t>(runs + 1);
  flag_.assign(r, 0);
  goodObs_.assign(r, 0);
  goodSamps_.assign(r, 0);
  for (auto* v : {&obsMin_, &obsMax_, &avgAvg_, &rngAvg_, &sigAvg_, &sigInd_}) v->assign(r, 0.0f);
  for (auto* v : {&sampAvg_, &sampRng_, &sampSig_}) v->assign(cells, MISSING_VALUE);
  obsGoodPerRun_.assign(cells, 0);
}

template <class Read>
void Statistics::ComputeOne(int rv, int runs, int reps, Read readValue, bool overall, int& lastCount) {
  std::int16_t flag = STATS_COMPLETE | STATS_NO_DATA | STATS_BALANCED;
  float obsMin = TARGET_MAX, obsMax = TARGET_MIN;
  // The overall sums are taken about the response's first good value, so
  // that far from zero their difference keeps its digits; 32-bit, as the
  // overall figure always was.
  float sum32 = 0.0f, sumSq32 = 0.0f, origin32 = 0.0f;
  bool haveOrigin32 = false;
  // The run sums are gathered in 64 bits: a 32-bit total of a response near
  // 1e7 loses units in the grand average.
  double avgAcc = 0.0;
  float rngAvg = 0.0f, sigAvg = 0.0f;
  int goodObs = 0, goodSamps = 0;
  std::size_t base = static_cast<std::size_t>(rv) * static_cast<std::size_t>(runs + 1);

  for (int run = 1; run <= runs; ++run) {
    // sum feeds the averages; the spread is summed about the run's first
    // good value (origin), so that equal readings give exactly 0 whatever
    // their size and a small spread far from zero keeps its digits.
    double sum = 0.0, dSum = 0.0, dSumSq = 0.0, origin = 0.0;
    int count = 0;
    float runMin = TARGET_MAX, runMax = TARGET_MIN;
    for (int rep = 1; rep <= reps; ++rep) {
      float value = readValue(run, rep);
      if (value == MISSING_VALUE) {
        flag &= ~STATS_COMPLETE;
        continue;
      }
      double x = Decimal(value);
      if (count == 0) origin = x;
      sum += x;
      double d = x - origin;
      dSum += d;
      dSumSq += d * d;
      if (overall) {
        if (!haveOrigin32) {
          origin32 = value;
          haveOrigin32 = true;
        }
        float d32 = value - origin32;
        sum32 += d32;
        sumSq32 += d32 * d32;
      }
      ++count;
      if (value < runMin) runMin = value;
      if (value > runMax) runMax = value;
      flag &= ~STATS_NO_DATA;
    }
    std::size_t at = base + static_cast<std::size_t>(run);
    avgAcc += sum;
    goodObs += count;
    obsGoodPerRun_[at] = static_cast<std::int16_t>(count);
    sampAvg_[at] = sampRng_[at] = sampSig_[at] = MISSING_VALUE;
    if (count > 0) {
      ++goodSamps;
      sampAvg_[at] = static_cast<float>(sum / count);
    }
    if (count > 1) {
      sampRng_[at] = static_cast<float>(Decimal(runMax) - Decimal(runMin));
      // The absolute value guards against a tiny negative difference.
      sampSig_[at] = static_cast<float>(std::sqrt(std::fabs((dSumSq - dSum * dSum / count) / (count - 1))));
      rngAvg += sampRng_[at];
      sigAvg += sampSig_[at];
    }
    if (runMin < obsMin) obsMin = runMin;
    if (runMax > obsMax) obsMax = runMax;
    // The remembered count is not reset between responses: the last count of
    // one response is compared with the first of the next. That is intended.
    if (count != lastCount) {
      if (lastCount > 0) flag &= ~STATS_BALANCED;
      lastCount = count;
    }
  }

  std::size_t r = static_cast<std::size_t>(rv);
  flag_[r] = flag;
  obsMin_[r] = obsMin;
  obsMax_[r] = obsMax;
  goodObs_[r] = static_cast<std::int16_t>(goodObs);
  goodSamps_[r] = static_cast<std::int16_t>(goodSamps);
  avgAvg_[r] = goodObs != 0 ? static_cast<float>(avgAcc / goodObs) : 0.0f;
  if (overall && goodObs > 1) {
    float n = static_cast<float>(goodObs);
    sigInd_[r] = std::sqrt(std::fabs((sumSq32 - sum32 * sum32 / n) / (n - 1.0f)));
  }
  // The divisor counts runs with one observation too, though such a run adds
  // nothing to the sums. That is the figure wanted.
  if (goodSamps > 0) {
    rngAvg = static_cast<float>(static_cast<double>(rngAvg) / goodSamps);
    sigAvg = static_cast<float>(static_cast<double>(sigAvg) / goodSamps);
  }
  rngAvg_[r] = rngAvg;
  sigAvg_[r] = sigAvg;
}

bool Statistics::Compute(const Study& study) {
  int nRV = study.StudyRespVars.Count();
  int runs = study.iNumRuns < 0 ? 0 : study.iNumRuns;
  Size(nRV, runs);
  int lastCount = 0;
  for (int rv = 1; rv <= nRV; ++rv)
    ComputeOne(rv, runs, study.iReps, [&](int run, int rep) { return study.GetData(rv, run, rep); }, true, lastCount);
  return true;
}

bool Statistics::ComputeRV(const Study& study) {
  int runs = study.iNumRuns < 0 ? 0 : study.iNumRuns;
  Size(1, runs);
  int lastCount = 0;
  ComputeOne(1, runs, study.iReps, [&](int run, int rep) { return study.GetDataRV(run, rep); }, false, lastCount);
  return true;
}

float Statistics::SampAvg(int run, int rv) const { return At(sampAvg_, run, rv, MISSING_VALUE); }
float Statistics::SampRng(int run, int rv) const { return At(sampRng_, run, rv, MISSING_VALUE); }
float Statistics::SampSig(int run, int rv) const { return At(sampSig_, run, rv, MISSING_VALUE); }

float Statistics::MaxAvg(int rv) const {
  float best = TARGET_MIN;
  for (int run = 1; run <= numRuns_; ++run)
    if (float v = SampAvg(run, rv); v != MISSING_VALUE && v > best) best = v;
  return best;
}

float Statistics::MinAvg(int rv) const {
  float best = TARGET_MAX;
  for (int run = 1; run <= numRuns_; ++run)
    if (float v = SampAvg(run, rv); v != MISSING_VALUE && v < best) best = v;
  return best;
}

float Statistics::MaxRng(int rv) const {
  float best = TARGET_MIN;
  for (int run = 1; run <= numRuns_; ++run)
    if (float v = SampRng(run, rv); v != MISSING_VALUE && v > best) best = v;
  return best;
}

}  // namespace kestrow
