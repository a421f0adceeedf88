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

using test::Sample;
using test::ScopedUi;

class FilterTest : public ::testing::Test {
 protected:
  void SetUp() override {
    OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
    problem = Sample("CatalystTrial");  // Temperature (150, 175, 200) x Catalyst (Acme, Borealis)
  }
  void TearDown() override { CloseLanguage(); }
  Study& study() { return problem->Studies(1); }
  ScopedUi ui;
  std::unique_ptr<Problem> problem;
};

TEST_F(FilterTest, AllDataAcceptsEveryRunAndALevelOnlyItsRuns) {
  Filter all;
  all.Init(study(), "0;0", 1, 0);
  for (int run = 1; run <= 6; ++run) EXPECT_TRUE(all.bRunIsGood(run));
  Filter borealis;
  borealis.Init(study(), "2;2", 1, 0);
  EXPECT_EQ(borealis.iFactor, 2);
  EXPECT_EQ(borealis.iLevel, 2);
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
  EXPECT_EQ(f.GetNextValue(), MISSING_VALUE);
  EXPECT_EQ(f.iRunPtr, 3);
  f.GetNextValue();
  EXPECT_EQ(f.iRunPtr, 4);
  f.GetNextValue();
  EXPECT_EQ(f.iRunPtr, 7);  // past the last run
  f.ResetCount();
  EXPECT_EQ(f.iRunPtr, 0);
}

TEST_F(FilterTest, FilterTextsReadAsFactorAndLevel) {
  EXPECT_EQ(FilterToText(study(), "0;0"), "All Data");
  EXPECT_EQ(FilterToText(study(), "1;3"), "Temperature = 200");
  EXPECT_EQ(FilterToText(study(), "abc"), "");
}

TEST_F(FilterTest, TheDialogTicksTheListInRowOrderAndTakesOneToSix) {
  FilterForm form;
  form.Load(study(), "0;0,1;2,2;1", "");
  ASSERT_EQ(form.rows.size(), 1u + 3 + 2);
  EXPECT_TRUE(form.rows[0].checked);
  EXPECT_TRUE(form.rows[2].checked);
  EXPECT_TRUE(form.rows[4].checked);
  EXPECT_EQ(form.rows[4].level, "Acme");
  FilterForm outOfOrder;
  outOfOrder.Load(study(), "2;1,1;2", "");  // not in row order: only the first is found
  int ticked = 0;
  for (const auto& r : outOfOrder.rows) ticked += r.checked;
  EXPECT_EQ(ticked, 1);

  FilterForm excluded;
  excluded.Load(study(), "", "1");
  EXPECT_EQ(excluded.rows.size(), 1u + 2);

  for (auto& r : form.rows) r.checked = false;
  EXPECT_EQ(form.OK(), GetText("ANOMerr1"));
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
  EXPECT_FALSE(form.bEnabled);
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
  form.txtA = "x";
  EXPECT_EQ(form.OK(), GetText("XFMerr1"));
  form.txtA = "";
  form.txtB = "?";
  EXPECT_EQ(form.OK(), GetText("XFMerr2"));
  form.txtB = "0.5";
  EXPECT_EQ(form.OK(), "");
  EXPECT_EQ(study().StudyRespVars(1).iType, 2);
  EXPECT_EQ(study().StudyRespVars(1).fParam1, 0.0f);  // an empty field counts as 0
  EXPECT_EQ(study().StudyRespVars(1).fParam2, 0.5f);
  EXPECT_EQ(study().ANOVA_sRVkey, "");
  EXPECT_EQ(study().ANOM_sRVkey, "v1");  // raw data: still good
  EXPECT_EQ(study().TransformText(study().StudyRespVars(1)), "Yield ^ 0.5 - 1)/ 0.5");
}

}  // namespace
}  // namespace kestrow
