#include "analyses/BlockStats.h"

#include "core/Sentinels.h"
#include "core/Study.h"
#include "data/Statistics.h"

namespace kestrow {

bool BlockStats::Compute(const Study& study, const Statistics& stats, int factors) {
  int levels[4] = {0, 0, 0, 0};
  for (int f = 1; f <= factors; ++f) {
    levels[f] = study.GetNumLevels(f);
    if (levels[f] > MAX_LEVELS || levels[f] < 1) return false;
  }
  Means* totals[4] = {nullptr, &treatMeans_, &blockMeans_, &colmnMeans_};
  for (int f = 1; f <= 3; ++f) totals[f]->fill(0.0f);
  float n = 0, sum = 0, sum2 = 0;
  for (int run = 1; run <= study.iNumRuns; ++run) {
    float y = stats.SampAvgRV(run);
    if (!(y > MISSING_VALUE)) continue;
    int at[4];
    for (int f = 1; f <= factors; ++f) {
      at[f] = study.GetTreatmentLevel(f, run);
      if (at[f] < 1 || at[f] > MAX_LEVELS) return false;
    }
    n += 1;
    sum += y;
    sum2 += y * y;
    for (int f = 1; f <= factors; ++f) (*totals[f])[static_cast<std::size_t>(at[f])] += y;
  }
  if (n == 0) return false;
  grandMean_ = sum / n;
  float cf = grandMean_ * grandMean_ * n;
  fTotalSS = sum2 - cf;
  fTotalDF = n - 1;
  // A factor's sum of squares from its totals, each total divided by the
  // count of runs at a level as the design has it; the totals become means.
  auto factorSS = [&](Means& t, float perLevel) {
    float ss = 0;
    for (int slot = 1; slot <= MAX_LEVELS; ++slot) {
      float& total = t[static_cast<std::size_t>(slot)];
      ss += total * total / perLevel;
      total = total / perLevel;
    }
    return ss - cf;
  };
  if (factors == 2) {
    float t = static_cast<float>(levels[1]), b = static_cast<float>(levels[2]);
    fTreatDF = t - 1;
    fBlockDF = b - 1;
    fErrorDF = (t - 1) * (b - 1);
    fTreatSS = factorSS(treatMeans_, b);
    fBlockSS = factorSS(blockMeans_, t);
    fErrorSS = fTotalSS - fTreatSS - fBlockSS;
  } else {
    float k = static_cast<float>(levels[1]);
    fTreatDF = fBlockDF = fColmnDF = k - 1;
    fErrorDF = (k - 1) * (k - 2);
    fTreatSS = factorSS(treatMeans_, k);
    fBlockSS = factorSS(blockMeans_, k);
    fColmnSS = factorSS(colmnMeans_, k);
    fErrorSS = fTotalSS - fTreatSS - fBlockSS - fColmnSS;
  }
  return true;
}

bool BlockStats::Compute1(const Study& study, const Statistics& stats) { return Compute(study, stats, 2); }
bool BlockStats::Compute2(const Study& study, const Statistics& stats) { return Compute(study, stats, 3); }

bool BlockStats::GetPredicted1(const Study& study, int run, float& value) const {
  int t = study.GetTreatmentLevel(1, run), b = study.GetTreatmentLevel(2, run);
  if (t < 1 || t > MAX_LEVELS || b < 1 || b > MAX_LEVELS) return false;
  value = treatMeans_[static_cast<std::size_t>(t)] + blockMeans_[static_cast<std::size_t>(b)] - grandMean_;
  return true;
}

bool BlockStats::GetPredicted2(const Study& study, int run, float& value) const {
  int t = study.GetTreatmentLevel(1, run), b = study.GetTreatmentLevel(2, run), c = study.GetTreatmentLevel(3, run);
  if (t < 1 || t > MAX_LEVELS || b < 1 || b > MAX_LEVELS || c < 1 || c > MAX_LEVELS) return false;
  value = treatMeans_[static_cast<std::size_t>(t)] + blockMeans_[static_cast<std::size_t>(b)] +
          colmnMeans_[static_cast<std::size_t>(c)] - 2 * grandMean_;
  return true;
}

}  // namespace kestrow
