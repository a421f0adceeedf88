// The number formatters of the analysis tables: significant figures, fixed
// decimals and p values, with the empty cell.
#include <gtest/gtest.h>

#include <cmath>

#include "core/Formatters.h"
#include "core/Sentinels.h"

namespace kestrow {
namespace {

TEST(Formatters, SignificantFiguresRoundHalfToEvenAndDropTinyResults) {
  EXPECT_EQ(FormatSF(4, 3.14159f), "3.142");
  EXPECT_EQ(FormatSF(2, 125.0f), "120");
  EXPECT_EQ(FormatSF(4, 0.000004f), "0");
  EXPECT_EQ(FormatSF(4, 0.0f), "0");
  EXPECT_EQ(FormatSF(4, MISSING_VALUE), "");
  // Figures that no rounding can take print as they are.
  EXPECT_EQ(FormatSF(4, INFINITY), "Inf");
  EXPECT_EQ(FormatSF(4, -INFINITY), "-Inf");
  EXPECT_EQ(FormatSF(4, NAN), "NaN");
}

TEST(Formatters, DecimalsAreFixedWithoutGroupingAndRoundTheWrittenNumber) {
  EXPECT_EQ(FormatDecimals(3, 2.5f), "2.500");
  EXPECT_EQ(FormatDecimals(0, 1234567.0f), "1234567");
  EXPECT_EQ(FormatDecimals(2, 2.675f), "2.68");   // the float lies just below 2.675
  EXPECT_EQ(FormatDecimals(2, -9.996f), "-10.00");
  EXPECT_EQ(FormatDecimals(4, 0.00012345f), "0.0001");
  EXPECT_EQ(FormatDecimals(2, -0.001f), "0.00");
  EXPECT_EQ(FormatDecimals(1, 1.0e20f), "100000000000000000000.0");
  EXPECT_EQ(FormatDecimals(3, MISSING_VALUE), "");
}

TEST(Formatters, PValuesBelowTheLastDecimalPrintAsLessThan) {
  EXPECT_EQ(FormatP(3, 0.0004f), "<0.001");
  EXPECT_EQ(FormatP(3, 0.001f), "0.001");
  EXPECT_EQ(FormatP(2, 0.01f), "0.01");  // the float of 0.01 lies below 0.01
  EXPECT_EQ(FormatP(4, 0.04567f), "0.0457");
  EXPECT_EQ(FormatP(0, 0.5f), "<1");
  EXPECT_EQ(FormatP(3, MISSING_VALUE), "");
  EXPECT_EQ(FormatP(3, NAN), "");  // no probability: not "<0.001"
}

}  // namespace
}  // namespace kestrow
