#include "data/XformForm.h"

#include "core/Language.h"
#include "core/Sentinels.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"

namespace kestrow {

namespace {
// An empty field counts as 0; anything else must be a number.
bool FieldValue(const std::string& text, float& value) {
  std::string t = Trim(text);
  if (t.empty()) {
    value = 0.0f;
    return true;
  }
  value = ParseFloat(t);
  return value != BAD_NUMBER;
}
}  // namespace

void XformForm::SelectRV(int which) {
  if (which < 1 || which > study_.StudyRespVars.Count()) return;
  rv = which;
  const StudyRespVar& srv = study_.StudyRespVars(rv);
  txtA = ShortestText(srv.fParam1);
  txtB = ShortestText(srv.fParam2);
  SetOption(srv.iType == 1 || srv.iType == 2 ? srv.iType : 0);
}

void XformForm::SetOption(int option) {
  optXform = option;
  aEnabled = option == 1 || option == 2;
  bEnabled = option == 2;
}

void XformForm::Recompute() {
  if (optXform != 1 && optXform != 2) return;
  Statistics stats;
  stats.Compute(study_);
  float lowest = stats.ObsMin(rv);
  txtA = ShortestText(lowest <= 1.0f ? 1.0f - lowest : 0.0f);
  if (optXform == 2) {
    if (study_.iReps < 2) {
      InfoBox(GetText("XFMmsg1"));
      txtB = "1";
    } else {
      txtB = "0";
    }
  }
}

std::string XformForm::OK(bool& declined) {
  declined = false;
  float a = 0.0f, b = 0.0f;
  if ((optXform == 1 || optXform == 2) && !FieldValue(txtA, a)) return GetText("XFMerr1");
  if (optXform == 2 && !FieldValue(txtB, b)) return GetText("XFMerr2");
  StudyRespVar& srv = study_.StudyRespVars(rv);
  if (optXform != 0 && study_.DoesArrayExist()) {
    bool observed = false, kept = false;
    for (int run = 1; run <= study_.iNumRuns && !kept; ++run)
      for (int rep = 1; rep <= study_.iReps && !kept; ++rep) {
        float y = study_.GetData(rv, run, rep);
        if (y == MISSING_VALUE) continue;
        observed = true;
        kept = y + a > 0.0f;
      }
    if (observed && !kept && YesNoBox(SubstituteCopy(GetText("XFMmsg2"), study_.GetPRVName(srv.sKey))) != Answer::Yes) {
      declined = true;
      return "";
    }
  }
  bool same = srv.iType == optXform && srv.fParam1 == (optXform ? a : 0.0f) && srv.fParam2 == (optXform == 2 ? b : 0.0f);
  srv.iType = static_cast<std::int16_t>(optXform);
  srv.fParam1 = optXform ? a : 0.0f;
  srv.fParam2 = optXform == 2 ? b : 0.0f;
  // Results stored on the transformed response no longer hold.
  if (!same) study_.ZapAnalysisByRV(srv.sKey + "*");
  return "";
}

}  // namespace kestrow
