#include "data/FillRVList.h"

#include "core/Study.h"
#include "data/Statistics.h"

namespace kestrow {

std::vector<RVListEntry> FillRVList(const Study& study, const Statistics& stats, int code) {
  std::vector<RVListEntry> list;
  for (int rv = 1; rv <= study.StudyRespVars.Count(); ++rv) {
    bool take;
    if (code == 1) take = (stats.flag(rv) & STATS_COMPLETE) != 0;
    else if (code == 2) take = stats.GoodSamps(rv) == study.iNumRuns;
    else take = (stats.flag(rv) & STATS_NO_DATA) == 0;
    if (!take) continue;
    const StudyRespVar& srv = study.StudyRespVars(rv);
    list.push_back({study.GetPRVName(srv.sKey), srv.sKey});
    if (srv.iType > 0) list.push_back({"*" + study.GetPRVName(srv.sKey), srv.sKey + "*"});
  }
  return list;
}

}  // namespace kestrow
