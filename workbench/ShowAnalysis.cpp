#include "workbench/ShowAnalysis.h"

#include "analyses/ANOVA.h"
#include "workbench/Availability.h"

namespace kestrow {

bool IsAnalysisBuilt(int code) { return code == ANALYSIS_ANOVA; }

bool DrawAnalysis(int code, Study& study, Statistics& stats, Grid& grid) {
  switch (code) {
    case ANALYSIS_ANOVA: return DrawANOVA(study, stats, grid);
    default: return false;
  }
}

}  // namespace kestrow
