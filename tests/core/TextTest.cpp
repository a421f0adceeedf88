// The shared text helpers: numbers, targets, tokens, paths, the code page and
// the command line.
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <utility>

#include "core/CodePage.h"
#include "core/CommandLine.h"
#include "core/Globals.h"
#include "core/Paths.h"
#include "core/Sentinels.h"
#include "core/Text.h"

namespace kestrow {
namespace {

TEST(Numeric, AcceptsSignDigitsOnePointAndExponent) {
  for (const char* yes : {"1", " -2.5 ", "+.5", "5.", "1e5", "1.5E-3", "-0", "007"}) EXPECT_TRUE(IsNumeric(yes)) << yes;
  for (const char* no : {"", " ", ".", "-", "1.2.3", "1e", "1e+", "e5", "1,5", "0x10", "1 2", "inf", "nan", "12a"})
    EXPECT_FALSE(IsNumeric(no)) << no;
}

TEST(Numeric, ParsesAsFloatAndRefusesWhatIsNoNumber) {
  EXPECT_EQ(ParseFloat(" 2.5 "), 2.5f);
  EXPECT_EQ(ParseFloat("+1e3"), 1000.0f);
  EXPECT_EQ(ParseFloat("abc"), BAD_NUMBER);
  EXPECT_EQ(ParseFloat("1e50"), BAD_NUMBER);  // beyond a float
  EXPECT_EQ(ParseFloat("1e-60"), 0.0f);       // below the smallest float
}

TEST(Numeric, ValReadsTheLeadingNumber) {
  EXPECT_EQ(Val("  12.5mm"), 12.5);
  EXPECT_EQ(Val("Low"), 0.0);
  EXPECT_EQ(Val("-3e2x"), -300.0);
  EXPECT_EQ(Val("4e"), 4.0);
}

TEST(ShortestText, UsesTheFewestDigitsThatReadBackAndAnExponentOutsideMinusFiveToFourteen) {
  const std::pair<float, const char*> cases[] = {
      {0.1f, "0.1"},         {1.0f / 3.0f, "0.33333334"}, {100.0f, "100"},        {-2.5f, "-2.5"},
      {0.0f, "0"},           {-0.0f, "0"},                {MISSING_VALUE, "-999999900"},
      {1.5e-5f, "0.000015"}, {1.0e-6f, "1E-06"},          {1.0e14f, "100000000000000"},
      {1.5e20f, "1.5E+20"},  {-2.0e15f, "-2E+15"},        {1.0e-30f, "1E-30"}};
  for (auto [x, text] : cases) EXPECT_EQ(ShortestText(x), text) << x;
}

TEST(ShortestText, EveryTextReadsBackAsTheSameFloat) {
  for (std::uint32_t bits = 0x00800000u; bits < 0x7F000000u; bits += 0x00F3A1B7u) {
    float x = std::bit_cast<float>(bits);
    for (float v : {x, -x}) EXPECT_EQ(ParseFloat(ShortestText(v)), v) << ShortestText(v);
  }
}

TEST(Target, ParsesMaxMinEmptyNumbersAndNonsense) {
  std::string t = "  maximum ";
  EXPECT_EQ(ParseTarget(t), TARGET_MAX);
  EXPECT_EQ(t, "maximum");  // the caller's text is left trimmed
  const std::pair<std::string, float> cases[] = {
      {"Min", TARGET_MIN}, {"", MISSING_VALUE}, {"12.5", 12.5f}, {"ma", BAD_NUMBER}};
  for (auto [text, target] : cases) EXPECT_EQ(ParseTarget(text), target) << text;
}

TEST(Target, ToTextNamesTheSentinelsAndZeroesTinyValues) {
  const std::pair<float, const char*> cases[] = {
      {TARGET_MAX, "MAXimize"}, {TARGET_MIN, "MINimize"}, {MISSING_VALUE, ""},        {BAD_NUMBER, "!"},
      {9.0e-6f, "0"},           {-9.0e-6f, "0"},          {1.0e-5f, "0.00001"}, {95.5f, "95.5"}};
  for (auto [x, text] : cases) EXPECT_EQ(TargetToText(x), text) << x;
}

TEST(Tokens, PopTokenAndPopBarCutTheFrontOff) {
  std::string s = "AB,CD,,E";
  EXPECT_EQ(PopToken(s), "AB");
  EXPECT_EQ(s, "CD,,E");
  EXPECT_EQ(PopToken(s), "CD");
  EXPECT_EQ(PopToken(s), "");
  EXPECT_EQ(PopToken(s), "E");
  EXPECT_EQ(s, "");
  s = "*|-1.414|0";
  EXPECT_EQ(PopBar(s), "*");
  EXPECT_EQ(PopBar(s), "-1.414");
  EXPECT_EQ(PopBar(s), "0");
}

TEST(Paths, JoinPathFollowsItsFourRules) {
  EXPECT_EQ(JoinPath("/data/", "a.KSW"), "/data/a.KSW");
  EXPECT_EQ(JoinPath("/data", "a.KSW"), "/data/a.KSW");
  EXPECT_EQ(JoinPath("", "a.KSW"), "a.KSW");
  EXPECT_EQ(JoinPath("/data/", ""), "/data/");  // the folder as it was given
  EXPECT_EQ(JoinPath("/data", "/a.KSW"), "/data/a.KSW");
  EXPECT_EQ(JoinPath("/data//", "a"), "/data//a");  // only one separator is dropped
}

TEST(Paths, SplitOnEverySeparatorOfOldAndNewPaths) {
  EXPECT_EQ(GetFPath("/home/eng/Plasma etch.KSW"), "/home/eng");
  EXPECT_EQ(GetFName("/home/eng/Plasma etch.KSW"), "Plasma etch.KSW");
  EXPECT_EQ(GetFExt("/home/eng/Plasma etch.KSW"), "KSW");
  EXPECT_EQ(GetFPath("C:\\KEST\\SAMPDATA\\demo.ksw"), "C:\\KEST\\SAMPDATA");
  EXPECT_EQ(GetFName("C:demo.ksw"), "demo.ksw");
  EXPECT_EQ(GetFExt("/a.b/noext"), "");
  EXPECT_EQ(GetFPath("plain.KSW"), "");
}

TEST(CodePage, RoundTripsEveryByteMapsTheEuroAndMarksWhatHasNoCode) {
  std::string all;
  for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
  EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
  EXPECT_EQ(Cp1252ToUtf8("\x80"), "\xE2\x82\xAC");
  EXPECT_EQ(Utf8ToCp1252("Caf\xC3\xA9 \xE2\x82\xAC"), "Caf\xE9 \x80");
  EXPECT_EQ(Utf8ToCp1252("\xCE\xA9 \xE6\xBC\xA2"), "? ?");  // Greek omega, a CJK character
  EXPECT_EQ(Utf8ToCp1252("a\xFF" "b"), "a?b");               // a byte that is no UTF-8
}

TEST(CommandLine, TakesTheWholeLineAsOneFileNameAndFindsAdminInAnyCase) {
  TakeCommandLine("\"/data/my plant.KSW\"");
  EXPECT_EQ(gsCommandFile, "/data/my plant.KSW");
  EXPECT_FALSE(gbAdmin);

  TakeCommandLine("-ADMIN /data/Run.KSW");
  EXPECT_TRUE(gbAdmin);
  EXPECT_EQ(gsCommandFile, "/data/Run.KSW");

  TakeCommandLine("-admin");
  EXPECT_TRUE(gbAdmin);
  EXPECT_EQ(gsCommandFile, "");

  // Quotes go only at the two ends, so a quoted name before the switch keeps
  // its closing quote.
  TakeCommandLine("\"/data/a b.KSW\" -admin");
  EXPECT_TRUE(gbAdmin);
  EXPECT_EQ(gsCommandFile, "/data/a b.KSW\"");
}

}  // namespace
}  // namespace kestrow
