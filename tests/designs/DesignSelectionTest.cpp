// The design selection table: which rows each factor set gets, in which
// order; what accepting a row does; and the advice of the wizard.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/CueCards.h"
#include "designs/DesignFixture.h"
#include "designs/DesignSelection.h"

namespace kestrow {
namespace {

std::vector<std::string> Codes(const DesignSelection& t) {
  std::vector<std::string> codes;
  for (const Design& d : t.rows) codes.push_back(d.sTag == "2KP" ? "2KP " + d.sTag2 : d.sTag);
  return codes;
}

bool Offers(const DesignSelection& t, const std::string& code) {
  auto codes = Codes(t);
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

class DesignSelectionTest : public test::DesignFixture {
 protected:
  // The table of a study, loaded.
  static DesignSelection Loaded(Study& s) {
    DesignSelection t(s);
    EXPECT_TRUE(t.DesSelLoad());
    return t;
  }
  // A problem with no factors and no studies, for the next factor set.
  static void Fresh() {
    gProblem->Studies.Clear();
    gProblem->Factors.Clear();
  }
};

TEST_F(DesignSelectionTest, FiveTwoLevelFactorsListTheFractionsSmallestFirstThenTheFullFactorial) {
  DesignSelection t = Loaded(StudyOf(5, 2));
  EXPECT_EQ(Codes(t), (std::vector<std::string>{"USER", "UNSTRUCTURED", "2KP 5,2", "2KP 5,1", "2FRACT", "FULLYX"}));
  EXPECT_EQ(t.rows.back().sRuns, "32");
  EXPECT_EQ(t.rows.back().iFlag, 11);
  EXPECT_EQ(t.rows[2].iResolution, 3);
  EXPECT_EQ(t.rows[3].iResolution, 5);
  EXPECT_EQ(t.rows[2].sName, "2^(5-2) " + GetText("factorial"));
  EXPECT_EQ(t.CatalogueMask, 5);
}

// A catalogue that opens but cannot be read: the failure is told under the
// table's tag, not passed over as a catalogue without designs.
TEST_F(DesignSelectionTest, AnUnreadableCatalogueIsReported) {
  test::TempDir folder;
  test::WriteFile(folder / "DESIGNS.MDB", "");
  SetProgramFolder(folder.str());
  DesignSelection t(StudyOf(3, 2));
  EXPECT_FALSE(t.DesSelLoad());
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_NE(ui->messages[0].text.find(" [DesSelLoad]"), std::string::npos);
}

TEST_F(DesignSelectionTest, TheFractionalEditorIsOfferedUpToEightFactors) {
  EXPECT_TRUE(Offers(Loaded(StudyOf(8, 2)), "2FRACT"));
  Fresh();
  EXPECT_FALSE(Offers(Loaded(StudyOf(9, 2)), "2FRACT"));
}

TEST_F(DesignSelectionTest, AFullFactorialOf32768RunsOrMoreIsNotOfferedAndTheCountSaturates) {
  DesignSelection fourteen = Loaded(StudyOf(14, 2));
  EXPECT_EQ(fourteen.rows.back().sTag, "FULLYX");
  EXPECT_EQ(fourteen.rows.back().sRuns, "16384");
  Fresh();
  DesignSelection fifteen = Loaded(StudyOf(15, 2));
  EXPECT_EQ(fifteen.FullRuns, 32768);
  EXPECT_NE(fifteen.rows.back().sTag, "FULLYX");
  Fresh();
  DesignSelection enormous = Loaded(StudyOf(12, 8));
  EXPECT_EQ(enormous.FullRuns, 1000000);
  EXPECT_NE(enormous.rows.back().sTag, "FULLYX");
}

TEST_F(DesignSelectionTest, ADiscreteFactorRemovesTheUnstructuredRowAndTheCatalogueMask) {
  std::string a = AddFactor(2), b = AddFactor(2, FACTOR_DISCRETE);
  DesignSelection t = Loaded(MakeStudy({a, b}));
  EXPECT_EQ(t.CatalogueMask, 0);
  EXPECT_FALSE(Offers(t, "UNSTRUCTURED"));
  EXPECT_EQ(t.rows.back().iFlag, 3);  // two-level with a discrete factor
}

TEST_F(DesignSelectionTest, ThreeLevelFactorsNeedAMiddleThatCodesToZeroForTheCatalogue) {
  DesignSelection even = Loaded(StudyOf(3, 3));
  EXPECT_EQ(even.CatalogueMask, 3);
  EXPECT_EQ(even.rows.back().iFlag, 1);
  Fresh();
  std::string a = AddFactor(3), b = AddFactor(3);
  gProblem->Factors.Find(b)->Levels(2).sName = "25";  // 10, 25, 30: the middle codes to 0.5
  EXPECT_EQ(Loaded(MakeStudy({a, b})).CatalogueMask, 0);
}

TEST_F(DesignSelectionTest, OneFactorGetsItsOwnRowsBlocksAndLatinSquares) {
  std::string f = AddFactor(4);
  std::string n1 = AddFactor(4, FACTOR_NOISE, "Operator");
  std::string n2 = AddFactor(4, FACTOR_NOISE, "Machine");
  AddFactor(3, FACTOR_NOISE, "Shift");
  DesignSelection t = Loaded(MakeStudy({f}));
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
}

TEST_F(DesignSelectionTest, AcceptingARowBuildsTheDesignAndNamesIt) {
  Study& s = StudyOf(3, 2);
  DesignSelection t = Loaded(s);
  ASSERT_TRUE(t.DesSelOK(static_cast<int>(t.rows.size())));  // the full factorial
  EXPECT_TRUE(t.DesignChanged);
  EXPECT_EQ(s.sDesignName, "8-" + LCase(GetText("Run")) + GetText("DES06"));
  EXPECT_EQ(s.iDesFlag, 11);
  EXPECT_EQ(s.iNumRuns, 8);

  ASSERT_TRUE(Loaded(s).DesSelOK(3));  // 2^(3-1), its name without the run count
  EXPECT_EQ(s.sDesignName, "2^(3-1) " + GetText("factorial"));
  EXPECT_EQ(s.sDesignParam, "3,1");

  ASSERT_EQ(t.rows[0].sTag, "USER");  // a family with a dialog of its own changes nothing
  EXPECT_FALSE(t.DesSelOK(1));
  EXPECT_EQ(s.sDesignParam, "3,1");
  EXPECT_EQ(ui->messages.back().kind, "info");
}

// The random square's shuffle can step past the square (about one build in
// three at side 3); then the message stands, no design results, and the
// study keeps its one factor so that the square is offered again.
TEST_F(DesignSelectionTest, AFailedLatinSquareLeavesTheStudysFactorsForAnotherTry) {
  gSettings.StandardLatinSquare = false;
  std::string f = AddFactor(3);
  AddFactor(3, FACTOR_NOISE, "Operator");
  AddFactor(3, FACTOR_NOISE, "Machine");
  Study& s = MakeStudy({f});
  int failed = 0, built = 0;
  for (int attempt = 0; attempt < 60 && (failed == 0 || built == 0); ++attempt) {
    DesignSelection t = Loaded(s);
    auto square = std::find_if(t.rows.begin(), t.rows.end(), [](const Design& d) { return d.sTag == "BLOCK2"; });
    ASSERT_NE(square, t.rows.end());
    ui->messages.clear();
    ASSERT_TRUE(t.DesSelOK(static_cast<int>(square - t.rows.begin()) + 1));
    if (s.sDesignName.empty()) {
      ++failed;
      EXPECT_NE(ui->messages.back().text.find("[GetLatinSquare]"), std::string::npos);
      EXPECT_EQ(s.Factors.Count(), 1);
      EXPECT_EQ(s.iNumRuns, 0);
    } else {
      ++built;
      EXPECT_EQ(s.Factors.Count(), 3);
      s.ZapDesign();
      while (s.Factors.Count() > 1) s.Factors.Remove(s.Factors.Count());
    }
  }
  EXPECT_GT(failed, 0);
  EXPECT_GT(built, 0);
}

TEST_F(DesignSelectionTest, TheWizardAdvisesByTheFactorSet) {
  auto a = Loaded(StudyOf(5, 2)).DesWizard();
  EXPECT_EQ(a.heading, SubstituteCopy(GetText("DWtxt02"), "5"));
  EXPECT_EQ(a.suggestion, DesWizText("DW04n"));

  Fresh();
  a = Loaded(StudyOf(3, 3)).DesWizard();
  EXPECT_NE(a.suggestion.find("15"), std::string::npos);  // DW07 quotes the run count
  EXPECT_EQ(a.suggestion.find("%i"), std::string::npos);

  Fresh();
  std::string f = AddFactor(3);
  AddFactor(3, FACTOR_NOISE);
  AddFactor(3, FACTOR_NOISE);
  a = Loaded(MakeStudy({f})).DesWizard();
  EXPECT_EQ(a.heading, SubstituteCopy(GetText("DWtxt01"), "3"));
  EXPECT_EQ(a.suggestion, DesWizText("DW01c"));
}

}  // namespace
}  // namespace kestrow
