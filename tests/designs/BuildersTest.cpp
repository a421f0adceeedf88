// The design builders, each checked against what its design must be: balance,
// orthogonality, the defining relation, and the order of runs and contrasts.
#include <gtest/gtest.h>

#include <set>

#include "designs/Builders.h"
#include "designs/ContrastAlgebra.h"
#include "designs/Design.h"
#include "designs/DesignFixture.h"
#include "designs/DesignsDb.h"

namespace kestrow {
namespace {

using test::DesignFixture;

std::vector<float> Column(const Study& s, int c) {
  std::vector<float> v;
  for (int run = 1; run <= s.iNumRuns; ++run) v.push_back(s.GetContrastEntry(c, run));
  return v;
}

double Dot(const std::vector<float>& a, const std::vector<float>& b) {
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += static_cast<double>(a[i]) * b[i];
  return sum;
}

std::vector<std::string> Names(const Study& s) {
  std::vector<std::string> names;
  for (const Contrast& c : s.Contrasts) names.push_back(c.sName);
  return names;
}

TEST(ContrastWords, ProductsAreSymmetricDifferencesCutAtFifteenLetters) {
  EXPECT_EQ(MultiplyWords("AB", "AB"), "");
  EXPECT_EQ(MultiplyWords("AB", "BC"), "AC");
  EXPECT_EQ(MultiplyWords("A", "BCD"), "ABCD");
  EXPECT_EQ(MultiplyWords("Ab", "a"), "Aab");  // capitals sort before small letters
  EXPECT_EQ(MultiplyWords("ABCDEFGHIJKLMNOPQ", ""), "ABCDEFGHIJKLMNOP");
  EXPECT_EQ(ResolutionText(0), "");
  EXPECT_EQ(ResolutionText(4), "IV");
  EXPECT_EQ(ResolutionText(9), "IX");
  EXPECT_EQ(ResolutionText(10), "Full");
}

class BuildersTest : public DesignFixture {};

TEST_F(BuildersTest, AHalfFractionOfThreeFactorsHasThreeContrastsAliasedToThePairs) {
  Study& s = StudyOf(3, 2);
  ASSERT_EQ(Get2kpDesign(s, Design{"", "", 11, 0, 3, "", "2KP", "3,1", false}), -1);
  EXPECT_EQ(s.iNumRuns, 4);
  EXPECT_EQ(Names(s), (std::vector<std::string>{"A", "B", "C"}));
  EXPECT_EQ(s.Contrasts(1).sAliases, "BC");
  EXPECT_EQ(s.Contrasts(2).sAliases, "AC");
  EXPECT_EQ(s.Contrasts(3).sAliases, "AB");
  EXPECT_EQ(s.Contrasts(3).sMain, "1v2");
  // C = AB in every run.
  for (int run = 1; run <= 4; ++run)
    EXPECT_EQ(s.GetContrastEntry(3, run), s.GetContrastEntry(1, run) * s.GetContrastEntry(2, run));
}

TEST_F(BuildersTest, AHalfFractionOfFourFactorsListsThreePairsAndNoTriples) {
  Study& s = StudyOf(4, 2);
  ASSERT_EQ(Get2kpDesign(s, Design{"", "", 11, 0, 4, "", "2KP", "4,1", false}), -1);
  EXPECT_EQ(Names(s), (std::vector<std::string>{"A", "B", "C", "D", "AB", "AC", "AD"}));
  EXPECT_EQ(s.Contrasts(5).sAliases, "CD");
  EXPECT_EQ(s.Contrasts(6).sAliases, "BD");
  EXPECT_EQ(s.Contrasts(7).sAliases, "BC");
}

// Every regular fraction of the catalogue, built and checked independently:
// distinct runs, balanced and orthogonal main columns, the generators holding
// in every run, and each contrast the product of the main columns of its word.
TEST_F(BuildersTest, EveryCatalogueFractionIsARealRegularFraction) {
  DesignsDb db;
  ASSERT_TRUE(db.Open());
  std::vector<DesignsDb::Row> rows;
  std::string error;
  ASSERT_TRUE(db.Query("SELECT * FROM Static2kp WHERE Runs <= 64", rows, error)) << error;
  ASSERT_FALSE(rows.empty());
  for (const auto& r : rows) {
    int k = static_cast<int>(r.Number("k")), p = static_cast<int>(r.Number("p"));
    gProblem->Studies.Clear();
    gProblem->Factors.Clear();
    Study& s = StudyOf(k, 2);
    ASSERT_EQ(Get2kpDesign(s, Design{"", "", 11, 0, 0, "", "2KP", std::to_string(k) + "," + std::to_string(p), false}),
              -1)
        << k << "," << p;
    int runs = s.iNumRuns;
    EXPECT_EQ(runs, 1 << (k - p));
    std::set<std::string> distinct;
    for (const Treatment& t : s.Treatments) distinct.insert(t.sTlist);
    EXPECT_EQ(static_cast<int>(distinct.size()), runs) << k << "," << p;
    for (int i = 1; i <= k; ++i) {
      auto ci = Column(s, i);
      EXPECT_EQ(Dot(ci, std::vector<float>(ci.size(), 1.0f)), 0.0) << "balance " << k << "," << p << " " << i;
      for (int j = i + 1; j <= k; ++j) EXPECT_EQ(Dot(ci, Column(s, j)), 0.0) << k << "," << p << " " << i << j;
      // The main column follows the treatment's level.
      for (int run = 1; run <= runs; ++run)
        EXPECT_EQ(s.GetContrastEntry(i, run), s.GetTreatmentLevel(i, run) == 2 ? 1.0f : -1.0f);
    }
    for (int g = 1; g <= p; ++g) {
      std::string word = r.Text("F" + std::to_string(g));
      for (int run = 1; run <= runs; ++run) {
        float product = 1;
        for (char letter : word) product *= s.GetContrastEntry(letter - 'A' + 1, run);
        EXPECT_EQ(product, 1.0f) << word;
      }
    }
    EXPECT_LE(s.Contrasts.Count(), runs - 1);
    for (int c = k + 1; c <= s.Contrasts.Count(); ++c) {
      for (int run = 1; run <= runs; ++run) {
        float product = 1;
        for (char letter : s.Contrasts(c).sName) product *= s.GetContrastEntry(letter - 'A' + 1, run);
        EXPECT_EQ(s.GetContrastEntry(c, run), product) << s.Contrasts(c).sName;
      }
    }
  }
}

TEST_F(BuildersTest, AFullFactorialOfTwoAndThreeLevelsRunsTheLastFactorFastest) {
  std::string a = AddFactor(2), b = AddFactor(3);
  Study& s = MakeStudy({a, b});
  ASSERT_EQ(GetFullyCrossed(s, Design{}), -1);
  ASSERT_EQ(s.iNumRuns, 6);
  std::vector<std::pair<int, int>> order;
  for (int run = 1; run <= 6; ++run) order.emplace_back(s.GetTreatmentLevel(1, run), s.GetTreatmentLevel(2, run));
  EXPECT_EQ(order, (std::vector<std::pair<int, int>>{{1, 1}, {1, 2}, {1, 3}, {2, 1}, {2, 2}, {2, 3}}));
  EXPECT_EQ(Names(s), (std::vector<std::string>{"A", "B", "C", "AB", "AC"}));
  EXPECT_EQ(s.Contrasts(2).sMain, "1v3");
  EXPECT_EQ(s.Contrasts(3).sMain, "13v2");
  for (int c = 1; c <= 3; ++c) EXPECT_GT(s.Contrasts(c).iMain, 0);
  for (int c = 4; c <= 5; ++c) EXPECT_EQ(s.Contrasts(c).iMain, 0);
  for (int i = 1; i <= 5; ++i)
    for (int j = i + 1; j <= 5; ++j) EXPECT_EQ(Dot(Column(s, i), Column(s, j)), 0.0) << i << " " << j;
}

TEST_F(BuildersTest, AThreeFactorCrossingMakesWordsOnlyOfDifferentFactors) {
  std::string a = AddFactor(2), b = AddFactor(3), c = AddFactor(2);
  Study& s = MakeStudy({a, b, c});
  ASSERT_EQ(GetFullyCrossed(s, Design{}), -1);
  EXPECT_EQ(s.Contrasts.Count(), 11);  // one fewer than the runs
  EXPECT_EQ(Names(s), (std::vector<std::string>{"A", "B", "C", "D", "AB", "AC", "AD", "BD", "CD", "ABD", "ACD"}));
  for (int i = 1; i <= 11; ++i)
    for (int j = i + 1; j <= 11; ++j) EXPECT_EQ(Dot(Column(s, i), Column(s, j)), 0.0) << i << " " << j;
}

TEST_F(BuildersTest, OneFactorGivesItsLevelsAndTheirOrthogonalContrasts) {
  Study& one = StudyOf(1, 4);
  ASSERT_EQ(GetSingleFactorDesign(one, Design{}), -1);
  EXPECT_EQ(one.iNumRuns, 4);
  EXPECT_EQ(one.Contrasts.Count(), 3);
  EXPECT_EQ(one.Contrasts(1).sMain, "12v34");
  EXPECT_EQ(Column(one, 1), (std::vector<float>{-3, -1, 1, 3}));
  for (const Contrast& c : one.Contrasts) EXPECT_EQ(c.iMain, 1);
}

TEST_F(BuildersTest, ABlockedDesignCrossesTheFactorWithItsBlocksAndHasNoContrasts) {
  std::string f = AddFactor(3), noise = AddFactor(4, FACTOR_NOISE);
  Study& s = MakeStudy({f});
  ASSERT_EQ(GetBlocked1(s, Design{"", "12", 32, 0, 0, "", "BLOCK1", noise, false}), -1);
  EXPECT_EQ(s.iNumRuns, 12);
  EXPECT_EQ(s.Factors.Count(), 2);
  EXPECT_EQ(s.Treatments.Count(), 12);
  EXPECT_TRUE(s.Contrasts.Empty());
  EXPECT_EQ(s.GetTreatmentLevel(2, 4), 4);
  EXPECT_EQ(s.GetTreatmentLevel(1, 5), 2);
}

TEST_F(BuildersTest, TheStandardLatinSquareIsCyclic) {
  gSettings.StandardLatinSquare = true;
  std::string f = AddFactor(3), n1 = AddFactor(3, FACTOR_NOISE), n2 = AddFactor(3, FACTOR_NOISE);
  Study& s = MakeStudy({f});
  ASSERT_EQ(GetLatinSquare(s, Design{"", "9", 96, 0, 0, "", "BLOCK2", n1 + "|" + n2, false}), -1);
  std::vector<int> levels;
  for (int run = 1; run <= 9; ++run) levels.push_back(s.GetTreatmentLevel(1, run));
  EXPECT_EQ(levels, (std::vector<int>{1, 2, 3, 2, 3, 1, 3, 1, 2}));
  EXPECT_EQ(s.GetTreatmentLevel(2, 4), 2);
  EXPECT_EQ(s.GetTreatmentLevel(3, 4), 1);
  EXPECT_TRUE(s.Contrasts.Empty());
}

TEST_F(BuildersTest, AShuffledLatinSquareIsStillLatinOrFailsWithItsTag) {
  std::string f = AddFactor(4), n1 = AddFactor(4, FACTOR_NOISE), n2 = AddFactor(4, FACTOR_NOISE);
  int built = 0, failed = 0;
  for (int attempt = 0; attempt < 200; ++attempt) {
    gProblem->Studies.Clear();
    Study& s = MakeStudy({f});
    if (GetLatinSquare(s, Design{"", "16", 96, 0, 0, "", "BLOCK2", n1 + "|" + n2, false}) == 0) {
      ++failed;
      EXPECT_NE(ui->messages.back().text.find("[GetLatinSquare]"), std::string::npos);
      continue;
    }
    ++built;
    for (int i = 1; i <= 4; ++i) {
      std::set<int> row, col;
      for (int run = 1; run <= 16; ++run) {
        if (s.GetTreatmentLevel(2, run) == i) row.insert(s.GetTreatmentLevel(1, run));
        if (s.GetTreatmentLevel(3, run) == i) col.insert(s.GetTreatmentLevel(1, run));
      }
      EXPECT_EQ(row.size(), 4u);
      EXPECT_EQ(col.size(), 4u);
    }
  }
  // The deliberate rounding lets the first shuffle step run past the square now and then.
  EXPECT_GT(built, 0);
  EXPECT_GT(failed, 0);
}

TEST_F(BuildersTest, AnUnstructuredDesignHasNoRuns) {
  Study& s = StudyOf(2, 3);
  EXPECT_EQ(GetUnstructuredDesign(s, Design{}), -1);
  EXPECT_EQ(s.iNumRuns, 0);
}

TEST_F(BuildersTest, AMissingCatalogueIsReportedAndTheBuilderFails) {
  Study& s = StudyOf(2, 2);
  SetProgramFolder("/nonexistent");
  EXPECT_EQ(GetFullyCrossed(s, Design{}), 0);
  EXPECT_EQ(ui->messages.back().text, GetText("MNerrg"));
}

}  // namespace
}  // namespace kestrow
