// The commands on a problem file as a whole, and the study reports.
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "app/cli/Cli.h"
#include "app/cli/Commands.h"
#include "core/Problem.h"
#include "core/ProblemJson.h"
#include "data/Statistics.h"
#include "data/StudyReports.h"

namespace kestrow::cli {

int ToJson(const Words& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 1) return Usage("to-json takes one problem file");
  auto problem = LoadProblem(a.positional[0]);
  if (!problem) return FAILED;
  std::cout << ProblemToJson(*problem);
  return OK;
}

int FromJson(const Words& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 2) return Usage("from-json takes a JSON file and the problem file to write");
  std::string text, error;
  if (!ReadJsonFile(a.positional[0], text, error)) return Failed(error);
  auto problem = std::make_unique<Problem>();
  if (!ProblemFromJson(text, *problem, error)) return Failed(a.positional[0] + ": " + error);
  return problem->Save(a.positional[1]) ? OK : FAILED;
}

int Export(const Words& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {}, a, complaint)) return Usage(complaint);
  if (a.positional.empty() || a.positional.size() > 2)
    return Usage("export takes a problem file and, optionally, the text file to write");
  auto problem = LoadProblem(a.positional[0]);
  if (!problem) return FAILED;
  if (a.positional.size() == 1) {
    problem->Export(std::cout);
    return OK;
  }
  return problem->Export(a.positional[1]) ? OK : FAILED;
}

int Report(const Words& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {"--study"}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 2 || !a.Has("--study") ||
      (a.positional[1] != "stats" && a.positional[1] != "worksheet"))
    return Usage("report takes a problem file, --study KEY and stats or worksheet");
  if (!OpenLanguageFiles()) return FAILED;
  auto problem = LoadProblem(a.positional[0]);
  if (!problem) return FAILED;
  Study* s = FindStudy(*problem, a);
  if (!s) return FAILED;
  bool stats = a.positional[1] == "stats";
  Statistics st;
  std::string refusal = stats ? StatsRefusal(s, st) : WorksheetRefusal(s);
  if (!refusal.empty()) return Failed(refusal);
  std::string file =
      (std::filesystem::temp_directory_path() / ("kestrow-report-" + std::to_string(getpid()) + ".txt")).string();
  bool ok = stats ? WriteStats(*problem, *s, st, file) : WriteWorksheet(*problem, *s, file);
  if (ok) {
    std::ifstream in(file, std::ios::binary);
    std::cout << in.rdbuf();
  }
  std::filesystem::remove(file);
  return ok ? OK : FAILED;
}

}  // namespace kestrow::cli
