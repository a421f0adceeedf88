// kestrow-cli designs and design, end to end.
#include <gtest/gtest.h>

#include "core/Json.h"
#include "core/TestSupport.h"

namespace kestrow {
namespace {

using namespace test;

std::string Sampdata(const std::string& name) { return std::string(KESTROW_SAMPDATA) + "/" + name + ".KSW"; }

TEST(DesignCli, DesignsListsTheTableAsJsonRecords) {
  TempDir dir;
  CliResult r = RunCli(dir, "designs " + Sampdata("PlasmaEtch") + " --study s1");
  ASSERT_EQ(r.code, 0) << r.err;
  JsonValue doc;
  std::string error;
  ASSERT_TRUE(ParseJson(r.out, doc, error)) << error;
  ASSERT_EQ(doc.items.size(), 5u);
  EXPECT_EQ(doc.items[2].Member("sTag")->text, "2KP");
  EXPECT_EQ(doc.items[2].Member("sTag2")->text, "3,1");
  EXPECT_EQ(doc.items[2].Member("iResolution")->text, "3");
  EXPECT_EQ(doc.items[4].Member("sRuns")->text, "8");
  EXPECT_EQ(doc.items[4].Member("bShowRuns")->boolean, true);
  for (const char* field : {"sName", "iFlag", "idbFlags", "sInteractions"})
    EXPECT_TRUE(doc.items[0].Member(field)) << field;
}

TEST(DesignCli, DesignBuildsTheRowAndSavesARandomisedEmptyStudy) {
  ScopedUi ui;
  TempDir dir;
  // The sample holds data: without --yes the question is answered No.
  CliResult r = RunCli(dir, "design " + Sampdata("PlasmaEtch") + " --study s1 --row 3 -o " + dir / "half.KSW");
  EXPECT_EQ(r.code, 1);
  EXPECT_FALSE(std::filesystem::exists(dir / "half.KSW"));
  r = RunCli(dir, "--yes design " + Sampdata("PlasmaEtch") + " --study s1 --row 3 -o " + dir / "half.KSW");
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

// A missing study is refused as for every command: see the CLI tests.
TEST(DesignCli, RowsBuiltThroughADialogAndBadRowsAreRefused) {
  TempDir dir;
  std::string file = dir / "s.KSW";
  std::filesystem::copy_file(Sampdata("SupplierQualification"), file);
  for (auto [args, code, says] : std::vector<std::tuple<std::string, int, std::string>>{
           {"design " + file + " --study s1 --row 1", 1, "dialog"},  // user defined
           {"--yes design " + file + " --study s1 --row 2", 1, "locked"},
           {"design " + file + " --study s1 --row 9", 1, "rows 1 to 2"},
           {"design " + file + " --study s1 --row x", 2, "usage"},
           {"design " + file + " --study s1", 2, "usage"},
           {"designs " + file + " --colour red", 2, "unknown option --colour"}}) {
    CliResult r = RunCli(dir, args);
    EXPECT_EQ(r.code, code) << args;
    EXPECT_NE(r.err.find(says), std::string::npos) << args << ": " << r.err;
  }
  EXPECT_EQ(ReadFile(file), ReadFile(Sampdata("SupplierQualification")));  // nothing written
}

}  // namespace
}  // namespace kestrow
