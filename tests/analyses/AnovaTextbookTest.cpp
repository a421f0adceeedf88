// The ANOVA report on five textbook experiments kept as sample problems,
// checked against an analysis of variance worked here in double precision by
// least squares from the raw observations and each run's factor levels (not
// from the study's contrast columns), and against figures printed in the
// books the data come from.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "analyses/ANOVA.h"
#include "core/Grid.h"
#include "core/Language.h"
#include "core/TestSupport.h"
#include "data/Statistics.h"

namespace kestrow {
namespace {

// ---------------------------------------------------------------------------
// The independent analysis.

using Column = std::vector<double>;

struct Observation {
  std::vector<int> levels;  // by factor of the study, from 1
  double y;
};

// A term of a linear model: its columns over the observations.
struct Term {
  std::string name;
  std::vector<Column> columns;
};

// Sequential sums of squares: the columns of each term are made orthogonal,
// by Gram-Schmidt, to the intercept and to every earlier term; a term's sum
// of squares is the squared length of the projection of y on its new
// directions, its degrees of freedom their count. For balanced data the
// order of the terms does not matter.
struct LeastSquares {
  std::map<std::string, double> ss;
  std::map<std::string, int> df;
  double errorSS = 0, totalSS = 0;
  int errorDF = 0, totalDF = 0;

  LeastSquares(const std::vector<double>& y, const std::vector<Term>& terms) {
    std::size_t n = y.size();
    std::vector<Column> basis;
    Column residual = y;
    auto dot = [n](const Column& a, const Column& b) {
      double sum = 0;
      for (std::size_t i = 0; i < n; ++i) sum += a[i] * b[i];
      return sum;
    };
    // Adds the part of v orthogonal to the basis; returns the squared
    // projection of y on it, or -1 when v adds no direction.
    auto add = [&](Column v) {
      double before = std::sqrt(dot(v, v));
      for (int pass = 0; pass < 2; ++pass)
        for (const Column& q : basis) {
          double c = dot(q, v);
          for (std::size_t i = 0; i < n; ++i) v[i] -= c * q[i];
        }
      double length = std::sqrt(dot(v, v));
      if (length <= 1e-9 * before) return -1.0;
      for (double& x : v) x /= length;
      double c = dot(v, residual);
      for (std::size_t i = 0; i < n; ++i) residual[i] -= c * v[i];
      basis.push_back(std::move(v));
      return c * c;
    };
    add(Column(n, 1.0));
    totalSS = dot(residual, residual);
    totalDF = static_cast<int>(n) - 1;
    for (const Term& t : terms) {
      for (const Column& c : t.columns) {
        double part = add(c);
        if (part < 0) continue;
        ss[t.name] += part;
        df[t.name] += 1;
      }
    }
    errorSS = dot(residual, residual);
    errorDF = static_cast<int>(n - basis.size());
  }
  double MS(const std::string& term) const { return ss.at(term) / df.at(term); }
  double ErrorMS() const { return errorSS / errorDF; }
  double F(const std::string& term) const { return MS(term) / ErrorMS(); }
};

// Every observation of the study's first response, with its run's levels.
std::vector<Observation> Observations(const Study& s) {
  std::vector<Observation> out;
  for (int run = 1; run <= s.iNumRuns; ++run)
    for (int rep = 1; rep <= s.iReps; ++rep) {
      Observation o;
      for (int f = 1; f <= s.Factors.Count(); ++f) o.levels.push_back(s.GetTreatmentLevel(f, run));
      o.y = s.GetData(1, run, rep);
      out.push_back(o);
    }
  return out;
}

std::vector<double> Responses(const std::vector<Observation>& obs) {
  std::vector<double> y;
  for (const Observation& o : obs) y.push_back(o.y);
  return y;
}

// The column of a product of functions of the factor levels.
Column Product(const std::vector<Observation>& obs, const std::vector<std::pair<int, int>>& factorPowers) {
  Column c;
  for (const Observation& o : obs) {
    double x = 1;
    for (auto [factor, power] : factorPowers) x *= std::pow(o.levels[static_cast<std::size_t>(factor - 1)], power);
    c.push_back(x);
  }
  return c;
}

// A factor as a classification: one indicator column for each level but the
// first.
std::vector<Column> Indicators(const std::vector<Observation>& obs, int factor, int levels) {
  std::vector<Column> columns;
  for (int l = 2; l <= levels; ++l) {
    Column c;
    for (const Observation& o : obs) c.push_back(o.levels[static_cast<std::size_t>(factor - 1)] == l ? 1 : 0);
    columns.push_back(c);
  }
  return columns;
}

// The interaction of two classifications: the products of their indicators.
std::vector<Column> Crossed(const std::vector<Column>& a, const std::vector<Column>& b) {
  std::vector<Column> columns;
  for (const Column& x : a)
    for (const Column& y : b) {
      Column c(x.size());
      for (std::size_t i = 0; i < x.size(); ++i) c[i] = x[i] * y[i];
      columns.push_back(c);
    }
  return columns;
}

// The runs as one classification: what the one-way table tests.
std::vector<Column> Cells(const std::vector<Observation>& obs) {
  std::map<std::vector<int>, int> index;
  for (const Observation& o : obs) index.emplace(o.levels, 0);
  int next = 0;
  for (auto& [levels, i] : index) i = next++;
  std::vector<Column> columns;
  for (int cell = 1; cell < next; ++cell) {
    Column c;
    for (const Observation& o : obs) c.push_back(index[o.levels] == cell ? 1 : 0);
    columns.push_back(c);
  }
  return columns;
}

// The terms of a two-level factorial named as the report names its
// contrasts, "A" for the first factor and so on: each the product of the
// level numbers of its letters.
Term TwoLevelTerm(const std::vector<Observation>& obs, const std::string& name) {
  std::vector<std::pair<int, int>> powers;
  for (char letter : name) powers.push_back({letter - 'A' + 1, 1});
  return {name, {Product(obs, powers)}};
}

// The effect of a two-level term: the average where the product of its
// signs is + less the average where it is -.
double Effect(const std::vector<Observation>& obs, const std::string& name) {
  double plus = 0, minus = 0;
  int nPlus = 0, nMinus = 0;
  for (const Observation& o : obs) {
    int sign = 1;
    for (char letter : name) sign *= o.levels[static_cast<std::size_t>(letter - 'A')] == 2 ? 1 : -1;
    (sign > 0 ? plus : minus) += o.y;
    (sign > 0 ? nPlus : nMinus) += 1;
  }
  return plus / nPlus - minus / nMinus;
}

// ---------------------------------------------------------------------------
// Reading the report.

// A figure of the report is printed to four significant figures from 32-bit
// sums: it agrees when it is the exact value rounded there, give or take one
// in the last digit.
::testing::AssertionResult Agrees(const std::string& text, double expected) {
  char* end = nullptr;
  double printed = std::strtod(text.c_str(), &end);
  if (text.empty() || *end != '\0') return ::testing::AssertionFailure() << "\"" << text << "\" is no number";
  double unit = expected == 0 ? 1e-12 : std::pow(10.0, std::floor(std::log10(std::fabs(expected))) - 3);
  if (std::fabs(printed - expected) <= 1.5 * unit) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "printed " << text << ", least squares gives " << expected;
}

// A figure against a book's, which is given to `decimals` places.
::testing::AssertionResult AsPrinted(const std::string& text, double book, int decimals) {
  double printed = std::strtod(text.c_str(), nullptr);
  if (!text.empty() && std::fabs(printed - book) <= 0.5 * std::pow(10.0, -decimals) + 1e-3 * std::fabs(book))
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "printed \"" << text << "\", the book has " << book;
}

enum Col { NAME = 0, SOURCE = 1, SS = 2, DF = 3, MS = 4, F = 5, STAR = 6, EFFECT = 7 };

class AnovaTextbookTest : public ::testing::Test {
 protected:
  void SetUp() override { OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English"); }
  void TearDown() override { CloseLanguage(); }

  // Loads the sample and draws its report.
  Study& Draw(const std::string& sample) {
    problem = test::Sample(sample);
    Study& s = problem->Studies(1);
    EXPECT_TRUE(DrawANOVA(s, stats, grid)) << sample;
    obs = Observations(s);
    return s;
  }

  // The rows of a section, from its heading to the next one (or the end);
  // the whole grid when tag is empty.
  std::pair<int, int> Section(const std::string& tag) const {
    if (tag.empty()) return {1, grid.Rows()};
    int from = grid.Rows();
    for (int r = 0; r < grid.Rows(); ++r)
      if (grid.Text(r, NAME) == GetText(tag)) from = r + 1;
    int to = from;
    while (to < grid.Rows() && grid.MergeAt(to, NAME) == nullptr) ++to;
    return {from, to};
  }
  // The row of the section whose column col reads text; -1 if none.
  int Row(const std::pair<int, int>& section, int col, const std::string& text) const {
    for (int r = section.first; r < section.second; ++r)
      if (grid.Text(r, col) == text) return r;
    return -1;
  }

  // The figures of a row against those of a least-squares term.
  void ExpectTerm(int row, const LeastSquares& ls, const std::string& term, bool withF = true) const {
    ASSERT_GE(row, 0) << term;
    EXPECT_TRUE(Agrees(grid.Text(row, SS), ls.ss.at(term))) << term;
    EXPECT_EQ(grid.Text(row, DF), std::to_string(ls.df.at(term))) << term;
    EXPECT_TRUE(Agrees(grid.Text(row, MS), ls.MS(term))) << term;
    if (withF) {
      EXPECT_TRUE(Agrees(grid.Text(row, F), ls.F(term))) << term;
    }
  }
  void ExpectError(int row, const LeastSquares& ls) const {
    ASSERT_GE(row, 0);
    EXPECT_TRUE(Agrees(grid.Text(row, SS), ls.errorSS));
    EXPECT_EQ(grid.Text(row, DF), std::to_string(ls.errorDF));
    EXPECT_TRUE(Agrees(grid.Text(row, MS), ls.ErrorMS()));
    EXPECT_EQ(grid.Text(row, F), "");
  }
  void ExpectTotal(int row, const LeastSquares& ls) const {
    ASSERT_GE(row, 0);
    EXPECT_TRUE(Agrees(grid.Text(row, SS), ls.totalSS));
    EXPECT_EQ(grid.Text(row, DF), std::to_string(ls.totalDF));
    EXPECT_EQ(grid.Text(row, MS), "");
  }
  // The one-way table: the runs as one classification against the error
  // within them.
  void ExpectOneWay() const {
    auto oneWay = Section("1WANOVA");
    LeastSquares ls(Responses(obs), {{"runs", Cells(obs)}});
    ExpectTerm(Row(oneWay, SOURCE, GetText("Between")), ls, "runs");
    ExpectError(Row(oneWay, SOURCE, GetText("WithinE")), ls);
    ExpectTotal(Row(oneWay, SOURCE, GetText("TOTAL")), ls);
  }

  test::ScopedUi ui;
  std::unique_ptr<Problem> problem;
  Statistics stats;
  Grid grid;
  std::vector<Observation> obs;
};

// ---------------------------------------------------------------------------
// Montgomery, Design and Analysis of Experiments, Example 6.2: the pilot plant
// filtration rate, an unreplicated 2^4 in temperature (A), pressure (B),
// formaldehyde concentration (C) and stirring rate (D). Pressure and every
// interaction with it are pooled as error, which is the book's analysis of
// the design projected into a replicated 2^3 in A, C and D.
TEST_F(AnovaTextbookTest, FiltrationRateWithPressurePooledMatchesTheModelInACD) {
  Study& s = Draw("FiltrationRate");
  ASSERT_EQ(obs.size(), 16u);
  const std::vector<std::string> kept = {"A", "C", "D", "AC", "AD", "CD", "ACD"};
  std::vector<Term> terms;
  for (const std::string& name : kept) terms.push_back(TwoLevelTerm(obs, name));
  LeastSquares ls(Responses(obs), terms);
  ASSERT_EQ(ls.errorDF, 8);

  auto table = Section("SdofANOVA");
  for (const std::string& name : kept) {
    int row = Row(table, NAME, name);
    ExpectTerm(row, ls, name);
    EXPECT_TRUE(Agrees(grid.Text(row, EFFECT), Effect(obs, name))) << name;
  }
  for (const Contrast& c : s.Contrasts)
    if (c.bPooled) {
      EXPECT_EQ(Row(table, NAME, c.sName), -1) << c.sName;
    }
  ExpectError(Row(table, SOURCE, GetText("Pooled")), ls);
  ExpectTotal(Row(table, SOURCE, GetText("TOTAL")), ls);
  EXPECT_EQ(Section("1WANOVA").first, grid.Rows());  // one replicate: no one-way table

  // The book's effect estimates and its table of A, C and D.
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, NAME, "A"), EFFECT), 21.625, 3));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, NAME, "AC"), EFFECT), -18.125, 3));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, NAME, "AD"), EFFECT), 16.625, 3));
  for (auto [name, ss] : {std::pair{"A", 1870.56}, {"C", 390.06}, {"D", 855.56}, {"AC", 1314.06}, {"AD", 1105.56},
                          {"CD", 5.06}, {"ACD", 10.56}})
    EXPECT_TRUE(AsPrinted(grid.Text(Row(table, NAME, name), SS), ss, 2)) << name;
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, NAME, "A"), F), 83.36, 2));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, SOURCE, GetText("Pooled")), MS), 22.44, 2));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, SOURCE, GetText("TOTAL")), SS), 5730.94, 2));
  // At 5 per cent the five terms of the book's model are significant, CD and ACD not.
  for (const char* name : {"A", "C", "D", "AC", "AD"}) EXPECT_EQ(grid.Text(Row(table, NAME, name), STAR), "*");
  for (const char* name : {"CD", "ACD"}) EXPECT_EQ(grid.Text(Row(table, NAME, name), STAR), "");
}

// Montgomery, Example 6.1: the plasma etch 2^3 in gap (A), C2F6 flow (B) and
// power (C), two replicates; the error is the variation within runs.
TEST_F(AnovaTextbookTest, EtchRateReplicatedTwoCubedMatchesTheFullModel) {
  Draw("EtchRate");
  ASSERT_EQ(obs.size(), 16u);
  const std::vector<std::string> names = {"A", "B", "C", "AB", "AC", "BC", "ABC"};
  std::vector<Term> terms;
  for (const std::string& name : names) terms.push_back(TwoLevelTerm(obs, name));
  LeastSquares ls(Responses(obs), terms);
  ASSERT_EQ(ls.errorDF, 8);

  auto table = Section("SdofANOVA");
  for (const std::string& name : names) {
    int row = Row(table, NAME, name);
    ExpectTerm(row, ls, name);
    EXPECT_TRUE(Agrees(grid.Text(row, EFFECT), Effect(obs, name))) << name;
  }
  ExpectError(Row(table, SOURCE, GetText("WithinE")), ls);
  ExpectTotal(Row(table, SOURCE, GetText("TOTAL")), ls);
  ExpectOneWay();

  // The book's analysis of variance of the etch rate.
  for (auto [name, ss, f] : {std::tuple{"A", 41310.5625, 18.34}, {"B", 217.5625, 0.10}, {"C", 374850.0625, 166.41},
                             {"AB", 2475.0625, 1.10}, {"AC", 94402.5625, 41.91}, {"BC", 18.0625, 0.01},
                             {"ABC", 126.5625, 0.06}}) {
    int row = Row(table, NAME, name);
    EXPECT_TRUE(AsPrinted(grid.Text(row, SS), ss, 4)) << name;
    EXPECT_TRUE(AsPrinted(grid.Text(row, F), f, 2)) << name;
  }
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, SOURCE, GetText("WithinE")), SS), 18020.50, 2));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, SOURCE, GetText("WithinE")), MS), 2252.56, 2));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, SOURCE, GetText("TOTAL")), SS), 531420.9375, 4));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, NAME, "A"), EFFECT), -101.625, 3));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(table, NAME, "C"), EFFECT), 306.125, 3));
}

// Box and Cox (1964), and Box, Hunter and Hunter, Statistics for
// Experimenters: survival times of animals under three poisons and four
// treatments, four animals to a combination. The table by factor is the
// classical two-way analysis; the single-degree-of-freedom rows are the
// orthogonal polynomial contrasts in the level numbers, made here by fitting
// the powers of the level numbers in turn.
TEST_F(AnovaTextbookTest, PoisonsAndTreatmentsMatchTheTwoWayAnalysis) {
  Draw("PoisonSurvival");
  ASSERT_EQ(obs.size(), 48u);
  std::vector<double> y = Responses(obs);
  std::vector<Column> poison = Indicators(obs, 1, 3), treatment = Indicators(obs, 2, 4);
  LeastSquares ls(y, {{"Poison", poison}, {"Treatment", treatment}, {"P x T", Crossed(poison, treatment)}});
  ASSERT_EQ(ls.errorDF, 36);

  auto byFactor = Section("FacANOVA");
  for (const char* term : {"Poison", "Treatment", "P x T"}) ExpectTerm(Row(byFactor, SOURCE, term), ls, term);
  ExpectError(Row(byFactor, SOURCE, GetText("WithinE")), ls);
  ExpectTotal(Row(byFactor, SOURCE, GetText("TOTAL")), ls);
  ExpectOneWay();

  // The contrasts: A and B poison's linear and quadratic, C to E treatment's
  // linear, quadratic and cubic, and their products.
  const std::map<char, std::pair<int, int>> letters = {{'A', {1, 1}}, {'B', {1, 2}}, {'C', {2, 1}}, {'D', {2, 2}},
                                                       {'E', {2, 3}}};
  const std::vector<std::string> names = {"A", "B", "C", "D", "E", "AC", "AD", "AE", "BC", "BD", "BE"};
  std::vector<Term> polynomial;
  for (const std::string& name : names) {
    // A power of a level number is fitted after the lower ones and the
    // products below it, so what it adds is the orthogonal polynomial.
    std::vector<std::pair<int, int>> powers;
    for (char letter : name) powers.push_back(letters.at(letter));
    polynomial.push_back({name, {Product(obs, powers)}});
  }
  LeastSquares contrasts(y, polynomial);
  ASSERT_EQ(contrasts.errorDF, 36);
  auto table = Section("SdofANOVA");
  for (const std::string& name : names) ExpectTerm(Row(table, NAME, name), contrasts, name);
  ExpectError(Row(table, SOURCE, GetText("WithinE")), contrasts);
  ExpectTotal(Row(table, SOURCE, GetText("TOTAL")), contrasts);

  // The untransformed analysis as printed: poisons 1.033 on 2, treatments
  // 0.921 on 3, interaction 0.250 on 6, within 0.801 on 36; F 23.2, 13.8, 1.87.
  for (auto [term, ss, f] : {std::tuple{"Poison", 1.033, 23.2}, {"Treatment", 0.921, 13.8}, {"P x T", 0.250, 1.87}}) {
    int row = Row(byFactor, SOURCE, term);
    EXPECT_TRUE(AsPrinted(grid.Text(row, SS), ss, 3)) << term;
    EXPECT_TRUE(AsPrinted(grid.Text(row, F), f, f > 10 ? 1 : 2)) << term;
  }
  EXPECT_TRUE(AsPrinted(grid.Text(Row(byFactor, SOURCE, GetText("WithinE")), SS), 0.801, 3));
  EXPECT_EQ(grid.Text(Row(byFactor, SOURCE, "P x T"), STAR), "");  // the interaction is not significant
}

// Montgomery, Example 4.1: the vascular graft experiment, four extrusion
// pressures in six batches of resin, batches as blocks.
TEST_F(AnovaTextbookTest, VascularGraftRandomisedBlockMatchesTreatmentsPlusBlocks) {
  Study& s = Draw("VascularGraft");
  ASSERT_EQ(obs.size(), 24u);
  EXPECT_EQ(s.iDesFlag & (DES_BLOCKED | DES_SECOND_NOISE), DES_BLOCKED);
  LeastSquares ls(Responses(obs), {{"treat", Indicators(obs, 1, 4)}, {"block", Indicators(obs, 2, 6)}});
  ASSERT_EQ(ls.errorDF, 15);

  auto all = Section("");
  int treat = Row(all, SOURCE, "Extrusion pressure (" + GetText("Treatments") + ")");
  int block = Row(all, SOURCE, "Resin batch (" + GetText("Blocks") + ")");
  ExpectTerm(treat, ls, "treat");
  ExpectTerm(block, ls, "block", false);
  EXPECT_EQ(grid.Text(block, F), "");  // blocks are not tested
  ExpectError(Row(all, SOURCE, GetText("Error")), ls);
  ExpectTotal(Row(all, SOURCE, GetText("TOTAL")), ls);

  // Table 4.4 of the book.
  EXPECT_TRUE(AsPrinted(grid.Text(treat, SS), 178.17, 2));
  EXPECT_TRUE(AsPrinted(grid.Text(treat, MS), 59.39, 2));
  EXPECT_TRUE(AsPrinted(grid.Text(treat, F), 8.11, 2));
  EXPECT_EQ(grid.Text(treat, STAR), "*");
  EXPECT_TRUE(AsPrinted(grid.Text(block, SS), 192.25, 2));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(all, SOURCE, GetText("Error")), SS), 109.89, 2));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(all, SOURCE, GetText("Error")), MS), 7.33, 2));
  EXPECT_TRUE(AsPrinted(grid.Text(Row(all, SOURCE, GetText("TOTAL")), SS), 480.31, 2));
}

// Montgomery, Example 4.3: the rocket propellant Latin square, five
// formulations over five batches of raw material (rows) and five operators
// (columns).
TEST_F(AnovaTextbookTest, RocketPropellantLatinSquareMatchesThreeClassifications) {
  Study& s = Draw("RocketPropellant");
  ASSERT_EQ(obs.size(), 25u);
  EXPECT_EQ(s.iDesFlag & (DES_BLOCKED | DES_SECOND_NOISE), DES_BLOCKED | DES_SECOND_NOISE);
  LeastSquares ls(Responses(obs), {{"formulation", Indicators(obs, 1, 5)},
                                   {"batch", Indicators(obs, 2, 5)},
                                   {"operator", Indicators(obs, 3, 5)}});
  ASSERT_EQ(ls.errorDF, 12);

  auto all = Section("");
  int formulation = Row(all, SOURCE, "Formulation (" + GetText("Treatments") + ")");
  int batch = Row(all, SOURCE, "Batch (" + GetText("Blocks") + ")");
  int op = Row(all, SOURCE, "Operator");
  ExpectTerm(formulation, ls, "formulation");
  ExpectTerm(batch, ls, "batch", false);
  ExpectTerm(op, ls, "operator", false);
  ExpectError(Row(all, SOURCE, GetText("Error")), ls);
  ExpectTotal(Row(all, SOURCE, GetText("TOTAL")), ls);

  // Table 4.10 of the book: whole numbers throughout.
  EXPECT_EQ(grid.Text(formulation, SS), "330");
  EXPECT_EQ(grid.Text(formulation, MS), "82.5");
  EXPECT_TRUE(AsPrinted(grid.Text(formulation, F), 7.73, 2));
  EXPECT_EQ(grid.Text(formulation, STAR), "*");
  EXPECT_EQ(grid.Text(batch, SS), "68");
  EXPECT_EQ(grid.Text(op, SS), "150");
  EXPECT_EQ(grid.Text(Row(all, SOURCE, GetText("Error")), SS), "128");
  EXPECT_TRUE(AsPrinted(grid.Text(Row(all, SOURCE, GetText("Error")), MS), 10.67, 2));
  EXPECT_EQ(grid.Text(Row(all, SOURCE, GetText("TOTAL")), SS), "676");
}

}  // namespace
}  // namespace kestrow
