// The dialogs that choose the charts of the ANOVA graphics, the residuals
// and the run chart: their defaults, refusals and what OK stores.
#include <gtest/gtest.h>

#include "analyses/ChartChoiceForms.h"
#include "analyses/ChartFixture.h"
#include "analyses/RunChart.h"
#include "core/Language.h"

namespace kestrow {
namespace {

class ChartChoiceFormsTest : public test::ChartFixture {};

TEST_F(ChartChoiceFormsTest, AnovaGraphicsOfferAllThreeAndNeedOne) {
  Study& s = SampleStudy("FiltrationRate");
  stats.Compute(s);
  ScreeForm form(s, stats);
  EXPECT_TRUE(form.chkScree && form.chkLHNPP && form.chkPareto);
  form.chkScree = form.chkLHNPP = form.chkPareto = false;
  std::string message;
  EXPECT_EQ(form.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("ANOMerr1"));
  form.chkPareto = true;
  form.chkScree = true;
  ASSERT_EQ(form.OK(message), FormOutcome::Accepted);
  EXPECT_EQ(s.ANOVA_sCharts, "0,2");
}

// The run order is offered only where the study has one; one to six charts.
TEST_F(ChartChoiceFormsTest, ResidualsChooseOneToSixCharts) {
  Study& s = SampleStudy("ChemicalYield");
  stats.Compute(s);
  ResidualsForm form(s, stats);
  ASSERT_EQ(form.rows.size(), 5u);  // probability, run order, fitted, two factors
  EXPECT_EQ(form.rows[1].token, -2);
  EXPECT_TRUE(form.rows[0].checked && form.rows[1].checked && form.rows[2].checked);
  EXPECT_FALSE(form.rows[3].checked);
  std::string message;
  for (auto& row : form.rows) row.checked = false;
  form.OK(message);
  EXPECT_EQ(message, GetText("REGerr1"));
  form.rows[0].checked = form.rows[4].checked = true;
  ASSERT_EQ(form.OK(message), FormOutcome::Accepted);
  EXPECT_EQ(s.RESIDUAL_sCharts, "-3,2");
  EXPECT_EQ(s.RESIDUAL_sRVkey, "v1");

  Study& big = StudyOf(6, 2);
  ASSERT_EQ(GetFullyCrossed(big, Design{}), -1);
  Ready(big, 2);
  for (int run = 1; run <= big.iNumRuns; ++run) big.SetData(1, run, 1, static_cast<float>(run));
  stats.Compute(big);
  ResidualsForm many(big, stats);
  EXPECT_EQ(many.rows.size(), 9u);  // probability, run order, fitted, six factors
  for (auto& row : many.rows) row.checked = true;
  many.OK(message);
  EXPECT_EQ(message, GetText("MCerr1"));
}

TEST_F(ChartChoiceFormsTest, TheRunChartStoresItsScaleAndFlags) {
  Study& s = SampleStudy("ChemicalYield");
  RunChartForm form(s, stats);
  EXPECT_EQ(form.optScale, 0);
  form.optScale = 2;
  form.chkShowRange = true;
  EXPECT_TRUE(form.Edited());
  std::string message;
  ASSERT_EQ(form.OK(message), FormOutcome::Accepted);
  EXPECT_EQ(s.RUN_iScaling, 2);
  EXPECT_EQ(s.RUN_flags, RUN_SHOW_RANGE);
}

}  // namespace
}  // namespace kestrow
