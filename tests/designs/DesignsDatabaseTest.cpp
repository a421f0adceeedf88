// The design catalogue DESIGNS.MDB as the build generates it: the tables and
// columns the builders query, the regular fractions of Static2kp and the
// orthogonal contrasts of OrthoCon. Every property is recomputed here from the
// stored words and numbers, without the generator's code.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <bit>
#include <cstdint>
#include <map>
#include <numeric>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "designs/ContrastAlgebra.h"

namespace kestrow {
namespace {

using Row = std::vector<std::optional<std::string>>;

// The rows of one query on the catalogue, opened read-only; a query that does
// not prepare fails the test.
std::vector<Row> Query(const std::string& sql) {
  std::vector<Row> rows;
  sqlite3* db = nullptr;
  sqlite3_stmt* st = nullptr;
  if (sqlite3_open_v2(KESTROW_BIN "/DESIGNS.MDB", &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK ||
      sqlite3_prepare_v2(db, sql.c_str(), -1, &st, nullptr) != SQLITE_OK) {
    ADD_FAILURE() << sql << ": " << sqlite3_errmsg(db);
  } else {
    while (sqlite3_step(st) == SQLITE_ROW) {
      Row row;
      for (int i = 0; i < sqlite3_column_count(st); ++i) {
        auto text = reinterpret_cast<const char*>(sqlite3_column_text(st, i));
        row.push_back(text ? std::optional<std::string>(text) : std::nullopt);
      }
      rows.push_back(row);
    }
  }
  sqlite3_finalize(st);
  sqlite3_close(db);
  return rows;
}

int Int(const std::optional<std::string>& field) { return std::stoi(field.value_or("-1")); }

// ---- Static2kp ------------------------------------------------------------

struct Fraction {
  int k, p, runs, resolution, maxI;
  std::vector<std::uint32_t> generators;  // F1 ... Fp as letter masks, A = bit 0
  Row fields;                             // the stored row
};

std::vector<Fraction> ReadFractions() {
  std::vector<Fraction> out;
  for (const auto& r : Query("SELECT * FROM Static2kp ORDER BY k, p")) {
    Fraction d{Int(r[0]), Int(r[1]), Int(r[2]), Int(r[3]), Int(r[4]), {}, r};
    for (int i = 0; i < d.p && 5 + i < static_cast<int>(r.size()); ++i) {
      std::uint32_t mask = 0;
      for (char c : r[static_cast<std::size_t>(5 + i)].value_or("")) mask |= 1u << (c - 'A');
      d.generators.push_back(mask);
    }
    out.push_back(d);
  }
  return out;
}

// The 2^p - 1 words of the defining relation: the products (symmetric
// differences) of the non-empty sets of generators.
std::vector<std::uint32_t> DefiningRelation(const std::vector<std::uint32_t>& generators) {
  std::vector<std::uint32_t> words{0};
  for (std::uint32_t g : generators)
    for (std::size_t i = 0, n = words.size(); i < n; ++i) words.push_back(words[i] ^ g);
  words.erase(words.begin());
  return words;
}

// The word-length pattern: element i counts the words of i letters.
std::vector<int> WordLengths(const std::vector<std::uint32_t>& generators) {
  std::vector<int> a(17, 0);
  for (std::uint32_t w : DefiningRelation(generators)) ++a[static_cast<std::size_t>(std::popcount(w))];
  return a;
}

std::string Show(std::vector<int> a) {
  while (a.size() > 4 && a.back() == 0) a.pop_back();
  std::string s = "A3..";
  for (std::size_t i = 3; i < a.size(); ++i) s += " " + std::to_string(a[i]);
  return s;
}

TEST(DesignsDatabaseStatic2kp, HoldsEachFractionOfThreeToFifteenFactorsWithUpTo128RunsExactlyOnce) {
  std::multiset<std::pair<int, int>> expected, stored;
  for (int k = 3; k <= 15; ++k)
    for (int p = 1; p < k; ++p)
      if ((1 << (k - p)) >= k + 1 && (1 << (k - p)) <= 128) expected.insert({k, p});
  for (const auto& d : ReadFractions()) stored.insert({d.k, d.p});
  EXPECT_EQ(expected.size(), 43u);
  EXPECT_EQ(stored, expected);
}

TEST(DesignsDatabaseStatic2kp, EveryRowIsARegularFractionWithTheRunsResolutionAndMaxIItStores) {
  for (const auto& d : ReadFractions()) {
    SCOPED_TRACE("2^(" + std::to_string(d.k) + "-" + std::to_string(d.p) + ")");
    const int base = d.k - d.p;
    EXPECT_EQ(d.runs, 1 << base);
    EXPECT_EQ(d.maxI, d.runs <= 32 ? 3 : 2);
    ASSERT_EQ(d.fields.size(), 16u);
    for (std::size_t i = 5; i < 16; ++i) EXPECT_EQ(d.fields[i].has_value(), static_cast<int>(i) - 5 < d.p) << i;

    // The builder reads word i as "added factor i = product of the others".
    for (int i = 0; i < d.p; ++i) {
      const std::uint32_t g = d.generators[static_cast<std::size_t>(i)];
      EXPECT_EQ(g >> base, 1u << i) << "F" << i + 1 << " must hold exactly its own added factor";
      EXPECT_GE(std::popcount(g), 3) << "F" << i + 1;
    }
    const auto relation = DefiningRelation(d.generators);
    const std::set<std::uint32_t> distinct(relation.begin(), relation.end());
    EXPECT_EQ(distinct.size(), relation.size()) << "the generators are not independent";
    EXPECT_EQ(distinct.count(0u), 0u) << "a product of generators is empty";

    const auto a = WordLengths(d.generators);
    int shortest = 1;
    while (a[static_cast<std::size_t>(shortest)] == 0) ++shortest;
    EXPECT_EQ(d.resolution, shortest) << Show(a);
  }
}

// Calls visit with every set of p distinct interaction columns (masks of two
// or more base factors) over `base` factors.
template <typename Visit>
void EachChoiceOfAddedColumns(int base, int p, std::vector<std::uint32_t>& chosen, std::uint32_t from, Visit visit) {
  if (static_cast<int>(chosen.size()) == p) return visit(chosen);
  for (std::uint32_t c = from; c < (1u << base); ++c) {
    if (std::popcount(c) < 2) continue;
    chosen.push_back(c | 1u << (base + static_cast<int>(chosen.size())));
    EachChoiceOfAddedColumns(base, p, chosen, c + 1, visit);
    chosen.pop_back();
  }
}

// Any regular fraction has k-p independent factors, and a change of basis
// makes them the base factors without changing the word lengths; so trying
// every choice of added columns over fixed base factors tries every design.
TEST(DesignsDatabaseStatic2kp, FractionsOfUpTo16RunsAnd32RunsWithFourGeneratorsHaveMinimumAberration) {
  int checked = 0;
  for (const auto& d : ReadFractions()) {
    if (d.runs > 32 || (d.runs == 32 && d.p > 4)) continue;
    SCOPED_TRACE("2^(" + std::to_string(d.k) + "-" + std::to_string(d.p) + ")");
    const auto stored = WordLengths(d.generators);
    std::optional<std::vector<int>> better;
    std::vector<std::uint32_t> chosen;
    EachChoiceOfAddedColumns(d.k - d.p, d.p, chosen, 3, [&](const std::vector<std::uint32_t>& generators) {
      const auto a = WordLengths(generators);
      if (!better && a < stored) better = a;
    });
    if (better) ADD_FAILURE() << "stored " << Show(stored) << "; another choice has " << Show(*better);
    ++checked;
  }
  EXPECT_EQ(checked, 20);
}

// ---- OrthoCon -------------------------------------------------------------

struct OrthoRow {
  int index;
  std::string name;
  std::vector<int> list;
};

// The rows of each level count in order of Index; a ConList that is not a
// list of whole numbers fails the test.
std::map<int, std::vector<OrthoRow>> ReadContrasts() {
  std::map<int, std::vector<OrthoRow>> out;
  for (const auto& r : Query("SELECT Levels, \"Index\", ConName, ConList FROM OrthoCon ORDER BY Levels, \"Index\"")) {
    OrthoRow row{Int(r[1]), r[2].value_or(""), {}};
    std::stringstream in(r[3].value_or(""));
    std::string item;
    while (std::getline(in, item, ',')) {
      std::size_t used = 0;
      row.list.push_back(std::stoi(item, &used));
      EXPECT_EQ(used, item.size()) << r[3].value_or("");
    }
    out[Int(r[0])].push_back(row);
  }
  return out;
}

// Orthogonal, summing to 0 and of rising degree: the column of index d is
// orthogonal to the powers 0 ... d-1 of the level and not to the d-th. That
// fixes each column up to a factor; the smallest whole numbers with a positive
// last entry then give the published tables (Fisher & Yates), for example
// 1,-4,6,-4,1 for the quartic of five levels.
TEST(DesignsDatabaseOrthoCon, HoldsTheOrthogonalPolynomialsOfTwoToEightLevelsInSmallestWholeNumbers) {
  const auto contrasts = ReadContrasts();
  EXPECT_EQ(contrasts.size(), 7u);
  for (int levels = 2; levels <= 8; ++levels) {
    SCOPED_TRACE(std::to_string(levels) + " levels");
    const auto& rows = contrasts.count(levels) ? contrasts.at(levels) : std::vector<OrthoRow>{};
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(levels - 1));
    for (std::size_t d = 1; d <= rows.size(); ++d) {
      const auto& c = rows[d - 1].list;
      SCOPED_TRACE("index " + std::to_string(d));
      EXPECT_EQ(rows[d - 1].index, static_cast<int>(d));
      ASSERT_EQ(c.size(), static_cast<std::size_t>(levels));
      long long power[8] = {1, 1, 1, 1, 1, 1, 1, 1};
      for (std::size_t degree = 0; degree <= d; ++degree) {
        long long dot = 0;
        for (std::size_t l = 0; l < c.size(); ++l) {
          dot += power[l] * c[l];
          power[l] *= static_cast<long long>(l) + 1;
        }
        EXPECT_EQ(dot == 0, degree < d) << "against the power " << degree;
      }
      for (std::size_t e = 1; e < d; ++e)
        EXPECT_EQ(std::inner_product(c.begin(), c.end(), rows[e - 1].list.begin(), 0), 0) << "against " << e;
      int divisor = 0;
      for (int x : c) {
        EXPECT_TRUE(x >= -99 && x <= 99) << x;
        divisor = std::gcd(divisor, x);
      }
      EXPECT_EQ(divisor, 1);
      EXPECT_GT(c.back(), 0);
    }
  }
}

TEST(DesignsDatabaseOrthoCon, ClassifyingEachColumnAgainstItsFactorGivesItsConName) {
  for (const auto& [levels, rows] : ReadContrasts()) {
    std::string levelCodes;
    for (int l = 1; l <= levels; ++l) levelCodes += static_cast<char>(l);
    for (const auto& row : rows) {
      std::string signs;
      for (int x : row.list) signs += x > 0 ? 'P' : x < 0 ? 'N' : '0';
      EXPECT_EQ(ClassifyContrast(signs, levelCodes, levels), row.name) << levels << " levels, index " << row.index;
    }
  }
}

// ---- All tables -----------------------------------------------------------

TEST(DesignsDatabaseSchema, EveryTableHasTheColumnsTheBuildersReadInTheirOrder) {
  auto columns = [](const std::string& table) {
    std::string names;
    for (const auto& row : Query("PRAGMA table_info(" + table + ")")) names += row[1].value_or("?") + " ";
    return names;
  };
  EXPECT_EQ(columns("SitList"), "NameCode Min2 Max2 Min3 Max3 Num4 NGT4 Flags Runs RecipeID ");
  EXPECT_EQ(columns("Names"), "NameCode Name ");
  EXPECT_EQ(columns("Recipes"), "RecipeID BaseCode Mod4 Mod8 FullyCrossed Reflectable ");
  EXPECT_EQ(columns("Treatments"), "RecipeId Idx L DC NDC NC ");
  EXPECT_EQ(columns("Static2kp"), "k p Runs Resolution MaxI F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 F11 ");
  EXPECT_EQ(columns("OrthoCon"), "Levels Index ConName ConList ");

  // The selection table's queries run as they are written.
  Query("SELECT * FROM SitList LEFT JOIN Names ON SitList.NameCode=Names.NameCode");
  EXPECT_EQ(Query("SELECT * FROM Static2kp WHERE k=5 ORDER BY p DESC").size(), 2u);
}

}  // namespace
}  // namespace kestrow
