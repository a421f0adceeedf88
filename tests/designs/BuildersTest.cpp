// The design builders, each checked against what its design must be: balance,
// orthogonality, the defining relation, and the order of runs and contrasts.
#include <gtest/gtest.h>

#include <cmath>
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

// Every pair of the first n contrast columns is orthogonal.
void ExpectOrthogonal(const Study& s, int n) {
  for (int i = 1; i <= n; ++i)
    for (int j = i + 1; j <= n; ++j) EXPECT_EQ(Dot(Column(s, i), Column(s, j)), 0.0) << i << " " << j;
}

// The product of the main columns of a word's letters in one run.
float Product(const Study& s, const std::string& word, int run) {
  float product = 1;
  for (char letter : word) product *= s.GetContrastEntry(letter - 'A' + 1, run);
  return product;
}

// A text field of each contrast, by default the name.
std::vector<std::string> Names(const Study& s, std::string Contrast::*field = &Contrast::sName) {
  std::vector<std::string> texts;
  for (const Contrast& c : s.Contrasts) texts.push_back(c.*field);
  return texts;
}

TEST(ContrastWords, ProductsAreSymmetricDifferencesCutAtFifteenLetters) {
  EXPECT_EQ(MultiplyWords("AB", "AB"), "");
  EXPECT_EQ(MultiplyWords("AB", "BC"), "AC");
  EXPECT_EQ(MultiplyWords("Ab", "a"), "Aab");  // capitals sort before small letters
  EXPECT_EQ(MultiplyWords("ABCDEFGHIJKLMNOPQ", ""), "ABCDEFGHIJKLMNO");
  EXPECT_EQ(ResolutionText(0), "");
  EXPECT_EQ(ResolutionText(9), "IX");
  EXPECT_EQ(ResolutionText(10), "Full");
}

class BuildersTest : public DesignFixture {};

TEST_F(BuildersTest, AHalfFractionOfThreeFactorsHasThreeContrastsAliasedToThePairs) {
  Study& s = StudyOf(3, 2);
  ASSERT_EQ(Get2kpDesign(s, Design{"", "", 11, 0, 3, "", "2KP", "3,1", false}), -1);
  EXPECT_EQ(s.iNumRuns, 4);
  EXPECT_EQ(Names(s), (std::vector<std::string>{"A", "B", "C"}));
  EXPECT_EQ(Names(s, &Contrast::sAliases), (std::vector<std::string>{"BC", "AC", "AB"}));
  EXPECT_EQ(s.Contrasts(3).sMain, "1v2");
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
    const std::string kp = r.Text("k") + "," + r.Text("p");
    SCOPED_TRACE(kp);
    const int k = static_cast<int>(r.Number("k")), p = static_cast<int>(r.Number("p"));
    gProblem->Studies.Clear();
    gProblem->Factors.Clear();
    Study& s = StudyOf(k, 2);
    ASSERT_EQ(Get2kpDesign(s, Design{"", "", 11, 0, 0, "", "2KP", kp, false}), -1);
    const int runs = s.iNumRuns;
    EXPECT_EQ(runs, 1 << (k - p));
    std::set<std::string> distinct;
    for (const Treatment& t : s.Treatments) distinct.insert(t.sTlist);
    EXPECT_EQ(static_cast<int>(distinct.size()), runs);
    ExpectOrthogonal(s, k);
    for (int i = 1; i <= k; ++i) {
      EXPECT_EQ(Dot(Column(s, i), std::vector<float>(static_cast<std::size_t>(runs), 1.0f)), 0.0) << "balance " << i;
      for (int run = 1; run <= runs; ++run)  // the main column follows the treatment's level
        EXPECT_EQ(s.GetContrastEntry(i, run), s.GetTreatmentLevel(i, run) == 2 ? 1.0f : -1.0f);
    }
    for (int g = 1; g <= p; ++g) {
      const std::string word = r.Text("F" + std::to_string(g));
      for (int run = 1; run <= runs; ++run) EXPECT_EQ(Product(s, word, run), 1.0f) << word;
    }
    EXPECT_LE(s.Contrasts.Count(), runs - 1);
    for (int c = k + 1; c <= s.Contrasts.Count(); ++c)
      for (int run = 1; run <= runs; ++run)
        EXPECT_EQ(s.GetContrastEntry(c, run), Product(s, s.Contrasts(c).sName, run)) << s.Contrasts(c).sName;
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
  for (int c = 1; c <= 5; ++c) EXPECT_EQ(s.Contrasts(c).iMain > 0, c <= 3) << c;  // mains, then interactions
  ExpectOrthogonal(s, 5);
}

TEST_F(BuildersTest, AThreeFactorCrossingMakesWordsOnlyOfDifferentFactors) {
  std::string a = AddFactor(2), b = AddFactor(3), c = AddFactor(2);
  Study& s = MakeStudy({a, b, c});
  ASSERT_EQ(GetFullyCrossed(s, Design{}), -1);
  EXPECT_EQ(s.Contrasts.Count(), 11);  // one fewer than the runs
  EXPECT_EQ(Names(s), (std::vector<std::string>{"A", "B", "C", "D", "AB", "AC", "AD", "BD", "CD", "ABD", "ACD"}));
  ExpectOrthogonal(s, 11);
}

// Products of orthogonal-polynomial coefficients pass the packing's +-99
// (3 x 35 = 105 in a 4 x 8, 10 x 10 in a 6 x 6, 35 x 35 in an 8 x 8). Such a
// column is packed divided by a common factor, and the study gives it back
// whole: every column is the product of its letters' main columns, all are
// mutually orthogonal, and the packed one is the exact one scaled: exactly
// where a common factor allows it, else to three decimals (4 x 8 holds 1, 3
// and 105), else as near as the packing holds, nothing below 0.1 (8 x 8
// holds 1 and 1225 in one column). So it stays after saving and reading back.
TEST_F(BuildersTest, MultiLevelFullFactorialsKeepExactOrthogonalInteractionsThroughTheFile) {
  struct Case {
    std::vector<int> levels;
    double within;  // how far a packed coefficient may lie from the scaled exact one
  };
  for (const Case& k : {Case{{4, 8}, 0.0005}, Case{{6, 6}, 0}, Case{{7, 5}, 0}, Case{{5, 5, 4}, 0},
                        Case{{8, 8}, 0.05}, Case{{7, 7, 7}, 0.05}}) {
    std::string trace;
    for (int l : k.levels) trace += std::to_string(l) + " ";
    SCOPED_TRACE(trace);
    gProblem->Studies.Clear();
    gProblem->Factors.Clear();
    std::vector<std::string> keys;
    for (int l : k.levels) keys.push_back(AddFactor(l));
    Study& built = MakeStudy(keys);
    ASSERT_EQ(GetFullyCrossed(built, Design{}), -1);
    built.iDesFlag = DES_FULLY_CROSSED;
    built.sDesignName = "Full factorial";
    built.SetDataArray();
    const std::string path = ::testing::TempDir() + "/crossed.KSW";
    ASSERT_TRUE(gProblem->Save(path));
    Problem back;
    ASSERT_TRUE(back.Load(path));

    for (const Study* s : {&built, &back.Studies(1)}) {
      const int n = s->Contrasts.Count();
      ASSERT_EQ(n, s->iNumRuns - 1);
      ExpectOrthogonal(*s, n);
      bool scaled = false;
      for (int c = 1; c <= n; ++c) {
        const Contrast& con = s->Contrasts(c);
        std::vector<float> exact = Column(*s, c);
        if (con.iMain == 0)
          for (int run = 1; run <= s->iNumRuns; ++run)
            ASSERT_EQ(exact[static_cast<std::size_t>(run - 1)], Product(*s, con.sName, run)) << con.sName;
        // The packed column against the exact one: the factor from the
        // largest coefficient, then every run within half a thousandth.
        float largest = 0, packedLargest = 0;
        for (int run = 1; run <= s->iNumRuns; ++run)
          if (std::fabs(exact[static_cast<std::size_t>(run - 1)]) > largest) {
            largest = std::fabs(exact[static_cast<std::size_t>(run - 1)]);
            packedLargest = std::fabs(con.fGetLevel(run));
          }
        double factor = largest / packedLargest;
        scaled = scaled || factor != 1;
        EXPECT_EQ(factor != 1, largest >= 100) << con.sName;
        for (int run = 1; run <= s->iNumRuns; ++run) {
          double packed = con.fGetLevel(run), want = exact[static_cast<std::size_t>(run - 1)] / factor;
          ASSERT_NEAR(packed, want, (std::fabs(want) < 0.1 ? k.within : std::min(k.within, 0.0005)) + 1e-6 * std::fabs(want))
              << con.sName << " run " << run;
        }
      }
      EXPECT_TRUE(scaled);
    }
  }
}

// Every crossing of two factors of 2 to 8 levels: as many contrasts as
// degrees of freedom, each interaction the product of its letters' main
// columns, all mutually orthogonal and balanced.
TEST_F(BuildersTest, EveryCrossingOfTwoFactorsUpToEightLevelsHasOrthogonalContrasts) {
  for (int a = 2; a <= 8; ++a)
    for (int b = a; b <= 8; ++b) {
      SCOPED_TRACE(std::to_string(a) + " x " + std::to_string(b));
      gProblem->Studies.Clear();
      gProblem->Factors.Clear();
      Study& s = MakeStudy({AddFactor(a), AddFactor(b)});
      ASSERT_EQ(GetFullyCrossed(s, Design{}), -1);
      const int n = s.Contrasts.Count();
      ASSERT_EQ(n, a * b - 1);
      ExpectOrthogonal(s, n);
      for (int c = 1; c <= n; ++c) {
        EXPECT_EQ(Dot(Column(s, c), std::vector<float>(static_cast<std::size_t>(a * b), 1.0f)), 0.0) << c;
        const Contrast& con = s.Contrasts(c);
        if (con.iMain == 0)
          for (int run = 1; run <= s.iNumRuns; ++run)
            EXPECT_EQ(s.GetContrastEntry(c, run), Product(s, con.sName, run)) << con.sName << " run " << run;
      }
    }
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

TEST_F(BuildersTest, AMissingCatalogueIsReportedAndTheBuilderFails) {
  Study& s = StudyOf(2, 2);
  SetProgramFolder("/nonexistent");
  EXPECT_EQ(GetFullyCrossed(s, Design{}), 0);
  EXPECT_EQ(ui->messages.back().text, GetText("MNerrg"));
}

}  // namespace
}  // namespace kestrow
