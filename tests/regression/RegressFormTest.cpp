// The regression dialog's rules and the search dialog's, on Montgomery's
// central composite (Design and Analysis of Experiments, chapter 11) and on
// small two-level studies: the grid kept hierarchical, the refusals, what OK
// stores and what it clears, the copy-back of the search's best model, and
// the report drawn from the stored model. Coefficients are checked against
// an independent least squares.
#include <gtest/gtest.h>

#include "RegressionFixture.h"
#include "core/Formatters.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/Text.h"
#include "regression/APRForm.h"
#include "regression/Regress.h"
#include "regression/RegressForm.h"
#include "regression/RegressionReport.h"
#include "regression/TermGrid.h"

namespace kestrow {
namespace {

class RegressFormTest : public test::RegressionFixture {
 protected:
  static std::string Ticks(const RegressForm& f) {
    std::string s;
    for (const RegressForm::Row& r : f.rows) s += (s.empty() ? "" : " ") + r.sTerm + (r.checked ? "+" : "-");
    return s;
  }
  static std::size_t RowOf(const RegressForm& f, const std::string& term) {
    for (std::size_t i = 0; i < f.rows.size(); ++i)
      if (f.rows[i].sTerm == term) return i;
    ADD_FAILURE() << "no row " << term;
    return 0;
  }
  std::size_t Errors() {
    std::size_t n = 0;
    for (const auto& m : ui->messages) n += m.kind == "error";
    return n;
  }
  Statistics stats;
};

TEST_F(RegressFormTest, TheGridOffersEachModelTypeAndStaysHierarchical) {
  Study& s = SampleStudy("CentralComposite");
  RegressForm f(s, stats);
  EXPECT_EQ(Ticks(f), "0+ 1+ 2+ 1,2+ 1,1+ 2,2+");  // the stored quadratic, every term ticked
  f.optModel_Click(MODEL_LINEAR);
  EXPECT_EQ(Ticks(f), "0+ 1+ 2+");
  f.optModel_Click(MODEL_CUBIC);
  EXPECT_EQ(Ticks(f), "0+ 1+ 2+ 1,2+ 1,1+ 2,2+ 1,1,1+ 1,2,2+ 1,1,2+ 2,2,2+");

  f.optModel_Click(MODEL_QUADRATIC);
  f.Tick(RowOf(f, "1"), false);  // a factor takes every term that holds it
  EXPECT_EQ(Ticks(f), "0+ 1- 2+ 1,2- 1,1- 2,2+");
  f.Tick(RowOf(f, "1,1"), true);  // a product brings its factors back
  EXPECT_EQ(Ticks(f), "0+ 1+ 2+ 1,2- 1,1+ 2,2+");
  f.Tick(RowOf(f, "0"), false);  // the constant stays
  EXPECT_TRUE(f.rows[0].checked);
  EXPECT_TRUE(f.Edited());

  // One factor of four levels: its cubic is the constant and three powers.
  Study& one = StudyOf(1, 4);
  RegressForm g(one, stats);
  g.optModel_Click(MODEL_CUBIC);
  std::vector<std::string> texts;
  for (const RegressForm::Row& r : g.rows) texts.push_back(r.text);
  EXPECT_EQ(texts, (std::vector<std::string>{"Constant", "A", "A x A", "A x A x A"}));
}

TEST_F(RegressFormTest, ComputeShowsTheFitOfTheTicksAndOkStoresIt) {
  Study& s = SampleStudy("CentralComposite");
  s.REGRESS_iFlag = REGRESS_CODED | REGRESS_STUDENTISED;
  RegressForm f(s, stats);
  f.optModel_Click(MODEL_INTERACTIONS);
  ASSERT_TRUE(f.cmdRegress_Click());
  // Independent fit of y on 1, x1, x2, x1 x2 in coded units.
  std::vector<std::vector<double>> x(4);
  std::vector<double> y;
  for (int run = 1; run <= s.iNumRuns; ++run) {
    double a = s.FValueToCode(s.GetFactorKey(1), s.GetTreatmentLevelValue(1, run));
    double b = s.FValueToCode(s.GetFactorKey(2), s.GetTreatmentLevelValue(2, run));
    x[0].push_back(1), x[1].push_back(a), x[2].push_back(b), x[3].push_back(a * b);
    y.push_back(s.GetData(1, run, 1));
  }
  test::Fit fit = test::LeastSquares(x, y);
  ASSERT_TRUE(fit.ok);
  for (std::size_t j = 0; j < 4; ++j)
    EXPECT_NEAR(std::stod(f.rows[j].coefficient), static_cast<double>(fit.beta[j]), 5e-4 * std::abs(fit.beta[j])) << j;
  EXPECT_EQ(f.lblRsquared, FormatDecimals(3, static_cast<float>(fit.rsq)));
  EXPECT_NE(f.lblEquation.find('='), std::string::npos);
  EXPECT_EQ(s.REGRESS_Rterms.Count(), 6);  // nothing stored before OK
  EXPECT_EQ(s.REGRESS_RES_sCharts, "-3,-1");

  std::string message;
  ASSERT_EQ(f.OK(message), FormOutcome::Accepted) << message;
  EXPECT_TRUE(f.stored);
  ASSERT_EQ(s.REGRESS_Rterms.Count(), 4);
  EXPECT_EQ(s.REGRESS_Rterms(4).sTerm, "1,2");
  EXPECT_EQ(s.REGRESS_iModelType, MODEL_INTERACTIONS);
  EXPECT_EQ(s.REGRESS_iFlag, REGRESS_CODED | REGRESS_STUDENTISED);  // the charts' own bit kept
  EXPECT_EQ(s.REGRESS_RES_sCharts, "");  // the former model's residual charts went with it

  // Opened again and OK'd as it stands: nothing changes, nothing is cleared.
  s.REGRESS_RES_sCharts = "-1";
  RegressForm again(s, stats);
  EXPECT_FALSE(again.Edited());
  ASSERT_EQ(again.OK(message), FormOutcome::Accepted);
  EXPECT_FALSE(again.stored);
  EXPECT_EQ(s.REGRESS_RES_sCharts, "-1");
}

TEST_F(RegressFormTest, RefusalsNameTheirCauseAndLeaveTheStudyAsItWas) {
  Study& s = SampleStudy("CentralComposite");
  const int before = s.REGRESS_Rterms.Count();
  RegressForm f(s, stats);
  EXPECT_FALSE(f.sdOffered);  // one observation a run: no standard deviation to model
  EXPECT_EQ(f.optVar, 0);
  for (std::size_t r = 1; r < f.rows.size(); ++r) f.Tick(r, false);
  std::string message;
  EXPECT_EQ(f.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("REGerr2"));
  EXPECT_FALSE(f.cmdRegress_Click());
  EXPECT_EQ(ui->messages.back().text, GetText("REGerr2"));
  f.rvIndex = -1;
  EXPECT_EQ(f.OK(message), FormOutcome::Refused);
  EXPECT_EQ(message, GetText("REGerr1"));
  EXPECT_FALSE(f.VetForSearch());
  EXPECT_EQ(s.REGRESS_Rterms.Count(), before);

  // A study without data: the fit finds no observation and says so; nothing
  // is stored.
  Study& empty = TwoLevel(2, 1);
  RegressForm e(empty, stats);
  const std::size_t said = ui->messages.size();
  EXPECT_EQ(e.OK(message), FormOutcome::Refused);
  ASSERT_EQ(ui->messages.size(), said + 1);
  EXPECT_EQ(ui->messages.back().text, "Insufficent D.O.F. to compute this equation");
  EXPECT_EQ(empty.REGRESS_Rterms.Count(), 0);
  EXPECT_EQ(empty.REGRESS_sRVkey, "");

  Study& replicated = TwoLevel(2, 2);
  Fill(replicated, {{1, 2}, {3, 5}, {4, 4}, {8, 9}});
  RegressForm g(replicated, stats);
  EXPECT_TRUE(g.sdOffered);
}

// The search runs on the form's grid; its best model comes back ticked and
// computed, and is the one the search listed.
TEST_F(RegressFormTest, TheSearchsBestModelIsCopiedBack) {
  Study& s = SampleStudy("CentralComposite");
  RegressForm f(s, stats);
  ASSERT_TRUE(f.VetForSearch());
  APRForm search(s, f.SearchRVkey(), f.SearchFlag(), f.TermGrid(), f.ModelName());
  EXPECT_EQ(search.lblModelType, "Quadratic + Interactions");
  search.cmdStart_Click();
  EXPECT_FALSE(search.Running());
  ASSERT_GT(search.BestRow(), 0);
  EXPECT_EQ(search.Back(search.BestRow()), APRForm::BEST_COLOUR);
  EXPECT_EQ(search.Cell(search.BestRow(), APRForm::BEST), "*");
  const std::uint32_t mask = search.cmdExit_Click();
  ASSERT_NE(mask, 0u);
  f.CopyBack(mask);
  for (std::size_t r = 1; r < f.rows.size(); ++r) EXPECT_EQ(f.rows[r].checked, (mask >> (r - 1) & 1) != 0) << r;
  EXPECT_FALSE(f.lblRsquared.empty());
  const APRRow& best = search.Search().Rows()[static_cast<std::size_t>(search.BestRow() - 1)];
  EXPECT_EQ(f.lblRsquared, FormatDecimals(3, best.fRSquared));

  search.chkCopyBack = false;
  EXPECT_EQ(search.cmdExit_Click(), 0u);
}

class StopOnSecondLook : public ScriptedUi {
 public:
  APRForm* form = nullptr;
  int looks = 0;
  void DoEvents() override {
    if (++looks == 2) form->cmdStart_Click();  // Stop, the same button
  }
};

TEST_F(RegressFormTest, TheSearchStopsOnTheSameButtonAndSaysEachOmissionOnce) {
  // An unreplicated 2^2: the full interactions model leaves no error.
  Study& small = TwoLevel(2, 1);
  FillYates(small, {{10}, {14}, {9}, {21}});
  APRForm full(small, "v1", REGRESS_CODED, {{"Constant", "0"}, {"A", "1"}, {"B", "2"}, {"A x B", "1,2"}}, "Interactions");
  full.cmdStart_Click();
  EXPECT_EQ(Errors(), 1u);
  EXPECT_EQ(ui->messages.back().text, "Insufficent D.O.F. to compute this equation");
  // A and B listed; A + B (one degree of freedom left) and the saturated
  // model not, with one message for both.
  ASSERT_EQ(full.Rows(), 1 + 2);
  // Residual SS by hand: total 89, less A's 16^2/4 = 64, or B's 6^2/4 = 9.
  EXPECT_EQ(full.Cell(1, APRForm::SS), "25");
  EXPECT_EQ(full.Cell(2, APRForm::SS), "80");

  std::vector<std::pair<std::string, std::string>> many = {{"Constant", "0"}};
  for (int i = 1; i <= 31; ++i) many.emplace_back("T" + std::to_string(i), std::to_string(i));
  APRForm tooMany(small, "v1", REGRESS_CODED, many, "Linear");
  tooMany.cmdStart_Click();
  EXPECT_EQ(ui->messages.back().text, GetText("APRerr1"));
  EXPECT_FALSE(tooMany.Running());

  // Six two-level factors and their products: 2^21 subsets without the
  // hierarchy, stopped at the search's second look at the window.
  Study& s = TwoLevel(6, 1);
  for (int run = 1; run <= s.iNumRuns; ++run) s.SetData(1, run, 1, static_cast<float>((run * 37) % 11 + run % 3));
  RegressForm f(s, stats);
  f.optModel_Click(MODEL_INTERACTIONS);
  ASSERT_EQ(f.rows.size(), 22u);
  auto stopper = std::make_unique<StopOnSecondLook>();
  StopOnSecondLook* ui2 = stopper.get();
  auto old = InstallUi(std::move(stopper));
  APRForm search(s, "v1", REGRESS_CODED, f.TermGrid(), f.ModelName());
  ui2->form = &search;
  search.chkHierarchy = false;
  search.cmdStart_Click();
  InstallUi(std::move(old));
  EXPECT_EQ(ui2->looks, 2);
  EXPECT_FALSE(search.Running());
  EXPECT_FALSE(search.Search().Finished());
  EXPECT_EQ(search.Cell(1, APRForm::CP), "");  // Cp needs the full model's error: not shown after a Stop
}

// The report of the stored quadratic: Montgomery's coefficients and
// R-squared (0.9827), and each observation with its fit; with replicates,
// each observation is named by its run and the letter of its replicate.
TEST_F(RegressFormTest, TheReportListsTheModelAndEachObservation) {
  Study& s = SampleStudy("CentralComposite");
  Grid grid;
  ASSERT_TRUE(DrawRegression(s, grid));
  ASSERT_GE(grid.Rows(), 2 + 6 + 3 + 3 + 13);
  EXPECT_EQ(grid.Text(2, 1), "Constant");
  EXPECT_EQ(grid.Text(2, 2), "79.94");
  EXPECT_EQ(grid.Text(6, 2), "-1.376");
  EXPECT_EQ(grid.Text(9, 2), "0.9827");
  Regress fit;
  fit.Init(s);
  ASSERT_TRUE(fit.Compute("v1"));
  for (int run = 1; run <= 13; ++run) {
    const int row = 13 + run;
    EXPECT_EQ(grid.Text(row, 1), std::to_string(run));
    float actual = s.GetData(1, run, 1);
    EXPECT_NEAR(std::stod(grid.Text(row, 3)) + std::stod(grid.Text(row, 4)), actual, 0.01) << run;
  }

  Study& rep = TwoLevel(2, 2);
  Fill(rep, {{10, 11}, {14, 16}, {9, 8}, {21, 20}});
  Model(rep, {"0", "1", "2"});
  Grid g2;
  ASSERT_TRUE(DrawRegression(rep, g2));
  std::vector<std::string> names;
  for (int row = 0; row < g2.Rows(); ++row)
    if (g2.Text(row, 1) == "1a" || g2.Text(row, 1) == "1b" || g2.Text(row, 1) == "4b") names.push_back(g2.Text(row, 1));
  EXPECT_EQ(names, (std::vector<std::string>{"1a", "1b", "4b"}));
}

}  // namespace
}  // namespace kestrow
