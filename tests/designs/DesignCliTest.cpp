// kestrow-cli designs and design, end to end.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>

#include "core/Json.h"
#include "core/TestSupport.h"

namespace kestrow {
namespace {

using test::ReadFile;
using test::ScopedUi;
using test::TempDir;

struct Result {
  int code;
  std::string out, err;
};

Result Cli(const TempDir& dir, const std::string& args) {
  std::string command = "KESTROW_CONFIG_DIR=" + dir.str() + " " + KESTROW_CLI + " " + args + " >" + dir / "out" +
                        " 2>" + dir / "err";
  int status = std::system(command.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(dir / "out"), ReadFile(dir / "err")};
}

std::string Sample(const std::string& name) { return std::string(KESTROW_SAMPDATA) + "/" + name + ".KSW"; }

TEST(DesignCli, DesignsListsTheTableAsJsonRecords) {
  TempDir dir;
  Result r = Cli(dir, "designs " + Sample("PlasmaEtch") + " --study s1");
  ASSERT_EQ(r.code, 0) << r.err;
  JsonValue doc;
  std::string error;
  ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
  ASSERT_EQ(doc.type, JsonValue::Type::Array);
  ASSERT_EQ(doc.items.size(), 5u);
  EXPECT_EQ(doc.items[2].Member("sTag")->text, "2KP");
  EXPECT_EQ(doc.items[2].Member("sTag2")->text, "3,1");
  EXPECT_EQ(doc.items[2].Member("iResolution")->text, "3");
  EXPECT_EQ(doc.items[4].Member("sRuns")->text, "8");
  EXPECT_EQ(doc.items[4].Member("bShowRuns")->boolean, true);
  for (const char* field : {"sName", "sRuns", "iFlag", "idbFlags", "iResolution", "sInteractions", "sTag", "sTag2",
                            "bShowRuns"})
    EXPECT_TRUE(doc.items[0].Member(field)) << field;
}

TEST(DesignCli, DesignBuildsTheRowAndSavesARandomisedEmptyStudy) {
  ScopedUi ui;
  TempDir dir;
  // The sample holds data: without --yes the question is answered No.
  Result r = Cli(dir, "design " + Sample("PlasmaEtch") + " --study s1 --row 3 -o " + dir / "half.KSW");
  EXPECT_EQ(r.code, 1);
  EXPECT_FALSE(std::filesystem::exists(dir / "half.KSW"));
  r = Cli(dir, "--yes design " + Sample("PlasmaEtch") + " --study s1 --row 3 -o " + dir / "half.KSW");
  ASSERT_EQ(r.code, 0) << r.err;
  Problem p;
  ASSERT_TRUE(p.Load(dir / "half.KSW"));
  const Study& s = p.Studies(1);
  EXPECT_EQ(s.iNumRuns, 4);
  EXPECT_EQ(s.sDesignName, "2^(3-1) factorial");
  EXPECT_EQ(s.Contrasts(1).sAliases, "BC");
  EXPECT_TRUE(s.IsArrayEmpty());
  for (int rep = 1; rep <= s.iReps; ++rep) {
    int sum = 0;
    for (int run = 1; run <= 4; ++run) sum += s.GetSeq(run, rep);
    EXPECT_EQ(sum, 10);
  }
}

TEST(DesignCli, RowsBuiltThroughADialogAndBadRowsAreRefused) {
  TempDir dir;
  std::filesystem::copy_file(Sample("SupplierQualification"), dir / "s.KSW");
  Result r = Cli(dir, "design " + dir / "s.KSW --study s1 --row 1");  // user defined
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("dialog"), std::string::npos);
  r = Cli(dir, "--yes design " + dir / "s.KSW --study s1 --row 2");  // a locked study
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("locked"), std::string::npos);
  r = Cli(dir, "design " + dir / "s.KSW --study s1 --row 9");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("rows 1 to 2"), std::string::npos);
  r = Cli(dir, "design " + dir / "s.KSW --study s7 --row 1");
  EXPECT_EQ(r.code, 1);
  EXPECT_EQ(Cli(dir, "design " + dir / "s.KSW --study s1 --row x").code, 2);
  EXPECT_EQ(Cli(dir, "design " + dir / "s.KSW --study s1").code, 2);
  EXPECT_EQ(Cli(dir, "designs " + dir / "s.KSW --colour red").code, 2);
  EXPECT_EQ(ReadFile(dir / "s.KSW"), ReadFile(Sample("SupplierQualification")));  // nothing written
}

}  // namespace
}  // namespace kestrow
