// The problem model: packing of contrast levels, coding of factors, the data
// array, locking, configured responses, and the design readers.
#include <gtest/gtest.h>
#include <utility>

#include "core/TestSupport.h"
#include "core/Problem.h"
#include "core/Study.h"

namespace kestrow {
namespace {

using test::Sample;
using test::ScopedUi;

// Study 1 of a sample problem, with a scripted Ui in force.
class SampleStudy : public ::testing::Test {
 protected:
  explicit SampleStudy(const char* name) : p(Sample(name)), s(p->Studies(1)) {}
  ScopedUi ui;
  std::unique_ptr<Problem> p;
  Study& s;
};
struct PlasmaEtch : SampleStudy {
  PlasmaEtch() : SampleStudy("PlasmaEtch") {}
};
struct CatalystTrial : SampleStudy {
  CatalystTrial() : SampleStudy("CatalystTrial") {}
};

TEST(ContrastPacking, WholeAndFractionalCoefficientsPackInTwoCharactersAndTheFormatsEdgesAreKept) {
  Contrast c;
  c.fSetLevel(1, 1.5f);
  EXPECT_EQ(c.sLevels, "\\K");  // 1500 + 8192 = 9692 = 92 + 75 * 128, the low seven bits first
  EXPECT_EQ(c.fGetLevel(1), 1.5f);
  for (float x : {-99.0f, -2.0f, -1.0f, 0.0f, 1.0f, 3.0f, 99.0f, -0.707f, 0.25f, 1.414f, -2.828f}) {
    c.fSetLevel(2, x);
    EXPECT_EQ(c.fGetLevel(2), x) << x;
  }
  c.fSetLevel(1, 100.0f);  // a whole 100 reads back divided by 1000
  EXPECT_EQ(c.fGetLevel(1), 0.1f);
  c.fSetLevel(1, 0.05f);   // and a stored 0.05 reads back as 50
  EXPECT_EQ(c.fGetLevel(1), 50.0f);
}

TEST(ContrastPacking, SettingAFarRunFillsTheGapWithZeros) {
  Contrast c;
  c.fSetLevel(3, -1.0f);
  EXPECT_EQ(c.sLevels, std::string("\0@\0@\x7F?", 6));  // "\0@" is the coefficient 0
  c.InitLevels(2);
  EXPECT_EQ(c.sLevels, std::string("\0@\0@", 4));
}

TEST(ContrastNames, LettersRunThroughBothCasesThenStop) {
  const std::pair<int, const char*> names[] = {{1, "A"}, {26, "Z"}, {27, "a"}, {52, "z"}, {53, ""}};
  for (auto [i, name] : names) EXPECT_EQ(Contrast::GetName(i), name) << i;
}

TEST(Coding, CentresOnTheMeanOfTheLevelsNotTheMiddleOfTheRangeAndANonNumericFactorHasNoCodes) {
  Factor f;
  for (const char* l : {"10", "20", "60"}) f.Levels.Add(Level{l, "", 0});
  EXPECT_FLOAT_EQ(f.GetCoded(1), -0.8f);
  EXPECT_FLOAT_EQ(f.GetCoded(3), 1.2f);
  EXPECT_FLOAT_EQ(f.GetDeCoded(1.2), 60.0f);
  f.iFlag = FACTOR_DISCRETE;
  EXPECT_EQ(f.GetCoded(1), MISSING_VALUE);
  EXPECT_EQ(f.ValueToCode(1.0), MISSING_VALUE);
  EXPECT_EQ(f.GetDeCoded(0.0), MISSING_VALUE);
}

// A selection sort that swaps: the first of equal lowest values is taken, but
// a swap can carry an equal value past another.
TEST(SortNumericLevels, SortsAscendingBySelectionWithSwaps) {
  // The description and code of each level after the sort.
  auto sorted = [](std::initializer_list<Level> levels) {
    Factor f;
    for (const Level& l : levels) f.Levels.Add(l);
    f.SortNumericLevels();
    std::string out;
    for (const Level& l : f.Levels) out += l.sDesc + std::to_string(static_cast<int>(l.fCode)) + " ";
    return out;
  };
  EXPECT_EQ(sorted({{"30", "c", 3}, {"10", "a", 1}, {"20", "b", 2}, {"10.0", "a", 4}}), "a1 a4 b2 c3 ");
  EXPECT_EQ(sorted({{"10", "a", 0}, {"10", "b", 0}, {"5", "c", 0}}), "c0 b0 a0 ");
}

Study DesignedStudy(int rvs, int runs, int reps) {
  Study s;
  for (int i = 1; i <= rvs; ++i) s.StudyRespVars.Add(StudyRespVar{"v" + std::to_string(i), 0, 0, 0});
  s.iNumRuns = static_cast<std::int16_t>(runs);
  s.iReps = static_cast<std::int16_t>(reps);
  s.SetDataArray();
  return s;
}

TEST(DataArray, ANewArrayIsBlankWithSeqTheRunNumberAndOutsideItIsMissingNotACrash) {
  Study s = DesignedStudy(2, 3, 2);
  EXPECT_TRUE(s.DoesArrayExist());
  EXPECT_TRUE(s.IsArrayEmpty());
  EXPECT_FALSE(s.IsArrayFull());
  EXPECT_EQ(s.GetData(2, 3, 2), MISSING_VALUE);
  EXPECT_EQ(s.GetSeq(3, 2), 3);
  EXPECT_EQ(s.GetData(5, 1, 1), MISSING_VALUE);
  s.SetData(1, 9, 9, 1.0f);
  EXPECT_TRUE(s.IsArrayEmpty());
  // Without responses there is no array, and it is both empty and full.
  Study none = DesignedStudy(0, 4, 2);
  EXPECT_FALSE(none.DoesArrayExist());
  EXPECT_TRUE(none.IsArrayEmpty() && none.IsArrayFull());
}

TEST(DataArray, AnExcludedValueReadsMissingYetCountsAsDataAndOnlyMissingTouchesDataFull) {
  Study s = DesignedStudy(1, 2, 1);
  s.SetData(1, 1, 1, 7.0f);
  s.SetFlag(1, 1, 1, CELL_EXCLUDED);
  EXPECT_EQ(s.GetData(1, 1, 1), MISSING_VALUE);
  EXPECT_EQ(s.GetStoredValue(1, 1, 1), 7.0f);
  EXPECT_FALSE(s.IsArrayEmpty());  // the excluded value is the only one
  s.bDataFull = true;
  s.SetData(1, 2, 1, -999999872.0f);  // the sentinel typed by a user is missing
  EXPECT_FALSE(s.bDataFull);
  s.SetData(1, 2, 1, 2.0f);
  EXPECT_FALSE(s.bDataFull);  // a value never sets it
  EXPECT_TRUE(s.IsArrayFull());
}

TEST(DataArray, PreserveKeepsWhatFitsWhenRepsGrow) {
  Study s = DesignedStudy(1, 2, 2);
  s.SetData(1, 2, 2, 4.5f);
  s.iReps = 3;
  s.SetDataArrayPreserve();
  EXPECT_EQ(s.GetData(1, 2, 2), 4.5f);
  EXPECT_EQ(s.GetData(1, 2, 3), MISSING_VALUE);
  s.iReps = 1;
  s.SetDataArrayPreserve();
  EXPECT_EQ(s.GetData(1, 2, 2), MISSING_VALUE);  // out of the array now
}

TEST_F(CatalystTrial, TheStarSelectsTheTransformAndTheSamePositionInEveryLookup) {
  EXPECT_EQ(s.GetRVnum("v2*"), 2);
  EXPECT_EQ(s.GetRVnum("v9"), -1);
  EXPECT_EQ(s.CountRVs(), 3);  // Impurity counts twice: it has a transform

  s.ConfigureRV("v2*");
  EXPECT_EQ(s.GetRVname(), "*Impurity");
  EXPECT_EQ(s.GetRVname2(), "*Imp");
  float raw = s.GetData(2, 1, 1);
  EXPECT_FLOAT_EQ(s.GetDataRV(1, 1), std::log10(raw + 1.0f));
  EXPECT_EQ(s.GetDataRV(6, 3), MISSING_VALUE);  // a missing cell stays missing

  s.ConfigureRV("v1");
  EXPECT_EQ(s.GetRVname(), "Yield");
  EXPECT_EQ(s.GetDataRV(1, 1), s.GetData(1, 1, 1));
  s.ConfigureRV("v7");
  EXPECT_EQ(s.ConfiguredRV(), 3);  // not in the study: the count plus 1

  EXPECT_EQ(s.SRVNameToKey("*Impurity*"), "");
  EXPECT_EQ(s.SRVNameToKey("Impurity*"), "v2*");
  EXPECT_EQ(p->RVKeyToDisplayName("v2*"), "*Impurity");
  EXPECT_EQ(p->RVNameToKey("Yield*"), "v1*");
}

TEST(Transform, ImpossibleValuesBecomeMissingAndBoxCoxKeepsItsForm) {
  Study s = DesignedStudy(1, 1, 1);
  s.StudyRespVars(1).iType = 2;
  s.StudyRespVars(1).fParam2 = 1.0f;
  float v = 5.0f;
  s.TransformByRV(v, 1);
  EXPECT_EQ(v, 4.0f);  // b = 1 and a = 0 give y - 1, not y
  s.StudyRespVars(1).fParam2 = 0.0f;
  v = 100.0f;
  s.TransformByRV(v, 1);
  EXPECT_FLOAT_EQ(v, 2.0f);  // b = 0 is the base-10 logarithm
  s.StudyRespVars(1).iType = 1;
  s.StudyRespVars(1).fParam1 = -3.0f;
  v = 3.0f;
  s.TransformByRV(v, 1);
  EXPECT_EQ(v, MISSING_VALUE);  // y + a exactly 0
}

// The transforms are worked in 32-bit floats: near b = 0 the float power
// keeps fewer digits of 1.5^0.001 - 1 than double precision does
// (0.4055473), and reports have always shown the float's.
TEST(Transform, BoxCoxIsWorkedIn32BitFloats) {
  Study s = DesignedStudy(1, 1, 1);
  s.StudyRespVars(1).iType = 2;
  s.StudyRespVars(1).fParam2 = 0.001f;
  float v = 1.5f;
  s.TransformByRV(v, 1);
  EXPECT_FLOAT_EQ(v, 0.4055500f);
}

TEST_F(PlasmaEtch, AStudySeesTheProblemAsItStandsUntilLockedThenKeepsItsOwnNames) {
  p->Factors.Find("f2")->sAbbr = "";
  EXPECT_EQ(s.GetPFactorName2("f2"), "Gap");  // the name stands in for a missing abbreviation
  p->Factors.Find("f2")->sName = "Electrode gap";
  EXPECT_EQ(s.GetPFactorName("f2"), "Electrode gap");

  s.LockMe();
  p->Factors.Find("f1")->sName = "RF power";
  p->Factors.Find("f1")->Levels(1).sName = "250";
  p->RespVars.Find("v1")->sName = "Rate";
  EXPECT_EQ(s.GetPFactorName("f1"), "Power");
  EXPECT_EQ(s.GetPFactorLevelName("f1", 1), "275");
  EXPECT_EQ(s.GetPRVName("v1"), "Etch rate");
  EXPECT_EQ(s.GetPRVDisplayName("v1*"), "*Etch rate");
}

TEST(ZapAnalyses, RestoresTheDefaultsAndByResponseEmptiesOnlyTheMatchingKeys) {
  Study s;
  s.ANOVA_fAlpha = 0.01f;
  s.CONTOUR_sFilter = "1;2";
  s.REGRESS_Rterms.Add(Rterm{"1", 1, 1});
  s.ZapAnalyses();
  EXPECT_EQ(s.ANOVA_fAlpha, 0.1f);
  EXPECT_EQ(s.CONTOUR_sFilter, "0;0");
  EXPECT_TRUE(s.REGRESS_Rterms.Empty());

  s.ANOVA_sRVkey = "v1*";
  s.ANOVA_fAlpha = 0.05f;
  s.ANOM_sRVkey = "v1";
  s.ZapAnalysisByRV("v1*");
  EXPECT_EQ(s.ANOVA_sRVkey, "");
  EXPECT_EQ(s.ANOVA_fAlpha, 0.05f);  // the other settings stay
  EXPECT_EQ(s.ANOM_sRVkey, "v1");
}

TEST(Clear, AStudyTakesRepsFromTheSettingAndKeepsItsProblemAndAProblemIsNewInTheDataFolder) {
  ScopedUi ui;
  gSettings.DefaultReps = 5;
  gSettings.DataDir = "/srv/kestrow/data";
  Problem p;
  Study s;
  s.pProblem = &p;
  s.Clear();
  EXPECT_EQ(s.iReps, 5);
  EXPECT_EQ(s.pProblem, &p);
  p.sName = "x";
  p.bChanged = true;
  p.Clear();
  EXPECT_EQ(p.sName, "New Problem");
  EXPECT_EQ(p.sPathFileName, "/srv/kestrow/data/untitled.KSW");
  EXPECT_FALSE(p.bChanged);
}


TEST_F(PlasmaEtch, TreatmentLevelNamesAreReadInEachOfTheThreeForms) {
  EXPECT_EQ(s.GetTreatmentLevelName(3, 2), "200");

  Treatment centre;
  centre.Centralise(3);
  s.Treatments.Add(centre);
  EXPECT_EQ(s.GetTreatmentLevelName(1, 9), "300");  // midway between levels 1 and 2

  Treatment axial;
  axial.InitCCD();
  axial.Append(-1.414f);
  axial.Append(0.0f);
  axial.Append(1.0f);
  s.Treatments.Add(axial);
  EXPECT_EQ(axial.sTlist, "*|-1.414|0|1");
  EXPECT_EQ(s.GetTreatmentLevelName(1, 10), "264.6");  // 300 - 1.414 * 25, to four figures

  s.iDesFlag = DES_UNSTRUCTURED;
  Treatment text;
  text.sTlist = "hot|wet|slow";
  s.Treatments.Add(text);
  EXPECT_EQ(s.GetTreatmentLevelName(2, 11), "wet");
}

TEST_F(CatalystTrial, LookupsOfFactorsAndLevelsAndContrastSourcesInTheirWords) {
  EXPECT_EQ(s.GetFactorNum("f9"), 3);  // the count plus 1, not 0
  EXPECT_EQ(s.GetLevelNumber(2, "Borealis"), 2);
  EXPECT_EQ(s.GetLevelNumber(2, "Nobody"), 0);
  EXPECT_EQ(s.CountDiscrete(), 1);
  EXPECT_EQ(s.SFactorNameToKey("Catalyst"), "f2");
  EXPECT_EQ(p->GetFactorLevelName("s1", 1, 3), "200");
  // A main effect names its levels, an interaction its factors.
  EXPECT_EQ(s.GetContrastSource(1), "T (150 v 200)");
  EXPECT_EQ(s.GetContrastSource(2), "T (150, 200 v 175)");
  EXPECT_EQ(s.GetContrastSource(4), "T x Cat");
}

TEST_F(PlasmaEtch, AliasesAreAppendedToTheContrastSourceUnlessTheyCannotBeTranslated) {
  s.Contrasts(4).sAliases = "C,-AB,Q,BC";
  // Q has no contrast and is skipped; an interaction has no factor of its own,
  // so its own letters are no bar, and the sign of -AB is kept.
  EXPECT_EQ(s.GetContrastSource(4), "A x B, C, -A x B, B x C");
  s.Contrasts(1).sAliases = "BC,AB";  // AB contains A's own factor: skipped
  EXPECT_EQ(s.GetContrastSource(1), "A (275 v 325), B x C");
  EXPECT_TRUE(s.bAliasIsOK("-BC"));
  EXPECT_FALSE(s.bAliasIsOK("BQ"));
  EXPECT_EQ(s.GetFactorAbbrFromContrastLetter("Q"), "");
}

TEST_F(PlasmaEtch, GetNextNodeGivesOneAboveTheHighestKeySoDeletedNumbersReturn) {
  EXPECT_EQ(p->GetNextNode("f"), "f4");
  EXPECT_EQ(p->GetNextNode("s"), "s2");
  p->Factors.Remove("f3");
  EXPECT_EQ(p->GetNextNode("f"), "f3");
  p->Factors.Remove("f1");
  EXPECT_EQ(p->GetNextNode("f"), "f3");  // f1 stays free below the highest
}

TEST(Collections, IndexFromOneFindByKeyWithoutCaseAndRefuseDuplicateKeys) {
  Collection<RespVar> c;
  RespVar a;
  a.sName = "A";
  ASSERT_NE(c.Add(a, "v1"), nullptr);
  EXPECT_EQ(c.Add(a, "V1"), nullptr);
  RespVar* first = &c(1);
  for (int i = 2; i <= 50; ++i) c.Add(a, "v" + std::to_string(i));
  EXPECT_EQ(&c(1), first);  // objects keep their addresses
  EXPECT_EQ(c.Find("V7"), &c(7));
  c.Remove("v1");
  EXPECT_EQ(c.IndexOf("v2"), 1);
  Collection<RespVar> copy = c;
  copy(1).sName = "changed";
  EXPECT_EQ(c(1).sName, "A");  // a copy is deep
}

}  // namespace
}  // namespace kestrow
