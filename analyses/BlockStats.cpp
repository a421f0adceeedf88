#include "analyses/BlockStats.h"

#include <vector>

#include "core/Sentinels.h"
#include "core/Study.h"
#include "data/Statistics.h"

namespace kestrow {

// The sums of squares are the classical ones, each sum of squared totals over
// the design's count per level less the correction factor, but formed from
// deviations about the grand mean: with data near 9,000 the raw form's
// totals lose every digit that the differences hold in 32 bits, and printed
// a treatment SS of 0 and negative ones. With y = m + d for any m, a factor's
//   sum T^2 / n - S^2 / N
// becomes, with T' and D the totals of d and c the count of runs at a level,
//   sum T'^2 / n - D^2 / N + 2 m sum (c - n) T' / n + m^2 sum c (c - n) / n,
// whose last two terms vanish when no run is missing. In exact arithmetic
// nothing changes; a missing run's block keeps its divisor, as designed.
bool BlockStats::Compute(const Study& study, const Statistics& stats, int factors) {
  int levels[4] = {0, 0, 0, 0};
  for (int f = 1; f <= factors; ++f) {
    levels[f] = study.GetNumLevels(f);
    if (levels[f] > MAX_LEVELS || levels[f] < 1) return false;
  }
  // The first pass finds the runs and their levels and the grand mean.
  struct Cell {
    float y;
    int at[4];
  };
  std::vector<Cell> cells;
  float sum = 0;
  for (int run = 1; run <= study.iNumRuns; ++run) {
    float y = stats.SampAvgRV(run);
    if (!(y > MISSING_VALUE)) continue;
    Cell cell{y, {0, 0, 0, 0}};
    for (int f = 1; f <= factors; ++f) {
      cell.at[f] = study.GetTreatmentLevel(f, run);
      if (cell.at[f] < 1 || cell.at[f] > MAX_LEVELS) return false;
    }
    sum += y;
    cells.push_back(cell);
  }
  if (cells.empty()) return false;
  float n = static_cast<float>(cells.size());
  float m = sum / n;

  // The second pass sums the deviations.
  Means* totals[4] = {nullptr, &treatMeans_, &blockMeans_, &colmnMeans_};
  Means counts[4] {};
  for (int f = 1; f <= 3; ++f) totals[f]->fill(0.0f);
  float dSum = 0, dSum2 = 0;
  for (const Cell& cell : cells) {
    float d = cell.y - m;
    dSum += d;
    dSum2 += d * d;
    for (int f = 1; f <= factors; ++f) {
      auto slot = static_cast<std::size_t>(cell.at[f]);
      (*totals[f])[slot] += d;
      counts[f][slot] += 1;
    }
  }
  float dCF = dSum * dSum / n;
  grandMean_ = m + dSum / n;
  fTotalSS = dSum2 - dCF;
  fTotalDF = n - 1;
  // A factor's sum of squares from its totals, each divided by the count of
  // runs at a level as the design has it; the totals become the level means.
  auto factorSS = [&](int f, float perLevel) {
    Means& t = *totals[f];
    float squares = 0, cross = 0, count = 0;
    for (std::size_t slot = 1; slot <= MAX_LEVELS; ++slot) {
      float c = counts[f][slot];
      squares += t[slot] * t[slot] / perLevel;
      cross += (c - perLevel) * t[slot] / perLevel;
      count += c * (c - perLevel) / perLevel;
      t[slot] = t[slot] / perLevel + m * (c / perLevel);
    }
    return squares - dCF + 2 * m * cross + m * m * count;
  };
  if (factors == 2) {
    float t = static_cast<float>(levels[1]), b = static_cast<float>(levels[2]);
    fTreatDF = t - 1;
    fBlockDF = b - 1;
    fErrorDF = (t - 1) * (b - 1);
    fTreatSS = factorSS(1, b);
    fBlockSS = factorSS(2, t);
    fErrorSS = fTotalSS - fTreatSS - fBlockSS;
  } else {
    float k = static_cast<float>(levels[1]);
    fTreatDF = fBlockDF = fColmnDF = k - 1;
    fErrorDF = (k - 1) * (k - 2);
    fTreatSS = factorSS(1, k);
    fBlockSS = factorSS(2, k);
    fColmnSS = factorSS(3, k);
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
