// kestrow-cli on the pictures of the regression model: the contour plot and
// the response surface of the central composite's stored model, drawn into
// picture files, and a study with no model refused with the reason.
#include <gtest/gtest.h>

#include "core/Json.h"
#include "core/TestSupport.h"

namespace kestrow {
namespace {

std::string Sampdata(const std::string& name) { return std::string(KESTROW_SAMPDATA) + "/" + name + ".KSW"; }

class SurfaceCliTest : public ::testing::Test {
 protected:
  test::TempDir dir;
};

TEST_F(SurfaceCliTest, AnalyseDrawsTheContourPlotAndTheSurface) {
  for (const char* code : {"10", "11"}) {
    const std::string image = dir / (std::string("c") + code + ".png");
    test::CliResult r = test::RunCli(dir, "analyse " + Sampdata("CentralComposite") + " --study s1 --code " + code + " --image " + image);
    ASSERT_EQ(r.code, 0) << r.err;
    JsonValue doc;
    std::string error;
    ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
    ASSERT_EQ(doc.Member("Charts")->items.size(), 1u);
    const JsonValue& chart = doc.Member("Charts")->items[0];
    EXPECT_EQ(chart.Member("chtType")->text, std::string(code) == "10" ? "15" : "12");
    EXPECT_GT(test::ReadFile(image).size(), 1000u);
  }
  // A study without a model: the availability's reason.
  test::CliResult r = test::RunCli(dir, "analyse " + Sampdata("ChemicalYield") + " --study s1 --code 10");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("Regression Equation"), std::string::npos) << r.err;
}

}  // namespace
}  // namespace kestrow
