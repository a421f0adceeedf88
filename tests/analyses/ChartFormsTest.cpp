// The rules of the dialogs of the charted analyses, driven as a user would:
// the order of their refusals, what the check lists accept, what OK stores
// and what it leaves alone, and the buttons that reorder factors.
#include <gtest/gtest.h>

#include "analyses/ANOMForm.h"
#include "analyses/ChartFixture.h"
#include "analyses/FXPlotForm.h"
#include "analyses/MMPForm.h"
#include "analyses/PairwiseForm.h"
#include "analyses/ResponseForm.h"
#include "core/Language.h"

namespace kestrow {
namespace {

class ChartFormsTest : public test::ChartFixture {
 protected:
  Study& Chemical() {
    Study& s = SampleStudy("ChemicalYield");
    stats.Compute(s);
    return s;
  }
  // The keys ticked by a list, in row order.
  static std::vector<std::string> Ticked(const CheckList& list) {
    std::vector<std::string> keys;
    for (const CheckList::Row& r : list.Rows())
      if (r.checked) keys.push_back(r.key);
    return keys;
  }
};

// A new analysis of a replicated study offers both one-way charts; the list
// counts the one-way row twice there, refuses none and more than six; OK
// checks response, alpha, a tabled alpha and charts in that order.
TEST_F(ChartFormsTest, AnalysisOfMeans) {
  Study& s = Chemical();
  s.ANOM_sCharts.clear();
  ANOMForm form(s, stats);
  EXPECT_EQ(form.charts, "1WX,1WR");
  EXPECT_TRUE(form.excludeEnabled);
  EXPECT_EQ(form.cmbAlpha, "0.05");
  EXPECT_EQ(form.lblCharts(), GetText("ANOMmsg3"));
  CheckList list = form.ChartList();
  EXPECT_EQ(list.prompt, GetText("ANOMmsg1"));
  EXPECT_EQ(list.Rows()[0].text, GetText("ANOMmsg3") + " " + GetText("ANOMmsg2"));
  EXPECT_EQ(list.Rows()[1].text, SubstituteCopy(GetText("ANOMmsg4"), "Reactant concentration"));
  std::string complaint;
  EXPECT_FALSE(list.Accept({}, complaint));
  EXPECT_EQ(complaint, GetText("ANOMerr1"));
  ui->checkListAnswers.push_back({"f2", "1W"});
  ASSERT_TRUE(form.cmdCharts_Click());
  EXPECT_EQ(form.charts, "1WX,1WR,f2");  // in row order
  EXPECT_EQ(form.lblCharts(), GetText("ANOMmsg3") + ", " + SubstituteCopy(GetText("ANOMmsg4"), "Catalyst"));

  std::string message;
  form.rvIndex = -1;
  EXPECT_EQ(form.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("ANOMerr3"));
  form.rvIndex = 0;
  form.cmbAlpha = "";
  form.OK(message);
  EXPECT_EQ(message, GetText("ANOMerr4"));
  form.cmbAlpha = "0.2";
  form.OK(message);
  EXPECT_EQ(message, GetText("ANOMerr5"));
  form.cmbAlpha = "0.10";
  form.charts.clear();
  form.OK(message);
  EXPECT_EQ(message, GetText("ANOMerr1"));
  form.charts = "f1";
  form.optSG = 1;
  form.cmbSG = 1;
  form.chkExclude = true;
  ASSERT_EQ(form.OK(message), FormOutcome::Accepted);
  EXPECT_TRUE(form.stored);
  EXPECT_EQ(s.ANOM_fAlpha, 0.1f);
  EXPECT_EQ(s.ANOM_sCharts, "f1");
  EXPECT_EQ(s.ANOM_iSubgrouping, 2);
  EXPECT_EQ(s.ANOM_flags, 1);
}

TEST_F(ChartFormsTest, AnOneReplicateStudyHasOneOneWayChartAndNoExclusion) {
  Study& s = TwoLevel(3, 1);
  Fill(s, {{1}, {2}, {3}, {4}, {5}, {6}, {7}, {8}});
  stats.Compute(s);
  ANOMForm form(s, stats);
  EXPECT_EQ(form.charts, "1WX");
  EXPECT_FALSE(form.excludeEnabled);
  // Unreplicated, the one-way row is one chart, and its text says nothing of two.
  CheckList list = form.ChartList();
  EXPECT_EQ(list.Rows()[0].text, GetText("ANOMmsg3"));
  ui->checkListAnswers.push_back({"1W", "f1", "f2", "f3"});
  ASSERT_TRUE(form.cmdCharts_Click());
  EXPECT_EQ(form.charts, "1WX,f1,f2,f3");
}

TEST_F(ChartFormsTest, TheChartListRefusesMoreThanSixWithTheOneWayRowCountingTwice) {
  Study& s = StudyOf(5, 2);
  ASSERT_EQ(GetFullyCrossed(s, Design{}), -1);
  Ready(s, 2);
  for (int run = 1; run <= s.iNumRuns; ++run) s.SetData(1, run, 1, 1), s.SetData(1, run, 2, 2);
  stats.Compute(s);
  ANOMForm form(s, stats);
  ui->checkListAnswers.push_back({"1W", "f1", "f2", "f3", "f4"});  // 2 + 4 = 6
  ASSERT_TRUE(form.cmdCharts_Click());
  ui->checkListAnswers.push_back({"1W", "f1", "f2", "f3", "f4", "f5"});  // 7
  EXPECT_FALSE(form.cmdCharts_Click());
  EXPECT_EQ(ui->messages.back().text, GetText("ANOMerr2"));
  EXPECT_EQ(form.charts, "1WX,1WR,f1,f2,f3,f4");
  EXPECT_EQ(Ticked(form.ChartList()), (std::vector<std::string>{"1W", "f1", "f2", "f3", "f4"}));
}

TEST_F(ChartFormsTest, PairwiseDuncanNeedsAlphaOfOneOrFivePercent) {
  Study& s = Chemical();
  PairwiseForm form(s, stats);
  std::string message;
  form.optAlgorithm = 1;
  form.cmbAlpha = "0.10";
  EXPECT_EQ(form.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("FXerr2"));
  form.optAlgorithm = 0;
  ASSERT_EQ(form.OK(message), FormOutcome::Accepted);
  EXPECT_EQ(s.PAIRWISE_fAlpha, 0.1f);
  form.cmbAlpha = "x";
  form.OK(message);
  EXPECT_EQ(message, GetText("ANOMerr4"));
}

// Factors in the order of their choice, Flip, and filters that never filter
// on a chosen factor.
TEST_F(ChartFormsTest, EffectsPlotFactorsAndFilters) {
  Study& s = Chemical();
  FXPlotForm form(s, stats);
  EXPECT_EQ(form.lblFactors(), "Reactant concentration, Catalyst");
  ui->checkListAnswers.push_back({"f2", "f1"});
  ASSERT_TRUE(form.cmdBrowse_Click());
  EXPECT_EQ(form.f1Key, "f2");
  EXPECT_EQ(form.f2Key, "f1");
  form.cmdFlip_Click();
  EXPECT_EQ(form.f1Key, "f1");
  EXPECT_EQ(form.ExcludeList(), "1,2");
  ui->checkListAnswers.push_back({"f1", "f2", "f1"});
  ASSERT_TRUE(form.cmdBrowse_Click());  // a key twice is one tick
  ui->checkListAnswers.push_back({});
  EXPECT_FALSE(form.cmdBrowse_Click());
  EXPECT_EQ(ui->messages.back().text, GetText("ANOMerr1"));
  ui->checkListAnswers.push_back({"f1"});
  ASSERT_TRUE(form.cmdBrowse_Click());
  EXPECT_EQ(form.f2Key, "");
  form.TakeFilters("2;1,1;2");
  EXPECT_EQ(form.lblFilter(), "Catalyst = 1");  // the filter on the chosen factor is gone
  std::string message;
  ASSERT_EQ(form.OK(message), FormOutcome::Accepted);
  EXPECT_EQ(s.FXPLOT_sFilter, "2;1");
  EXPECT_EQ(s.FXPLOT_sF2Key, "");
}

TEST_F(ChartFormsTest, MarginalMeansStoreTheirFlags) {
  Study& s = Chemical();
  MMPForm form(s, stats);
  EXPECT_TRUE(form.incSDEnabled);
  EXPECT_TRUE(form.chkIncSD);
  form.optWhat = 1;
  form.chkReduce = true;
  form.chkIncSD = false;
  std::string message;
  ASSERT_EQ(form.OK(message), FormOutcome::Accepted);
  EXPECT_EQ(s.MMP_flags, 8);
  EXPECT_FALSE(s.MMP_bStdDevChart);
  MMPForm again(s, stats);
  EXPECT_FALSE(again.Edited());
  again.OK(message);
  EXPECT_FALSE(again.stored);
}

// Cycle: the first factor goes second, the second third, the last first.
TEST_F(ChartFormsTest, ResponsePlotFactorsCycleAndTheOptionsFollowTheResponse) {
  Study& s = Chemical();
  ResponseForm form(s, stats);
  EXPECT_EQ(form.factors, (std::vector<std::string>{"f1", "f2"}));
  form.cmdCycle_Click();
  EXPECT_EQ(form.factors, (std::vector<std::string>{"f2", "f1"}));
  EXPECT_TRUE(form.optionEnabled[1]);
  EXPECT_FALSE(form.optionEnabled[2]);  // the yield has no target
  form.SetOption(2);
  EXPECT_EQ(form.option, 0);
  Study& three = TwoLevel(3, 2);
  Fill(three, {{1, 2}, {2, 3}, {3, 4}, {4, 5}, {5, 6}, {6, 7}, {7, 8}, {8, 9}});
  stats.Compute(three);
  ResponseForm f3(three, stats);
  ui->checkListAnswers.push_back({three.GetFactorKey(3), three.GetFactorKey(1), three.GetFactorKey(2)});
  ASSERT_TRUE(f3.cmdBrowse_Click());
  f3.cmdCycle_Click();
  EXPECT_EQ(f3.factors, (std::vector<std::string>{three.GetFactorKey(2), three.GetFactorKey(3), three.GetFactorKey(1)}));
  ui->checkListAnswers.push_back({three.GetFactorKey(1)});
  EXPECT_FALSE(f3.cmdBrowse_Click());
  EXPECT_EQ(ui->messages.back().text, GetText("RSPerr1"));
  std::string message;
  ASSERT_EQ(f3.OK(message), FormOutcome::Accepted);
  EXPECT_EQ(three.RESPONSE_sF1Key, three.GetFactorKey(2));
  EXPECT_EQ(three.RESPONSE_sF3Key, three.GetFactorKey(1));
}

}  // namespace
}  // namespace kestrow
