// The design selection table: which rows each factor set gets, in which
// order; what accepting a row does; and the advice of the wizard.
#include <gtest/gtest.h>

#include "core/CueCards.h"
#include "designs/DesignFixture.h"
#include "designs/DesignSelection.h"

namespace kestrow {
namespace {

using test::DesignFixture;

std::vector<std::string> Codes(const DesignSelection& t) {
  std::vector<std::string> codes;
  for (const Design& d : t.rows) codes.push_back(d.sTag == "2KP" ? "2KP " + d.sTag2 : d.sTag);
  return codes;
}

class DesignSelectionTest : public DesignFixture {};

TEST_F(DesignSelectionTest, FiveTwoLevelFactorsListTheFractionsSmallestFirstThenTheFullFactorial) {
  DesignSelection t(StudyOf(5, 2));
  ASSERT_TRUE(t.DesSelLoad());
  EXPECT_EQ(Codes(t), (std::vector<std::string>{"USER", "UNSTRUCTURED", "2KP 5,2", "2KP 5,1", "2FRACT", "FULLYX"}));
  EXPECT_EQ(t.rows.back().sRuns, "32");
  EXPECT_EQ(t.rows.back().iFlag, 11);
  EXPECT_EQ(t.rows[2].iFlag, 11);
  EXPECT_EQ(t.rows[2].iResolution, 3);
  EXPECT_EQ(t.rows[3].iResolution, 5);
  EXPECT_EQ(t.rows[2].sName, "2^(5-2) " + GetText("factorial"));
  EXPECT_EQ(t.CatalogueMask, 5);
  EXPECT_FALSE(t.DesignChanged);
}

TEST_F(DesignSelectionTest, TheFractionalEditorIsOfferedUpToEightFactors) {
  DesignSelection eight(StudyOf(8, 2));
  eight.DesSelLoad();
  auto codes = Codes(eight);
  EXPECT_NE(std::find(codes.begin(), codes.end(), "2FRACT"), codes.end());
  gProblem->Studies.Clear();
  DesignSelection nine(StudyOf(9, 2));
  nine.DesSelLoad();
  codes = Codes(nine);
  EXPECT_EQ(std::find(codes.begin(), codes.end(), "2FRACT"), codes.end());
}

TEST_F(DesignSelectionTest, AFullFactorialOf32768RunsOrMoreIsNotOffered) {
  DesignSelection fourteen(StudyOf(14, 2));
  fourteen.DesSelLoad();
  EXPECT_EQ(fourteen.rows.back().sTag, "FULLYX");
  EXPECT_EQ(fourteen.rows.back().sRuns, "16384");
  gProblem->Studies.Clear();
  gProblem->Factors.Clear();
  DesignSelection fifteen(StudyOf(15, 2));
  fifteen.DesSelLoad();
  EXPECT_EQ(fifteen.FullRuns, 32768);
  EXPECT_NE(fifteen.rows.back().sTag, "FULLYX");
}

TEST_F(DesignSelectionTest, AnEnormousFactorSetSaturatesTheRunCount) {
  DesignSelection t(StudyOf(12, 8));
  t.DesSelLoad();
  EXPECT_EQ(t.FullRuns, 1000000);
  EXPECT_NE(t.rows.back().sTag, "FULLYX");
}

TEST_F(DesignSelectionTest, ADiscreteFactorRemovesTheUnstructuredRowAndTheCatalogueMask) {
  std::string a = AddFactor(2), b = AddFactor(2, FACTOR_DISCRETE);
  DesignSelection t(MakeStudy({a, b}));
  t.DesSelLoad();
  EXPECT_EQ(t.CatalogueMask, 0);
  auto codes = Codes(t);
  EXPECT_EQ(std::find(codes.begin(), codes.end(), "UNSTRUCTURED"), codes.end());
  EXPECT_EQ(t.rows.back().iFlag, 3);  // two-level with a discrete factor
}

TEST_F(DesignSelectionTest, ThreeLevelFactorsNeedAMiddleThatCodesToZeroForTheCatalogue) {
  DesignSelection even(StudyOf(3, 3));
  even.DesSelLoad();
  EXPECT_EQ(even.CatalogueMask, 3);
  EXPECT_EQ(even.rows.back().iFlag, 1);
  gProblem->Studies.Clear();
  std::string a = AddFactor(3), b = AddFactor(3);
  gProblem->Factors.Find(b)->Levels(2).sName = "25";  // 10, 25, 30: the middle codes to 0.5
  DesignSelection uneven(MakeStudy({a, b}));
  uneven.DesSelLoad();
  EXPECT_EQ(uneven.CatalogueMask, 0);
}

TEST_F(DesignSelectionTest, OneFactorGetsItsOwnRowsBlocksAndLatinSquares) {
  std::string f = AddFactor(4);
  std::string n1 = AddFactor(4, FACTOR_NOISE, "Operator");
  std::string n2 = AddFactor(4, FACTOR_NOISE, "Machine");
  std::string n3 = AddFactor(3, FACTOR_NOISE, "Shift");
  DesignSelection t(MakeStudy({f}));
  ASSERT_TRUE(t.DesSelLoad());
  EXPECT_EQ(Codes(t), (std::vector<std::string>{"USER", "SINGLE", "BLOCK1", "BLOCK1", "BLOCK1", "BLOCK2",
                                                "UNSTRUCTURED"}));
  EXPECT_EQ(t.rows[2].sName, GetText("DES03") + " (Operator)");
  EXPECT_EQ(t.rows[2].sRuns, "16");
  EXPECT_EQ(t.rows[4].sRuns, "12");  // with the three-level Shift: a block row but no square
  EXPECT_EQ(t.rows[5].sRuns, "16");
  EXPECT_EQ(t.rows[5].sTag2, n1 + "|" + n2);
  EXPECT_EQ(t.rows[5].iFlag, 96);
  EXPECT_TRUE(t.HasBlocked);
  EXPECT_TRUE(t.HasLatin);
  (void)n3;
}

TEST_F(DesignSelectionTest, AcceptingARowBuildsTheDesignAndNamesIt) {
  Study& s = StudyOf(3, 2);
  DesignSelection t(s);
  t.DesSelLoad();
  int fullRow = static_cast<int>(t.rows.size());
  ASSERT_TRUE(t.DesSelOK(fullRow));
  EXPECT_TRUE(t.DesignChanged);
  EXPECT_EQ(s.sDesignName, "8-" + LCase(GetText("Run")) + GetText("DES06"));
  EXPECT_EQ(s.iDesFlag, 11);
  EXPECT_EQ(s.iNumRuns, 8);
  EXPECT_EQ(s.Contrasts.Count(), 7);

  DesignSelection again(s);
  again.DesSelLoad();
  ASSERT_TRUE(again.DesSelOK(3));  // 2^(3-1): no run-count prefix
  EXPECT_EQ(s.sDesignName, "2^(3-1) " + GetText("factorial"));
  EXPECT_EQ(s.sDesignParam, "3,1");
  EXPECT_EQ(s.iNumRuns, 4);
}

TEST_F(DesignSelectionTest, ARowWhoseFamilyNeedsItsOwnDialogChangesNothing) {
  Study& s = StudyOf(3, 2);
  DesignSelection t(s);
  t.DesSelLoad();
  t.DesSelOK(static_cast<int>(t.rows.size()));
  std::string before = s.sDesignName;
  ASSERT_EQ(t.rows[0].sTag, "USER");
  EXPECT_FALSE(t.DesSelOK(1));
  EXPECT_EQ(s.sDesignName, before);
  EXPECT_EQ(ui->messages.back().kind, "info");
}

TEST_F(DesignSelectionTest, TheWizardAdvisesByTheFactorSet) {
  DesignSelection five(StudyOf(5, 2));
  five.DesSelLoad();
  auto a = five.DesWizard();
  EXPECT_EQ(a.heading, SubstituteCopy(GetText("DWtxt02"), "5"));
  EXPECT_EQ(a.suggestion, DesWizText("DW04n"));

  gProblem->Studies.Clear();
  DesignSelection three(StudyOf(3, 3));
  three.DesSelLoad();
  a = three.DesWizard();
  EXPECT_NE(a.suggestion.find("15"), std::string::npos);  // DW07 quotes the run count
  EXPECT_EQ(a.suggestion.find("%i"), std::string::npos);

  gProblem->Studies.Clear();
  std::string f = AddFactor(3), n1 = AddFactor(3, FACTOR_NOISE), n2 = AddFactor(3, FACTOR_NOISE);
  DesignSelection one(MakeStudy({f}));
  one.DesSelLoad();
  a = one.DesWizard();
  EXPECT_EQ(a.heading, SubstituteCopy(GetText("DWtxt01"), "3"));
  EXPECT_EQ(a.suggestion, DesWizText("DW01c"));
  (void)n1, (void)n2;
}

}  // namespace
}  // namespace kestrow
