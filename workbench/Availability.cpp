#include "workbench/Availability.h"

#include "core/Study.h"
#include "data/Statistics.h"
#include "regression/ContourPlot.h"

namespace kestrow {

namespace {

const char* NO_DATA = "There is no data - cannot perform this analysis";
const char* NOT_FOR_CCD = "Analysis is not available for Central Composite Designs";
const char* NO_REGRESSION = "You must compute a Regression Equation first";

bool AnyRV(const Study& s, const Statistics& st, bool (*test)(const Statistics&, int)) {
  for (int rv = 1; rv <= s.StudyRespVars.Count(); ++rv)
    if (test(st, rv)) return true;
  return false;
}

bool HasData(const Statistics& st, int rv) { return (st.flag(rv) & STATS_NO_DATA) == 0; }

// D: some response has data.
std::string DataCheck(const Study& s, const Statistics& st) { return AnyRV(s, st, HasData) ? "" : NO_DATA; }
// C: not a central composite design.
std::string DesignCheck(const Study& s) { return (s.iDesFlag & DES_CODED) ? NOT_FOR_CCD : ""; }

std::string First(std::initializer_list<std::string> reasons) {
  for (const std::string& r : reasons)
    if (!r.empty()) return r;
  return "";
}

// The stored key names a response of the study; its position, or -1.
int Found(const Study& s, const std::string& key) { return key.empty() ? -1 : s.GetRVnum(key); }

bool FoundWithData(const Study& s, const Statistics& st, const std::string& key) {
  int rv = Found(s, key);
  return rv >= 0 && HasData(st, rv);
}

bool AnovaSetUp(const Study& s, const Statistics& st) {
  int rv = Found(s, s.ANOVA_sRVkey);
  return rv >= 0 && st.GoodSamps(rv) == s.iNumRuns && s.ANOVA_fAlpha > 0.0f;
}

}  // namespace

std::string AnalysisUnavailableReason(const Study& s, const Statistics& st, int code) {
  switch (code) {
    case ANALYSIS_ANOM: {
      bool incomplete = AnyRV(s, st, [](const Statistics& t, int rv) { return (t.flag(rv) & STATS_COMPLETE) == 0; });
      if (incomplete) return "Cannot perform ANOM without a complete data set";
      return First({DataCheck(s, st), DesignCheck(s)});
    }
    case ANALYSIS_ANOVA:
      for (int rv = 1; rv <= s.StudyRespVars.Count(); ++rv)
        if (st.GoodSamps(rv) == s.iNumRuns) return "";
      return "At least one full replication is missing - cannot perform ANOVA";
    case ANALYSIS_RESIDUALS:
      if (s.iDesFlag & DES_BLOCKED) return "";
      if (std::string r = DataCheck(s, st); !r.empty()) return r;
      if (s.iReps == 1) return "The number of replications must be greater than 1 to perform residuals analysis";
      return "";
    case ANALYSIS_FXPLOT:
    case ANALYSIS_RESPLOT:
    case ANALYSIS_MMEANS:
      return First({DataCheck(s, st), DesignCheck(s)});
    case ANALYSIS_REGRESSION:
    case ANALYSIS_SCATTERGRAM:
      if (std::string r = DataCheck(s, st); !r.empty()) return r;
      if (s.CountDiscrete() == s.Factors.Count()) return "There are no quantitative factors - cannot perform regression";
      return "";
    case ANALYSIS_PAIRWISE: {
      std::string reason;
      bool balanced = AnyRV(s, st, [](const Statistics& t, int rv) {
        return (t.flag(rv) & STATS_BALANCED) != 0 && (t.flag(rv) & STATS_NO_DATA) == 0;
      });
      if (!balanced) reason = "Cannot perform a Pairwise Comparison when the study is unbalanced";
      // One replication gives the stronger reason and replaces the first.
      if (s.iReps == 1) reason = "The number of replications must be greater than 1 to perform this analysis";
      return reason;
    }
    case ANALYSIS_REGRESSION_RESIDUALS:
      return s.REGRESS_sRVkey.empty() ? "You must setup the Regression Equation first" : "";
    case ANALYSIS_CONPLOT:
    case ANALYSIS_RESPSURF:
      if (std::string r = DataCheck(s, st); !r.empty()) return r;
      if (s.REGRESS_Rterms.Empty()) return NO_REGRESSION;
      if (s.CountREFactors() < 2) return "You need at least two factors to use this analysis";
      return "";
    case ANALYSIS_SCREE:
      if (s.ANOVA_sRVkey.empty()) return "Before you can perform this analysis you need to setup the ANOVA parameters";
      if (s.Contrasts.Count() < 3) return "There are less than 3 contrasts - cannot perform analysis";
      return "";
    case ANALYSIS_CALCULATOR:
      return s.REGRESS_Rterms.Empty() ? NO_REGRESSION : "";
    case ANALYSIS_RUNCHART:
      return DataCheck(s, st);
    default:
      return "";
  }
}

bool IsAnalysisSetUp(const Study& s, const Statistics& st, int code) {
  switch (code) {
    case ANALYSIS_ANOM: {
      int rv = Found(s, s.ANOM_sRVkey);
      return rv >= 0 && (st.flag(rv) & STATS_COMPLETE) && s.ANOM_fAlpha > 0.0f && !s.ANOM_sCharts.empty();
    }
    case ANALYSIS_ANOVA:
      return AnovaSetUp(s, st);
    case ANALYSIS_RESIDUALS:
      return FoundWithData(s, st, s.RESIDUAL_sRVkey) && !s.RESIDUAL_sCharts.empty();
    case ANALYSIS_FXPLOT:
      return FoundWithData(s, st, s.FXPLOT_sRVkey) && !s.FXPLOT_sF1Key.empty();
    case ANALYSIS_RESPLOT:
      return FoundWithData(s, st, s.RESPONSE_sRVkey) && !s.RESPONSE_sF1Key.empty() && !s.RESPONSE_sF2Key.empty();
    case ANALYSIS_MMEANS:
      return FoundWithData(s, st, s.MMP_sRVkey);
    case ANALYSIS_REGRESSION:
      return FoundWithData(s, st, s.REGRESS_sRVkey) && s.CountDiscrete() < s.Factors.Count() &&
             !s.REGRESS_Rterms.Empty();
    case ANALYSIS_PAIRWISE: {
      int rv = Found(s, s.PAIRWISE_sRVkey);
      return FoundWithData(s, st, s.PAIRWISE_sRVkey) && (st.flag(rv) & STATS_BALANCED) && s.PAIRWISE_fAlpha > 0.0f;
    }
    case ANALYSIS_REGRESSION_RESIDUALS:
      return !s.REGRESS_RES_sCharts.empty();
    case ANALYSIS_SCREE:
      return AnovaSetUp(s, st) && !s.ANOVA_sCharts.empty() && !s.Contrasts.Empty();
    case ANALYSIS_CALCULATOR:
      return !s.REGRESS_Rterms.Empty();
    case ANALYSIS_CONPLOT:
    case ANALYSIS_RESPSURF: {
      // Two factors chosen to plot and every other one held at a value: the
      // dialog has been through, or the study came with them.
      int fx = 0, fy = 0;
      std::string complaint;
      return PlottedFactors(s, fx, fy, complaint);
    }
    case ANALYSIS_RUNCHART:
      return AnyRV(s, st, HasData);
    default:
      return true;
  }
}

}  // namespace kestrow
