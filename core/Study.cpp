// The life cycle of a study: clearing, the design and analysis settings,
// notes, and locking.
#include "core/Study.h"

#include "core/Globals.h"
#include "core/Problem.h"
#include "core/Settings.h"

namespace kestrow {

const Problem& Study::Owner() const { return pProblem ? *pProblem : *gProblem; }

void Study::Clear() {
  const Problem* owner = pProblem;
  *this = Study();
  pProblem = owner;
  iReps = gSettings.DefaultReps;
}

void Study::ZapDesign() {
  iNumRuns = 0;
  sDesignName.clear();
  iDesFlag = 0;
  Contrasts.Clear();
  Treatments.Clear();
}

void Study::ZapAnalyses() {
  ANOM_sRVkey.clear();
  ANOM_fAlpha = 0.1f;
  ANOM_sCharts.clear();
  ANOM_iSubgrouping = 0;
  ANOM_flags = 0;
  ANOVA_sRVkey.clear();
  ANOVA_fAlpha = 0.1f;
  ANOVA_iVariable = 0;
  ANOVA_flags = 0;
  ANOVA_sCharts.clear();
  FXPLOT_sRVkey.clear();
  FXPLOT_sF1Key.clear();
  FXPLOT_sF2Key.clear();
  FXPLOT_sFilter = "0;0";
  RESPONSE_sRVkey.clear();
  RESPONSE_sF1Key.clear();
  RESPONSE_sF2Key.clear();
  RESPONSE_sF3Key.clear();
  RESPONSE_iVariable = 0;
  RESPONSE_iFlag = 0;
  MMP_sRVkey.clear();
  MMP_flags = 1;
  MMP_bStdDevChart = false;
  REGRESS_sRVkey.clear();
  REGRESS_iFlag = 0;
  REGRESS_iModelType = 0;
  REGRESS_RES_sCharts.clear();
  REGRESS_Rterms.Clear();
  REGRESS_RSM_iAlpha = 40;
  REGRESS_RSM_iBeta = 25;
  REGRESS_RSM_flags = 3;
  REGRESS_RSM_iNetSize = 10;
  CONTOUR_flags = 1;
  CONTOUR_KeyFactor.clear();
  CONTOUR_KeyValues.clear();
  CONTOUR_sFilter = "0;0";
  RESIDUAL_sRVkey.clear();
  RESIDUAL_sCharts.clear();
  RESIDUAL_iModel = 0;
  PAIRWISE_sRVkey.clear();
  PAIRWISE_fAlpha = 0.05f;
  PAIRWISE_iAlgorithm = 0;
  RUN_flags = 0;
  RUN_iScaling = 0;
}

// Only the key goes: an analysis with an empty key counts as not set up, and
// that is how the analyses stored under a study are invalidated.
void Study::ZapAnalysisByRV(const std::string& key) {
  for (std::string* field : {&ANOM_sRVkey, &ANOVA_sRVkey, &FXPLOT_sRVkey, &RESPONSE_sRVkey,
                             &MMP_sRVkey, &REGRESS_sRVkey, &RESIDUAL_sRVkey, &PAIRWISE_sRVkey})
    if (*field == key) field->clear();
}

void Study::AddNote(int run, int rep, const std::string& text) {
  Note note;
  note.iRun = static_cast<std::int16_t>(run);
  note.iRep = static_cast<std::int16_t>(rep);
  note.sText = text;
  Notes.Add(std::move(note));
}

// Locking is one-way: the study keeps its own copies of its factors and
// response variables, whatever later happens to the problem's.
void Study::LockMe() {
  const Problem& owner = Owner();
  MyFactors.Clear();
  for (const Item& item : Factors) {
    const Factor* f = owner.Factors.Find(item.sKey);
    if (!f) continue;
    Factor copy;
    copy.sKey = f->sKey;
    copy.sName = f->sName;
    copy.sAbbr = f->sAbbr;
    copy.sDesc = f->sDesc;
    copy.iFlag = f->iFlag;
    copy.Levels = f->Levels;
    MyFactors.Add(std::move(copy), f->sKey);
  }
  MyRespVars.Clear();
  for (const StudyRespVar& srv : StudyRespVars) {
    const RespVar* rv = owner.RespVars.Find(srv.sKey);
    if (!rv) continue;
    RespVar copy = *rv;
    MyRespVars.Add(std::move(copy), rv->sKey);
  }
  iFlag |= STUDY_LOCKED;
}

}  // namespace kestrow
