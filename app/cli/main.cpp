// kestrow-cli: the engine without a window, for scripts, tests and benchmarks.
// Exit codes: 0 success, 1 a refused or failed operation, 2 bad usage.
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "core/Globals.h"
#include "core/Paths.h"
#include "core/Problem.h"
#include "core/ProblemJson.h"
#include "core/Ui.h"

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
  for (const std::string& a : args)
    if (a.size() > 1 && a[0] == '-' && a[1] == '-') return Usage("unknown option " + a);
  if (command == "to-json") return ToJson(args);
  if (command == "from-json") return FromJson(args);
  if (command == "export") return Export(args);
  return Usage("unknown command " + command);
}

}  // namespace
}  // namespace kestrow

int main(int argc, char** argv) { return kestrow::Run(argc, argv); }
