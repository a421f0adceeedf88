// Whether an analysis can run, and whether it is set up, for the states a
// study can be in.
#include <gtest/gtest.h>

#include "core/TestSupport.h"
#include "data/Statistics.h"
#include "workbench/Availability.h"

namespace kestrow {
namespace {

class AvailabilityTest : public ::testing::Test {
 protected:
  // The first study of a sample.
  Study& Load(const std::string& sample = "PlasmaEtch") {
    problem = test::Sample(sample);
    return problem->Studies(1);
  }
  std::string Reason(Study& s, int code) {
    stats.Compute(s);
    return AnalysisUnavailableReason(s, stats, code);
  }
  bool IsSetUp(Study& s, int code) {
    stats.Compute(s);
    return IsAnalysisSetUp(s, stats, code);
  }
  test::ScopedUi ui;
  std::unique_ptr<Problem> problem;
  Statistics stats;
};

TEST_F(AvailabilityTest, ACompleteStudyCanRunTheAnalysesOfItsData) {
  Study& s = Load();
  for (int code : {1, 2, 3, 4, 5, 6, 7, 8, 15}) EXPECT_EQ(Reason(s, code), "") << code;
}

TEST_F(AvailabilityTest, NoDataRefusesWithTheDataReasonAndANOMFirstWithItsOwn) {
  Study& s = Load();
  for (int rv = 1; rv <= s.StudyRespVars.Count(); ++rv)
    for (int run = 1; run <= s.iNumRuns; ++run)
      for (int rep = 1; rep <= s.iReps; ++rep) s.SetData(rv, run, rep, MISSING_VALUE);
  EXPECT_EQ(Reason(s, 1), "Cannot perform ANOM without a complete data set");
  for (int code : {4, 5, 6, 7, 15, 10}) EXPECT_EQ(Reason(s, code), "There is no data - cannot perform this analysis") << code;
}

TEST_F(AvailabilityTest, AMissingCellStopsANOMButNotANOVAWhileEveryRunHasAValue) {
  Study& s = Load();
  s.SetData(1, 3, 2, MISSING_VALUE);
  EXPECT_EQ(Reason(s, 1), "Cannot perform ANOM without a complete data set");
  EXPECT_EQ(Reason(s, 2), "");
  s.SetData(1, 3, 1, MISSING_VALUE);  // run 3 has nothing now
  EXPECT_EQ(Reason(s, 2), "At least one full replication is missing - cannot perform ANOVA");
}

TEST_F(AvailabilityTest, CentralCompositeDesignsRefuseTheDesignBoundPlots) {
  Study& s = Load();
  s.iDesFlag |= DES_CODED;
  for (int code : {1, 4, 5, 6}) EXPECT_EQ(Reason(s, code), "Analysis is not available for Central Composite Designs");
}

TEST_F(AvailabilityTest, RegressionNeedsAQuantitativeFactor) {
  EXPECT_EQ(Reason(Load("SupplierQualification"), 7),  // one discrete factor
            "There are no quantitative factors - cannot perform regression");
}

TEST_F(AvailabilityTest, PairwiseNeedsBalanceAndMoreThanOneReplication) {
  Study& s = Load();
  s.SetData(1, 2, 1, MISSING_VALUE);
  EXPECT_EQ(Reason(s, 8), "Cannot perform a Pairwise Comparison when the study is unbalanced");
  s.iReps = 1;
  s.SetDataArrayPreserve();
  EXPECT_EQ(Reason(s, 8), "The number of replications must be greater than 1 to perform this analysis");
  EXPECT_EQ(Reason(s, 3), "The number of replications must be greater than 1 to perform residuals analysis");
  s.iDesFlag |= DES_BLOCKED;
  EXPECT_EQ(Reason(s, 3), "");  // a blocked design is not asked
}

TEST_F(AvailabilityTest, SurfacesNeedARegressionOfTwoFactorsAndTheCalculatorOne) {
  Study& s = Load();
  EXPECT_EQ(Reason(s, 9), "You must setup the Regression Equation first");
  EXPECT_EQ(Reason(s, 10), "You must compute a Regression Equation first");
  EXPECT_EQ(Reason(s, 14), "You must compute a Regression Equation first");
  s.REGRESS_Rterms.Add(Rterm{"1", 1, 1});
  EXPECT_EQ(Reason(s, 11), "You need at least two factors to use this analysis");
  EXPECT_EQ(Reason(s, 14), "");
  s.REGRESS_Rterms.Add(Rterm{"2", 1, 1});
  EXPECT_EQ(Reason(s, 11), "");
}

TEST_F(AvailabilityTest, ScreeNeedsTheANOVASettingsAndThreeContrasts) {
  Study& s = Load();
  EXPECT_EQ(Reason(s, 13), "Before you can perform this analysis you need to setup the ANOVA parameters");
  s.ANOVA_sRVkey = "v1";
  EXPECT_EQ(Reason(s, 13), "");
  while (s.Contrasts.Count() > 2) s.Contrasts.Remove(s.Contrasts.Count());
  EXPECT_EQ(Reason(s, 13), "There are less than 3 contrasts - cannot perform analysis");
}

TEST_F(AvailabilityTest, SetUpFollowsTheStoredSettingsOfEachAnalysis) {
  Study& s = Load("CatalystTrial");
  EXPECT_TRUE(IsSetUp(s, 2));  // the sample stores Yield, whose every run has a value
  for (const char* key : {"", "v9"}) {  // none, and not a response of the study
    s.ANOVA_sRVkey = key;
    EXPECT_FALSE(IsSetUp(s, 2)) << key;
  }
  s.ANOVA_sRVkey = "v1";
  s.ANOVA_fAlpha = 0;
  EXPECT_FALSE(IsSetUp(s, 2));
  s.ANOVA_fAlpha = 0.05f;
  s.ANOVA_sRVkey = "v2*";  // the transformed form: Impurity run 6 has two values
  EXPECT_TRUE(IsSetUp(s, 2));
  EXPECT_FALSE(IsSetUp(s, 13));
  s.ANOVA_sCharts = "1";
  EXPECT_TRUE(IsSetUp(s, 13));

  s.ANOM_sRVkey = "v1";  // Yield has an excluded cell: not complete
  s.ANOM_sCharts = "1";
  EXPECT_FALSE(IsSetUp(s, 1));
  s.FXPLOT_sRVkey = "v1";
  EXPECT_FALSE(IsSetUp(s, 4));
  s.FXPLOT_sF1Key = "f1";
  EXPECT_TRUE(IsSetUp(s, 4));
  s.MMP_sRVkey = "v9";  // not a response of the study
  EXPECT_FALSE(IsSetUp(s, 6));
  EXPECT_TRUE(IsSetUp(s, 12));  // codes without conditions are set up
  EXPECT_TRUE(IsSetUp(s, 15));
  EXPECT_FALSE(IsSetUp(s, 14));
}

}  // namespace
}  // namespace kestrow
