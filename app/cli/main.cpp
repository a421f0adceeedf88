// kestrow-cli: the engine without a window, for scripts, tests and benchmarks.
// Exit codes: 0 success, 1 a refused or failed operation, 2 bad usage.
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "analyses/Availability.h"
#include "analyses/ShowAnalysis.h"
#include "core/Globals.h"
#include "core/Grid.h"
#include "core/GridText.h"
#include "core/Json.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/Problem.h"
#include "core/ProblemJson.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"
#include "data/StudyReports.h"
#include "designs/DesignSelection.h"
#include "stats/StatBench.h"

namespace kestrow {
namespace {

constexpr int OK = 0;
constexpr int FAILED = 1;
constexpr int USAGE = 2;

const char* USAGE_TEXT =
    "usage: kestrow-cli [--yes] [--home DIR] COMMAND ARGS...\n"
    "\n"
    "commands:\n"
    "  to-json FILE.KSW              print the problem as JSON\n"
    "  from-json FILE.json OUT.KSW   write a problem file from JSON\n"
    "  export FILE.KSW [OUT.txt]     the text export of a problem (stdout without OUT)\n"
    "  designs FILE.KSW --study KEY  the rows of the design selection table of a study, as JSON\n"
    "  design FILE.KSW --study KEY --row N [-o OUT.KSW]\n"
    "                                build the design of row N (from 1) for the study, make its\n"
    "                                data array and run order, and save (over FILE without -o)\n"
    "  analyse FILE.KSW --study KEY --code N [--tsv]\n"
    "                                show analysis N of the study with its stored settings: the\n"
    "                                grid as JSON (rows, back and fore colours), or as tab-separated rows\n"
    "  report FILE.KSW --study KEY stats|worksheet\n"
    "                                the study's statistics report or data worksheet as text\n"
    "  stat ROUTINE ARGS...          call one statistical routine and print its result: FValue P v1 v2,\n"
    "                                FProbability F v1 v2, tProbability t v, NormalProbability z,\n"
    "                                NormalValue P, FormatSF digits value, FormatP decimals p,\n"
    "                                FormatDecimals decimals value, ReadTableB n k, ReadTableC n column,\n"
    "                                ReadTableD alpha v k, ReadTableF alpha v1 v2, ReadtPercent v alpha,\n"
    "                                ReadDuncanRow f alpha\n"
    "\n"
    "options:\n"
    "  --yes        answer every question Yes (default: No)\n"
    "  --home DIR   the program folder (as $KESTROW_HOME)\n";

int Usage(const std::string& complaint) {
  std::cerr << "kestrow-cli: " << complaint << "\n\n" << USAGE_TEXT;
  return USAGE;
}

// Loads a problem file into a new problem; the load reports its own failure.
std::unique_ptr<Problem> LoadProblem(const std::string& path) {
  auto problem = std::make_unique<Problem>();
  if (!problem->Load(path)) return nullptr;
  return problem;
}

int ToJson(const std::vector<std::string>& args) {
  if (args.size() != 1) return Usage("to-json takes one problem file");
  auto problem = LoadProblem(args[0]);
  if (!problem) return FAILED;
  std::cout << ProblemToJson(*problem);
  return std::cout.good() ? OK : FAILED;
}

int FromJson(const std::vector<std::string>& args) {
  if (args.size() != 2) return Usage("from-json takes a JSON file and the problem file to write");
  std::ifstream in(args[0], std::ios::binary);
  if (!in) {
    std::cerr << "kestrow-cli: cannot read " << args[0] << ": " << std::strerror(errno) << "\n";
    return FAILED;
  }
  std::stringstream text;
  text << in.rdbuf();
  auto problem = std::make_unique<Problem>();
  std::string error;
  if (!ProblemFromJson(text.str(), *problem, error)) {
    std::cerr << "kestrow-cli: " << args[0] << ": " << error << "\n";
    return FAILED;
  }
  return problem->Save(args[1]) ? OK : FAILED;
}

int Export(const std::vector<std::string>& args) {
  if (args.empty() || args.size() > 2) return Usage("export takes a problem file and, optionally, the text file to write");
  auto problem = LoadProblem(args[0]);
  if (!problem) return FAILED;
  if (args.size() == 1) {
    problem->Export(std::cout);
    return std::cout.good() ? OK : FAILED;
  }
  return problem->Export(args[1]) ? OK : FAILED;
}

// The positional arguments and the options of a command; an option the
// command does not know is bad usage.
struct Args {
  std::vector<std::string> positional;
  std::map<std::string, std::string> options;
};

bool ParseArgs(const std::vector<std::string>& words, const std::vector<std::string>& known, Args& out,
               std::string& complaint) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& w = words[i];
    if (w.size() > 1 && w[0] == '-') {
      bool ok = false;
      for (const std::string& k : known) ok = ok || k == w;
      if (!ok) {
        complaint = "unknown option " + w;
        return false;
      }
      if (i + 1 >= words.size()) {
        complaint = w + " needs a value";
        return false;
      }
      out.options[w] = words[++i];
    } else {
      out.positional.push_back(w);
    }
  }
  return true;
}

// The study of a loaded problem named by --study; reports a missing one.
Study* FindStudy(Problem& p, const Args& a) {
  auto it = a.options.find("--study");
  if (it == a.options.end()) return nullptr;
  Study* s = p.Studies.Find(it->second);
  if (!s) std::cerr << "kestrow-cli: the problem has no study with the key " << it->second << "\n";
  return s;
}

// The language and the catalogue of the program folder, as the workbench
// opens them at start.
bool OpenProgramFiles() {
  LoadSettings();
  if (!OpenLanguage(JoinPath(ProgramFolder(), "KSTlang.MDB"), gSettings.Language)) {
    std::cerr << "kestrow-cli: " << LanguageError() << "\n";
    return false;
  }
  if (!FileExists(JoinPath(ProgramFolder(), "DESIGNS.MDB"))) {
    std::cerr << "kestrow-cli: Cannot locate designs database, DESIGNS.MDB\n";
    return false;
  }
  return true;
}

std::string DesignJson(const Design& d) {
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

int Designs(const std::vector<std::string>& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {"--study"}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 1 || !a.options.count("--study")) return Usage("designs takes a problem file and --study KEY");
  StudyTable t = OpenStudyTable(a);
  if (!t.study) return FAILED;
  const DesignSelection& table = *t.table;
  std::cout << "[";
  for (std::size_t i = 0; i < table.rows.size(); ++i) std::cout << (i ? ",\n " : "\n ") << DesignJson(table.rows[i]);
  std::cout << (table.rows.empty() ? "]\n" : "\n]\n");
  return std::cout.good() ? OK : FAILED;
}

int ReportCommand(const std::vector<std::string>& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {"--study"}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 2 || !a.options.count("--study") ||
      (a.positional[1] != "stats" && a.positional[1] != "worksheet"))
    return Usage("report takes a problem file, --study KEY and stats or worksheet");
  LoadSettings();
  if (!OpenLanguage(JoinPath(ProgramFolder(), "KSTlang.MDB"), gSettings.Language)) {
    std::cerr << "kestrow-cli: " << LanguageError() << "\n";
    return FAILED;
  }
  auto problem = LoadProblem(a.positional[0]);
  if (!problem) return FAILED;
  Study* s = FindStudy(*problem, a);
  if (!s) return FAILED;
  bool stats = a.positional[1] == "stats";
  Statistics st;
  std::string refusal = stats ? StatsRefusal(s, st) : WorksheetRefusal(s);
  if (!refusal.empty()) {
    std::cerr << "kestrow-cli: " << refusal << "\n";
    return FAILED;
  }
  std::string file = (std::filesystem::temp_directory_path() / ("kestrow-report-" + std::to_string(getpid()) + ".txt")).string();
  bool ok = stats ? WriteStats(*problem, *s, st, file) : WriteWorksheet(*problem, *s, file);
  if (ok) {
    std::ifstream in(file, std::ios::binary);
    std::cout << in.rdbuf();
  }
  std::filesystem::remove(file);
  return ok && std::cout.good() ? OK : FAILED;
}

// The show step of an analysis, as a click on its node gives it when the
// analysis is set up; a dialog cannot be shown here, so one that is not set
// up is refused.
int Analyse(std::vector<std::string> words) {
  bool tsv = false;
  std::erase_if(words, [&](const std::string& w) { return w == "--tsv" ? (tsv = true) : false; });
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {"--study", "--code"}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 1 || !a.options.count("--study") || !a.options.count("--code"))
    return Usage("analyse takes a problem file, --study KEY and --code N");
  const std::string& codeText = a.options["--code"];
  if (!IsNumeric(codeText) || codeText.find_first_of(".eE") != std::string::npos)
    return Usage("--code takes an analysis number");
  int code = static_cast<int>(Val(codeText));
  if (!IsAnalysisBuilt(code)) {
    std::cerr << "kestrow-cli: analysis " << code << " cannot be shown by this version\n";
    return FAILED;
  }
  if (!OpenProgramFiles()) return FAILED;
  auto problem = LoadProblem(a.positional[0]);
  if (!problem) return FAILED;
  Study* s = FindStudy(*problem, a);
  if (!s) return FAILED;
  Statistics stats;
  stats.Compute(*s);
  std::string reason = AnalysisUnavailableReason(*s, stats, code);
  if (!reason.empty()) {
    std::cerr << "kestrow-cli: " << reason << "\n";
    return FAILED;
  }
  if (!IsAnalysisSetUp(*s, stats, code)) {
    std::cerr << "kestrow-cli: analysis " << code << " of study " << s->sKey
              << " has no settings yet; set it up in the workbench first\n";
    return FAILED;
  }
  Grid grid;
  if (!DrawAnalysis(code, *s, stats, grid)) return FAILED;
  std::cout << (tsv ? GridToTsv(grid) : GridToJson(grid));
  return std::cout.good() ? OK : FAILED;
}

int DesignCommand(const std::vector<std::string>& words) {
  Args a;
  std::string complaint;
  if (!ParseArgs(words, {"--study", "--row", "-o"}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 1 || !a.options.count("--study") || !a.options.count("--row"))
    return Usage("design takes a problem file, --study KEY and --row N");
  const std::string& rowText = a.options["--row"];
  if (!IsNumeric(rowText) || rowText.find_first_of(".eE") != std::string::npos) return Usage("--row takes a row number");
  int row = static_cast<int>(Val(rowText));
  StudyTable t = OpenStudyTable(a);
  if (!t.study) return FAILED;
  Study* s = t.study;
  DesignSelection& table = *t.table;
  Problem* problem = t.problem.get();
  if (row < 1 || row > static_cast<int>(table.rows.size())) {
    std::cerr << "kestrow-cli: the study's design table has rows 1 to " << table.rows.size() << "\n";
    return FAILED;
  }
  const Design& d = table.rows[static_cast<std::size_t>(row - 1)];
  if (DesignSelection::NeedsDialog(d)) {
    std::cerr << "kestrow-cli: row " << row << " (" << Trim(d.sName) << ") is built through a dialog of the workbench\n";
    return FAILED;
  }
  if (s->IsLocked()) {
    std::cerr << "kestrow-cli: the study " << s->sKey << " is locked\n";
    return FAILED;
  }
  if (s->DoesArrayExist() && !s->IsArrayEmpty() &&
      !WarnYesNo("The study holds data, which a new design discards. Go on?"))
    return FAILED;
  if (!table.DesSelOK(row) || s->sDesignName.empty()) return FAILED;
  // As the study dialog does for a study without data: the array and, for a
  // randomised study, the run order.
  s->SetDataArray();
  if (s->iSequence == 0) s->Randomise();
  std::string out = a.options.count("-o") ? a.options["-o"] : a.positional[0];
  return problem->Save(out) ? OK : FAILED;
}

// The bench of the statistical routines. The routine and the count of its
// arguments are checked before the tables are looked for.
int Stat(const std::vector<std::string>& args) {
  if (args.empty()) return Usage("stat takes a routine and its arguments");
  const std::string& routine = args[0];
  const BenchRoutine* found = FindBenchRoutine(routine);
  if (!found) return Usage("stat knows no routine " + routine);
  if (args.size() != found->count + 1)
    return Usage("stat " + routine + " takes " + found->arguments);
  // The table readers find their tables in the program folder.
  if (routine.rfind("Read", 0) == 0) {
    if (!FileExists(JoinPath(ProgramFolder(), "TABLES.MDB"))) {
      std::cerr << "kestrow-cli: cannot find TABLES.MDB in " << ProgramFolder() << "\n";
      return FAILED;
    }
    LoadSettings();
    OpenLanguage(JoinPath(ProgramFolder(), "KSTlang.MDB"), gSettings.Language);
  }
  std::string out, error;
  if (!RunBenchRoutine(routine, std::vector<std::string>(args.begin() + 1, args.end()), out, error))
    return Usage("stat " + error);
  std::cout << out << "\n";
  return std::cout.good() ? OK : FAILED;
}

int Run(int argc, char** argv) {
  std::vector<std::string> words(argv + 1, argv + argc);
  bool yes = false;
  std::size_t i = 0;
  for (; i < words.size(); ++i) {
    if (words[i] == "--yes") {
      yes = true;
    } else if (words[i] == "--home") {
      if (i + 1 >= words.size()) return Usage("--home needs a folder");
      SetProgramFolder(words[++i]);
    } else if (words[i] == "--help" || words[i] == "-h") {
      std::cout << USAGE_TEXT;
      return OK;
    } else {
      break;
    }
  }
  if (i >= words.size()) return Usage("no command given");
  InstallUi(std::make_unique<ConsoleUi>(yes));
  std::string command = words[i];
  std::vector<std::string> args(words.begin() + static_cast<long>(i) + 1, words.end());
  gPlatformRandom.seed(static_cast<std::mt19937::result_type>(
      std::chrono::system_clock::now().time_since_epoch().count()));
  if (command == "designs") return Designs(args);
  if (command == "design") return DesignCommand(args);
  if (command == "report") return ReportCommand(args);
  if (command == "analyse") return Analyse(args);
  for (const std::string& a : args)
    if (a.size() > 1 && a[0] == '-' && a[1] == '-') return Usage("unknown option " + a);
  if (command == "to-json") return ToJson(args);
  if (command == "from-json") return FromJson(args);
  if (command == "export") return Export(args);
  if (command == "stat") return Stat(args);
  return Usage("unknown command " + command);
}

}  // namespace
}  // namespace kestrow

int main(int argc, char** argv) { return kestrow::Run(argc, argv); }
