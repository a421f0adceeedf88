// The check list: the order of choice, a refused set leaving the ticks, the
// fifty-row limit, and the texts and keys it gives back.
#include <gtest/gtest.h>

#include "core/CheckList.h"
#include "core/TestSupport.h"

namespace kestrow {
namespace {

TEST(CheckList, TicksKeepTheirOrderOfChoiceAndARefusalChangesNothing) {
  CheckList list;
  list.Init();
  list.Add("Alpha", "a", false);
  list.Add("Beta", "b", true);
  list.Add("Gamma", "c", false);
  EXPECT_EQ(list.OrderOfChoice(), std::vector<int>{1});
  std::string complaint;
  ASSERT_TRUE(list.Accept({2, 0, 2}, complaint));
  EXPECT_EQ(list.OrderOfChoice(), (std::vector<int>{2, 0}));
  EXPECT_EQ(list.GetCheckedString(), "Alpha, Gamma");
  EXPECT_EQ(list.GetCheckedKeys(), "a,c");
  EXPECT_TRUE(list.IsKeyChecked("c"));
  EXPECT_FALSE(list.IsKeyChecked("b"));
  EXPECT_FALSE(list.IsKeyChecked("zz"));
  list.check = [](const std::vector<bool>& ticks) { return ticks[1] ? std::string() : std::string("tick Beta"); };
  EXPECT_FALSE(list.Accept({0}, complaint));
  EXPECT_EQ(complaint, "tick Beta");
  EXPECT_EQ(list.GetCheckedKeys(), "a,c");
  for (int i = 3; i < CheckList::MAX_ROWS; ++i) EXPECT_TRUE(list.Add("x", "k" + std::to_string(i), false));
  EXPECT_FALSE(list.Add("one too many", "z", true));
  EXPECT_EQ(list.Rows().size(), 50u);
}

TEST(CheckList, WithoutAWindowShowIsCancel) {
  test::ScopedUi ui;
  CheckList list;
  list.Init();
  list.Add("Alpha", "a", true);
  EXPECT_FALSE(list.Show());  // no answer queued
  EXPECT_TRUE(list.IsKeyChecked("a"));
  ui->checkListAnswers.push_back({});
  EXPECT_TRUE(list.Show());
  EXPECT_FALSE(list.IsKeyChecked("a"));
}

}  // namespace
}  // namespace kestrow
