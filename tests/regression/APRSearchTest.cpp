// The all-subsets search on Montgomery's filtration rate experiment (Design
// and Analysis of Experiments, Example 6.2: an unreplicated 2^4; effects
// A 21.625, C 9.875, D 14.625, AC -18.125, AD 16.625; total SS 5730.94,
// error SS of the five-term model 195.13), with its ten candidate terms of
// the interactions model. Each listed row against the fit of its subset
// alone; the best subset of each size against an exhaustive search by Cp
// written here, each fit an independent least squares.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <map>

#include "LeastSquares.h"
#include "analyses/ChartFixture.h"
#include "core/Formatters.h"
#include "core/Text.h"
#include "regression/APRSearch.h"
#include "regression/Regress.h"
#include "regression/TermGrid.h"

namespace kestrow {
namespace {

class APRSearchTest : public test::ChartFixture {
 protected:
  std::vector<APRTerm> Table(const Study& s, int modelType) {
    std::vector<std::pair<std::string, std::string>> grid;
    for (const TermEntry& e : RegressionTerms(s, modelType)) grid.emplace_back(e.sText, e.sTerm);
    return APRSearch::TermTable(grid);
  }
  // The independent fit of the constant and the terms of a mask, coded.
  static test::Fit Subset(Study& s, const std::vector<APRTerm>& table, std::uint32_t mask) {
    std::vector<std::vector<double>> x(1);
    std::vector<double> y;
    for (int run = 1; run <= s.iNumRuns; ++run)
      for (int rep = 1; rep <= s.iReps; ++rep) {
        float v = s.GetData(1, run, rep);
        if (v == MISSING_VALUE) continue;
        y.push_back(v);
        x[0].push_back(1);
        std::size_t col = 1;
        for (std::size_t j = 1; j < table.size(); ++j) {
          if (!(mask & table[j].lBit)) continue;
          if (x.size() <= col) x.emplace_back();
          double product = 1;
          for (int f : TermFactors(table[j].sTerm))
            product *= s.FValueToCode(s.GetFactorKey(f), s.GetTreatmentLevelValue(f, run));
          x[col++].push_back(product);
        }
      }
    return test::LeastSquares(x, y);
  }
  APRSearch search;
};

TEST_F(APRSearchTest, TheTermTableOfAnInteractionsModel) {
  Study& s = SampleStudy("FiltrationRate");
  std::vector<APRTerm> t = Table(s, MODEL_INTERACTIONS);
  ASSERT_EQ(t.size(), 11u);
  EXPECT_EQ(t[0].lBit, 0u);
  EXPECT_EQ(t[5].sText, "A x B");
  EXPECT_EQ(t[5].lNeeds, 0b11u);      // A x B needs A and B
  EXPECT_EQ(t[1].lNeeds, t[1].lBit);  // a factor needs itself
  EXPECT_EQ(t[10].sText, "C x D");
  EXPECT_EQ(t[10].lNeeds, 0b1100u);
}

// The model of the published analysis, from its effects, and R-squared
// from its sums of squares.
TEST_F(APRSearchTest, ThePublishedReducedModel) {
  Study& s = SampleStudy("FiltrationRate");
  std::vector<APRTerm> t = Table(s, MODEL_INTERACTIONS);
  Regress r;
  r.Init(s);
  r.ZapTerms();
  for (const char* term : {"0", "1", "3", "4", "1,3", "1,4"}) {
    Rterm rt;
    InitRterm(rt);
    rt.sTerm = term;
    r.AddTerm(rt);
  }
  s.REGRESS_iFlag = 2;
  r.SetFlag(2);
  ASSERT_TRUE(r.Compute("v1"));
  const double published[] = {70.0625, 21.625 / 2, 9.875 / 2, 14.625 / 2, -18.125 / 2, 16.625 / 2};
  for (int j = 1; j <= 6; ++j) EXPECT_NEAR(r.Term(j).fBeta, published[j - 1], 1e-4) << j;
  EXPECT_EQ(FormatSF(4, r.fRSquared), FormatSF(4, static_cast<float>(1 - 195.13 / 5730.94)));
  EXPECT_EQ(FormatSF(4, r.fRSquaredAdj), FormatSF(4, static_cast<float>(1 - 195.13 / 10 / (5730.94 / 15))));
}

// Without hierarchy every one of the 1,023 subsets is listed, in ascending
// order of its mask, each with the figures of its own fit bit for bit.
TEST_F(APRSearchTest, EveryRowIsTheFitOfItsSubset) {
  Study& s = SampleStudy("FiltrationRate");
  std::vector<APRTerm> t = Table(s, MODEL_INTERACTIONS);
  ASSERT_TRUE(search.Prepare(s, "v1", 2, t));
  ASSERT_TRUE(search.Run(false, [] { return true; }));
  ASSERT_EQ(search.Rows().size(), 1023u);
  for (std::size_t i = 0; i < search.Rows().size(); ++i) {
    const APRRow& row = search.Rows()[i];
    ASSERT_EQ(row.mask, i + 1);
    Regress r;
    r.Init(s);
    r.SetFlag(2);
    r.ZapTerms();
    for (const APRTerm& term : t)
      if (term.lBit == 0 || (row.mask & term.lBit)) {
        Rterm rt;
        InitRterm(rt);
        rt.sTerm = term.sTerm;
        r.AddTerm(rt);
      }
    ASSERT_TRUE(r.Compute("v1")) << row.mask;
    EXPECT_EQ(row.fSSE, r.fSSE) << row.mask;
    EXPECT_EQ(row.fMSE, r.fMSE) << row.mask;
    EXPECT_EQ(row.fRSquared, r.fRSquared) << row.mask;
    EXPECT_EQ(row.fRSquaredAdj, r.fRSquaredAdj) << row.mask;
  }
  EXPECT_EQ(search.RowText(search.Rows()[4]), "A, C");
}

// The best subset of each size by Cp, and the best of all, as an exhaustive
// search of independent fits finds them; Cp against the full model's mean
// square with n the number of runs.
TEST_F(APRSearchTest, CpRanksAsAnExhaustiveSearch) {
  Study& s = SampleStudy("FiltrationRate");
  std::vector<APRTerm> t = Table(s, MODEL_INTERACTIONS);
  ASSERT_TRUE(search.Prepare(s, "v1", 2, t));
  ASSERT_TRUE(search.Run(false, [] { return true; }));
  const std::uint32_t full = (1u << 10) - 1;
  const double msFull = static_cast<double>(Subset(s, t, full).mse);
  std::map<int, std::pair<double, std::uint32_t>> bestOfSize;  // terms -> (Cp, mask)
  std::pair<double, std::uint32_t> best{1e9, 0};
  for (std::uint32_t mask = 1; mask <= full; ++mask) {
    test::Fit fit = Subset(s, t, mask);
    ASSERT_TRUE(fit.ok);
    int p = std::popcount(mask) + 1;
    double cp = static_cast<double>(fit.sse) / msFull - s.iNumRuns + 2 * p;
    auto [it, fresh] = bestOfSize.try_emplace(p, cp, mask);
    if (!fresh && cp < it->second.first) it->second = {cp, mask};
    if (cp < best.first) best = {cp, mask};
  }
  std::map<int, std::pair<float, std::uint32_t>> found;
  for (const APRRow& row : search.Rows()) {
    float cp = search.Cp(row);
    auto [it, fresh] = found.try_emplace(APRSearch::RowTerms(row), cp, row.mask);
    if (!fresh && cp < it->second.first) it->second = {cp, row.mask};
  }
  for (const auto& [p, want] : bestOfSize) {
    EXPECT_EQ(found[p].second, want.second) << p << " terms";
    EXPECT_EQ(FormatSF(4, found[p].first), FormatSF(4, static_cast<float>(want.first))) << p << " terms";
  }
  ASSERT_GE(search.BestRow(), 0);
  EXPECT_EQ(search.Rows()[static_cast<std::size_t>(search.BestRow())].mask, best.second);
  // The full model's own Cp is its term count.
  EXPECT_FLOAT_EQ(search.Cp(search.Rows().back()), 11);
}

// With hierarchy on, a product is fitted only with the terms of its factors:
// A x B without A never, A, B and A x B together always.
TEST_F(APRSearchTest, HierarchyKeepsProductsWithTheirFactors) {
  Study& s = SampleStudy("FiltrationRate");
  std::vector<APRTerm> t = Table(s, MODEL_INTERACTIONS);
  ASSERT_TRUE(search.Prepare(s, "v1", 2, t));
  ASSERT_TRUE(search.Run(true, [] { return true; }));
  std::size_t expected = 0;
  for (std::uint32_t mask = 1; mask < (1u << 10); ++mask) {
    bool keeps = true;
    for (const APRTerm& term : t)
      if ((mask & term.lBit) && (mask & term.lNeeds) != term.lNeeds) keeps = false;
    expected += keeps;
  }
  EXPECT_EQ(search.Rows().size(), expected);
  bool withAB = false;
  for (const APRRow& row : search.Rows()) {
    if (row.mask & t[5].lBit) {
      EXPECT_EQ(row.mask & 0b11u, 0b11u) << row.mask;
    }
    withAB = withAB || row.mask == (t[5].lBit | 0b11u);
  }
  EXPECT_TRUE(withAB);
}

// A squared term needs its factor; with replicates Cp counts runs, not
// observations: the full model of 16 observations in 8 runs has 9 residual
// degrees of freedom and Cp 9 - 8 + 2 x 7 = 15.
TEST_F(APRSearchTest, SquaresAndReplicates) {
  Study& s = SampleStudy("CentralComposite");
  std::vector<APRTerm> t = Table(s, MODEL_QUADRATIC);
  ASSERT_EQ(t[4].sText, "Time x Time");
  EXPECT_EQ(t[4].lNeeds, t[1].lBit);
  Study& e = SampleStudy("EtchRate");
  ASSERT_EQ(e.iReps, 2);
  std::vector<APRTerm> table = Table(e, MODEL_INTERACTIONS);
  ASSERT_TRUE(search.Prepare(e, "v1", 2, table));
  ASSERT_TRUE(search.Run(true, [] { return true; }));
  EXPECT_NEAR(search.Cp(search.Rows().back()), 15, 1e-4);
}

// A search of a million subsets stopped at its first question keeps what
// it found, in order, with no best row.
TEST_F(APRSearchTest, StopInMidRun) {
  Study& s = StudyOf(5, 3);
  for (int run = 1; run <= 64; ++run) {
    Treatment tr;
    tr.sTlist = "*";
    for (int f = 0; f < 5; ++f) tr.sTlist += "|" + ShortestText(std::sin(run * (f + 1.3)));
    s.Treatments.Add(tr);
  }
  s.iNumRuns = 64;
  Ready(s, 1);
  for (int run = 1; run <= 64; ++run) s.SetData(1, run, 1, static_cast<float>(std::cos(run * 0.7) + run % 5));
  std::vector<APRTerm> t = Table(s, MODEL_QUADRATIC);
  ASSERT_EQ(t.size(), 21u);
  ASSERT_TRUE(search.Prepare(s, "v1", 2, t));
  int asked = 0;
  EXPECT_FALSE(search.Run(false, [&] { return ++asked < 2; }));
  EXPECT_EQ(asked, 2);
  EXPECT_FALSE(search.Finished());
  EXPECT_EQ(search.BestRow(), -1);
  ASSERT_FALSE(search.Rows().empty());
  EXPECT_LT(static_cast<std::int64_t>(search.Rows().size()), search.Subsets());
  for (std::size_t i = 1; i < search.Rows().size(); ++i) ASSERT_LT(search.Rows()[i - 1].mask, search.Rows()[i].mask);
}

}  // namespace
}  // namespace kestrow
