// The design catalogue DESIGNS.MDB as the build generates it: the tables and
// columns the builders query, the regular fractions of Static2kp and the
// orthogonal contrasts of OrthoCon. Every property is recomputed here from the
// stored words and numbers, without the generator's code.
#include <gtest/gtest.h>

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
#include "designs/DesignsDb.h"

namespace kestrow {
namespace {

using Row = DesignsDb::Row;
using ::testing::PrintToString;

// The rows of one query on the catalogue; a query that fails fails the test.
std::vector<Row> Query(const std::string& sql) {
  DesignsDb db;
  std::vector<Row> rows;
  std::string error;
  EXPECT_TRUE(db.Open(KESTROW_BIN "/DESIGNS.MDB") && db.Query(sql, rows, error)) << sql << ": " << error;
  return rows;
}

int Int(const Row& row, const char* column) { return static_cast<int>(row.Number(column)); }

// ---- Static2kp ------------------------------------------------------------

struct Fraction {
  int k, p, runs, resolution, maxI;
  std::vector<std::uint32_t> generators;  // F1 ... Fp as letter masks, A = bit 0
  Row row;                                // the stored row
};

std::vector<Fraction> ReadFractions() {
  std::vector<Fraction> out;
  for (const auto& r : Query("SELECT * FROM Static2kp ORDER BY k, p")) {
    Fraction d{Int(r, "k"), Int(r, "p"), Int(r, "Runs"), Int(r, "Resolution"), Int(r, "MaxI"), {}, r};
    for (int i = 1; i <= d.p; ++i) {
      std::uint32_t mask = 0;
      for (char c : r.Text("F" + std::to_string(i))) mask |= 1u << (c - 'A');
      d.generators.push_back(mask);
    }
    out.push_back(d);
  }
  return out;
}

// The word-length pattern: element i counts the words of i letters among the
// 2^p - 1 words of the defining relation, the products (symmetric
// differences) of the non-empty sets of generators.
std::vector<int> WordLengths(const std::vector<std::uint32_t>& generators) {
  std::vector<std::uint32_t> words{0};
  for (std::uint32_t g : generators)
    for (std::size_t i = 0, n = words.size(); i < n; ++i) words.push_back(words[i] ^ g);
  std::vector<int> a(17, 0);
  for (std::size_t i = 1; i < words.size(); ++i) ++a[static_cast<std::size_t>(std::popcount(words[i]))];
  return a;
}

// Each fraction of three to fifteen factors with up to 128 runs, exactly once.
TEST(DesignsDatabaseStatic2kp, EveryRowIsARegularFractionWithTheRunsResolutionAndMaxIItStores) {
  std::multiset<std::pair<int, int>> expected, stored;
  for (int k = 3; k <= 15; ++k)
    for (int p = 1; p < k; ++p)
      if ((1 << (k - p)) >= k + 1 && (1 << (k - p)) <= 128) expected.insert({k, p});
  EXPECT_EQ(expected.size(), 43u);
  for (const auto& d : ReadFractions()) {
    SCOPED_TRACE("2^(" + std::to_string(d.k) + "-" + std::to_string(d.p) + ")");
    stored.insert({d.k, d.p});
    const int base = d.k - d.p;
    EXPECT_EQ(d.runs, 1 << base);
    EXPECT_EQ(d.maxI, d.runs <= 32 ? 3 : 2);
    ASSERT_EQ(d.row.values.size(), 16u);
    for (int i = 1; i <= 11; ++i) EXPECT_EQ(d.row.IsNull("F" + std::to_string(i)), i > d.p) << i;

    // The builder reads word i as "added factor i = product of the others".
    // Holding its own added factor and no other also makes the generators
    // independent: no product of some of them is empty or equals another.
    for (int i = 0; i < d.p; ++i) {
      const std::uint32_t g = d.generators[static_cast<std::size_t>(i)];
      EXPECT_EQ(g >> base, 1u << i) << "F" << i + 1 << " must hold exactly its own added factor";
      EXPECT_GE(std::popcount(g), 3) << "F" << i + 1;
    }
    const auto a = WordLengths(d.generators);
    int shortest = 1;
    while (a[static_cast<std::size_t>(shortest)] == 0) ++shortest;
    EXPECT_EQ(d.resolution, shortest) << PrintToString(a);
  }
  EXPECT_EQ(stored, expected);
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
    if (better) ADD_FAILURE() << "stored " << PrintToString(stored) << "; another choice has " << PrintToString(*better);
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
  for (const auto& r : Query("SELECT * FROM OrthoCon ORDER BY Levels, \"Index\"")) {
    OrthoRow row{Int(r, "Index"), r.Text("ConName"), {}};
    std::stringstream in(r.Text("ConList"));
    std::string item;
    while (std::getline(in, item, ',')) {
      std::size_t used = 0;
      row.list.push_back(std::stoi(item, &used));
      EXPECT_EQ(used, item.size()) << r.Text("ConList");
    }
    out[Int(r, "Levels")].push_back(row);
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

// ---- The tables of the selection ------------------------------------------

TEST(DesignsDatabaseSchema, TheSelectionsTablesHaveTheColumnsItReads) {
  auto columns = [](const std::string& table) {
    std::string names;
    for (const auto& row : Query("PRAGMA table_info(" + table + ")")) names += row.Text("name") + " ";
    return names;
  };
  EXPECT_EQ(columns("SitList"), "NameCode Min2 Max2 Min3 Max3 Num4 NGT4 Flags Runs RecipeID ");
  EXPECT_EQ(columns("Names"), "NameCode Name ");
  // The selection table's join runs as it is written.
  Query("SELECT * FROM SitList LEFT JOIN Names ON SitList.NameCode=Names.NameCode");
}

}  // namespace
}  // namespace kestrow
