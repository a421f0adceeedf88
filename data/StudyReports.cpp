#include "data/StudyReports.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "core/Clock.h"
#include "core/Formatters.h"
#include "core/Language.h"
#include "core/Problem.h"
#include "core/Report.h"
#include "core/Sentinels.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "data/Statistics.h"

namespace kestrow {

namespace {

const std::string NUMBER_SAMPLE = "12345678";
const std::string RIGHT(1, REP_RIGHT);

// Cells joined by "|" as the report writer takes them.
std::string Row(const std::vector<std::string>& cells) {
  std::string row;
  for (std::size_t i = 0; i < cells.size(); ++i) row += (i ? "|" : "") + cells[i];
  return row;
}

// A text as wide as the widest of the given texts, to size a column.
std::string Sample(std::initializer_list<std::string> texts, std::size_t atLeast = 0) {
  std::size_t width = atLeast;
  for (const std::string& t : texts) width = std::max(width, CharCount(t));
  return std::string(width, 'x');
}

std::string Labelled(const std::string& tag, const std::string& value) { return GetText(tag) + ": " + value; }

std::string Number(float value) { return value > MISSING_VALUE ? RIGHT + FormatNumSF(value) : ""; }

bool Open(Report& rep, const std::string& file) {
  if (rep.RepOpen(file)) return true;
  ErrorBox("The report file " + file + " cannot be written.");
  return false;
}

// The title underlined, then the problem, the study and the date.
void Heading(Report& rep, const std::string& titleTag, const Problem& problem, const Study& study) {
  rep.RepSend(GetText(titleTag) + " - " + PROGRAM_TITLE);
  rep.RepUnderline();
  rep.RepSend(Labelled("Problem", problem.sName));
  rep.RepSend(Labelled("Study", study.sName));
  rep.RepSend(Labelled("Printed", ShortDate()));
}

void Section(Report& rep, const std::string& tag) {
  rep.RepLF();
  rep.RepSend(GetText(tag));
  rep.RepUnderline();
}

// A factor's column sample: as wide as its abbreviation and its longest level.
std::string FactorSample(const Study& study, int f) {
  std::string key = study.GetFactorKey(f);
  std::size_t width = CharCount(study.GetPFactorName2(key));
  for (int l = 1; l <= study.GetPFactorLevelsCount(key); ++l)
    width = std::max(width, CharCount(study.GetPFactorLevelName(key, l)));
  return std::string(width, 'x');
}

// Sets the columns; past the writer's last column the report is given up.
bool Columns(Report& rep, const std::vector<std::string>& samples) {
  if (rep.RepFormatColumns(Row(samples))) return true;
  rep.RepClose();
  return false;
}

}  // namespace

bool WriteWorksheet(const Problem& problem, const Study& study, const std::string& file) {
  Report rep;
  if (!Open(rep, file)) return false;
  Heading(rep, "Wksheet", problem, study);
  rep.RepSend(Labelled("Design", study.sDesignName));
  rep.RepSend(Labelled("DatOrder", study.sSequence()));
  rep.RepLF();
  std::string label = GetText("Response") + ": ";
  for (int rv = 1; rv <= study.StudyRespVars.Count(); ++rv) {
    std::string key = study.StudyRespVars(rv).sKey;
    std::string line = (rv == 1 ? label : std::string(CharCount(label), ' ')) + study.GetPRVName(key);
    if (!study.GetPRVUnits(key).empty()) line += " (" + study.GetPRVUnits(key) + ")";
    rep.RepSend(line);
  }
  rep.RepLF();

  int nF = study.Factors.Count(), nRV = study.StudyRespVars.Count();
  std::vector<std::string> samples{"      ", "      "}, head1{GetText("Run"), GetText("Rep")}, head2{"", ""};
  for (int f = 1; f <= nF; ++f) {
    samples.push_back(FactorSample(study, f));
    head1.push_back(f == 1 ? GetText("Factor") : "");
    head2.push_back(study.GetPFactorName2(study.GetFactorKey(f)));
  }
  for (int rv = 1; rv <= nRV; ++rv) {
    std::string resp = GetText("Resp") + " " + std::to_string(rv);
    std::string abbr = study.GetPRVDisplayAbbr(study.StudyRespVars(rv).sKey);
    samples.push_back(Sample({resp, abbr}, NUMBER_SAMPLE.size()));
    head1.push_back(resp);
    head2.push_back(abbr);
  }
  if (!Columns(rep, samples)) return false;
  rep.RepSendFormatted(Row(head1), true);
  rep.RepSendFormatted(Row(head2), true);
  rep.RepSendFormatted(Row(std::vector<std::string>(samples.size(), std::string(1, REP_DASHES))), true);

  // Entries in the order of the run sequence: position p of a replication
  // holds the run that GetSeq names, or run p where none is assigned.
  for (int r = 1; r <= study.iReps; ++r)
    for (int p = 1; p <= study.iNumRuns; ++p) {
      int seq = study.DoesArrayExist() ? study.GetSeq(p, r) : 0;
      int run = seq >= 1 && seq <= study.iNumRuns ? seq : p;
      std::vector<std::string> cells{PadLeft(std::to_string(run), 4), PadLeft(std::to_string(r), 4)};
      for (int f = 1; f <= nF; ++f) cells.push_back(study.GetTreatmentLevelName(f, run));
      for (int rv = 1; rv <= nRV; ++rv) {
        float v = study.DoesArrayExist() ? study.GetData(rv, run, r) : MISSING_VALUE;
        // The blank to write on stands where a figure would, right-aligned,
        // so a figure before it keeps its gap.
        cells.push_back(RIGHT + (v > MISSING_VALUE ? ShortestText(v) : std::string("________")));
      }
      rep.RepSendFormatted(Row(cells), true);
    }
  rep.RepClose();
  return true;
}

bool WriteStats(const Problem& problem, const Study& study, const Statistics& st, const std::string& file) {
  Report rep;
  if (!Open(rep, file)) return false;
  Heading(rep, "StatsRep", problem, study);
  int nF = study.Factors.Count(), nRV = study.StudyRespVars.Count(), runs = study.iNumRuns;
  bool spread = study.iReps > 1;

  // The treatments.
  Section(rep, "Ttable");
  std::vector<std::string> samples{"      ", " Run"}, head{"", " " + GetText("Run")};
  for (int f = 1; f <= nF; ++f) {
    samples.push_back(FactorSample(study, f));
    head.push_back(study.GetPFactorName2(study.GetFactorKey(f)));
  }
  if (!Columns(rep, samples)) return false;
  rep.RepSendFormatted(Row(head), true);
  for (int run = 1; run <= runs; ++run) {
    std::vector<std::string> cells{"", PadLeft(std::to_string(run), 4)};
    for (int f = 1; f <= nF; ++f) cells.push_back(study.GetTreatmentLevelName(f, run));
    rep.RepSendFormatted(Row(cells), true);
  }

  // Per-run results, one group of columns per response variable.
  Section(rep, "Results");
  std::vector<std::string> stats{GetText("Mean")};
  if (spread) stats.insert(stats.end(), {GetText("Range"), GetText("StdDev")});
  samples = {"      ", " Run"};
  std::vector<std::string> names{"", ""}, heads{"", ""};
  for (int rv = 1; rv <= nRV; ++rv)
    for (std::size_t s = 0; s < stats.size(); ++s) {
      samples.push_back(Sample({stats[s]}, NUMBER_SAMPLE.size()));
      names.push_back(s == 0 ? "---> " + study.GetPRVDisplayName(study.StudyRespVars(rv).sKey) : "");
      heads.push_back(RIGHT + stats[s]);
    }
  if (!Columns(rep, samples)) return false;
  rep.RepSendFormatted(Row(names), false);
  rep.RepSendFormatted(Row(heads), true);
  auto figures = [&](const std::string& label, const std::string& run, auto value) {
    std::vector<std::string> cells{label, run};
    for (int rv = 1; rv <= nRV; ++rv)
      for (std::size_t s = 0; s < stats.size(); ++s) cells.push_back(value(rv, static_cast<int>(s)));
    rep.RepSendFormatted(Row(cells), true);
  };
  for (int run = 1; run <= runs; ++run)
    figures("", PadLeft(std::to_string(run), 4), [&](int rv, int s) {
      return Number(s == 0 ? st.SampAvg(run, rv) : s == 1 ? st.SampRng(run, rv) : st.SampSig(run, rv));
    });
  // A response without data has no overall figures: its sums stand at their
  // starting values (0, and the extremes at +-1e9), which are no results.
  auto overall = [&](int rv, float value) { return st.flag(rv) & STATS_NO_DATA ? std::string() : Number(value); };
  figures("Mean:", "", [&](int rv, int s) {
    return overall(rv, s == 0 ? st.AvgAvg(rv) : s == 1 ? st.RngAvg(rv) : st.SigAvg(rv));
  });
  figures(GetText("Min"), "", [&](int rv, int s) { return s == 0 ? overall(rv, st.ObsMin(rv)) : ""; });
  figures(GetText("Max"), "", [&](int rv, int s) { return s == 0 ? overall(rv, st.ObsMax(rv)) : ""; });
  figures(GetText("Mean"), "", [&](int rv, int s) { return s == 0 ? overall(rv, st.AvgAvg(rv)) : ""; });

  // By factor level: the observations of the runs at each level.
  Section(rep, "FacStat");
  samples = {"      "};
  std::vector<std::string> top{GetText("Factor")}, sub{""};
  for (int f = 1; f <= nF; ++f) samples[0] = Sample({samples[0], FactorSample(study, f), top[0]});
  for (int rv = 1; rv <= nRV; ++rv)
    for (const char* tag : {"Min", "Max", "Mean"}) {
      samples.push_back(Sample({GetText(tag)}, NUMBER_SAMPLE.size()));
      top.push_back(std::string(tag) == "Min" ? "---> " + study.GetPRVDisplayName(study.StudyRespVars(rv).sKey) : "");
      sub.push_back(RIGHT + GetText(tag));
    }
  if (!Columns(rep, samples)) return false;
  rep.RepSendFormatted(Row(top), false);
  rep.RepSendFormatted(Row(sub), true);
  for (int f = 1; f <= nF; ++f) {
    std::string key = study.GetFactorKey(f);
    rep.RepSend(study.GetPFactorName2(key));
    for (int l = 1; l <= study.GetPFactorLevelsCount(key); ++l) {
      std::vector<std::string> cells{"  " + study.GetPFactorLevelName(key, l)};
      for (int rv = 1; rv <= nRV; ++rv) {
        float lo = TARGET_MAX, hi = TARGET_MIN;
        double sum = 0;
        int n = 0;
        for (int run = 1; run <= runs; ++run) {
          if (study.GetTreatmentLevel(f, run) != l) continue;
          for (int r = 1; r <= study.iReps; ++r) {
            float v = study.GetData(rv, run, r);
            if (v <= MISSING_VALUE) continue;
            lo = std::min(lo, v);
            hi = std::max(hi, v);
            sum += v;
            ++n;
          }
        }
        cells.push_back(n ? Number(lo) : "");
        cells.push_back(n ? Number(hi) : "");
        cells.push_back(n ? Number(static_cast<float>(sum / n)) : "");
      }
      rep.RepSendFormatted(Row(cells), true);
    }
  }
  rep.RepClose();
  return true;
}

std::string WorksheetRefusal(const Study* study) {
  return !study || study->iNumRuns < 1 ? GetText("MNerrb") : std::string();
}

std::string StatsRefusal(const Study* study, Statistics& stats) {
  if (!study || !study->DoesArrayExist()) return GetText("MNmsgj");
  stats.Compute(*study);
  for (int rv = 1; rv <= stats.CountRVs(); ++rv)
    if (!(stats.flag(rv) & STATS_NO_DATA)) return std::string();
  return GetText("MNmsgj");
}

void ShowWorksheet(const Problem& problem, const Study* study) {
  if (std::string refusal = WorksheetRefusal(study); !refusal.empty()) return InfoBox(refusal);
  ShowTextReport([&](const std::string& file) { return WriteWorksheet(problem, *study, file); });
}

void ShowStats(const Problem& problem, const Study* study) {
  Statistics stats;
  if (std::string refusal = StatsRefusal(study, stats); !refusal.empty()) return InfoBox(refusal);
  ShowTextReport([&](const std::string& file) { return WriteStats(problem, *study, stats, file); });
}

}  // namespace kestrow
