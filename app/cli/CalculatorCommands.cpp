// The regression calculator of a study's stored model, as its dialog runs
// it: the model evaluated at given factor values, or solved for a target
// within the factors' ranges and restraints, printed as JSON.
#include <chrono>
#include <iostream>

#include "app/cli/Cli.h"
#include "app/cli/Commands.h"
#include "core/Json.h"
#include "core/Problem.h"
#include "core/Text.h"
#include "data/Statistics.h"
#include "regression/CalculatorForm.h"
#include "workbench/Availability.h"

namespace kestrow::cli {

namespace {

// The factor row named by a key, a name or an abbreviation; -1 if none.
int FactorRow(const Study& s, const CalculatorForm& form, const std::string& word) {
  for (std::size_t i = 0; i < form.Factors().size(); ++i) {
    const CalculatorForm::Factor& f = form.Factors()[i];
    if (word == f.sKey || word == f.sName || word == s.GetFactorAbbr(f.iFactor)) return static_cast<int>(i);
  }
  return -1;
}

std::string FactorNames(const CalculatorForm& form) {
  std::string names;
  for (const CalculatorForm::Factor& f : form.Factors()) names += (names.empty() ? "" : ", ") + f.sName;
  return names;
}

// "F<=V", "F>=V" or "F=V" ("<" and ">" too) as a restraint row.
bool ParseRestraint(const Study& s, const CalculatorForm& form, const std::string& text, CalculatorForm::Restraint& out,
                    std::string& complaint) {
  const std::size_t at = text.find_first_of("<>=");
  if (at == std::string::npos || at == 0) {
    complaint = "a restraint is FACTOR<=VALUE, FACTOR>=VALUE or FACTOR=VALUE, not " + text;
    return false;
  }
  std::size_t end = at + 1;
  if (text[at] != '=' && end < text.size() && text[end] == '=') ++end;
  const std::string factor = Trim(text.substr(0, at)), relation = text.substr(at, end - at);
  const int row = FactorRow(s, form, factor);
  if (row < 0) {
    complaint = "the model has no factor " + factor + " (its factors: " + FactorNames(form) + ")";
    return false;
  }
  const std::vector<std::string> relations = CalculatorForm::Relations();
  out.factor = form.Factors()[static_cast<std::size_t>(row)].sName;
  out.relation = relation == "=" ? relations[0] : relation[0] == '<' ? relations[1] : relations[2];
  out.value = Trim(text.substr(end));
  if (out.value.empty()) {
    complaint = "the restraint " + text + " has no value";
    return false;
  }
  return true;
}

}  // namespace

int Calc(const Words& words) {
  // --restrain may come again and again; the other options once each.
  Words rest;
  std::vector<std::string> restrain;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] != "--restrain") {
      rest.push_back(words[i]);
      continue;
    }
    if (i + 1 >= words.size()) return Usage("--restrain takes FACTOR<=VALUE, FACTOR>=VALUE or FACTOR=VALUE");
    restrain.push_back(words[++i]);
  }
  Args a;
  std::string complaint;
  if (!ParseArgs(rest, {"--study", "--eval", "--solve", "--method", "--seconds"}, a, complaint)) return Usage(complaint);
  if (a.positional.size() != 1 || !a.Has("--study") || a.Has("--eval") == a.Has("--solve"))
    return Usage("calc takes a problem file, --study KEY and either --eval F=V[,F=V...] or --solve TARGET");
  if (a.Has("--eval") && (!restrain.empty() || a.Has("--method") || a.Has("--seconds")))
    return Usage("--restrain, --method and --seconds belong to --solve");
  const std::string method = a.Has("--method") ? a.Option("--method") : "twopass";
  if (method != "twopass" && method != "montecarlo") return Usage("--method takes twopass or montecarlo");
  int seconds = 0;
  if (method == "montecarlo" && (!a.Has("--seconds") || !ParseWhole(a.Option("--seconds"), 1, 86400, seconds)))
    return Usage("the Monte-Carlo method runs until stopped: give --seconds S, from 1 to 86400");
  if (method == "twopass" && a.Has("--seconds")) return Usage("--seconds is for the Monte-Carlo method");
  std::unique_ptr<Problem> problem;
  Study* s = LoadStudy(a, problem);
  if (!s) return FAILED;
  Statistics stats;
  stats.Compute(*s);
  if (std::string reason = AnalysisUnavailableReason(*s, stats, ANALYSIS_CALCULATOR); !reason.empty())
    return Failed(reason);
  CalculatorForm form(*s);
  if (!form.HasModel()) return Failed(form.lblEquation);

  if (a.Has("--eval")) {
    std::string list = a.Option("--eval");
    while (!list.empty()) {
      std::string item = Trim(PopToken(list));
      const std::size_t eq = item.find('=');
      const int row = eq == std::string::npos ? -1 : FactorRow(*s, form, Trim(item.substr(0, eq)));
      if (row < 0)
        return Usage("--eval takes FACTOR=VALUE for each factor of the model (" + FactorNames(form) + "), not " + item);
      form.values[static_cast<std::size_t>(row)] = Trim(item.substr(eq + 1));
    }
    for (std::size_t i = 0; i < form.values.size(); ++i)
      if (form.values[i].empty()) return Usage("--eval has no value for " + form.Factors()[i].sName);
    if (!form.cmdEvaluate_Click()) return FAILED;  // said
    std::cout << "{\"equation\": " << JsonQuote(form.lblEquation) << ", \"value\": " << JsonQuote(form.lblValue) << "}\n";
    return OK;
  }

  for (const std::string& text : restrain) {
    CalculatorForm::Restraint r;
    if (!ParseRestraint(*s, form, text, r, complaint)) return Usage(complaint);
    form.restraints.push_back(r);
  }
  form.txtTarget = a.Option("--solve");
  form.cmbAlgorithm = method == "montecarlo" ? CalculatorForm::MONTE_CARLO : CalculatorForm::TWO_PASS;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  if (seconds > 0) form.keepGoing = [deadline] { return std::chrono::steady_clock::now() < deadline; };
  if (!form.cmdSolve_Click()) return FAILED;  // said
  std::cout << "{\"target\": " << JsonQuote(form.txtTarget) << ",\n \"factors\": {";
  for (std::size_t i = 0; i < form.Factors().size(); ++i)
    std::cout << (i ? ", " : "") << JsonQuote(form.Factors()[i].sName) << ": " << JsonFloat(form.Factors()[i].fBest);
  // Against MAX or MIN the gap is no distance to anything.
  const bool extreme = form.Target() == 1e9f || form.Target() == -1e9f;
  std::cout << "},\n \"value\": " << JsonFloat(form.BestValue())
            << ", \"gap\": " << (extreme ? std::string("null") : JsonFloat(form.BestGap()))
            << ", \"evaluations\": " << form.Evaluations() << ",\n \"solution\": " << JsonQuote(form.lblSolution) << "}\n";
  return OK;
}

}  // namespace kestrow::cli
