// Regular two-level fractions 2^(k-p): the base factors vary in standard
// order, the added factors follow their generators, and the contrasts carry
// the alias sets of the defining relation.
#include <vector>

#include "core/Language.h"
#include "core/Study.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "designs/Builders.h"
#include "designs/ContrastAlgebra.h"
#include "designs/Design.h"
#include "designs/DesignsDb.h"

namespace kestrow {

namespace {

// Words of seven letters or more take no part in alias lists.
constexpr std::size_t LONGEST_KEPT_WORD = 6;

std::string Letter(int i) { return std::string(1, CONTRAST_ALPHABET[i - 1]); }

void AddAlias(std::string& list, const std::string& word) { list += (list.empty() ? "" : ",") + word; }

// The product of the main contrasts of a word's letters at a run.
float WordValue(const Study& s, const std::string& word, int run) {
  float value = 1.0f;
  for (char letter : word) {
    int i = static_cast<int>(std::string(CONTRAST_ALPHABET).find(letter)) + 1;
    value *= s.Contrasts(i).fGetLevel(run);
  }
  return value;
}

}  // namespace

std::int16_t Get2kpDesign(Study& s, const Design& row) {
  std::string param = row.sTag2;
  int k = static_cast<int>(Val(PopToken(param)));
  int p = static_cast<int>(Val(param));

  DesignsDb db;
  if (!db.Open()) {
    ErrorBox(GetText("MNerrg"));
    return 0;
  }
  std::vector<DesignsDb::Row> rows;
  std::string error;
  if (!db.Query("SELECT * FROM Static2kp WHERE k=" + std::to_string(k) + " AND p=" + std::to_string(p), rows,
                error) ||
      rows.empty() || k < 1 || k > 15 || p < 0 || p >= k) {
    ReportError(rows.empty() ? "No regular fraction of " + std::to_string(k) + " factors in " +
                                   std::to_string(1 << (k - p > 0 && k - p < 16 ? k - p : 0)) + " runs"
                             : error,
                "Get2kpDesign");
    return 0;
  }
  const DesignsDb::Row& r = rows[0];
  int maxI = static_cast<int>(r.Number("MaxI"));
  int runs = static_cast<int>(r.Number("Runs"));
  int resolution = static_cast<int>(r.Number("Resolution"));
  std::vector<std::string> generators;
  for (int g = 1; g <= p; ++g) generators.push_back(r.Text("F" + std::to_string(g)));
  db.Close();
  int base = k - p;

  // Treatments: factor A varies slowest, the last base factor fastest.
  for (int run = 1; run <= runs; ++run) {
    Treatment t;
    t.SetZero(k);
    for (int j = 1; j <= base; ++j) t.SetLevel(j, ((run - 1) & (1 << (base - j))) ? 2 : 1);
    s.Treatments.Add(std::move(t), std::to_string(run));
  }

  // Main contrasts; those of the added factors are filled below.
  for (int i = 1; i <= k; ++i) {
    Contrast c;
    c.SetName(i);
    if (i <= base)
      for (int run = 1; run <= runs; ++run) c.fSetLevel(run, s.GetTreatmentLevel(i, run) == 2 ? 1.0f : -1.0f);
    s.Contrasts.Add(std::move(c));
  }

  // The defining relation, in the order of the products.
  std::vector<std::string> kept;
  for (int m = 1; m < (1 << p); ++m) {
    std::string word;
    for (int b = 0; b < p; ++b)
      if (m & (1 << b)) word = MultiplyWords(word, generators[static_cast<std::size_t>(b)]);
    if (word.size() <= LONGEST_KEPT_WORD) kept.push_back(word);
  }

  // Aliases of the main effects.
  for (int i = 1; i <= k; ++i)
    for (const std::string& w : kept) {
      std::string x = MultiplyWords(Letter(i), w);
      if (static_cast<int>(x.size()) <= maxI && x.size() > 1) AddAlias(s.Contrasts(i).sAliases, x);
    }

  // Two-factor interactions: a pair is listed unless it is aliased to a main
  // effect or a smaller pair of its alias set carries the contrast.
  for (int i = 1; i <= k; ++i)
    for (int j = i + 1; j <= k; ++j) {
      std::string word = Letter(i) + Letter(j), aliases;
      bool marked = true;
      for (const std::string& w : kept) {
        std::string x = MultiplyWords(word, w);
        if (x.size() == 1) {
          marked = false;
        } else if (x.size() == 2) {
          if (word <= x) AddAlias(aliases, x);
          else marked = false;
        } else if (x.size() == 3 && maxI == 3) {
          AddAlias(aliases, x);
        }
      }
      if (!marked) continue;
      Contrast c;
      c.sName = word;
      c.sAliases = aliases;
      s.Contrasts.Add(std::move(c));
    }

  // Three-factor interactions, only above resolution III.
  if (resolution > 3)
    for (int i = 1; i <= k; ++i)
      for (int j = i + 1; j <= k; ++j)
        for (int l = j + 1; l <= k; ++l) {
          std::string word = Letter(i) + Letter(j) + Letter(l), aliases;
          bool marked = true;
          for (const std::string& w : kept) {
            std::string x = MultiplyWords(word, w);
            if (x.size() == 1 || x.size() == 2) {
              marked = false;
            } else if (x.size() == 3) {
              if (word <= x) AddAlias(aliases, x);
              else marked = false;
            }
          }
          if (!marked) continue;
          Contrast c;
          c.sName = word;
          c.sAliases = aliases;
          s.Contrasts.Add(std::move(c));
        }

  // Added factors follow their generators, all with a plus sign.
  for (int i = base + 1; i <= k; ++i) {
    std::string word = generators[static_cast<std::size_t>(i - base - 1)];
    word.pop_back();
    for (int run = 1; run <= runs; ++run) {
      float product = WordValue(s, word, run);
      s.Contrasts(i).fSetLevel(run, product);
      s.Treatments(run).SetLevel(i, product == 1.0f ? 2 : 1);
    }
  }

  // Interaction contrasts: the product of the main contrasts of their word.
  for (int c = k + 1; c <= s.Contrasts.Count(); ++c) {
    std::string word = s.Contrasts(c).sName;
    if (word.size() < 2) {
      std::string aliases = s.Contrasts(c).sAliases;
      word = PopToken(aliases);
    }
    for (int run = 1; run <= runs; ++run) s.Contrasts(c).fSetLevel(run, WordValue(s, word, run));
  }

  s.iNumRuns = static_cast<std::int16_t>(runs);
  for (int i = 1; i <= k; ++i) s.SetContrastMeaning(i, i);
  return -1;
}

}  // namespace kestrow
