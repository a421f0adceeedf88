// Damaged problem files: a real file cut at every offset and corrupted at
// many. Each must be refused with the failure text of the stage where the
// damage lies (or, for corruption that leaves a readable file, load), and
// never crash, hang, or allocate beyond what the file could hold.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/TestSupport.h"

namespace kestrow {
namespace {

using test::ReadFile;
using test::Sample;
using test::SavedBytes;
using test::ScopedUi;
using test::TempDir;
using test::WriteFile;

const char* NOT_KSW = "This is not a valid .KSW file!";
const char* PARAMETERS = "Error reading problem parameters";
const char* RESPVARS = "Error reading Response Variables";
const char* FACTORS = "Error reading factors";
const char* STUDIES = "Error reading studies";

// Where each stage of a file begins.
struct Stages {
  std::size_t names = 8, respVars = 0, factors = 0, studies = 0, end = 0;
  const char* At(std::size_t offset) const {
    if (offset < names) return NOT_KSW;
    if (offset < respVars) return PARAMETERS;
    if (offset < factors) return RESPVARS;
    if (offset < studies) return FACTORS;
    return STUDIES;
  }
};

// A problem with every kind of block: the catalyst trial with a locked copy
// of its study, own factors and response variables, and regression terms.
std::unique_ptr<Problem> RichProblem() {
  auto p = Sample("CatalystTrial");
  Study copy = p->Studies(1);
  copy.sKey = "s2";
  copy.LockMe();
  copy.REGRESS_Rterms.Add(Rterm{"1", 2.5f, 1.0f});
  p->AddStudy(std::move(copy));
  return p;
}

Stages StagesOf(const std::string& path, const TempDir& dir) {
  Stages s;
  auto size = [&](auto strip) {
    Problem p;
    EXPECT_TRUE(p.Load(path));
    strip(p);
    return SavedBytes(p, dir, "stage.KSW").size();
  };
  s.end = ReadFile(path).size();
  s.studies = size([](Problem& p) { p.Studies.Clear(); });
  s.factors = size([](Problem& p) {
    p.Studies.Clear();
    p.Factors.Clear();
  });
  s.respVars = size([](Problem& p) {
    p.Studies.Clear();
    p.Factors.Clear();
    p.RespVars.Clear();
  });
  return s;
}

TEST(DamagedFile, ACutAtAnyOffsetFailsWithTheTextOfItsStage) {
  ScopedUi ui;
  TempDir dir;
  auto rich = RichProblem();
  std::string bytes = SavedBytes(*rich, dir, "rich.KSW");
  Stages stages = StagesOf(dir / "rich.KSW", dir);
  ASSERT_LT(stages.respVars, stages.factors);
  ASSERT_LT(stages.factors, stages.studies);
  ASSERT_LT(stages.studies, stages.end);

  for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
    WriteFile(dir / "cut.KSW", bytes.substr(0, cut));
    Problem p;
    ui->messages.clear();
    ASSERT_FALSE(p.Load(dir / "cut.KSW")) << "cut at " << cut;
    EXPECT_EQ(p.LoadFailure(), stages.At(cut)) << "cut at " << cut;
    ASSERT_EQ(ui->messages.size(), 1u) << "cut at " << cut;
    EXPECT_EQ(ui->messages[0].kind, "error");
  }
  WriteFile(dir / "whole.KSW", bytes);
  Problem whole;
  EXPECT_TRUE(whole.Load(dir / "whole.KSW"));
}

TEST(DamagedFile, CorruptedBytesNeverCrashAndFailOnlyWithAStageText) {
  ScopedUi ui;
  TempDir dir;
  auto rich = RichProblem();
  std::string bytes = SavedBytes(*rich, dir, "rich.KSW");
  const std::vector<std::string> texts = {NOT_KSW, PARAMETERS, RESPVARS, FACTORS, STUDIES,
                                          "File version is not recognised by this program"};
  int refused = 0, loaded = 0;
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    for (unsigned char value : {0x00, 0x7F, 0x80, 0xFF}) {
      std::string damaged = bytes;
      damaged[at] = static_cast<char>(value);
      WriteFile(dir / "bad.KSW", damaged);
      Problem p;
      ui->messages.clear();
      if (p.Load(dir / "bad.KSW")) {
        ++loaded;
        // What loads must save again without trouble.
        SavedBytes(p, dir, "resaved.KSW");
      } else {
        ++refused;
        EXPECT_NE(std::find(texts.begin(), texts.end(), p.LoadFailure()), texts.end())
            << "byte " << at << " = " << int(value) << ": " << p.LoadFailure();
      }
    }
  }
  EXPECT_GT(refused, 0);
  EXPECT_GT(loaded, 0);  // a changed data value or letter is still a readable file
}

// Counts that the rest of the file cannot hold are refused before anything is
// allocated; each names its stage.
TEST(DamagedFile, ImpossibleCountsAreRefusedAtTheirStage) {
  ScopedUi ui;
  TempDir dir;
  auto rich = RichProblem();
  std::string bytes = SavedBytes(*rich, dir, "rich.KSW");
  struct Case {
    std::size_t offset;
    const char* text;
  };
  for (Case c : {Case{8, RESPVARS}, Case{10, FACTORS}, Case{12, STUDIES}}) {
    for (int count : {0x7FFF, -1}) {
      std::string damaged = bytes;
      damaged[c.offset] = static_cast<char>(count & 0xFF);
      damaged[c.offset + 1] = static_cast<char>((count >> 8) & 0xFF);
      WriteFile(dir / "count.KSW", damaged);
      Problem p;
      EXPECT_FALSE(p.Load(dir / "count.KSW"));
      EXPECT_EQ(p.LoadFailure(), c.text) << c.offset << " " << count;
    }
  }
}

TEST(DamagedFile, RunCountsThatTheDataCannotFillAreRefusedBeforeAllocation) {
  ScopedUi ui;
  TempDir dir;
  auto p = Sample("PlasmaEtch");
  std::string bytes = SavedBytes(*p, dir);
  Problem loaded;
  ASSERT_TRUE(loaded.Load(dir / "saved.KSW"));
  const Study& s = loaded.Studies(1);
  // iNumRuns follows the design name and iDesFlag.
  std::size_t runsAt = static_cast<std::size_t>(s.lDesnPtr - 1) + 2 + s.sDesignName.size() + 2;
  ASSERT_EQ(bytes[runsAt], 8);
  for (int runs : {32767, 9, -5}) {
    std::string damaged = bytes;
    damaged[runsAt] = static_cast<char>(runs & 0xFF);
    damaged[runsAt + 1] = static_cast<char>((runs >> 8) & 0xFF);
    WriteFile(dir / "runs.KSW", damaged);
    Problem q;
    EXPECT_FALSE(q.Load(dir / "runs.KSW")) << runs;
    EXPECT_EQ(q.LoadFailure(), STUDIES) << runs;
  }
}

TEST(DamagedFile, AStringLengthPastTheEndIsAReadFailure) {
  ScopedUi ui;
  TempDir dir;
  auto p = Sample("PlasmaEtch");
  std::string bytes = SavedBytes(*p, dir);
  std::size_t at = bytes.find(std::string("\x09\0Etch rate", 11));  // the length of the response's name
  bytes[at] = '\xFF';
  bytes[at + 1] = '\x7F';
  WriteFile(dir / "len.KSW", bytes);
  Problem q;
  EXPECT_FALSE(q.Load(dir / "len.KSW"));
  EXPECT_EQ(q.LoadFailure(), RESPVARS);
}

TEST(DamagedFile, AFailedOpenLeavesTheOpenProblemAsItWas) {
  ScopedUi ui;
  TempDir dir;
  gProblem = Sample("SupplierQualification");
  std::string before = ProblemToJson(*gProblem);
  WriteFile(dir / "bad.KSW", "garbage");
  auto candidate = std::make_unique<Problem>();
  if (candidate->Load(dir / "bad.KSW")) ReplaceProblem(std::move(candidate));
  EXPECT_EQ(ProblemToJson(*gProblem), before);
}

}  // namespace
}  // namespace kestrow
