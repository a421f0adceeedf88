// The rules of the ANOVA dialog and of the non-linearity test.
#include <gtest/gtest.h>

#include "analyses/ANOVAForm.h"
#include "analyses/AnalysisFixture.h"
#include "analyses/NonLin.h"

namespace kestrow {
namespace {

class ANOVAFormTest : public test::AnalysisFixture {
 protected:
  Study& TwoLevel(int k, int reps, const std::vector<std::vector<float>>& byYates) {
    Study& s = AnalysisFixture::TwoLevel(k, reps);
    s.ANOVA_sRVkey.clear();
    FillYates(s, byYates);
    stats.Compute(s);
    return s;
  }
  static int RowNamed(const ANOVAForm& f, const std::string& name) {
    for (std::size_t i = 0; i < f.pool.size(); ++i)
      if (f.pool[i].name == name) return static_cast<int>(i);
    return -1;
  }
  Statistics stats;
};

const std::vector<std::vector<float>> UNREPLICATED = {{10}, {14}, {11}, {17}, {12}, {16}, {13}, {21}};

TEST_F(ANOVAFormTest, PoolingTotalsFollowTheTicks) {
  Study& s = TwoLevel(3, 1, UNREPLICATED);
  ANOVAForm f(s, stats);
  ASSERT_EQ(f.rvIndex, 0);
  EXPECT_TRUE(f.poolingEnabled);
  ASSERT_EQ(f.pool.size(), 7u);
  EXPECT_EQ(f.pool[static_cast<std::size_t>(RowNamed(f, "A"))].ss, "60.5");
  EXPECT_EQ(f.lblTotalSS(), "91.5");
  f.TogglePool(RowNamed(f, "AB"));
  f.TogglePool(RowNamed(f, "AC"));
  EXPECT_EQ(f.lblDF(), "2");
  EXPECT_EQ(f.lblErrorSS(), "5");
  EXPECT_EQ(f.lblPooling(), "AB, AC");
  EXPECT_TRUE(s.Contrasts(RowNamed(f, "AB") + 1).bPooled);  // the flag follows at once
  f.TogglePool(RowNamed(f, "AB"));
  f.TogglePool(RowNamed(f, "AC"));
  EXPECT_EQ(f.lblErrorSS(), "0");  // no rounding residue once nothing is pooled
  EXPECT_TRUE(f.changed);
}

// The totals beside the list have its four figures: the filtration rate
// experiment (Montgomery, Example 6.2) totals 5730.9375.
TEST_F(ANOVAFormTest, TheTotalsShowInTheFormatOfTheList) {
  auto p = test::Sample("FiltrationRate");
  Statistics all;
  all.Compute(p->Studies(1));
  ANOVAForm f(p->Studies(1), all);
  EXPECT_EQ(f.lblTotalSS(), "5731");
}

TEST_F(ANOVAFormTest, CancelPutsThePoolingBack) {
  Study& s = TwoLevel(3, 1, UNREPLICATED);
  s.Contrasts(7).bPooled = true;
  ANOVAForm f(s, stats);
  EXPECT_TRUE(f.pool[6].checked);
  f.TogglePool(6);
  f.TogglePool(0);
  f.Cancel();
  EXPECT_TRUE(s.Contrasts(7).bPooled);
  EXPECT_FALSE(s.Contrasts(1).bPooled);
}

TEST_F(ANOVAFormTest, OptionsNeedReplicatesOrATarget) {
  Study& s = TwoLevel(2, 1, {{1}, {2}, {3}, {4}});
  s.ANOVA_iVariable = 2;  // MSD stored, but the response has no target
  ANOVAForm f(s, stats);
  EXPECT_FALSE(f.optionEnabled[1]);
  EXPECT_FALSE(f.optionEnabled[2]);
  EXPECT_EQ(f.option, 0);
  gProblem->RespVars.Find("v1")->fTarget = 3;
  f.SelectRV(0);
  EXPECT_TRUE(f.optionEnabled[2]);
  Study& replicated = TwoLevel(2, 2, {{1, 2}, {2, 3}, {3, 5}, {4, 4}});
  ANOVAForm g(replicated, stats);
  EXPECT_TRUE(g.optionEnabled[1]);
  EXPECT_FALSE(g.poolingEnabled);
  replicated.iDesFlag = DES_BLOCKED;
  g.SetOption(1);
  EXPECT_EQ(g.option, 0);
  EXPECT_FALSE(g.optionEnabled[1]);
}

TEST_F(ANOVAFormTest, OKChecksInOrderAndStores) {
  Study& s = TwoLevel(3, 1, UNREPLICATED);
  ANOVAForm f(s, stats);
  std::string message;
  for (const char* bad : {"0", "1", "-0.1", "x", ""}) {
    f.txtAlpha = bad;
    EXPECT_EQ(f.OK(message), ANOVAForm::Outcome::Refused) << bad;
    EXPECT_EQ(message, GetText("ANOVAerr1"));
  }
  f.txtAlpha = "0.05";
  // Nothing pooled: a notice the first time, then on without pooling.
  EXPECT_EQ(f.OK(message), ANOVAForm::Outcome::Noticed);
  EXPECT_EQ(message, GetText("ANOVAmsg1"));
  EXPECT_TRUE(s.ANOVA_sRVkey.empty());
  EXPECT_EQ(f.OK(message), ANOVAForm::Outcome::Accepted);
  EXPECT_EQ(s.ANOVA_sRVkey, "v1");
  EXPECT_EQ(s.ANOVA_fAlpha, 0.05f);
  f.SelectRV(-1);
  EXPECT_EQ(f.OK(message), ANOVAForm::Outcome::Refused);
  EXPECT_EQ(message, GetText("ANOMerr3"));
}

// Factorial runs (1) 10 12, a 14 16, b 11 13, ab 17 19: mean 14, run
// variances 2 on 4 degrees of freedom; one centre run of two observations.
class NonLinTest : public ANOVAFormTest {
 protected:
  Study& WithCentre(const std::vector<float>& centre) {
    Study& s = TwoLevel(2, 2, {{10, 12}, {14, 16}, {11, 13}, {17, 19}});
    AddCentreRuns(s, 1);
    for (std::size_t i = 0; i < centre.size(); ++i) s.SetData(1, 5, static_cast<int>(i + 1), centre[i]);
    stats.Compute(s);
    return s;
  }
};

TEST_F(NonLinTest, TheCentreAverageAgainstTheBaseWithATLimit) {
  Study& s = WithCentre({17, 19});
  // s = sqrt((2 * 4 + 2 * 1) / 5), se = s sqrt(1/8 + 1/2) = 1.118; E = 14 - 18.
  NonLinResult r = ComputeNonLin(s, stats, 1, 95);
  EXPECT_EQ(r.lblBaseAvg, "14");
  EXPECT_EQ(r.lblCentreAvg, "18");
  EXPECT_EQ(r.lblENonLin, "-4");
  EXPECT_EQ(r.lblSigma, "1.118");
  EXPECT_EQ(r.lblDL, "+/-2.874");  // t(0.025; 5) = 2.571
  EXPECT_TRUE(r.nonLinear);
  EXPECT_EQ(r.lblConclusion, SubstituteCopy(GetText("NLNmsg1"), "95"));
  r = ComputeNonLin(s, stats, 1, 99);  // t(0.005; 5) = 4.032
  EXPECT_EQ(r.lblDL, "+/-4.508");
  EXPECT_FALSE(r.nonLinear);
  EXPECT_EQ(r.lblConclusion, SubstituteCopy(GetText("NLNmsg2"), "99"));
}

TEST_F(NonLinTest, OneCentreObservationOrAMissingBaseStopTheTest) {
  Study& s = WithCentre({17, MISSING_VALUE});
  NonLinResult r = ComputeNonLin(s, stats, 1, 95);
  EXPECT_EQ(r.lblConclusion, GetText("NLNerr1"));
  EXPECT_EQ(r.lblDL, "");
  s.SetData(1, 5, 2, 19);
  s.SetData(1, 2, 1, MISSING_VALUE);
  stats.Compute(s);
  r = ComputeNonLin(s, stats, 1, 95);
  EXPECT_EQ(r.lblConclusion, "Data is missing from the base design");
  EXPECT_EQ(r.lblSigma, "");
}

}  // namespace
}  // namespace kestrow
