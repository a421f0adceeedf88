// Damaged problem files: a real file cut at every offset and corrupted at
// many. Each must be refused with the failure text of the stage where the
// damage lies (or, for corruption that leaves a readable file, load), and
// never crash, hang, or allocate beyond what the file could hold.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "core/TestSupport.h"

namespace kestrow {
namespace {

using namespace test;

const char* NOT_KSW = "This is not a valid .KSW file!";
const char* PARAMETERS = "Error reading problem parameters";
const char* RESPVARS = "Error reading Response Variables";
const char* FACTORS = "Error reading factors";
const char* STUDIES = "Error reading studies";

// Where each stage of a file begins.
struct Stages {
  std::size_t names = 8, respVars = 0, factors = 0, studies = 0, end = 0;
  const char* At(std::size_t offset) const {
    if (offset < 6) return NOT_KSW;  // the magic; the version is a number
    if (offset < names) return PARAMETERS;
    if (offset < respVars) return PARAMETERS;
    if (offset < factors) return RESPVARS;
    if (offset < studies) return FACTORS;
    return STUDIES;
  }
};

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

class DamagedFile : public ScratchTest {
 protected:
  // The bytes of a problem with every kind of block: the catalyst trial with a
  // locked copy of its study, own factors and response variables, and
  // regression terms.
  std::string RichBytes() {
    auto p = Sample("CatalystTrial");
    AddLockedCopy(*p, "s2");
    p->Studies(2).REGRESS_Rterms.Add(Rterm{"1", 2.5f, 1.0f});
    return SavedBytes(*p, dir, "rich.KSW");
  }
  // The bytes with a 16-bit integer written over those at an offset.
  static std::string With(std::string bytes, std::size_t at, int value) { return bytes.replace(at, 2, Int16Bytes(value)); }
};

// Numbers read past the end are 0 and only strings notice the end: a cut
// fails with the text of its stage, or of a later one where the cut took
// only numbers and the next string is met there, or loads where nothing but
// numbers followed (a study cut right behind its design name loads with no
// runs). A cut into the version reads as an earlier version first.
TEST_F(DamagedFile, ACutAtAnyOffsetFailsNoEarlierThanItsStageOrLoads) {
  std::string bytes = RichBytes();
  Stages stages = StagesOf(dir / "rich.KSW", dir);
  ASSERT_LT(stages.respVars, stages.factors);
  ASSERT_LT(stages.factors, stages.studies);
  ASSERT_LT(stages.studies, stages.end);
  const std::vector<std::string> order = {NOT_KSW, PARAMETERS, RESPVARS, FACTORS, STUDIES};
  auto rank = [&](const std::string& text) { return std::find(order.begin(), order.end(), text) - order.begin(); };

  int failed = 0;
  for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
    ui->messages.clear();
    std::string failure = LoadFailureOf(bytes.substr(0, cut));
    bool version = cut == 6 || cut == 7;
    if (failure.empty()) {
      EXPECT_TRUE(ui->messages.empty()) << "cut at " << cut;
      continue;
    }
    ++failed;
    EXPECT_GE(rank(failure), rank(stages.At(cut))) << "cut at " << cut << ": " << failure;
    EXPECT_LT(rank(failure), static_cast<long>(order.size())) << "cut at " << cut << ": " << failure;
    ASSERT_EQ(ui->messages.size(), version ? 2u : 1u) << "cut at " << cut;
    if (version) EXPECT_NE(ui->messages[0].text.find("earlier version"), std::string::npos);
    EXPECT_EQ(ui->messages.back().kind, "error");
  }
  EXPECT_GT(failed, static_cast<int>(bytes.size()) * 9 / 10);
  EXPECT_EQ(LoadFailureOf(bytes.substr(0, bytes.size() - 4)), "");  // the last target alone was cut
  EXPECT_EQ(LoadFailureOf(bytes), "");
}

// A file that lost its last two bytes, the last study's count of its own
// response variables, loads as the whole file does; one of the magic alone
// gets the notice and the first stage's text.
TEST_F(DamagedFile, AFileCutInItsLastCountLoadsAndTheMagicAloneFailsAtTheParameters) {
  auto p = Sample("PlasmaEtch");
  std::string bytes = SavedBytes(*p, dir);
  ASSERT_EQ(bytes.substr(bytes.size() - 2), Int16Bytes(0));
  WriteFile(dir / "cut.KSW", bytes.substr(0, bytes.size() - 2));
  Problem q;
  ASSERT_TRUE(q.Load(dir / "cut.KSW"));
  EXPECT_EQ(SavedBytes(q, dir, "again.KSW"), bytes);
  ui->messages.clear();
  EXPECT_EQ(LoadFailureOf(Str("KSTW")), PARAMETERS);
  ASSERT_EQ(ui->messages.size(), 2u);
  EXPECT_EQ(ui->messages[0].kind, "info");
}

// Entries with the least text there can be, each the last block of its file:
// the count check leaves no slack for them, yet a cut anywhere in the numbers
// behind their last string reads those numbers as 0 and loads.
TEST_F(DamagedFile, EntriesCutInTheNumbersBehindTheirLastStringLoad) {
  struct Case {
    const char* what;
    std::function<void(Problem&)> make;
    std::size_t numbers;  // bytes of numbers behind the last string
  };
  const Case cases[] = {
      {"a response's target",
       [](Problem& p) {
         RespVar rv;
         rv.sKey = "r";
         rv.fTarget = 0;
         p.RespVars.Add(std::move(rv), "r");
       },
       4},
      {"a factor's flag and level count",
       [](Problem& p) {
         Factor f;
         f.sKey = "f";
         p.Factors.Add(std::move(f), "f");
       },
       4},
      {"the code of a factor's last level",
       [](Problem& p) {
         Factor f;
         f.sKey = "f";
         f.Levels.Add(Level{});
         p.Factors.Add(std::move(f), "f");
       },
       4},
      {"a study's counts of notes and own factors and responses",
       [](Problem& p) {
         Study s;
         s.sKey = "s";
         p.AddStudy(std::move(s));
       },
       6},
  };
  for (const Case& c : cases) {
    Problem p;
    p.sName.clear();
    c.make(p);
    std::string bytes = SavedBytes(p, dir);
    for (std::size_t cut = 1; cut <= c.numbers; ++cut) {
      ui->messages.clear();
      EXPECT_EQ(LoadFailureOf(bytes.substr(0, bytes.size() - cut)), "") << c.what << ", cut by " << cut;
      // The numbers were 0: the problem read is the one saved.
      Problem q;
      ASSERT_TRUE(q.Load(dir / "load.KSW"));
      EXPECT_EQ(SavedBytes(q, dir, "again.KSW"), bytes) << c.what << ", cut by " << cut;
    }
    // One byte more takes a string's text or count: that is a damaged file.
    EXPECT_NE(LoadFailureOf(bytes.substr(0, bytes.size() - c.numbers - 1)), "") << c.what;
  }
}

// Input that is no problem file is refused on its first bytes, however long
// it would go on.
TEST_F(DamagedFile, EndlessInputIsRefusedByItsFirstBytes) {
  Problem q;
  EXPECT_FALSE(q.Load("/dev/zero"));
  EXPECT_EQ(q.LoadFailure(), NOT_KSW);
}

TEST_F(DamagedFile, CorruptedBytesNeverCrashAndFailOnlyWithAStageText) {
  std::string bytes = RichBytes();
  const std::vector<std::string> texts = {NOT_KSW, PARAMETERS, RESPVARS, FACTORS, STUDIES,
                                          "File version is not recognised by this program"};
  int refused = 0, loaded = 0;
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    for (unsigned char value : {0x00, 0x7F, 0x80, 0xFF}) {
      std::string damaged = bytes;
      damaged[at] = static_cast<char>(value);
      WriteFile(dir / "bad.KSW", damaged);
      Problem p;
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
TEST_F(DamagedFile, ImpossibleCountsAreRefusedAtTheirStage) {
  std::string bytes = RichBytes();
  const std::pair<std::size_t, const char*> stages[] = {{8, RESPVARS}, {10, FACTORS}, {12, STUDIES}};
  for (auto [offset, text] : stages)
    for (int count : {0x7FFF, -1})
      EXPECT_EQ(LoadFailureOf(With(bytes, offset, count)), text) << offset << " " << count;
}

TEST_F(DamagedFile, RunCountsThatTheDataCannotFillAreRefusedBeforeAllocation) {
  auto p = Sample("PlasmaEtch");
  std::string bytes = SavedBytes(*p, dir);
  auto loaded = Reloaded(*p);
  const Study& s = loaded->Studies(1);
  // iNumRuns follows the design name and iDesFlag.
  std::size_t runsAt = static_cast<std::size_t>(s.lDesnPtr - 1) + 2 + s.sDesignName.size() + 2;
  ASSERT_EQ(bytes[runsAt], 8);
  for (int runs : {32767, 9, -5}) EXPECT_EQ(LoadFailureOf(With(bytes, runsAt, runs)), STUDIES) << runs;
}

TEST_F(DamagedFile, AStringLengthPastTheEndIsAReadFailure) {
  auto p = Sample("PlasmaEtch");
  std::string bytes = SavedBytes(*p, dir);
  std::size_t at = bytes.find(std::string("\x09\0Etch rate", 11));  // the length of the response's name
  EXPECT_EQ(LoadFailureOf(With(bytes, at, 0x7FFF)), RESPVARS);
}

}  // namespace
}  // namespace kestrow
