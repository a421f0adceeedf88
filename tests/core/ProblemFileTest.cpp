// The problem file: its byte layout, round trips, the version rule, and the
// safety of saving.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <iterator>

#include "core/FileIO.h"
#include "core/TestSupport.h"

namespace kestrow {
namespace {

using namespace test;

struct FileLayout : ScratchTest {};
struct RoundTrip : ScratchTest {};
struct Load : ScratchTest {};
struct Save : ScratchTest {};

TEST_F(FileLayout, AnEmptyProblemIsSixteenBytesAndItsTwoNames) {
  Problem p;
  p.sName = "Empty";
  p.sDesc = "";
  std::string expected = Str("KSTW") + Int16Bytes(100) + Int16Bytes(0) + Int16Bytes(0) + Int16Bytes(0) + Str("Empty") + Str("");
  EXPECT_EQ(SavedBytes(p, dir), expected);
  EXPECT_EQ(expected.size(), 14u + (2 + 5) + (2 + 0));  // fixed fields, then two counted strings
}

TEST_F(FileLayout, AResponseVariableIsFiveStringsAndItsTarget) {
  Problem p;
  p.sName = "";
  RespVar rv;
  rv.sKey = "v1";
  rv.sName = "Y";
  rv.fTarget = TARGET_MAX;
  p.RespVars.Add(rv, "v1");
  std::string bytes = SavedBytes(p, dir);
  std::string block = Str("v1") + Str("Y") + Str("") + Str("") + Str("") + std::string("\x28\x6B\x6E\x4E", 4);
  EXPECT_EQ(bytes.substr(14 + 2 + 2), block);  // behind the fixed fields and two empty names
}

TEST_F(FileLayout, AStudyWithoutADesignGoesStraightToItsNotes) {
  Problem p;
  Study s;
  s.sKey = "s1";
  s.StudyRespVars.Add(StudyRespVar{"v1", 0, 0, 0});
  s.AddNote(1, 2, "n");
  p.AddStudy(s);
  std::string bytes = SavedBytes(p, dir);
  // The tail: empty sDesignName, no cells, the notes (replication first),
  // no own factors, no own response variables.
  std::string tail = Str("") + Int16Bytes(1) + Int16Bytes(2) + Int16Bytes(1) + Str("n") + Int16Bytes(0) + Int16Bytes(0);
  ASSERT_GE(bytes.size(), tail.size());
  EXPECT_EQ(bytes.substr(bytes.size() - tail.size()), tail);
  // Fixed fields, "New Problem", an empty description; the study's least
  // bytes, its key, one response (key, type, two floats), the note, and the
  // two default filters "0;0".
  EXPECT_EQ(bytes.size(), 14u + 13 + 2 + Study::MIN_FILE_BYTES + 2 + 14 + 7 + 6);
}

TEST_F(RoundTrip, EverySampleSavesLoadsAndSavesToTheSameBytes) {
  for (const char* name : {"PlasmaEtch", "CatalystTrial", "SupplierQualification"}) {
    auto p = Sample(name);
    std::string first = SavedBytes(*p, dir, "a.KSW");
    Problem q;
    ASSERT_TRUE(q.Load(dir / "a.KSW")) << name;
    EXPECT_FALSE(q.bChanged);
    EXPECT_EQ(q.sPathFileName, dir / "a.KSW");
    EXPECT_EQ(SavedBytes(q, dir, "b.KSW"), first) << name;
    EXPECT_EQ(ProblemToJson(q), ProblemToJson(*p)) << name;
    EXPECT_TRUE(ui->messages.empty());
  }
}

TEST_F(RoundTrip, AnExcludedObservationComesBackMissingWithItsFlag) {
  auto p = Sample("PlasmaEtch");
  p->Studies(1).SetData(1, 3, 2, 7.0f);
  p->Studies(1).SetFlag(1, 3, 2, CELL_EXCLUDED | CELL_EXTRAPOLATED);
  auto q = Reloaded(*p);
  const Study& t = q->Studies(1);
  EXPECT_EQ(t.GetFlag(1, 3, 2), CELL_EXCLUDED | CELL_EXTRAPOLATED);
  EXPECT_EQ(t.GetStoredValue(1, 3, 2), MISSING_VALUE);  // the number is lost at save
  EXPECT_FALSE(t.bDataFull);
}

TEST_F(RoundTrip, DataFullIsSetByAFullFileAndRunOrderSurvives) {
  auto p = Sample("PlasmaEtch");
  auto q = Reloaded(*p);
  const Study& s = q->Studies(1);
  EXPECT_TRUE(s.bDataFull);
  for (int rep = 1; rep <= s.iReps; ++rep)
    for (int run = 1; run <= s.iNumRuns; ++run) EXPECT_EQ(s.GetSeq(run, rep), p->Studies(1).GetSeq(run, rep));
  EXPECT_LT(s.lDesnPtr, s.lDataPtr);
}

TEST_F(RoundTrip, CentrePointsAndControlCharactersSurvive) {
  auto p = Sample("PlasmaEtch");
  Treatment centre;
  centre.Centralise(3);
  p->Studies(1).Treatments.Add(centre);
  Contrast c;
  c.sName = "D";
  for (int r = 1; r <= 9; ++r) c.fSetLevel(r, r % 2 ? -2.828f : 20.5f);  // codes above 127
  p->Studies(1).Contrasts.Add(c);
  auto q = Reloaded(*p);
  EXPECT_EQ(q->Studies(1).Treatments(9).sTlist, std::string(3, '\0'));
  EXPECT_EQ(q->Studies(1).Contrasts(8).sLevels, c.sLevels);
  EXPECT_EQ(q->Studies(1).Contrasts(8).fGetLevel(2), 20.5f);
}

TEST_F(RoundTrip, TextOutsideAsciiGoesThroughTheCodePage) {
  Problem p;
  p.sName = "Dur\xC3\xA9" "e \xE2\x82\xAC \xCE\xA9";  // "Durée € Ω"
  EXPECT_NE(SavedBytes(p, dir).find("Dur\xE9" "e \x80 ?"), std::string::npos);
  EXPECT_EQ(Reloaded(p)->sName, "Dur\xC3\xA9" "e \xE2\x82\xAC ?");  // Omega has no code
}

TEST_F(Load, NinetyNineShowsTheNoticeOneHundredIsSilentOneHundredOneIsRefused) {
  std::string body = Int16Bytes(0) + Int16Bytes(0) + Int16Bytes(0) + Str("P") + Str("");
  EXPECT_EQ(LoadFailureOf(Str("KSTW") + Int16Bytes(99) + body), "");
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_EQ(ui->messages[0].kind, "info");
  EXPECT_EQ(ui->messages[0].text,
            "This file was written by an earlier version of Kestrow for Windows\n"
            "When you save it, it will be converted to the current version");
  ui->messages.clear();
  EXPECT_EQ(LoadFailureOf(Str("KSTW") + Int16Bytes(100) + body), "");
  EXPECT_TRUE(ui->messages.empty());
  EXPECT_EQ(LoadFailureOf(Str("KSTW") + Int16Bytes(101) + body), "File version is not recognised by this program");
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_EQ(ui->messages[0].text, "File version is not recognised by this program");
}

TEST_F(Load, AFileWithoutTheMagicIsNotAProblemFile) {
  for (const std::string& bytes : {std::string(), std::string("KSTW"), Str("KSTX") + Int16Bytes(100),
                                   std::string("\xFF\x7F garbage", 10)})
    EXPECT_EQ(LoadFailureOf(bytes), "This is not a valid .KSW file!");
}

TEST_F(Load, AMissingFileSaysSoAndNamesIt) {
  Problem p;
  EXPECT_FALSE(p.Load("/nonexistent/folder/x.KSW"));
  EXPECT_NE(p.LoadFailure().find("/nonexistent/folder/x.KSW"), std::string::npos);
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_EQ(ui->messages[0].kind, "error");
}

TEST_F(Load, AStaleTailBehindTheLastStudyIsNeverRead) {
  auto p = Sample("SupplierQualification");
  std::string bytes = SavedBytes(*p, dir);
  WriteFile(dir / "tail.KSW", bytes + std::string(5000, '\x5A'));
  Problem q;
  ASSERT_TRUE(q.Load(dir / "tail.KSW"));
  EXPECT_EQ(SavedBytes(q, dir, "again.KSW"), bytes);
}

TEST_F(Load, DuplicateKeysAreRefusedAtTheirStage) {
  std::string rv = Str("v1") + Str("A") + Str("") + Str("") + Str("") + std::string(4, '\0');
  EXPECT_EQ(LoadFailureOf(Str("KSTW") + Int16Bytes(100) + Int16Bytes(2) + Int16Bytes(0) + Int16Bytes(0) + Str("P") +
                          Str("") + rv + rv),
            "Error reading Response Variables");
}

// A string's count is two bytes read as unsigned: texts of up to 65,535
// characters go to the file and come back byte for byte, and a text of
// 32,767 or fewer is written as it always was, its count a signed one.
TEST_F(Save, TextsUpTo65535CharactersRoundTripAndLongerAreRefusedWithTheOldFileKept) {
  auto p = Sample("PlasmaEtch");
  for (std::size_t n : {32767u, 32768u, 65535u}) {
    p->sDesc = std::string(n, 'x');
    ASSERT_TRUE(p->Save(dir / "saved.KSW")) << n;
    std::string bytes = ReadFile(dir / "saved.KSW");
    Problem back;
    ASSERT_TRUE(back.Load(dir / "saved.KSW")) << n;
    EXPECT_EQ(back.sDesc.size(), n);
    EXPECT_EQ(SavedBytes(back, dir, "again.KSW"), bytes) << n;
  }
  p->sDesc = std::string(32767, 'x');
  std::string bytes = SavedBytes(*p, dir);
  std::size_t at = bytes.find(std::string(32767, 'x'));
  ASSERT_NE(at, std::string::npos);
  EXPECT_EQ(bytes.substr(at - 2, 2), Int16Bytes(32767));

  std::string before = ReadFile(dir / "saved.KSW");
  p->sDesc = std::string(65536, 'x');
  EXPECT_FALSE(p->Save(dir / "saved.KSW"));
  EXPECT_EQ(ReadFile(dir / "saved.KSW"), before);
  ASSERT_EQ(ui->messages.size(), 1u);
  EXPECT_NE(ui->messages[0].text.find("65535"), std::string::npos);
  EXPECT_NE(ui->messages[0].text.find("[Save]"), std::string::npos);
}

TEST_F(Save, SavingOverALongerFileLeavesNoTailAndKeepsPermissions) {
  WriteFile(dir / "p.KSW", std::string(100000, 'z'));
  ::chmod((dir / "p.KSW").c_str(), 0640);
  Problem p;
  ASSERT_TRUE(p.Save(dir / "p.KSW"));
  EXPECT_EQ(ReadFile(dir / "p.KSW").size(), 16u + 2u + std::string("New Problem").size());
  struct stat st {};
  ::stat((dir / "p.KSW").c_str(), &st);
  EXPECT_EQ(st.st_mode & 0777, 0640u);
  // Root saving a user's file leaves it the user's.
  if (::geteuid() == 0) {
    ASSERT_EQ(::chown((dir / "p.KSW").c_str(), 65534, 65534), 0);
    ASSERT_TRUE(p.Save(dir / "p.KSW"));
    ::stat((dir / "p.KSW").c_str(), &st);
    EXPECT_EQ(st.st_uid, 65534u);
    EXPECT_EQ(st.st_gid, 65534u);
  }
}

// Runs the work as an ordinary user (nobody) when the tests run as root, so
// that file permissions count; the child's exit status says whether it held.
bool AsOrdinaryUser(const std::function<bool()>& work) {
  if (::geteuid() != 0) return work();
  pid_t child = ::fork();
  if (child == 0) {
    bool held = ::setgid(65534) == 0 && ::setuid(65534) == 0 && work();
    ::_exit(held ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// A file the user may not write is not replaced, however the folder stands;
// a save through a symbolic link writes the file it points to and leaves
// the link; an export goes through a temporary file as a save does.
TEST_F(Save, ReadOnlyFilesAreRefusedAndLinksAreWrittenThrough) {
  ::chmod(dir.str().c_str(), 0777);
  Problem p;
  p.sName = "Changed";
  for (const char* name : {"locked.KSW", "locked.txt"}) {
    WriteFile(dir / name, "old bytes");
    ::chmod((dir / name).c_str(), 0444);
  }
  // The same user saves a new file beside them: the refusal is the file's.
  EXPECT_TRUE(AsOrdinaryUser([&] {
    return p.Save(dir / "free.KSW") && p.Export(dir / "free.txt") && ui->messages.empty() &&
           !p.Save(dir / "locked.KSW") && !p.Export(dir / "locked.txt") && ui->messages.size() == 2 &&
           ui->messages[0].text.find("Permission denied") != std::string::npos &&
           ui->messages[0].text.find("[Save]") != std::string::npos &&
           ui->messages[1].text.find("[Export]") != std::string::npos;
  }));
  EXPECT_EQ(ReadFile(dir / "free.txt").rfind("Problem name: Changed", 0), 0u);
  EXPECT_EQ(ReadFile(dir / "locked.KSW"), "old bytes");
  EXPECT_EQ(ReadFile(dir / "locked.txt"), "old bytes");

  ::mkdir((dir / "real").c_str(), 0777);
  WriteFile(dir / "real/target.KSW", "old bytes");
  ::symlink("real/target.KSW", (dir / "link.KSW").c_str());
  ASSERT_TRUE(p.Save(dir / "link.KSW"));
  struct stat st {};
  ASSERT_EQ(::lstat((dir / "link.KSW").c_str(), &st), 0);
  EXPECT_TRUE(S_ISLNK(st.st_mode));
  Problem back;
  ASSERT_TRUE(back.Load(dir / "real/target.KSW"));
  EXPECT_EQ(back.sName, "Changed");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir / "real"), {}), 1);  // no temporary left
  ::symlink("real/export.txt", (dir / "export-link.txt").c_str());
  ASSERT_TRUE(p.Export(dir / "export-link.txt"));
  EXPECT_EQ(ReadFile(dir / "real/export.txt").rfind("Problem name: Changed", 0), 0u);
}

TEST_F(Save, AFileThatCannotBeWrittenIsReportedWithTheTagOfSaveOrExport) {
  Problem p;
  EXPECT_FALSE(p.Save("/nonexistent/folder/p.KSW"));
  EXPECT_FALSE(p.Export("/nonexistent/folder/e.txt"));
  ASSERT_EQ(ui->messages.size(), 2u);
  EXPECT_NE(ui->messages[0].text.find("[Save]"), std::string::npos);
  EXPECT_NE(ui->messages[1].text.find("[Export]"), std::string::npos);
}

TEST_F(Save, ExportWritesTheGoldenTextOfEachSample) {
  for (const char* name : {"PlasmaEtch", "CatalystTrial", "SupplierQualification"}) {
    auto p = Sample(name);
    ASSERT_TRUE(p->Export(dir / "e.txt"));
    EXPECT_EQ(ReadFile(dir / "e.txt"), ReadFile(std::string(KESTROW_TESTDATA_DIR) + "/" + name + ".txt")) << name;
  }
}

}  // namespace
}  // namespace kestrow
