// kestrow-cli: the engine without a window, for scripts, tests and benchmarks.
// Exit codes: 0 success, 1 a refused or failed operation, 2 bad usage.
#include <csignal>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/cli/Cli.h"
#include "app/cli/Commands.h"
#include "core/Globals.h"
#include "core/Paths.h"
#include "core/Startup.h"
#include "core/Ui.h"

namespace kestrow::cli {
namespace {

struct Command {
  const char* name;
  int (*run)(const Words&);
};

const Command COMMANDS[] = {
    {"to-json", ToJson}, {"from-json", FromJson}, {"export", Export},   {"designs", Designs},
    {"design", Design},  {"analyse", Analyse},    {"report", Report}, {"stat", Stat},
    {"draw", Draw},      {"apr", Apr}, {"calc", Calc},
};

// A command's result counts only once its output is out: a full disk, a
// closed pipe or a file-size limit makes it a failure with the reason.
int Delivered(int code) {
  std::cout.flush();
  int failed = std::fflush(stdout) != 0 || std::ferror(stdout) || !std::cout.good();
  if (!failed) return code;
  std::cerr << "kestrow-cli: the output could not be written: " << std::strerror(errno ? errno : EIO) << "\n";
  return FAILED;
}

int Run(int argc, char** argv) {
  Words words(argv + 1, argv + argc);
  bool yes = false, home = false;
  std::size_t i = 0;
  for (; i < words.size(); ++i) {
    const std::string& w = words[i];
    if ((w == "--yes" && yes) || (w == "--home" && home)) return Usage("the option " + w + " is given twice");
    if (w == "--yes") {
      yes = true;
    } else if (w == "--home") {
      if (i + 1 >= words.size()) return Usage("--home needs a folder");
      home = true;
      SetProgramFolder(words[++i]);
    } else if (w == "--help" || w == "-h") {
      std::cout << USAGE_TEXT;
      return OK;
    } else if (w.size() > 1 && w[0] == '-') {
      return Usage("unknown option " + w);
    } else {
      break;
    }
  }
  if (i >= words.size()) return Usage("no command given");
  const std::string& name = words[i];
  const Command* command = nullptr;
  for (const Command& c : COMMANDS)
    if (name == c.name) command = &c;
  if (!command) return Usage("unknown command " + name);
  InstallUi(std::make_unique<ConsoleUi>(yes));
  gPlatformRandom.seed(static_cast<std::mt19937::result_type>(
      std::chrono::system_clock::now().time_since_epoch().count()));
  return command->run(Words(words.begin() + static_cast<long>(i) + 1, words.end()));
}

}  // namespace
}  // namespace kestrow::cli

int main(int argc, char** argv) {
  // Past a file-size limit a write is to fail with EFBIG, which is reported,
  // rather than end the program with a truncated output and no word.
  std::signal(SIGXFSZ, SIG_IGN);
  int code;
  // Input beyond what memory holds ends with a message, never an abort.
  try {
    code = kestrow::cli::Run(argc, argv);
  } catch (const std::bad_alloc&) {
    code = kestrow::cli::Failed("not enough memory for this input");
  } catch (const std::exception& e) {
    code = kestrow::cli::Failed(e.what());
  }
  return kestrow::cli::Delivered(code);
}
