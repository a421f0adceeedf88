// The all-possible-regressions search of a study's stored model, as the
// search dialog runs it, with its result grid as JSON and, when asked, the
// best model copied back into the study, fitted and saved.
#include <iostream>

#include "app/cli/Cli.h"
#include "app/cli/Commands.h"
#include "core/Grid.h"
#include "core/GridText.h"
#include "core/Problem.h"
#include "data/Statistics.h"
#include "regression/APRForm.h"
#include "regression/RegressForm.h"
#include "workbench/Availability.h"

namespace kestrow::cli {

int Apr(const Words& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {"--study", "-o"}, a, complaint, {"--no-hierarchy", "--copy-back"})) return Usage(complaint);
  if (a.positional.size() != 1 || !a.Has("--study"))
    return Usage("apr takes a problem file and --study KEY");
  if (a.Has("-o") && !a.Flag("--copy-back")) return Usage("-o names the file of a --copy-back");
  std::unique_ptr<Problem> problem;
  Study* s = LoadStudy(a, problem);
  if (!s) return FAILED;
  Statistics stats;
  stats.Compute(*s);
  if (std::string reason = AnalysisUnavailableReason(*s, stats, ANALYSIS_REGRESSION); !reason.empty()) return Failed(reason);
  if (s->REGRESS_sRVkey.empty())
    return Failed("the regression of study " + s->sKey + " has no settings yet; set it up in the workbench first");
  // The search reads the term grid of the stored model, as the regression
  // dialog shows it.
  RegressForm regress(*s, stats);
  if (regress.rvIndex < 0 || regress.rvList[static_cast<std::size_t>(regress.rvIndex)].key != s->REGRESS_sRVkey)
    return Failed("the response " + s->REGRESS_sRVkey + " of the regression has no data");
  if (!regress.VetForSearch()) return FAILED;
  APRForm search(*s, regress.SearchRVkey(), regress.SearchFlag(), regress.TermGrid(), regress.ModelName());
  search.chkHierarchy = !a.Flag("--no-hierarchy");
  search.cmdStart_Click();
  if (!search.Search().Finished()) return FAILED;  // refused or stopped: said
  const Grid blank;
  TableToJson(
      std::cout, search.Rows(), APRForm::COLUMNS, [&](std::int64_t r, int c) { return search.Cell(r, c); },
      [&](std::int64_t r, int) {
        Colour c = search.Back(r);
        return c == DEFAULT_COLOUR ? blank.BackColour : c;
      },
      [&](std::int64_t, int) { return blank.ForeColour; });
  if (!a.Flag("--copy-back")) return OK;
  const std::uint32_t mask = search.cmdExit_Click();
  if (mask == 0) return Failed("the search found no model to copy back");
  regress.CopyBack(mask);
  std::string message;
  if (regress.OK(message) != FormOutcome::Accepted) return message.empty() ? FAILED : Failed(message);
  return problem->Save(a.Has("-o") ? a.Option("-o") : a.positional[0]) ? OK : FAILED;
}

}  // namespace kestrow::cli
