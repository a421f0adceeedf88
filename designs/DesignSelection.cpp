#include "designs/DesignSelection.h"

#include "core/CueCards.h"
#include "core/Globals.h"
#include "core/Language.h"
#include "core/Problem.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "designs/Builders.h"
#include "designs/DesignsDb.h"

namespace kestrow {

namespace {

// A product of level counts is capped as it is accumulated.
constexpr std::int32_t RUN_CAP = 1000000;
// A full factorial of this many runs or more is not offered.
constexpr std::int32_t FULL_LIMIT = 32768;

const Problem& ProblemOf(const Study& s) { return s.pProblem ? *s.pProblem : *gProblem; }

// The first "%s", or else the first "%i", of a text replaced by the value.
std::string Fill(std::string text, const std::string& value) {
  std::size_t at = text.find("%s");
  if (at == std::string::npos) at = text.find("%i");
  if (at != std::string::npos) text.replace(at, 2, value);
  return text;
}

std::string Card(const std::string& tag) { return DesWizText(tag); }

}  // namespace

void DesignSelection::Count() {
  FullRuns = 1;
  NumFactors = Count2 = Count3 = Count4 = CountGT4 = 0;
  AllNumeric = true;
  for (int f = 1; f <= study_.Factors.Count(); ++f) {
    int levels = study_.GetNumLevels(f);
    ++NumFactors;
    FullRuns *= levels;
    if (FullRuns > RUN_CAP) FullRuns = RUN_CAP;
    if (levels == 2) ++Count2;
    else if (levels == 3) ++Count3;
    else if (levels == 4) ++Count4;
    else ++CountGT4;
    if (study_.GetPFactorFlag(study_.GetFactorKey(f)) & FACTOR_DISCRETE) AllNumeric = false;
  }
  FactorialFlag8 = (Count3 + Count4 + CountGT4 == 0 && AllNumeric) ? 8 : 0;

  CatalogueMask = 0;
  if (Count2 + Count4 + CountGT4 == 0 && AllNumeric) {
    // All three-level: the catalogue's three-level recipes need a middle level
    // that codes to exactly 0.
    bool centred = true;
    for (int f = 1; f <= study_.Factors.Count(); ++f) {
      const Factor* factor = study_.ResolveFactor(study_.GetFactorKey(f));
      if (!factor || factor->GetCoded(2) != 0.0f) centred = false;
    }
    if (centred) CatalogueMask = 3;
  }
  if (Count3 + Count4 + CountGT4 == 0 && AllNumeric) CatalogueMask = 5;
}

bool DesignSelection::DesSelLoad() {
  rows.clear();
  HasBlocked = HasLatin = false;
  Count();
  const Problem& problem = ProblemOf(study_);

  rows.push_back({GetText("DES01"), " -", 0, 0, 0, "", "USER", "", false});
  if (NumFactors == 1) {
    rows.push_back({GetText("DES02"), std::to_string(FullRuns), 1, 0, 0, "", "SINGLE", "", false});
    for (const Factor& f : problem.Factors) {
      if (!(f.iFlag & FACTOR_NOISE)) continue;
      HasBlocked = true;
      rows.push_back({GetText("DES03") + " (" + f.sName + ")", std::to_string(FullRuns * f.Levels.Count()), 32, 0,
                      0, "", "BLOCK1", f.sKey, false});
    }
    CheckForLatinSquares(FullRuns);
  }
  if (AllNumeric)
    rows.push_back({GetText("DES04"), "500 (" + GetText("max") + ")", 4, 0, 0, "", "UNSTRUCTURED", "", false});

  if (NumFactors != 1) {
    DesignsDb db;
    if (!db.Open()) {
      ErrorBox(GetText("MNerrg"));
      rows.clear();
      return false;
    }
    std::vector<DesignsDb::Row> found;
    std::string error;
    if (!db.Query("SELECT * FROM SitList LEFT JOIN Names ON SitList.NameCode=Names.NameCode", found, error)) {
      ReportError(error, "DesSelLoad");
      return false;
    }
    for (const auto& r : found) {
      long flags = r.Number("Flags");
      bool fits = r.Number("Min2") <= Count2 && Count2 <= r.Number("Max2") && r.Number("Min3") <= Count3 &&
                  Count3 <= r.Number("Max3") && r.Number("Num4") == Count4 && r.Number("NGT4") == CountGT4 &&
                  (flags <= 0 || (flags & CatalogueMask) != 0);
      if (!fits) continue;
      std::string recipe = r.Text("RecipeID");
      rows.push_back({r.Text("Name"), r.Text("Runs"), 0, static_cast<std::int16_t>(flags), 0, "", recipe, "",
                      recipe.substr(0, 2) != "tl"});
    }
    if (Count3 + Count4 + CountGT4 == 0) {
      if (!db.Query("SELECT * FROM Static2kp WHERE k=" + std::to_string(NumFactors) + " ORDER BY p DESC", found,
                    error)) {
        ReportError(error, "DesSelLoad");
        return false;
      }
      for (const auto& r : found) {
        std::string k = r.Text("k"), p = r.Text("p");
        rows.push_back({"2^(" + k + "-" + p + ") " + GetText("factorial"), r.Text("Runs"), 11, 0,
                        static_cast<std::int16_t>(r.Number("Resolution")), "", "2KP", k + "," + p, false});
      }
      if (NumFactors <= 8) rows.push_back({GetText("DES05"), " -", 8, 0, 0, "", "2FRACT", "", true});
    }
    db.Close();
    if (FullRuns < FULL_LIMIT) {
      auto flags = static_cast<std::int16_t>(FactorialFlag8 + 1 + (Count3 + Count4 + CountGT4 == 0 ? 2 : 0));
      rows.push_back({GetText("DES06"), std::to_string(FullRuns), flags, 0, 0, "", "FULLYX", "", true});
    }
  }
  DesignChanged = false;
  return true;
}

void DesignSelection::CheckForLatinSquares(int levels) {
  const Problem& problem = ProblemOf(study_);
  for (const Factor& f1 : problem.Factors) {
    if (!(f1.iFlag & FACTOR_NOISE) || f1.Levels.Count() != levels) continue;
    for (const Factor& f2 : problem.Factors) {
      if (!(f2.iFlag & FACTOR_NOISE) || f2.Levels.Count() != levels || !(f2.sKey > f1.sKey)) continue;
      HasLatin = true;
      rows.push_back({GetText("DES07") + " (" + f1.sName + ", " + f2.sName + ")", std::to_string(levels * levels),
                      96, 0, 0, "", "BLOCK2", f1.sKey + "|" + f2.sKey, false});
    }
  }
}

bool DesignSelection::NeedsDialog(const Design& row) {
  static const char* COMPUTED[] = {"2KP", "BLOCK1", "BLOCK2", "SINGLE", "UNSTRUCTURED", "FULLYX"};
  for (const char* code : COMPUTED)
    if (row.sTag == code) return false;
  return true;
}

bool DesignSelection::DesSelOK(int row) {
  if (row < 1 || row > static_cast<int>(rows.size())) return false;
  const Design d = rows[static_cast<std::size_t>(row - 1)];
  if (NeedsDialog(d)) {
    // User-defined designs, the fractional editor and the recipes of the
    // catalogue come with their own dialogs.
    InfoBox("The design family \"" + Trim(d.sName) + "\" cannot be built in this version of the program yet.");
    return false;
  }
  study_.ZapDesign();
  // The block builders add their noise factors to the study; a build that
  // fails (the shuffle of a random Latin square can step past the square)
  // leaves the factors as they were, so that the table offers it again.
  const auto factorsBefore = study_.Factors;
  std::int16_t ok = 0;
  if (d.sTag == "2KP") ok = Get2kpDesign(study_, d);
  else if (d.sTag == "BLOCK1") ok = GetBlocked1(study_, d);
  else if (d.sTag == "BLOCK2") ok = GetLatinSquare(study_, d);
  else if (d.sTag == "SINGLE") ok = GetSingleFactorDesign(study_, d);
  else if (d.sTag == "UNSTRUCTURED") ok = GetUnstructuredDesign(study_, d);
  else if (d.sTag == "FULLYX") ok = GetFullyCrossed(study_, d);
  if (ok) {
    std::string prefix = d.bShowRuns ? std::to_string(study_.iNumRuns) + "-" + LCase(GetText("Run")) : "";
    study_.sDesignName = prefix + d.sName;
    study_.sDesignParam = d.sTag2;
    study_.iDesFlag = d.iFlag;
  } else {
    study_.ZapDesign();
    study_.Factors = factorsBefore;
  }
  DesignChanged = true;
  return true;
}

DesignSelection::Advice DesignSelection::DesWizard() const {
  Advice a;
  int D = study_.CountDiscrete();
  int k = NumFactors;
  long N = FullRuns;
  std::string nText = std::to_string(N), kText = std::to_string(k);
  bool onlyTwo = Count3 + Count4 + CountGT4 == 0;
  bool onlyThree = Count2 + Count4 + CountGT4 == 0;
  bool twoAndThree = Count4 + CountGT4 == 0;

  if (k < 2) {
    a.heading = Fill(GetText("DWtxt01"), nText);
    if (HasLatin) a.suggestion = Card("DW01c");
    else if (HasBlocked) a.suggestion = Card("DW01b");
    else a.suggestion = Card(N >= 4 || D > 0 ? "DW02" : "DW01");
  } else if (onlyTwo && D == 0 && k <= 6) {
    a.heading = Fill(GetText("DWtxt02"), kText);
    a.suggestion = k <= 4 ? Fill(Card("DW03n"), nText) : Card(k == 5 ? "DW04n" : "DW05n");
  } else if (onlyTwo) {
    a.heading = Fill(GetText("DWtxt03"), kText);
    if (k <= 4) a.suggestion = Fill(Card("DW03"), nText);
    else if (k == 5) a.suggestion = Card("DW04");
    else if (k <= 11) a.suggestion = Card("DW05");
    else a.suggestion = Card("DW06");
  } else if (onlyThree) {
    a.heading = Fill(GetText("DWtxt04"), kText);
    if (D > 0) a.heading += " " + GetText(D >= k ? "DWtxt06" : "DWtxt05");
    if (D == 0 && k >= 3 && k <= 5) a.suggestion = Fill(Card("DW07"), k == 3 ? "15" : k == 4 ? "27" : "46");
    else if (k <= 3) a.suggestion = Card("DW08");
    else if (k < 8) a.suggestion = Card("DW09");
    else a.suggestion = Card(D > 0 ? "DW10a" : "DW10");
  } else if (twoAndThree && Count2 == 1 && Count3 >= 4 && Count3 <= 7) {
    a.heading = Fill(GetText("DWtxt07"), std::to_string(Count3));
    a.suggestion = Card("DW11");
  } else if (twoAndThree) {
    a.heading = Fill(Fill(GetText("DWtxt08"), std::to_string(Count2)), std::to_string(Count3));
    if (Count2 == 1 && Count3 >= 8) a.suggestion = Card("DW11a");
    else if (N < 37) a.suggestion = Fill(Card("DW07a"), nText);
    else a.suggestion = Fill(Card("DW11b"), nText);
  } else {
    a.heading = Fill(GetText("DWtxt09"), kText);
    if (N < FULL_LIMIT) a.suggestion = Fill(Card("DW12"), nText);
    else a.suggestion = Card(D > 0 ? "DW14" : "DW13");
  }
  return a;
}

}  // namespace kestrow
