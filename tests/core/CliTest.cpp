// kestrow-cli end to end: to-json, from-json and export, with their exit
// codes and messages.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <sstream>

#include "core/TestSupport.h"

namespace kestrow {
namespace {

using namespace test;

std::string Sampdata(const std::string& name) { return std::string(KESTROW_SAMPDATA) + "/" + name + ".KSW"; }
std::string Source(const std::string& name) { return std::string(KESTROW_SAMPLES_DIR) + "/" + name + ".json"; }

TEST(Cli, ToJsonOfABuiltSampleIsItsSourceAndFromJsonGivesTheSameBytesBack) {
  TempDir dir;
  for (const char* name : {"PlasmaEtch", "CatalystTrial", "SupplierQualification"}) {
    CliResult r = RunCli(dir, "to-json " + Sampdata(name));
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, ReadFile(Source(name))) << name;
    WriteFile(dir / "p.json", r.out);
    r = RunCli(dir, "from-json " + dir / "p.json" + " " + dir / "p.KSW");
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(ReadFile(dir / "p.KSW"), ReadFile(Sampdata(name))) << name;
  }
}

// Floats come back to the bit: -0 with its sign, a NaN with its payload.
TEST(Cli, NegativeZeroAndNaNPayloadsSurviveTheJsonRoundTrip) {
  TempDir dir;
  auto p = Sample("PlasmaEtch");
  std::uint32_t payload = 0x7FC12345u, signalling = 0xFF800001u;
  float nan1, nan2;
  std::memcpy(&nan1, &payload, 4);
  std::memcpy(&nan2, &signalling, 4);
  p->RespVars(1).fTarget = -0.0f;
  p->Studies(1).ANOVA_fAlpha = nan1;
  p->Studies(1).SetData(1, 1, 1, -0.0f);
  p->Studies(1).SetData(1, 2, 1, nan2);
  ASSERT_TRUE(p->Save(dir / "odd.KSW"));
  CliResult json = RunCli(dir, "to-json " + dir / "odd.KSW");
  ASSERT_EQ(json.code, 0) << json.err;
  EXPECT_NE(json.out.find("\"fTarget\": -0"), std::string::npos);
  EXPECT_NE(json.out.find("NaN:0x7FC12345"), std::string::npos);
  WriteFile(dir / "odd.json", json.out);
  ASSERT_EQ(RunCli(dir, "from-json " + dir / "odd.json " + dir / "back.KSW").code, 0);
  EXPECT_EQ(ReadFile(dir / "back.KSW"), ReadFile(dir / "odd.KSW"));
}

TEST(Cli, ExportPrintsOrWritesTheTextExport) {
  TempDir dir;
  std::string golden = ReadFile(std::string(KESTROW_TESTDATA_DIR) + "/PlasmaEtch.txt");
  CliResult r = RunCli(dir, "export " + Sampdata("PlasmaEtch"));
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.out, golden);
  EXPECT_EQ(RunCli(dir, "export " + Sampdata("PlasmaEtch") + " " + dir / "e.txt").code, 0);
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
  const std::pair<std::string, std::string> cases[] = {
      {"", "line 1, column 1: unexpected end of the document"},
      {"{\"sName\": \"x\",", "line 1, column 15: unexpected end of the document; expected a field name"},
      {"{\"sName\": [1, 2", "line 1, column 16: unexpected end of the document; expected ',' or ']'"},
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
  for (const auto& [json, says] : cases) {
    WriteFile(dir / "bad.json", json);
    std::filesystem::remove(dir / "out.KSW");
    CliResult r = RunCli(dir, "from-json " + dir / "bad.json" + " " + dir / "out.KSW");
    EXPECT_EQ(r.code, 1) << says;
    EXPECT_NE(r.err.find(says), std::string::npos) << "wanted: " << says << "\ngot: " << r.err;
    EXPECT_FALSE(std::filesystem::exists(dir / "out.KSW")) << says;
  }
}

TEST(Cli, ARefusedOrFailedOperationExitsOneAndSaysWhy) {
  TempDir dir;
  WriteFile(dir / "junk.KSW", "not a problem file");
  const std::pair<std::string, std::string> cases[] = {
      {"to-json " + dir / "junk.KSW", "This is not a valid .KSW file!"},
      {"export " + dir / "missing.KSW", dir / "missing.KSW"},
      {"from-json " + dir / "missing.json " + dir / "x.KSW", "cannot read"},
      {"from-json " + Source("PlasmaEtch") + " /nonexistent/folder/x.KSW", "[Save]"},
      {"report " + Sampdata("PlasmaEtch") + " --study s9 stats", "no study with the key s9"},
      // Endless input that is no problem file or JSON ends at once.
      {"to-json /dev/zero", "This is not a valid .KSW file!"},
      {"from-json /dev/zero " + dir / "zero.KSW", "not a JSON document"},
      {"draw /dev/zero --image " + dir / "zero.png", "not a JSON document"},
  };
  for (const auto& [args, says] : cases) {
    CliResult r = RunCli(dir, args);
    EXPECT_EQ(r.code, 1) << args;
    EXPECT_NE(r.err.find(says), std::string::npos) << args << "\ngot: " << r.err;
    EXPECT_EQ(r.out, "") << args;
  }
}

TEST(Cli, ReportPrintsTheStudysReport) {
  TempDir dir;
  for (const char* kind : {"stats", "worksheet"}) {
    CliResult r = RunCli(dir, "report " + Sampdata("PlasmaEtch") + " --study s1 " + kind);
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out.rfind(std::string(kind) == "stats" ? "Statistics report - " : "Data worksheet - ", 0), 0u);
    EXPECT_NE(r.out.find("Study: Screening\n"), std::string::npos);
  }
}

TEST(Cli, BadUsageExitsTwo) {
  TempDir dir;
  const std::pair<const char*, const char*> cases[] = {
      {"", "no command"},
      {"frobnicate", "unknown command frobnicate"},
      {"frobnicate --study s1", "unknown command frobnicate"},  // the command is named first
      {"to-json", "one problem file"},
      {"from-json a", "from-json takes"},
      {"export", "export takes"},
      {"--home", "--home needs"},
      {"--yes --yes to-json x.KSW", "given twice"},
      {"to-json --colour x.KSW", "unknown option --colour"},
      {"report x.KSW --study s1 summary", "report takes"},
      {"report x.KSW stats", "report takes"},
      {"report x.KSW --study s1 --study s2 stats", "--study is given twice"},
      {"analyse x.KSW --study s1 --code 70000", "--code takes"},
      {"analyse x.KSW --study s1 --code -99999", "--code takes"},
      {"design x.KSW --study s1 --row 4294967297", "--row takes"},
  };
  for (const auto& [args, says] : cases) {
    CliResult r = RunCli(dir, args);
    EXPECT_EQ(r.code, 2) << args;
    EXPECT_NE(r.err.find(says), std::string::npos) << args << "\ngot: " << r.err;
    EXPECT_NE(r.err.find("usage: kestrow-cli"), std::string::npos) << args;
  }
  EXPECT_EQ(RunCli(dir, "--help").code, 0);
}

// The manual describes every command that the usage text lists.
TEST(Cli, TheManualDescribesEveryCommandTheToolLists) {
  TempDir dir;
  CliResult help = RunCli(dir, "--help");
  ASSERT_EQ(help.code, 0);
  std::string manual = ReadFile(std::string(KESTROW_RESOURCES) + "/../docs/kestrow-cli.md");
  ASSERT_FALSE(manual.empty());
  std::istringstream lines(help.out.substr(help.out.find("commands:")));
  std::string line;
  int commands = 0;
  while (std::getline(lines, line) && line.rfind("options:", 0) != 0) {
    // A command's line starts two blanks in, with its name.
    if (line.size() < 3 || line.compare(0, 2, "  ") != 0 || line[2] == ' ') continue;
    std::string name = line.substr(2, line.find(' ', 2) - 2);
    ++commands;
    EXPECT_NE(manual.find("\n`" + name + " "), std::string::npos) << name;
  }
  EXPECT_GE(commands, 10);
}

// A command whose output does not get out has failed: a full disk, or a
// file-size limit that cuts the output short.
TEST(Cli, OutputThatCannotBeWrittenExitsOneWithTheReason) {
  TempDir dir;
  auto run = [&](const std::string& shell) {
    int status = std::system(("sh -c '" + shell + "' 2>" + dir / "err.txt").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  };
  for (const std::string& args : {"to-json " + Sampdata("PlasmaEtch"), "export " + Sampdata("PlasmaEtch"),
                                  "designs " + Sampdata("PlasmaEtch") + " --study s1"}) {
    EXPECT_EQ(run(std::string(KESTROW_CLI) + " " + args + " >/dev/full"), 1) << args;
    EXPECT_NE(ReadFile(dir / "err.txt").find("could not be written"), std::string::npos) << args;
  }
  EXPECT_EQ(run("ulimit -f 1; " + std::string(KESTROW_CLI) + " to-json " + Sampdata("PlasmaEtch") + " >" +
                dir / "cut.json"),
            1);
  EXPECT_NE(ReadFile(dir / "err.txt").find("File too large"), std::string::npos);
}

}  // namespace
}  // namespace kestrow
