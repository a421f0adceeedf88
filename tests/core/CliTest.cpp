// kestrow-cli end to end: to-json, from-json and export, with their exit
// codes and messages.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>

#include "core/TestSupport.h"

namespace kestrow {
namespace {

using test::ReadFile;
using test::TempDir;
using test::WriteFile;

struct Result {
  int code;
  std::string out;
  std::string err;
};

Result Cli(const TempDir& dir, const std::string& args) {
  std::string command = std::string(KESTROW_CLI) + " " + args + " >" + dir / "out.txt" + " 2>" + dir / "err.txt";
  int status = std::system(command.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(dir / "out.txt"), ReadFile(dir / "err.txt")};
}

std::string Sampdata(const std::string& name) { return std::string(KESTROW_SAMPDATA) + "/" + name + ".KSW"; }
std::string Source(const std::string& name) { return std::string(KESTROW_SAMPLES_DIR) + "/" + name + ".json"; }

TEST(Cli, ToJsonOfABuiltSampleIsItsSource) {
  TempDir dir;
  for (const char* name : {"PlasmaEtch", "CatalystTrial", "SupplierQualification"}) {
    Result r = Cli(dir, "to-json " + Sampdata(name));
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, ReadFile(Source(name))) << name;
  }
}

TEST(Cli, FromJsonOfToJsonGivesTheSameBytes) {
  TempDir dir;
  for (const char* name : {"PlasmaEtch", "CatalystTrial", "SupplierQualification"}) {
    Result r = Cli(dir, "to-json " + Sampdata(name));
    WriteFile(dir / "p.json", r.out);
    r = Cli(dir, "from-json " + dir / "p.json" + " " + dir / "p.KSW");
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(ReadFile(dir / "p.KSW"), ReadFile(Sampdata(name))) << name;
  }
}

TEST(Cli, ExportPrintsOrWritesTheTextExport) {
  TempDir dir;
  Result r = Cli(dir, "export " + Sampdata("PlasmaEtch"));
  EXPECT_EQ(r.code, 0);
  std::string golden = ReadFile(std::string(KESTROW_TESTDATA_DIR) + "/PlasmaEtch.txt");
  EXPECT_EQ(r.out, golden);
  r = Cli(dir, "export " + Sampdata("PlasmaEtch") + " " + dir / "e.txt");
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(ReadFile(dir / "e.txt"), golden);
}

TEST(Cli, FromJsonRefusesBadDocumentsNamingTheFaultAndWritesNothing) {
  TempDir dir;
  std::string good = ReadFile(Source("PlasmaEtch"));
  auto replaced = [&](const std::string& from, const std::string& to) {
    std::string s = good;
    std::size_t at = s.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return s.replace(at, from.size(), to);
  };
  struct Case {
    std::string json;
    std::string says;
  };
  std::vector<Case> cases = {
      {"", "line 1, column 1: unexpected end of the document"},
      {"{\"sName\": \"x\",", "line 1, column 15: unexpected end of the document; expected a field name"},
      {"{\"sName\": [1, 2", "line 1, column 16: unexpected end of the document; expected ',' or ']'"},
      {good.substr(0, good.size() / 2), "line "},
      {"[1, 2]", "the document: expected an object"},
      {replaced("\"sDesc\": \"Etch", "\"sDescription\": \"Etch"), "the document: unknown field \"sDescription\""},
      {replaced("\"sDesc\": \"Etch rate of silicon nitride against power, gap and gas flow\",", ""),
       "the document: missing field \"sDesc\""},
      {replaced("\"iReps\": 2", "\"iReps\": 2.5"), "Studies[0].iReps: expected a whole number from -32768 to 32767"},
      {replaced("\"iReps\": 2", "\"iReps\": 40000"), "Studies[0].iReps: expected a whole number"},
      {replaced("\"iReps\": 2", "\"iReps\": 3"), "Studies[0].Data[0][0]: expected one cell for each of the 3 replications"},
      {replaced("\"iReps\": 2", "\"iReps\": 2, \"iColour\": 1"), "Studies[0]: unknown field \"iColour\""},
      {replaced("\"sKey\": \"f2\"", "\"sKey\": \"f1\""), "Factors[1]: the key \"f1\" is used twice"},
      {replaced("\"fTarget\": 1000000000", "\"fTarget\": 1e39"), "RespVars[0].fTarget: the number is beyond the range"},
      {replaced("\"fTarget\": 1000000000", "\"fTarget\": \"high\""), "RespVars[0].fTarget: expected a number"},
      {replaced("\"sDesignName\": \"8 Runs - Full factorial\"", "\"sDesignName\": \"\""),
       "Studies[0]: a study without a design"},
      {replaced("\"sAliases\": \"\"", "\"sAliases\": \"\\ud800\""), "a surrogate pair is incomplete"},
      {replaced("[666.2, 0, 4]", "[666.2, 256, 4]"), "Studies[0].Data[0][0][0][1]: expected a whole number from 0 to 255"},
      {good + "x", "unexpected text after the end of the document"},
  };
  for (const Case& c : cases) {
    WriteFile(dir / "bad.json", c.json);
    std::filesystem::remove(dir / "out.KSW");
    Result r = Cli(dir, "from-json " + dir / "bad.json" + " " + dir / "out.KSW");
    EXPECT_EQ(r.code, 1) << c.says;
    EXPECT_NE(r.err.find(c.says), std::string::npos) << "wanted: " << c.says << "\ngot: " << r.err;
    EXPECT_FALSE(std::filesystem::exists(dir / "out.KSW")) << c.says;
  }
}

TEST(Cli, ARefusedOrFailedOperationExitsOne) {
  TempDir dir;
  WriteFile(dir / "junk.KSW", "not a problem file");
  Result r = Cli(dir, "to-json " + dir / "junk.KSW");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("This is not a valid .KSW file!"), std::string::npos);
  EXPECT_EQ(r.out, "");
  r = Cli(dir, "export " + dir / "missing.KSW");
  EXPECT_EQ(r.code, 1);
  r = Cli(dir, "from-json " + dir / "missing.json " + dir / "x.KSW");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("cannot read"), std::string::npos);
  r = Cli(dir, "from-json " + Source("PlasmaEtch") + " /nonexistent/folder/x.KSW");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("[Save]"), std::string::npos);
  r = Cli(dir, "report " + Sampdata("PlasmaEtch") + " --study s9 stats");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("no study with the key s9"), std::string::npos);
}

TEST(Cli, ReportPrintsTheStudysReport) {
  TempDir dir;
  for (const char* kind : {"stats", "worksheet"}) {
    Result r = Cli(dir, "report " + Sampdata("PlasmaEtch") + " --study s1 " + kind);
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out.rfind(std::string(kind) == "stats" ? "Statistics report - " : "Data worksheet - ", 0), 0u);
    EXPECT_NE(r.out.find("Study: Screening\n"), std::string::npos);
  }
}

TEST(Cli, BadUsageExitsTwo) {
  TempDir dir;
  for (const char* args : {"", "frobnicate", "to-json", "to-json a b", "from-json a", "export", "--home",
                           "to-json --colour x.KSW", "report x.KSW --study s1 summary", "report x.KSW stats"}) {
    Result r = Cli(dir, args);
    EXPECT_EQ(r.code, 2) << args;
    EXPECT_NE(r.err.find("usage: kestrow-cli"), std::string::npos) << args;
  }
  EXPECT_EQ(Cli(dir, "--help").code, 0);
}

}  // namespace
}  // namespace kestrow
