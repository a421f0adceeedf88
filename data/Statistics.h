// Run statistics: every per-run and per-response figure the analyses read.
// One object serves the whole program (gStats); each analysis refills it for
// the study and response in hand before it reads it.
#pragma once

#include <cstdint>
#include <vector>

namespace kestrow {

class Study;

// Bits of Statistics::flag.
inline constexpr std::int16_t STATS_COMPLETE = 1;   // no observation is missing
inline constexpr std::int16_t STATS_NO_DATA = 2;    // every observation is missing
inline constexpr std::int16_t STATS_BALANCED = 4;   // all runs hold the same count

class Statistics {
 public:
  void Clear();
  // All responses of the study, raw (through GetData), by their position.
  bool Compute(const Study& study);
  // The response chosen by ConfigureRV, through its transform, as response 1.
  // SigInd is not filled.
  bool ComputeRV(const Study& study);

  std::int16_t NumRuns() const { return numRuns_; }
  int CountRVs() const { return static_cast<int>(flag_.size()) - 1; }

  std::int16_t ObsGoodPerRun(int run, int rv) const { return At(obsGoodPerRun_, run, rv, std::int16_t(0)); }
  float SampAvg(int run, int rv) const;
  float SampRng(int run, int rv) const;
  float SampSig(int run, int rv) const;
  std::int16_t ObsGoodPerRunRV(int run) const { return ObsGoodPerRun(run, 1); }
  float SampAvgRV(int run) const { return SampAvg(run, 1); }
  float SampRngRV(int run) const { return SampRng(run, 1); }
  float SampSigRV(int run) const { return SampSig(run, 1); }

  // Scans of the per-run figures that skip missing ones; with no value the
  // start (TARGET_MIN for the maxima, TARGET_MAX for the minimum) comes back.
  float MaxAvg(int rv) const;
  float MinAvg(int rv) const;
  float MaxRng(int rv) const;
  float MaxAvgRV() const { return MaxAvg(1); }
  float MinAvgRV() const { return MinAvg(1); }
  float MaxRngRV() const { return MaxRng(1); }

  std::int16_t flag(int rv) const { return Of(flag_, rv, std::int16_t(0)); }
  float AvgAvg(int rv) const { return Of(avgAvg_, rv, 0.0f); }
  float RngAvg(int rv) const { return Of(rngAvg_, rv, 0.0f); }
  float SigAvg(int rv) const { return Of(sigAvg_, rv, 0.0f); }
  float SigInd(int rv) const { return Of(sigInd_, rv, 0.0f); }
  std::int16_t GoodObs(int rv) const { return Of(goodObs_, rv, std::int16_t(0)); }
  std::int16_t GoodSamps(int rv) const { return Of(goodSamps_, rv, std::int16_t(0)); }
  float ObsMin(int rv) const { return Of(obsMin_, rv, 0.0f); }
  float ObsMax(int rv) const { return Of(obsMax_, rv, 0.0f); }
  std::int16_t FlagRV() const { return flag(1); }
  float AvgAvgRV() const { return AvgAvg(1); }
  float RngAvgRV() const { return RngAvg(1); }
  float SigAvgRV() const { return SigAvg(1); }
  std::int16_t GoodObsRV() const { return GoodObs(1); }
  std::int16_t GoodSampsRV() const { return GoodSamps(1); }

 private:
  template <class T>
  static T Of(const std::vector<T>& v, int rv, T otherwise) {
    return rv >= 0 && static_cast<std::size_t>(rv) < v.size() ? v[static_cast<std::size_t>(rv)] : otherwise;
  }
  template <class T>
  T At(const std::vector<T>& v, int run, int rv, T otherwise) const {
    if (run < 0 || run > numRuns_ || rv < 0 || rv > CountRVs()) return otherwise;
    return v[static_cast<std::size_t>(rv) * static_cast<std::size_t>(numRuns_ + 1) + static_cast<std::size_t>(run)];
  }
  void Size(int nRV, int runs);
  // One response: readValue(run, rep) gives its observations.
  template <class Read>
  void ComputeOne(int rv, int runs, int reps, Read readValue, bool overall, int& lastCount);

  std::int16_t numRuns_ = 0;
  std::vector<std::int16_t> flag_, goodObs_, goodSamps_;
  std::vector<float> obsMin_, obsMax_, avgAvg_, rngAvg_, sigAvg_, sigInd_;
  std::vector<float> sampAvg_, sampRng_, sampSig_;
  std::vector<std::int16_t> obsGoodPerRun_;
};

inline Statistics gStats;

}  // namespace kestrow
