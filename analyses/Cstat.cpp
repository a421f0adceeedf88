#include "analyses/Cstat.h"

#include "core/Sentinels.h"
#include "core/Study.h"
#include "data/Statistics.h"

namespace kestrow {

bool Cstat::Compute(const Study& study, const Statistics& stats, int rvNumber) {
  *this = Cstat();
  if (rvNumber < 1 || rvNumber > stats.CountRVs() || rvNumber > study.StudyRespVars.Count()) {
    sErrMsg = "Unknown error";
    return false;
  }
  // The centre points' spread is summed about their first observation, in
  // the same single pass: equal centre points then give a variance of
  // exactly 0 at any size, where the sum of squares less n times the squared
  // mean left a rounding residue, as often negative as not.
  bool firstCentre = true;
  float origin = 0, dSum = 0, dSum2 = 0;
  for (int run = 1; run <= study.iNumRuns; ++run) {
    bool centre = study.GetTreatmentLevel(1, run) == 0;
    if (!centre) {
      fFruns += 1;
      float s = stats.SampSig(run, rvNumber);
      if (s > MISSING_VALUE) fFvar += s * s;
    }
    for (int rep = 1; rep <= study.iReps; ++rep) {
      float y = study.GetData(rvNumber, run, rep);
      if (y == MISSING_VALUE) {
        if (!centre) sErrMsg = "Data is missing from the base design";
        continue;
      }
      if (centre) {
        if (firstCentre) origin = y;
        firstCentre = false;
        float d = y - origin;
        fCnum += 1;
        fCmean += y;
        fCsum2 += y * y;
        dSum += d;
        dSum2 += d * d;
      } else {
        fFnum += 1;
        fFmean += y;
        fFsum2 += y * y;
      }
    }
  }
  if (fCnum > 0) {
    fCmean = fCmean / fCnum;
    if (fCnum > 1) fCvar = (dSum2 - dSum * dSum / fCnum) / (fCnum - 1);
  }
  if (fFnum > 0) fFmean = fFmean / fFnum;
  if (fFruns > 0) fFvar = fFvar / fFruns;
  return true;
}

}  // namespace kestrow
