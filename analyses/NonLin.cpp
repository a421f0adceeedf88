#include "analyses/NonLin.h"

#include <cmath>
#include <cstdint>

#include "analyses/Cstat.h"
#include "core/Language.h"
#include "core/Study.h"
#include "stats/Formatters.h"
#include "stats/TableReaders.h"

namespace kestrow {

NonLinResult ComputeNonLin(const Study& study, const Statistics& stats, int rvNumber, int confidence) {
  NonLinResult r;
  Cstat c;
  // A failure, or missing base data: the test needs a complete base.
  c.Compute(study, stats, rvNumber);
  std::string error = c.sErrMsg;
  if (c.fCnum < 2) error = GetText("NLNerr1");
  if (!error.empty()) {
    r.lblConclusion = error;
    return r;
  }
  float df1 = static_cast<float>(study.iReps - 1) * c.fFruns, df2 = c.fCnum - 1;
  float s = std::sqrt((c.fFvar * df1 + c.fCvar * df2) / (df1 + df2));
  float se = s * std::sqrt(1 / c.fFnum + 1 / c.fCnum);
  auto df = static_cast<std::int16_t>(std::nearbyint(df1 + df2));
  // In double, so that 95 gives the float 0.025 and so the column 25.
  auto p = static_cast<float>((1 - confidence / 100.0) / 2);
  float limit = ReadtPercent(df, p) * se;
  float e = c.fFmean - c.fCmean;
  r.lblBaseAvg = FormatNumSF(c.fFmean);
  r.lblCentreAvg = FormatNumSF(c.fCmean);
  r.lblENonLin = FormatNumSF(e);
  r.lblSigma = FormatNumSF(se);
  r.lblDL = "+/-" + FormatNumSF(limit);
  r.nonLinear = std::fabs(e) > limit;
  r.lblConclusion = SubstituteCopy(GetText(r.nonLinear ? "NLNmsg1" : "NLNmsg2"), std::to_string(confidence));
  return r;
}

}  // namespace kestrow
