// The run order: the seeded generator and its permutations, randomising a
// study, the Yates order, and the rules of the run-order dialog.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "core/Language.h"
#include "core/Startup.h"
#include "core/TestSupport.h"
#include "designs/Random.h"
#include "designs/SeqForm.h"

namespace kestrow {
namespace {

bool IsPermutation(std::vector<int> v) {
  std::sort(v.begin(), v.end());
  for (std::size_t i = 0; i < v.size(); ++i)
    if (v[i] != static_cast<int>(i) + 1) return false;
  return true;
}

// The recurrence worked by hand: 0 -> 1 -> 966 -> 966 * 965 + 1 mod 65536 = 14687;
// and 63974 * 965 + 1 leaves 65535, the seed at which a draw gives 1.0.
TEST(RandomGenerator, SixteenBitRecurrenceReachesOnePointZero) {
  Random r;
  r.Init(0x10000, 1);  // only the low 16 bits count
  EXPECT_EQ(r.GetRnd(), static_cast<float>(1 / 65535.0));
  r.GetRnd();
  r.GetRnd();
  EXPECT_EQ(r.Seed, 14687);
  r.Init(63974, 1);
  EXPECT_EQ(r.GetNextInt1ToN(6), 7);
  EXPECT_EQ(r.Seed, 65535);
}

// One cycle of the generator's permutation, as it is drawn.
std::vector<int> Cycle(Random& r) {
  std::vector<int> cycle;
  for (int i = 0; i < r.Count; ++i) cycle.push_back(r.GetNextInSequence());
  return cycle;
}

TEST(RandomGenerator, EachCycleIsAPermutationEvenWhenASwapFallsBeyondTheTable) {
  Random r, twin;
  r.Init(12345, 7);
  for (int c = 0; c < 6; ++c) {
    EXPECT_TRUE(IsPermutation(Cycle(r)));
    EXPECT_EQ(r.Pointer, 0);
  }
  // The first draw of this cycle gives Count + 1: that swap is left out, the
  // table stays a permutation, and all four draws are still made.
  r.Init(63974, 5);
  twin.Init(63974, 5);
  std::vector<int> cycle = Cycle(r);
  EXPECT_EQ(cycle[0], 1);
  EXPECT_TRUE(IsPermutation(cycle));
  for (int i = 0; i < 4; ++i) twin.GetRnd();
  EXPECT_EQ(r.Seed, twin.Seed);
}

Study BareStudy(int runs, int reps) {
  Study s;
  s.StudyRespVars.Add(StudyRespVar{"v1"});
  s.iNumRuns = static_cast<std::int16_t>(runs);
  s.iReps = static_cast<std::int16_t>(reps);
  s.SetDataArray();
  return s;
}

std::vector<int> Order(const Study& s, int rep) {
  std::vector<int> v;
  for (int p = 1; p <= s.iNumRuns; ++p) v.push_back(s.GetSeq(p, rep));
  return v;
}

TEST(RunOrder, RandomiseGivesEveryOrderOfEachReplicationAlike) {
  gPlatformRandom.seed(2024);
  Study s = BareStudy(3, 3000);
  s.Randomise();
  std::map<std::vector<int>, int> seen;
  for (int rep = 1; rep <= s.iReps; ++rep) ++seen[Order(s, rep)];
  ASSERT_EQ(seen.size(), 6u);  // the six orders of three runs, about 500 times each
  for (const auto& [order, n] : seen) EXPECT_TRUE(IsPermutation(order) && n > 400 && n < 600) << n;
  s.UnRandomise();
  for (int rep = 1; rep <= s.iReps; ++rep) ASSERT_EQ(Order(s, rep), (std::vector<int>{1, 2, 3}));

  std::mt19937 before = gPlatformRandom;
  Study one = BareStudy(1, 2);
  one.SetSeq(1, 2, 0);
  one.Randomise();
  EXPECT_EQ(Order(one, 2), std::vector<int>{1});
  EXPECT_TRUE(gPlatformRandom == before);  // a single run draws nothing
}

TEST(RunOrder, YatesOrderVariesTheFirstFactorFastestAfterTheCentrePoints) {
  Study s;
  s.Factors.Add(Item{"f1"});
  s.Factors.Add(Item{"f2"});
  // A two-level factor crossed with a three-level one, out of order, and two centre points.
  for (auto [a, b] : {std::pair{2, 1}, {1, 3}, {0, 0}, {1, 1}, {2, 3}, {1, 2}, {2, 2}, {0, 0}}) {
    Treatment t;
    t.SetLevel(1, a);
    t.SetLevel(2, b);
    s.Treatments.Add(t);
  }
  s.iNumRuns = 8;
  s.SetYatesOrder();
  std::vector<int> yates;
  for (int p = 0; p <= 9; ++p) yates.push_back(s.GetYatesRun(p));
  EXPECT_EQ(yates, (std::vector<int>{0, 3, 8, 4, 1, 6, 7, 2, 5, 0}));
}

class RunOrderForm : public ::testing::Test {
 protected:
  void SetUp() override { OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English"); }
  void TearDown() override { CloseLanguage(); }
  void Click(std::initializer_list<int> rows) {
    for (int t : rows) form.RowClick(t);
  }
  test::ScopedUi ui;
  std::unique_ptr<Problem> problem = test::Sample("PlasmaEtch");  // 8 runs, 2 reps
  Study& study = problem->Studies(1);
  SeqForm form{study};
};

TEST_F(RunOrderForm, EditModeTypesTheOrderOneClickAtATime) {
  form.cmdEdit_Click();
  EXPECT_FALSE(form.ScrollEnabled() || form.PropagateEnabled());
  EXPECT_EQ(Order(study, 2), std::vector<int>(8, 0));
  Click({3, 1, 3});  // the second click on 3 does nothing
  EXPECT_EQ(form.SeqCell(3), "1");
  EXPECT_EQ(form.SeqCell(1), "2");
  EXPECT_EQ(form.SeqCell(2), "");
  Click({8, 7, 6, 5, 4});
  EXPECT_FALSE(form.ScrollEnabled());
  Click({2, 2});
  EXPECT_TRUE(form.ScrollEnabled() && form.PropagateEnabled());
  EXPECT_EQ(Order(study, 1), (std::vector<int>{3, 1, 8, 7, 6, 5, 4, 2}));

  EXPECT_FALSE(form.cmdOK_Click());  // rep 2 is still empty

  form.vsbRep_Change(0);  // below 1 wraps to the last rep, and typing starts again there
  EXPECT_EQ(form.iRep(), 2);
  EXPECT_EQ(form.iNextPos(), 1);
  form.RowClick(5);
  EXPECT_EQ(study.GetSeq(1, 2), 5);
}

TEST_F(RunOrderForm, ScrambleLeavesEditModeAndDiscardsTheTypedOrder) {
  form.cmdEdit_Click();
  Click({8, 7});
  Study expected = study;
  gPlatformRandom.seed(11);
  expected.Randomise();
  gPlatformRandom.seed(11);
  form.cmdScramble_Click();
  EXPECT_EQ(form.iNextPos(), 0);
  EXPECT_TRUE(form.ScrollEnabled() && form.PropagateEnabled());
  form.RowClick(1);  // no longer typing
  for (int rep = 1; rep <= 2; ++rep) EXPECT_EQ(Order(study, rep), Order(expected, rep));
}

}  // namespace
}  // namespace kestrow
