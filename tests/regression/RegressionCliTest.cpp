// kestrow-cli on the regression: the report, the residual charts and the
// scattergram through analyse, and the all-subsets search through apr, with
// its copy-back saved and read again, and the refusals of bad usage.
#include <gtest/gtest.h>

#include "core/Formatters.h"
#include "core/Json.h"
#include "core/TestSupport.h"
#include "regression/Regress.h"

namespace kestrow {
namespace {

std::string Sampdata(const std::string& name) { return std::string(KESTROW_SAMPDATA) + "/" + name + ".KSW"; }

class RegressionCliTest : public ::testing::Test {
 protected:
  test::TempDir dir;
};

TEST_F(RegressionCliTest, AnalyseShowsTheReportTheResidualsAndTheScattergram) {
  test::CliResult r = test::RunCli(dir, "analyse " + Sampdata("CentralComposite") + " --study s1 --code 7 --tsv");
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_NE(r.out.find("\tConstant\t79.94\t"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("\tR squared\t0.9827"), std::string::npos);

  r = test::RunCli(dir, "analyse " + Sampdata("CentralComposite") + " --study s1 --code 9 --image " + (dir / "res.png"));
  ASSERT_EQ(r.code, 0) << r.err;
  JsonValue doc;
  std::string error;
  ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
  EXPECT_EQ(doc.Member("Charts")->items.size(), 2u);  // the stored list: probability plot and fitted values
  EXPECT_GT(test::ReadFile(dir / "res.png").size(), 1000u);

  r = test::RunCli(dir, "analyse " + Sampdata("CentralComposite") + " --study s1 --code 18 --detail \"f2||3\"");
  ASSERT_EQ(r.code, 0) << r.err;
  ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
  ASSERT_EQ(doc.Member("Charts")->items.size(), 1u);
  EXPECT_EQ(doc.Member("Charts")->items[0].Member("sXlabel")->text, "Temp");

  r = test::RunCli(dir, "analyse " + Sampdata("CentralComposite") + " --study s1 --code 18 --detail \"f2||4\"");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("the degree of the fitted line is 1, 2 or 3"), std::string::npos) << r.err;
}

TEST_F(RegressionCliTest, TheSearchListsItsModelsAndCopiesTheBestBack) {
  test::CliResult r = test::RunCli(dir, "apr " + Sampdata("CentralComposite") + " --study s1");
  ASSERT_EQ(r.code, 0) << r.err;
  JsonValue doc;
  std::string error;
  ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
  const std::vector<JsonValue>& rows = doc.Member("rows")->items;
  ASSERT_GT(rows.size(), 2u);
  EXPECT_EQ(rows[0].items[0].text, "Terms");
  std::size_t starred = 0, best = 0;
  for (std::size_t i = 1; i < rows.size(); ++i)
    if (rows[i].items[4].text == "*") ++starred, best = i;
  ASSERT_EQ(starred, 1u);

  const std::string out = dir / "best.KSW";
  r = test::RunCli(dir, "apr " + Sampdata("CentralComposite") + " --study s1 --copy-back -o " + out);
  ASSERT_EQ(r.code, 0) << r.err;
  test::ScopedUi ui;
  Problem p;
  ASSERT_TRUE(p.Load(out));
  const Study& s = p.Studies(1);
  // The saved model has the best row's terms, the constant and NumTerms - 1 more.
  EXPECT_EQ(s.REGRESS_Rterms.Count(), std::stoi(rows[best].items[6].text));
  Regress fit;
  Study copy = s;
  fit.Init(copy);
  ASSERT_TRUE(fit.Compute(s.REGRESS_sRVkey));
  EXPECT_EQ(FormatSF(4, fit.fRSquared), rows[best].items[2].text);

  for (const std::string& bad : {"apr " + Sampdata("CentralComposite") + " --study s1 -o " + out,
                                 "apr " + Sampdata("CentralComposite")}) {
    r = test::RunCli(dir, bad);
    EXPECT_EQ(r.code, 2) << bad << "\n" << r.err;
  }
  r = test::RunCli(dir, "apr " + Sampdata("CentralComposite") + " --study s9");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("no study with the key s9"), std::string::npos) << r.err;
  r = test::RunCli(dir, "apr " + Sampdata("ChemicalYield") + " --study s1");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("has no settings yet"), std::string::npos) << r.err;
}

// calc: Montgomery's optimum (time 86.95, temperature 176.53, yield 80.21)
// through the same rules as the dialog, restraints by key, name or
// abbreviation, and the refusals.
TEST_F(RegressionCliTest, TheCalculatorEvaluatesAndSolves) {
  const std::string file = Sampdata("CentralComposite");
  test::CliResult r = test::RunCli(dir, "calc " + file + " --study s1 --eval f1=86.95,Temp=176.53");
  ASSERT_EQ(r.code, 0) << r.err;
  JsonValue doc;
  std::string error;
  ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
  EXPECT_EQ(doc.Member("value")->text, "Yield = 80.21");

  r = test::RunCli(dir, "calc " + file + " --study s1 --solve MAX --restrain \"Time<=86\" --restrain \"f2>=150\"");
  ASSERT_EQ(r.code, 0) << r.err;
  ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
  EXPECT_LE(std::stod(doc.Member("factors")->Member("Time")->text), 86.4);
  EXPECT_NEAR(std::stod(doc.Member("factors")->Member("Temperature")->text), 176.5, 0.71);
  EXPECT_EQ(doc.Member("gap")->type, JsonValue::Type::Null);
  EXPECT_EQ(doc.Member("evaluations")->text, "841");

  r = test::RunCli(dir, "calc " + file + " --study s1 --solve 79 --method montecarlo --seconds 1");
  ASSERT_EQ(r.code, 0) << r.err;
  ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
  EXPECT_LT(std::stod(doc.Member("gap")->text), 0.05);

  for (const std::string& bad : {"calc " + file + " --study s1",
                                 "calc " + file + " --study s1 --eval f1=85 --solve MAX",
                                 "calc " + file + " --study s1 --eval f1=85",
                                 "calc " + file + " --study s1 --eval f9=85,f2=170",
                                 "calc " + file + " --study s1 --solve MAX --method montecarlo",
                                 "calc " + file + " --study s1 --solve MAX --restrain Time",
                                 "calc " + file + " --study s1 --solve MAX --restrain \"Speed<3\"",
                                 "analyse " + file + " --study s1 --code 14"}) {
    r = test::RunCli(dir, bad);
    EXPECT_EQ(r.code, 2) << bad << "\n" << r.err;
  }
  r = test::RunCli(dir, "calc " + file + " --study s1 --solve MAX --restrain \"Time=200\"");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("A restraint lies outside the range of its factor"), std::string::npos) << r.err;
  r = test::RunCli(dir, "calc " + Sampdata("ChemicalYield") + " --study s1 --eval f1=1");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("You must compute a Regression Equation first"), std::string::npos) << r.err;
}

}  // namespace
}  // namespace kestrow
