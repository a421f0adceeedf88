// The multi-chart: the charts its dialog offers from the analyses that are
// set up, at most six chosen, and the sheet drawn from the list with an
// entry whose analysis cannot run left out.
#include <gtest/gtest.h>

#include "charts/ChartPage.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/TestSupport.h"
#include "data/Statistics.h"
#include "workbench/MultiChart.h"

namespace kestrow {
namespace {

class MultiChart : public ::testing::Test {
 protected:
  void SetUp() override {
    SetProgramFolder(KESTROW_BIN);
    OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
    problem = test::Sample("ChemicalYield");
    stats.Compute(study());
  }
  void TearDown() override {
    gphStart();
    CloseLanguage();
  }
  Study& study() { return problem->Studies(1); }
  std::vector<std::string> Keys(const MultiChartForm& form) {
    std::vector<std::string> keys;
    for (const auto& row : form.rows) keys.push_back(row.key);
    return keys;
  }

  test::ScopedUi ui;
  std::unique_ptr<Problem> problem;
  Statistics stats;
};

TEST_F(MultiChart, TheDialogOffersEachChartOfTheSetUpAnalyses) {
  MultiChartForm form(study(), stats);
  std::vector<std::string> keys = Keys(form);
  for (const char* key : {"1+f1", "1+f2", "1+1WX", "1+1WR", "13+1", "13+2", "8", "3+-3", "3+-2", "3+-1", "4+0;0",
                          "5", "6+X", "6+S", "15+X"})
    EXPECT_NE(std::find(keys.begin(), keys.end(), key), keys.end()) << key;
  // The ANOVA graphics offer only the charts the ANOVA dialog chose.
  EXPECT_EQ(std::find(keys.begin(), keys.end(), "13+0"), keys.end());
  EXPECT_EQ(form.rows[0].text, GetText("ANOM") + ": Reactant concentration " + GetText("MEANOM"));
  int ticked = 0;
  for (auto& row : form.rows) {
    ticked += row.checked ? 1 : 0;
    row.checked = false;
  }
  EXPECT_EQ(ticked, 6);  // the sample's list
  std::string message;
  EXPECT_EQ(form.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("ANOMerr1"));
  for (std::size_t i = 0; i < 7; ++i) form.rows[i].checked = true;
  form.OK(message);
  EXPECT_EQ(message, GetText("MCerr1"));
  EXPECT_EQ(study().sMultiChart, "1+f1,1+f2,4+0;0,6+X,3+-3,3+-1");  // refused: kept
  form.rows[0].checked = false;
  ASSERT_EQ(form.OK(message), FormOutcome::Accepted);
  EXPECT_TRUE(form.stored);
  EXPECT_EQ(study().sMultiChart, "1+f2,1+1WX,1+1WR,13+1,13+2,8");
}

// Six entries make six charts; one whose analysis is not set up is left out
// quietly.
TEST_F(MultiChart, TheSheetDrawsEachEntryAndSkipsWhatCannotRun) {
  study().sMultiChart = "1+f1,1+1WR,8,6+S,15+X,5";
  ASSERT_TRUE(ShowMultiChart(study(), stats));
  ASSERT_EQ(gPage.Charts.size(), 6u);
  const std::int16_t types[] = {CHT_ANOM, CHT_ANOM, CHT_PAIRWISE, CHT_MMP, CHT_RUN, CHT_RESPONSE2};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(gPage.Charts[static_cast<std::size_t>(i)].chtType, types[i]) << i;
  EXPECT_EQ(gPage.Charts[3].sTextType, "SD");
  study().sMultiChart = "9,1+f2,99";
  ASSERT_TRUE(ShowMultiChart(study(), stats));
  ASSERT_EQ(gPage.Charts.size(), 1u);
  EXPECT_TRUE(ui->messages.empty());
}

}  // namespace
}  // namespace kestrow
