// The show step of an analysis, and the bench of the statistical routines.
#include <iostream>

#include "app/cli/Cli.h"
#include "app/cli/Commands.h"
#include "charts/ChartPage.h"
#include "core/Grid.h"
#include "core/GridText.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/Problem.h"
#include "core/Settings.h"
#include "data/Statistics.h"
#include "workbench/StatBench.h"
#include "workbench/Availability.h"
#include "workbench/MultiChart.h"
#include "workbench/ShowAnalysis.h"

namespace kestrow::cli {

// As a click on its node gives it when the analysis is set up; a dialog
// cannot be shown here, so one that is not set up is refused. A grid
// analysis prints its grid; a chart analysis its chart list as drawn on a
// page of --size, into the picture of --image when one is asked for.
int Analyse(const Words& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {"--study", "--code", "--report", "--image", "--size", "--detail"}, a, complaint, {"--tsv"}))
    return Usage(complaint);
  if (a.positional.size() != 1 || !a.Has("--study") || a.Has("--code") == a.Has("--report"))
    return Usage("analyse takes a problem file, --study KEY and either --code N or --report ipo|multichart");
  int width = 800, height = 600;
  if (a.Has("--size") && !ParseSize(a.Option("--size"), width, height))
    return Usage("--size takes WxH, each from 1 to 10000");
  if (a.Has("--image") && !CheckImagePath(a.Option("--image"), complaint)) return Usage(complaint);
  if (a.Has("--report")) {
    const std::string report = a.Option("--report");
    if (report != "ipo" && report != "multichart") return Usage("--report takes ipo or multichart");
    if (a.Has("--detail")) return Usage("--detail picks a chart of an analysis, not of a report");
    if (a.Flag("--tsv")) return Usage("the reports draw charts; --tsv is for grids");
    std::unique_ptr<Problem> problem;
    Study* s = LoadStudy(a, problem);
    if (!s) return FAILED;
    if (report == "ipo") {
      DrawIPOReport(*s);
    } else {
      if (s->sMultiChart.empty())
        return Failed("the multi-chart of study " + s->sKey + " holds no charts yet; choose them in the workbench first");
      Statistics stats;
      if (!ShowMultiChart(*s, stats)) return FAILED;
    }
    return PrintChartList(gPage, a.Has("--image") ? a.Option("--image") : std::string(), width, height);
  }
  int code = 0;
  if (!ParseWhole(a.Option("--code"), 1, 32767, code)) return Usage("--code takes an analysis number from 1 to 32767");
  bool charts = IsChartAnalysis(code);
  if (!charts && (a.Has("--image") || a.Has("--size")))
    return Usage("analysis " + std::to_string(code) + " prints a grid; --image and --size are for the analyses that draw charts");
  if (charts && a.Flag("--tsv")) return Usage("analysis " + std::to_string(code) + " draws charts; --tsv is for grids");
  if (!charts && a.Has("--detail")) return Usage("analysis " + std::to_string(code) + " prints a grid; --detail picks a chart");
  if (code == ANALYSIS_CALCULATOR) return Usage("analysis 14 is the regression calculator, a dialog with nothing to show: use calc");
  if (!IsAnalysisBuilt(code)) return Failed("analysis " + std::to_string(code) + " cannot be shown by this version");
  std::unique_ptr<Problem> problem;
  Study* s = LoadStudy(a, problem);
  if (!s) return FAILED;
  Statistics stats;
  stats.Compute(*s);
  std::string reason = AnalysisUnavailableReason(*s, stats, code);
  if (!reason.empty()) return Failed(reason);
  if (!IsAnalysisSetUp(*s, stats, code))
    return Failed("analysis " + std::to_string(code) + " of study " + s->sKey +
                  " has no settings yet; set it up in the workbench first");
  Grid grid;
  if (charts) gphStart();
  if (!DrawAnalysis(code, *s, stats, grid, a.Has("--detail") ? a.Option("--detail") : std::string())) return FAILED;
  if (charts) return PrintChartList(gPage, a.Has("--image") ? a.Option("--image") : std::string(), width, height);
  std::cout << (a.Flag("--tsv") ? GridToTsv(grid) : GridToJson(grid));
  return OK;
}

// The routine and the count of its arguments are checked before the tables
// are looked for.
int Stat(const Words& args) {
  if (args.empty()) return Usage("stat takes a routine and its arguments");
  const std::string& routine = args[0];
  const BenchRoutine* found = FindBenchRoutine(routine);
  if (!found) return Usage("stat knows no routine " + routine);
  if (args.size() != found->count + 1) return Usage("stat " + routine + " takes " + found->arguments);
  // The table readers find their tables in the program folder.
  if (routine.rfind("Read", 0) == 0) {
    if (!FileExists(JoinPath(ProgramFolder(), "TABLES.MDB")))
      return Failed("cannot find TABLES.MDB in " + ProgramFolder());
    LoadSettings();
    OpenLanguage(JoinPath(ProgramFolder(), "KSTlang.MDB"), gSettings.Language);
  }
  std::string out, error;
  switch (RunBenchRoutine(routine, Words(args.begin() + 1, args.end()), out, error)) {
    case BenchResult::BadArguments: return Usage("stat " + error);
    case BenchResult::NoValue: return Failed(error);
    case BenchResult::Done: break;
  }
  std::cout << out << "\n";
  return OK;
}

}  // namespace kestrow::cli
