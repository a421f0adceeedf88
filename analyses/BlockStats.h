// Sums of squares of randomised-block and Latin-square designs, from level
// means: such designs hold no contrasts.
#pragma once

#include <array>

namespace kestrow {

class Study;
class Statistics;

class BlockStats {
 public:
  // The most levels a factor of a blocked design can have.
  static constexpr int MAX_LEVELS = 8;

  float fTreatDF = 0, fTreatSS = 0;
  float fBlockDF = 0, fBlockSS = 0;
  float fColmnDF = 0, fColmnSS = 0;
  float fErrorDF = 0, fErrorSS = 0;
  float fTotalDF = 0, fTotalSS = 0;

  // Randomised block: factor 1 the treatments, factor 2 the blocks. Latin
  // square: three factors of one count of levels. Each run's average stands
  // for the run; runs without data are left out. False when a factor has
  // more levels than there are slots.
  bool Compute1(const Study& study, const Statistics& stats);
  bool Compute2(const Study& study, const Statistics& stats);

  // The fitted value of a run from the level means.
  bool GetPredicted1(const Study& study, int run, float& value) const;
  bool GetPredicted2(const Study& study, int run, float& value) const;

 private:
  using Means = std::array<float, MAX_LEVELS + 1>;  // slots 1 to 8
  bool Compute(const Study& study, const Statistics& stats, int factors);

  float grandMean_ = 0;
  Means treatMeans_ {}, blockMeans_ {}, colmnMeans_ {};
};

}  // namespace kestrow
