#include "app/cli/Cli.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iostream>

#include "core/Language.h"
#include "core/Paths.h"
#include "core/Problem.h"
#include "core/Settings.h"
#include "core/Text.h"

namespace kestrow::cli {

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
    "  analyse FILE.KSW --study KEY (--code N | --report ipo|multichart) [--detail TEXT] [--tsv]\n"
    "          [--image OUT.ext] [--size WxH]\n"
    "                                show analysis N of the study with its stored settings: the\n"
    "                                grid as JSON (rows, back and fore colours), or as tab-separated rows;\n"
    "                                a chart analysis or report prints its chart list and draws it with --image;\n"
    "                                --detail draws one chart of a chart analysis (a chart of its list, an\n"
    "                                effects-plot filter, the scattergram's FACTOR[|RESPONSE[|DEGREE]])\n"
    "  apr FILE.KSW --study KEY [--no-hierarchy] [--copy-back [-o OUT.KSW]]\n"
    "                                all possible regressions of the terms of the stored model: the result\n"
    "                                grid as JSON, the best row marked; --copy-back fits the best model,\n"
    "                                stores it in the study and saves (over FILE without -o)\n"
    "  calc FILE.KSW --study KEY (--eval F=V[,F=V...] | --solve TARGET [--restrain \"F<=V\"]...\n"
    "          [--method twopass|montecarlo --seconds S])\n"
    "                                the regression calculator: the model's value at the factor values\n"
    "                                given, or the factor values that come closest to TARGET (a number,\n"
    "                                MAX or MIN) within the levels' ranges and the restraints, as JSON\n"
    "  draw CHARTS.json --image OUT.ext [--size WxH]\n"
    "                                draw a chart list into a picture (png, bmp, jpg, svg, pdf, wmf, emf)\n"
    "                                and print the list as drawn\n"
    "  report FILE.KSW --study KEY stats|worksheet\n"
    "                                the study's statistics report or data worksheet as text\n"
    "  stat ROUTINE ARGS...          call one statistical routine and print its result: FValue P v1 v2,\n"
    "                                FProbability F v1 v2, tProbability t v, NormalProbability z,\n"
    "                                NormalValue P, FormatSF digits value, FormatP decimals p,\n"
    "                                FormatDecimals decimals value, ReadTableB n k, ReadTableC n column,\n"
    "                                ReadTableD alpha v k, ReadTableF alpha v1 v2, ReadtPercent v alpha,\n"
    "                                ReadDuncanRow f alpha, GetScale fmin fmax, RainbowColour P\n"
    "\n"
    "options:\n"
    "  --yes        answer every question Yes (default: No)\n"
    "  --home DIR   the program folder (as $KESTROW_HOME)\n";

int Usage(const std::string& complaint) {
  std::cerr << "kestrow-cli: " << complaint << "\n\n" << USAGE_TEXT;
  return USAGE;
}

int Failed(const std::string& message) {
  std::cerr << "kestrow-cli: " << message << "\n";
  return FAILED;
}

bool Args::Flag(const std::string& flag) const { return std::find(flags.begin(), flags.end(), flag) != flags.end(); }

bool ParseArgs(const std::vector<std::string>& words, const std::vector<std::string>& known, Args& out,
               std::string& complaint, const std::vector<std::string>& knownFlags) {
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& w = words[i];
    if (w.size() < 2 || w[0] != '-') {
      out.positional.push_back(w);
      continue;
    }
    bool isFlag = std::find(knownFlags.begin(), knownFlags.end(), w) != knownFlags.end();
    bool isOption = std::find(known.begin(), known.end(), w) != known.end();
    if (!isFlag && !isOption) {
      complaint = "unknown option " + w;
      return false;
    }
    if (out.options.count(w) || out.Flag(w)) {
      complaint = "the option " + w + " is given twice";
      return false;
    }
    if (isFlag) {
      out.flags.push_back(w);
      continue;
    }
    if (i + 1 >= words.size()) {
      complaint = w + " needs a value";
      return false;
    }
    out.options[w] = words[++i];
  }
  return true;
}

bool ParseWhole(const std::string& text, long lo, long hi, int& out) {
  if (!IsNumeric(text) || text.find_first_of(".eE") != std::string::npos) return false;
  double v = Val(text);
  if (v < static_cast<double>(lo) || v > static_cast<double>(hi)) return false;
  out = static_cast<int>(v);
  return true;
}

bool ReadJsonFile(const std::string& path, std::string& text, std::string& error) {
  int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) {
    error = "cannot read " + path + ": " + std::strerror(errno);
    return false;
  }
  text.clear();
  bool started = false;  // the first character that is no blank can begin a JSON value
  char chunk[65536];
  for (;;) {
    ssize_t n = ::read(fd, chunk, sizeof chunk);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      error = "cannot read " + path + ": " + std::strerror(errno);
      ::close(fd);
      return false;
    }
    if (n == 0) break;
    text.append(chunk, static_cast<std::size_t>(n));
    if (!started) {
      std::size_t first = text.find_first_not_of(" \t\r\n");
      if (first == std::string::npos) continue;
      // Anything else is refused here; a value that is no object is left to
      // the reader, which says where and what is wrong.
      if (std::string("{[\"-0123456789tfn").find(text[first]) == std::string::npos) {
        error = path + ": not a JSON document";
        ::close(fd);
        return false;
      }
      started = true;
    }
  }
  ::close(fd);
  return true;
}

std::unique_ptr<Problem> LoadProblem(const std::string& path) {
  auto problem = std::make_unique<Problem>();
  if (!problem->Load(path)) return nullptr;
  return problem;
}

Study* FindStudy(Problem& p, const Args& a) {
  auto it = a.options.find("--study");
  if (it == a.options.end()) return nullptr;
  Study* s = p.Studies.Find(it->second);
  if (!s) Failed("the problem has no study with the key " + it->second);
  return s;
}

Study* LoadStudy(const Args& a, std::unique_ptr<Problem>& problem) {
  if (!OpenProgramFiles()) return nullptr;
  problem = LoadProblem(a.positional[0]);
  return problem ? FindStudy(*problem, a) : nullptr;
}

bool OpenLanguageFiles() {
  LoadSettings();
  if (!OpenLanguage(JoinPath(ProgramFolder(), "KSTlang.MDB"), gSettings.Language)) {
    Failed(LanguageError());
    return false;
  }
  return true;
}

bool OpenProgramFiles() {
  if (!OpenLanguageFiles()) return false;
  if (!FileExists(JoinPath(ProgramFolder(), "DESIGNS.MDB"))) {
    Failed("Cannot locate designs database, DESIGNS.MDB");
    return false;
  }
  return true;
}

}  // namespace kestrow::cli
