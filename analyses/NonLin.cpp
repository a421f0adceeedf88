#include "analyses/NonLin.h"

#include <cmath>
#include <cstdint>

#include "analyses/Cstat.h"
#include "core/Clock.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Problem.h"
#include "core/Report.h"
#include "core/Study.h"
#include "core/Ui.h"
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
  // A t table that cannot be read (its message is shown) gives no limit
  // and so no conclusion.
  float t = 0;
  if (!ReadtPercent(df, p, t)) return r;
  float limit = t * se;
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

bool WriteNonLin(const Problem& problem, const Study& study, int rvNumber, int confidence, const NonLinResult& r,
                 const std::string& file) {
  Report rep;
  if (!rep.RepOpen(file)) {
    ErrorBox("The report file " + file + " cannot be written.");
    return false;
  }
  const std::pair<const char*, std::string> rows[] = {
      {"Problem", problem.sName},
      {"Study", study.sName},
      {"Response variable", study.StudyRespVars.Count() >= rvNumber && rvNumber >= 1
                                ? study.GetPRVName(study.StudyRespVars(rvNumber).sKey)
                                : std::string()},
      {"Confidence (%)", std::to_string(confidence)},
      {"Average for base design", r.lblBaseAvg},
      {"Average for center points", r.lblCentreAvg},
      {"Effect of non-linearity", r.lblENonLin},
      {"Sigma to test non-linearity", r.lblSigma},
      {"Decision limits for non-linearity", r.lblDL},
      {"Conclusion:", r.lblConclusion}};
  rep.RepSend("Non-linearity Test");
  rep.RepUnderline();
  rep.RepSend("Printed: " + ShortDate());
  rep.RepLF();
  std::string widest;
  for (const auto& [caption, value] : rows)
    if (std::string(caption).size() > widest.size()) widest = caption;
  bool ok = rep.RepFormatColumns(widest + "|" + std::string(8, 'x'));
  for (const auto& [caption, value] : rows) ok = ok && rep.RepSendFormatted(std::string(caption) + "|" + value, false);
  rep.RepClose();
  return ok;
}

}  // namespace kestrow
