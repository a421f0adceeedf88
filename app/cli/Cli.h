// The pieces every command of kestrow-cli shares: exit codes, the usage
// text, the parsing of options, and the loading of a problem and a study.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kestrow {

class Problem;
class Study;

namespace cli {

// Exit codes: success, a refused or failed operation, bad usage.
constexpr int OK = 0;
constexpr int FAILED = 1;
constexpr int USAGE = 2;

extern const char* USAGE_TEXT;

// Prints the complaint and the usage text; gives USAGE.
int Usage(const std::string& complaint);
// Prints a refusal or failure to standard error; gives FAILED.
int Failed(const std::string& message);

// The positional arguments and the options of a command. An option the
// command does not know, an option without its value and an option given
// twice are bad usage; flags take no value.
struct Args {
  std::vector<std::string> positional;
  std::map<std::string, std::string> options;
  std::vector<std::string> flags;
  bool Has(const std::string& option) const { return options.count(option) != 0; }
  bool Flag(const std::string& flag) const;
  const std::string& Option(const std::string& option) const { return options.at(option); }
};
bool ParseArgs(const std::vector<std::string>& words, const std::vector<std::string>& known, Args& out,
               std::string& complaint, const std::vector<std::string>& knownFlags = {});

// A whole number from lo to hi, as an option gives it; false for any other text.
bool ParseWhole(const std::string& text, long lo, long hi, int& out);

// Reads a JSON document whole. Input whose first character (after blanks)
// can begin no JSON value is refused at once, so that an endless stream of
// such bytes ends with a message; false with the reason in error.
bool ReadJsonFile(const std::string& path, std::string& text, std::string& error);

// Loads a problem file into a new problem; the load reports its own failure.
std::unique_ptr<Problem> LoadProblem(const std::string& path);
// The study of a loaded problem named by --study; reports a missing one.
Study* FindStudy(Problem& problem, const Args& args);
// The program files opened, the problem file of the first word loaded into
// problem, and its study named by --study; null when any of it failed (said).
Study* LoadStudy(const Args& args, std::unique_ptr<Problem>& problem);
// The settings, the language and the catalogue of the program folder, as the
// workbench opens them at start; false, with the message, when one is missing.
bool OpenProgramFiles();
// The settings and the language only.
bool OpenLanguageFiles();

}  // namespace cli
}  // namespace kestrow
