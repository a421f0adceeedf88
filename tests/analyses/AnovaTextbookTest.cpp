// The ANOVA report on five textbook experiments kept as sample problems,
// checked against an analysis of variance worked here in double precision by
// least squares from the raw observations and each run's factor levels (not
// from the study's contrast columns), and against figures printed in the
// books the data come from.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <numeric>
#include <set>
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
using Levels = std::vector<std::vector<int>>;  // by observation, then by factor of the study from 1

// A term of a linear model: its name and its columns over the observations.
using Term = std::pair<std::string, std::vector<Column>>;
struct Figures {
  double ss = 0;
  int df = 0;
};

// Sequential sums of squares: the columns of each term are made orthogonal,
// by Gram-Schmidt, to the intercept and to every earlier term; a term's sum
// of squares is the squared length of the projection of y on its new
// directions, its degrees of freedom their count. For balanced data the
// order of the terms does not matter.
struct Fit {
  std::vector<std::pair<std::string, Figures>> terms;
  Figures error, total;

  Fit(Column residual, const std::vector<Term>& model) {
    std::vector<Column> basis;
    auto dot = [](const Column& a, const Column& b) { return std::inner_product(a.begin(), a.end(), b.begin(), 0.0); };
    auto less = [](Column& v, double c, const Column& q) {
      for (std::size_t i = 0; i < v.size(); ++i) v[i] -= c * q[i];
    };
    // Adds the part of v orthogonal to the basis, if any, and the squared
    // projection of the residual on it to f.
    auto add = [&](Column v, Figures& f) {
      double before = std::sqrt(dot(v, v));
      for (int pass = 0; pass < 2; ++pass)
        for (const Column& q : basis) less(v, dot(q, v), q);
      double length = std::sqrt(dot(v, v));
      if (length <= 1e-9 * before) return;
      for (double& x : v) x /= length;
      double c = dot(v, residual);
      less(residual, c, v);
      basis.push_back(std::move(v));
      f.ss += c * c;
      f.df += 1;
    };
    Figures mean;
    add(Column(residual.size(), 1.0), mean);
    total = {dot(residual, residual), static_cast<int>(residual.size()) - 1};
    for (const Term& t : model) {
      Figures& f = terms.emplace_back(t.first, Figures{}).second;
      for (const Column& c : t.second) add(c, f);
    }
    error = {dot(residual, residual), static_cast<int>(residual.size() - basis.size())};
  }
};

// What a letter of a contrast's name stands for in an observation.
using Coding = std::function<double(char letter, const std::vector<int>& levels)>;
// The letters of a two-level design: A the first factor and so on, - and +
// for its levels.
double Signs(char letter, const std::vector<int>& levels) {
  return 2.0 * levels[static_cast<std::size_t>(letter - 'A')] - 3;
}

// Terms named as the report names its contrasts, each the product of what
// its letters stand for.
std::vector<Term> Products(const Levels& obs, const std::vector<std::string>& names, const Coding& code) {
  std::vector<Term> terms;
  for (const std::string& name : names) {
    Column& c = terms.emplace_back(name, std::vector<Column>(1)).second[0];
    for (const std::vector<int>& o : obs) {
      double x = 1;
      for (char letter : name) x *= code(letter, o);
      c.push_back(x);
    }
  }
  return terms;
}

// A classification by the levels of some factors (from 1), by all of them
// when none is named: an indicator column for each class.
std::vector<Column> Classes(const Levels& obs, const std::vector<std::size_t>& factors = {}) {
  std::map<std::vector<int>, Column> classes;
  for (std::size_t i = 0; i < obs.size(); ++i) {
    std::vector<int> key;
    for (std::size_t f : factors) key.push_back(obs[i][f - 1]);
    Column& c = classes[factors.empty() ? obs[i] : key];
    c.resize(obs.size());
    c[i] = 1;
  }
  std::vector<Column> columns;
  for (const auto& entry : classes) columns.push_back(entry.second);
  return columns;
}

// ---------------------------------------------------------------------------
// Reading the report.

// Whether a printed figure is within tolerance of x; NaN stands for a figure
// left empty.
::testing::AssertionResult Near(const std::string& text, double x, double tolerance) {
  char* end = nullptr;
  double printed = std::strtod(text.c_str(), &end);
  if (std::isnan(x) ? text.empty() : !text.empty() && *end == '\0' && std::fabs(printed - x) <= tolerance)
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "printed \"" << text << "\" against " << x;
}
// A figure of the report is printed to four significant figures from 32-bit
// sums: it agrees with least squares when it is the exact value rounded
// there, give or take one in the last digit by default. "Rounded" asks for
// the exact value's own four digits (half a unit of the last, and a
// thousandth of that for a tie).
constexpr double ONE_DIGIT = 1.5, ROUNDED = 0.5005;
::testing::AssertionResult Agrees(const std::string& text, double x, double lastDigits = ONE_DIGIT) {
  return Near(text, x, x == 0 ? 1e-12 : lastDigits * std::pow(10.0, std::floor(std::log10(std::fabs(x))) - 3));
}

// Constants added to every observation of a blocked sample: every 769 from 0
// to 100,000, and some at powers of two and below zero.
std::vector<float> Offsets() {
  std::vector<float> offsets;
  for (int k = 0; k <= 100000; k += 769) offsets.push_back(static_cast<float>(k));
  for (float x : {4096.25f, 65535.0f, 65536.0f, 99999.0f, 100000.0f, -9000.0f, -100000.0f}) offsets.push_back(x);
  return offsets;
}

// A figure as a book prints it: the row named so, the column, the text.
using Printed = std::tuple<std::string, int, std::string>;

enum Col { NAME = 0, SOURCE = 1, SS = 2, DF = 3, MS = 4, F = 5, STAR = 6, EFFECT = 7 };
const double NONE = std::nan("");

class AnovaTextbookTest : public ::testing::Test {
 protected:
  using Rows = std::pair<int, int>;
  void SetUp() override {
    OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English");
    total = GetText("TOTAL");
  }
  void TearDown() override { CloseLanguage(); }

  // Loads the sample, adds a constant to every observation, draws its report
  // and reads its observations.
  void Draw(const std::string& sample, float offset = 0) {
    problem = test::Sample(sample);
    Study& s = problem->Studies(1);
    for (int run = 1; run <= s.iNumRuns; ++run)
      for (int rep = 1; rep <= s.iReps; ++rep) s.SetData(1, run, rep, s.GetData(1, run, rep) + offset);
    obs.clear();
    y.clear();
    grid = Grid();
    EXPECT_TRUE(DrawANOVA(s, stats, grid)) << sample;
    for (int run = 1; run <= s.iNumRuns; ++run)
      for (int rep = 1; rep <= s.iReps; ++rep) {
        obs.emplace_back();
        for (int f = 1; f <= s.Factors.Count(); ++f) obs.back().push_back(s.GetTreatmentLevel(f, run));
        y.push_back(s.GetData(1, run, rep));
      }
  }

  // The rows of a section, from its heading to the next one (or the end).
  Rows Section(const std::string& tag) const {
    int from = grid.Rows();
    for (int r = 0; r < grid.Rows(); ++r)
      if (grid.Text(r, NAME) == GetText(tag)) from = r + 1;
    int to = from;
    while (to < grid.Rows() && grid.MergeAt(to, NAME) == nullptr) ++to;
    return {from, to};
  }
  // A figure of the row of the section named so, a contrast by its name and
  // any other row by its source.
  std::string Of(const Rows& section, const std::string& name, int figure) const {
    for (int col : {NAME, SOURCE})
      for (int r = section.first; r < section.second; ++r)
        if (grid.Text(r, col) == name) return grid.Text(r, figure);
    return "(no row " + name + ")";
  }

  // A table against least squares: a row for each term of the fit, named
  // as the term, with an F unless the term is untested; the error row and
  // the total.
  void ExpectTable(const Rows& section, const Fit& fit, const char* errorTag,
                   const std::set<std::string>& untested = {}, double lastDigits = ONE_DIGIT) const {
    auto expect = [&](const std::string& name, const Figures& x, double ms, double f) {
      EXPECT_TRUE(Agrees(Of(section, name, SS), x.ss, lastDigits)) << name;
      EXPECT_EQ(Of(section, name, DF), std::to_string(x.df)) << name;
      EXPECT_TRUE(Agrees(Of(section, name, MS), ms, lastDigits)) << name;
      EXPECT_TRUE(Agrees(Of(section, name, F), f, lastDigits)) << name;
    };
    double errorMS = fit.error.ss / fit.error.df;
    for (const auto& [name, x] : fit.terms)
      expect(name, x, x.ss / x.df, untested.count(name) ? NONE : x.ss / x.df / errorMS);
    expect(GetText(errorTag), fit.error, errorMS, NONE);
    expect(total, fit.total, NONE, NONE);
  }
  // A book's figures agree when they are the report's rounded to the places
  // printed, give or take a thousandth for the book's own rounding.
  void ExpectBook(const Rows& section, const std::vector<Printed>& figures) const {
    for (const auto& [name, col, book] : figures) {
      std::size_t point = book.find('.');
      double x = std::stod(book);
      double places = point == std::string::npos ? 0 : static_cast<double>(book.size() - point - 1);
      EXPECT_TRUE(Near(Of(section, name, col), x, 0.5 * std::pow(10.0, -places) + 1e-3 * std::fabs(x))) << name;
    }
  }

  test::ScopedUi ui;
  std::unique_ptr<Problem> problem;
  Statistics stats;
  Grid grid;
  Levels obs;
  Column y;
  std::string total;  // the source of the total row
};

// ---------------------------------------------------------------------------
// Montgomery, Design and Analysis of Experiments, Example 6.2: the pilot plant
// filtration rate, an unreplicated 2^4 in temperature (A), pressure (B),
// formaldehyde concentration (C) and stirring rate (D). Pressure and every
// interaction with it are pooled as error, which is the book's analysis of
// the design projected into a replicated 2^3 in A, C and D.
TEST_F(AnovaTextbookTest, FiltrationRateWithPressurePooledMatchesTheModelInACD) {
  Draw("FiltrationRate");
  std::vector<Term> kept = Products(obs, {"A", "C", "D", "AC", "AD", "CD", "ACD"}, Signs);
  Rows table = Section("SdofANOVA");
  ExpectTable(table, Fit(y, kept), "Pooled");  // 8 pooled degrees of freedom
  // The effects: the average where the product of the signs is + less the
  // average where it is -, each half of the data.
  for (const auto& [name, columns] : kept) {
    double sum = std::inner_product(y.begin(), y.end(), columns[0].begin(), 0.0);
    EXPECT_TRUE(Agrees(Of(table, name, EFFECT), 2 * sum / static_cast<double>(y.size()))) << name;
  }
  for (const Contrast& c : problem->Studies(1).Contrasts)
    if (c.bPooled) {
      EXPECT_EQ(Of(table, c.sName, NAME), "(no row " + c.sName + ")");
    }
  EXPECT_EQ(Section("1WANOVA").first, grid.Rows());  // one replicate: no one-way table

  // The book's table of A, C and D; at 5 per cent the five terms of its
  // model are significant, CD and ACD not.
  ExpectBook(table, {{"A", SS, "1870.56"}, {"A", EFFECT, "21.625"}, {total, SS, "5730.94"}});
  for (const char* name : {"A", "C", "D", "AC", "AD"}) EXPECT_EQ(Of(table, name, STAR), "*") << name;
  for (const char* name : {"CD", "ACD"}) EXPECT_EQ(Of(table, name, STAR), "") << name;
}

// Montgomery, Example 6.1: the plasma etch 2^3 in gap (A), C2F6 flow (B) and
// power (C), two replicates; the error is the variation within runs.
TEST_F(AnovaTextbookTest, EtchRateReplicatedTwoCubedMatchesTheFullModel) {
  Draw("EtchRate");
  Rows table = Section("SdofANOVA");
  ExpectTable(table, Fit(y, Products(obs, {"A", "B", "C", "AB", "AC", "BC", "ABC"}, Signs)), "WithinE");
  // The one-way table: the runs as one classification against the error
  // within them.
  ExpectTable(Section("1WANOVA"), Fit(y, {{GetText("Between"), Classes(obs)}}), "WithinE");

  // The book's analysis of variance of the etch rate.
  ExpectBook(table, {{"C", SS, "374850.0625"}, {"C", F, "166.41"}, {total, SS, "531420.9375"}});
}

// Box and Cox (1964), and Box, Hunter and Hunter, Statistics for
// Experimenters: survival times of animals under three poisons and four
// treatments, four animals to a combination. The table by factor is the
// classical two-way analysis; the single-degree-of-freedom rows are the
// orthogonal polynomial contrasts in the level numbers.
TEST_F(AnovaTextbookTest, PoisonsAndTreatmentsMatchTheTwoWayAnalysis) {
  Draw("PoisonSurvival");
  // After both factors the runs as a classification add the interaction.
  Fit twoWay(y, {{"Poison", Classes(obs, {1})}, {"Treatment", Classes(obs, {2})}, {"P x T", Classes(obs)}});
  Rows byFactor = Section("FacANOVA");
  ExpectTable(byFactor, twoWay, "WithinE");
  // The contrasts: A and B poison's linear and quadratic, C to E treatment's
  // linear, quadratic and cubic, and their products. Fitted in order, a power
  // of a level number after the lower ones and the products below it adds
  // the orthogonal polynomial.
  auto powers = [](char letter, const std::vector<int>& levels) {
    return letter < 'C' ? std::pow(levels[0], letter - 'A' + 1) : std::pow(levels[1], letter - 'C' + 1);
  };
  Fit contrasts(y, Products(obs, {"A", "B", "C", "D", "E", "AC", "AD", "AE", "BC", "BD", "BE"}, powers));
  ExpectTable(Section("SdofANOVA"), contrasts, "WithinE");

  // The untransformed analysis as printed: poisons 1.033 on 2, treatments
  // 0.921 on 3, interaction 0.250 on 6, within 0.801 on 36; F 23.2, 13.8, 1.87.
  ExpectBook(byFactor, {{"Poison", SS, "1.033"}, {"P x T", F, "1.87"}, {GetText("WithinE"), SS, "0.801"}});
  EXPECT_EQ(Of(byFactor, "P x T", STAR), "");  // the interaction is not significant
}

// Montgomery, Example 4.1: the vascular graft experiment, four extrusion
// pressures in six batches of resin, batches as blocks, which are not tested.
// The table must not move when the data lie far from zero: with 9,000 added
// a raw sum of squares less a correction factor in 32 bits printed a
// treatment SS of 0. Least squares works on the shifted data as the study
// holds them in 32 bits, and every figure is its own rounded to four digits.
TEST_F(AnovaTextbookTest, VascularGraftRandomisedBlockMatchesTreatmentsPlusBlocks) {
  for (float offset : Offsets()) {
    SCOPED_TRACE(offset);
    Draw("VascularGraft", offset);
    std::string treat = "Extrusion pressure (" + GetText("Treatments") + ")",
                block = "Resin batch (" + GetText("Blocks") + ")";
    Rows all{1, grid.Rows()};
    ExpectTable(all, Fit(y, {{treat, Classes(obs, {1})}, {block, Classes(obs, {2})}}), "Error", {block}, ROUNDED);

    // Table 4.4 of the book.
    ExpectBook(all, {{treat, SS, "178.17"}, {treat, F, "8.11"}, {block, SS, "192.25"}, {total, SS, "480.31"}});
    // Below 16,384 a float keeps the shifted tenths within a thousandth, and
    // the blocks print as the book's 192.25 rounded; further out the data
    // the study holds are themselves another sample, whose least squares the
    // table still follows.
    if (std::fabs(offset) < 16384) EXPECT_EQ(Of(all, block, SS), "192.3");
    EXPECT_EQ(Of(all, treat, STAR), "*");
  }
}

// Montgomery, Example 4.3: the rocket propellant Latin square, five
// formulations over five batches of raw material (rows) and five operators
// (columns). Whole numbers, which a float holds exactly even with 100,000
// added; with 9,000 added the raw form printed blocks SS -256.
TEST_F(AnovaTextbookTest, RocketPropellantLatinSquareMatchesThreeClassifications) {
  for (float offset : Offsets()) {
    SCOPED_TRACE(offset);
    Draw("RocketPropellant", offset);
    std::string formulation = "Formulation (" + GetText("Treatments") + ")", batch = "Batch (" + GetText("Blocks") + ")";
    Fit fit(y, {{formulation, Classes(obs, {1})}, {batch, Classes(obs, {2})}, {"Operator", Classes(obs, {3})}});
    Rows all{1, grid.Rows()};
    ExpectTable(all, fit, "Error", {batch, "Operator"}, ROUNDED);

    // Table 4.10 of the book: whole numbers throughout.
    for (auto [name, ss] :
         {std::pair{formulation, "330"}, {batch, "68"}, {"Operator", "150"}, {GetText("Error"), "128"}, {total, "676"}})
      EXPECT_EQ(Of(all, name, SS), ss) << name;
    ExpectBook(all, {{formulation, F, "7.73"}});
    EXPECT_EQ(Of(all, formulation, STAR), "*");
  }
}

}  // namespace
}  // namespace kestrow
