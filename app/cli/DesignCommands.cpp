// The design selection table of a study, and the building of one of its rows.
#include <iostream>
#include <memory>

#include "app/cli/Cli.h"
#include "app/cli/Commands.h"
#include "core/Json.h"
#include "core/Problem.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "designs/DesignSelection.h"

namespace kestrow::cli {

namespace {

std::string DesignJson(const kestrow::Design& d) {
  return "{\"sName\": " + JsonQuote(d.sName) + ", \"sRuns\": " + JsonQuote(d.sRuns) +
         ", \"iFlag\": " + std::to_string(d.iFlag) + ", \"idbFlags\": " + std::to_string(d.idbFlags) +
         ", \"iResolution\": " + std::to_string(d.iResolution) + ", \"sInteractions\": " +
         JsonQuote(d.sInteractions) + ", \"sTag\": " + JsonQuote(d.sTag) + ", \"sTag2\": " + JsonQuote(d.sTag2) +
         ", \"bShowRuns\": " + (d.bShowRuns ? "true" : "false") + "}";
}

// The problem file of a design command, its study, and the study's design
// table, with the program's files open; null study when any of it failed.
struct StudyTable {
  std::unique_ptr<Problem> problem;
  Study* study = nullptr;
  std::unique_ptr<DesignSelection> table;
};

StudyTable OpenStudyTable(const Args& a) {
  StudyTable t;
  if (!OpenProgramFiles()) return t;
  t.problem = LoadProblem(a.positional[0]);
  if (!t.problem) return t;
  Study* s = FindStudy(*t.problem, a);
  if (!s) return t;
  t.table = std::make_unique<DesignSelection>(*s);
  if (t.table->DesSelLoad()) t.study = s;
  return t;
}

}  // namespace

int Designs(const Words& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {"--study"}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 1 || !a.Has("--study")) return Usage("designs takes a problem file and --study KEY");
  StudyTable t = OpenStudyTable(a);
  if (!t.study) return FAILED;
  const DesignSelection& table = *t.table;
  std::cout << "[";
  for (std::size_t i = 0; i < table.rows.size(); ++i) std::cout << (i ? ",\n " : "\n ") << DesignJson(table.rows[i]);
  std::cout << (table.rows.empty() ? "]\n" : "\n]\n");
  return OK;
}

int Design(const Words& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {"--study", "--row", "-o"}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 1 || !a.Has("--study") || !a.Has("--row"))
    return Usage("design takes a problem file, --study KEY and --row N");
  int row = 0;
  if (!ParseWhole(a.Option("--row"), 1, 32767, row)) return Usage("--row takes a row number from 1 to 32767");
  StudyTable t = OpenStudyTable(a);
  if (!t.study) return FAILED;
  Study* s = t.study;
  DesignSelection& table = *t.table;
  if (row > static_cast<int>(table.rows.size()))
    return Failed("the study's design table has rows 1 to " + std::to_string(table.rows.size()));
  const kestrow::Design& d = table.rows[static_cast<std::size_t>(row - 1)];
  if (DesignSelection::NeedsDialog(d))
    return Failed("row " + std::to_string(row) + " (" + Trim(d.sName) + ") is built through a dialog of the workbench");
  if (s->IsLocked()) return Failed("the study " + s->sKey + " is locked");
  if (s->DoesArrayExist() && !s->IsArrayEmpty() &&
      !WarnYesNo("The study holds data, which a new design discards. Go on?"))
    return FAILED;
  if (!table.DesSelOK(row) || s->sDesignName.empty()) return FAILED;
  // As the study dialog does for a study without data: the array and, for a
  // randomised study, the run order.
  s->SetDataArray();
  if (s->iSequence == 0) s->Randomise();
  std::string out = a.Has("-o") ? a.Option("-o") : a.positional[0];
  return t.problem->Save(out) ? OK : FAILED;
}

}  // namespace kestrow::cli
