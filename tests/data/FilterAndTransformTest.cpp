// Filters of runs by a factor's level, the filter dialog's rules, and the
// transformation dialog's rules.
#include <gtest/gtest.h>

#include "core/Language.h"
#include "core/TestSupport.h"
#include "data/Filter.h"
#include "data/FilterForm.h"
#include "data/XformForm.h"

namespace kestrow {
namespace {

// Temperature (150, 175, 200) x Catalyst (Acme, Borealis)
class FilterTest : public test::SampleGridFixture {
 protected:
  FilterTest() : SampleGridFixture("CatalystTrial") {}
};

TEST_F(FilterTest, AllDataAcceptsEveryRunAndALevelOnlyItsRuns) {
  Filter all;
  all.Init(study(), "0;0", 1, 0);
  for (int run = 1; run <= 6; ++run) EXPECT_TRUE(all.bRunIsGood(run));
  Filter borealis;
  borealis.Init(study(), "2;2", 1, 0);
  EXPECT_FALSE(borealis.bRunIsGood(1));
  EXPECT_TRUE(borealis.bRunIsGood(4));
}

TEST_F(FilterTest, CountsGoodObservationsOrRunsThatCanGiveARange) {
  Filter f;
  f.Init(study(), "2;2", 1, 0);  // runs 2, 4, 6 of Yield: run 4 has one excluded cell
  EXPECT_EQ(f.CountItems(), 8);
  f.Init(study(), "2;2", 1, 1);
  EXPECT_EQ(f.CountItems(), 3);
  f.Init(study(), "1;3", 2, 0);  // runs 5 and 6 of Impurity: one cell missing
  EXPECT_EQ(f.CountItems(), 5);
}

TEST_F(FilterTest, TheWalkVisitsTheFiltersRunsAndGivesNoValue) {
  Filter f;
  f.Init(study(), "1;2", 1, 0);
  std::vector<int> visited;
  for (int step = 0; step < 3; ++step) {
    EXPECT_EQ(f.GetNextValue(), MISSING_VALUE);
    visited.push_back(f.iRunPtr);
  }
  EXPECT_EQ(visited, (std::vector<int>{3, 4, 7}));  // 7: past the last run
}

TEST_F(FilterTest, FilterTextsReadAsFactorAndLevel) {
  EXPECT_EQ(FilterToText(study(), "0;0"), "All Data");
  EXPECT_EQ(FilterToText(study(), "1;3"), "Temperature = 200");
  EXPECT_EQ(FilterToText(study(), "abc"), "");
}

// The dialog's grid, its starting ticks and the refusal of none are checked
// through the window in tst_frmFilter.
TEST_F(FilterTest, TheDialogTicksTheListOnlyInRowOrderAndTakesOneToSix) {
  FilterForm form;
  form.Load(study(), "2;1,1;2", "");  // not in row order: only the first is found
  int ticked = 0;
  for (const auto& r : form.rows) ticked += r.checked;
  EXPECT_EQ(ticked, 1);
  ASSERT_EQ(form.rows.size(), 1u + 3 + 2);
  for (auto& r : form.rows) r.checked = true;
  EXPECT_EQ(form.OK(), "");
  EXPECT_EQ(form.sFilterList, "0;0,1;1,1;2,1;3,2;1,2;2");
  form.rows.push_back({"9;9", "", "", true});
  EXPECT_EQ(form.OK(), GetText("MCerr1"));  // a seventh
}

TEST_F(FilterTest, RecomputeMakesEveryValuePlusAAtLeastOne) {
  XformForm form(study());
  form.SelectRV(2);  // Impurity: log10(y + 1)
  EXPECT_EQ(form.optXform, 1);
  EXPECT_EQ(form.txtA, "1");
  form.SetOption(2);
  form.Recompute();
  EXPECT_EQ(form.txtA, "0");  // the smallest value is far above 1
  EXPECT_EQ(form.txtB, "0");  // three replications
  study().iReps = 1;
  study().SetDataArrayPreserve();
  study().SetData(2, 1, 1, -2.5f);
  form.Recompute();
  EXPECT_EQ(form.txtA, "3.5");
  EXPECT_EQ(form.txtB, "1");
  EXPECT_EQ(ui->messages.back().kind, "info");
}

TEST_F(FilterTest, OKChecksTheFieldsAndClearsTheTransformedAnalyses) {
  XformForm form(study());
  study().ANOVA_sRVkey = "v1*";
  study().ANOM_sRVkey = "v1";
  form.SelectRV(1);
  form.SetOption(2);
  bool declined = false;
  form.txtA = "x";
  EXPECT_EQ(form.OK(declined), GetText("XFMerr1"));
  form.txtA = "";
  form.txtB = "?";
  EXPECT_EQ(form.OK(declined), GetText("XFMerr2"));
  form.txtB = "0.5";
  EXPECT_EQ(form.OK(declined), "");
  EXPECT_FALSE(declined);
  EXPECT_EQ(study().StudyRespVars(1).iType, 2);
  EXPECT_EQ(study().StudyRespVars(1).fParam1, 0.0f);  // an empty field counts as 0
  EXPECT_EQ(study().StudyRespVars(1).fParam2, 0.5f);
  EXPECT_EQ(study().ANOVA_sRVkey, "");
  EXPECT_EQ(study().ANOM_sRVkey, "v1");  // raw data: still good
  EXPECT_EQ(study().TransformText(study().StudyRespVars(1)), "Yield ^ 0.5 - 1)/ 0.5");
}

// A logarithm of y - 1000 on yields below 100 leaves no value at all: the
// dialog says so first, No keeps the response as it was, Yes stores it.
TEST_F(FilterTest, ATransformThatLeavesNoValueIsSaidBeforeOK) {
  XformForm form(study());
  form.SelectRV(1);
  form.SetOption(1);
  form.txtA = "-1000";
  bool declined = false;
  ui->messages.clear();
  EXPECT_EQ(form.OK(declined), "");  // the question is answered No
  EXPECT_TRUE(declined);
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_EQ(ui->messages[0].kind, "yesno");
  EXPECT_NE(ui->messages[0].text.find("Yield"), std::string::npos);
  EXPECT_EQ(study().StudyRespVars(1).iType, 0);
  ui->answers = {Answer::Yes};
  EXPECT_EQ(form.OK(declined), "");
  EXPECT_FALSE(declined);
  EXPECT_EQ(study().StudyRespVars(1).iType, 1);
  form.txtA = "-60";  // some values stay: no question
  ui->messages.clear();
  EXPECT_EQ(form.OK(declined), "");
  EXPECT_TRUE(ui->messages.empty());
}

}  // namespace
}  // namespace kestrow
