// The rules of the quick study that the window test leaves out.
#include <gtest/gtest.h>

#include "designs/DesignFixture.h"
#include "designs/QuickForm.h"

namespace kestrow {
namespace {

class QuickFormTest : public test::DesignFixture {};

// A blank between two levels is a level left out by mistake: it is said,
// naming the factor, and not passed over; blanks after the last level are
// only the unused columns.
TEST_F(QuickFormTest, ABlankLevelBetweenTwoLevelsIsSaid) {
  QuickForm form;
  form.grdFactors.resize(1);
  form.grdFactors[0].name = "Oven";
  form.grdFactors[0].levels = {"180", "", "220", "", ""};
  EXPECT_EQ(form.VetFactors(), SubstituteCopy(GetText("QCKerrb"), "Oven"));
  form.grdFactors[0].levels = {"180", "200", "220", "", ""};
  EXPECT_EQ(form.VetFactors(), "");
}

}  // namespace
}  // namespace kestrow
