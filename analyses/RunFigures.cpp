#include "analyses/RunFigures.h"

#include "core/Sentinels.h"
#include "core/Study.h"
#include "data/Statistics.h"

namespace kestrow {

float RunMSD(const Study& study, const Statistics& stats, int run, float target) {
  if (target == TARGET_MAX) {
    float sum = 0, n = 0;
    for (int rep = 1; rep <= study.iReps; ++rep) {
      float x = study.GetDataRV(run, rep);
      if (x == MISSING_VALUE) continue;
      sum += 1 / (x * x);
      n += 1;
    }
    return n > 0 ? sum / n : MISSING_VALUE;
  }
  float avg = stats.SampAvgRV(run);
  if (avg == MISSING_VALUE) return MISSING_VALUE;
  float d = target - avg, sig = stats.SampSigRV(run);
  return d * d + sig * sig;
}

float RunVariable(const Study& study, const Statistics& stats, int run, int variable, float target) {
  switch (variable) {
    case 0: return stats.SampAvgRV(run);
    case 1: return stats.SampSigRV(run);
    case 2: return RunMSD(study, stats, run, target);
    default: return MISSING_VALUE;
  }
}

std::int16_t SeriesDotType(int k) { return static_cast<std::int16_t>(k < 1 ? 1 : (k - 1) % 8 + 1); }

}  // namespace kestrow
