// The rules of the study dialog that the window tests leave out: what a copy
// of a study starts with, and the refusal of a copy that cannot stand.
#include <gtest/gtest.h>

#include "core/Globals.h"
#include "designs/DesignFixture.h"
#include "core/ProblemJson.h"
#include "designs/StudyForm.h"

namespace kestrow {
namespace {

class StudyFormTest : public test::DesignFixture {
 protected:
  void SetUp() override {
    DesignFixture::SetUp();
    ReplaceProblem(test::Sample("CatalystTrial"));
  }
};

// The copy is a new study of the same design: none of the original's
// observations or notes, a fresh random order, the original untouched.
TEST_F(StudyFormTest, ACopyOfAStudyStartsWithoutTheOriginalsData) {
  const Study before = gProblem->Studies(1);
  ASSERT_FALSE(before.IsArrayEmpty());
  StudyForm form;
  ASSERT_EQ(form.Begin(2, before.sKey), "");
  form.txtName = "Second batch";
  ASSERT_TRUE(form.StudyOK().text.empty());
  ASSERT_EQ(gProblem->Studies.Count(), 2);
  const Study& copy = gProblem->Studies(2);
  EXPECT_EQ(copy.iNumRuns, before.iNumRuns);
  EXPECT_EQ(copy.iReps, before.iReps);
  EXPECT_TRUE(copy.DoesArrayExist());
  EXPECT_TRUE(copy.IsArrayEmpty());
  EXPECT_TRUE(copy.Notes.Empty());
  EXPECT_EQ(gProblem->Studies(1).GetData(1, 1, 1), before.GetData(1, 1, 1));
  EXPECT_EQ(gProblem->Studies(1).Notes.Count(), before.Notes.Count());
}

// A locked study keeps its own copy of a factor deleted from the problem; an
// unlocked copy of it would name a factor that no longer exists.
TEST_F(StudyFormTest, ALockedStudyWhoseFactorWasDeletedIsNotCopied) {
  Study& s = gProblem->Studies(1);
  s.LockMe();
  const std::string key = s.GetFactorKey(1);
  const std::string name = gProblem->Factors.Find(key)->sName;
  gProblem->Factors.Remove(gProblem->Factors.IndexOf(key));
  const std::string before = ProblemToJson(*gProblem);
  StudyForm form;
  std::string refusal = form.Begin(2, s.sKey);
  EXPECT_NE(refusal.find("\"" + name + "\""), std::string::npos) << refusal;
  EXPECT_EQ(ProblemToJson(*gProblem), before);
}

}  // namespace
}  // namespace kestrow
