// Cue cards: check values, edited cards, missing tags, and the reset.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/CueCards.h"
#include "core/Paths.h"
#include "core/TestSupport.h"

namespace kestrow {
namespace {

using test::ReadFile;
using test::TempDir;
using test::WriteFile;

TEST(CueCards, TheCheckValueWeighsEachCharacterByItsPositionAndIsStoredInFourHexDigits) {
  EXPECT_EQ(CueCardCheckValue(""), 0);
  EXPECT_EQ(CueCardCheckValue("AB"), (65 - 31) * 1 + (66 - 31) * 2);
  EXPECT_EQ(CueCardCheckValue("\t"), 9 - 31);
  TempDir dir;
  std::string file = dir / "c.TXT";
  // Title "AB" sums to 104 = 0x0068, and one text line "A" adds 34: 0x008A.
  WriteFile(file, "!T,008A\nAB\nA\n!EOF\n");
  EXPECT_FALSE(ReadCueCard(file, "T").edited);
  WriteFile(file, "!T,008B\nAB\nA\n!EOF\n");
  EXPECT_TRUE(ReadCueCard(file, "T").edited);
}

TEST(CueCards, EveryShippedCardIsTrueToItsCheckValue) {
  std::string file = std::string(KESTROW_RESOURCES) + "/CueCards.TXT";
  std::istringstream in(ReadFile(file));
  int cards = 0;
  for (std::string line; std::getline(in, line);) {
    std::size_t comma = line.find(',');
    if (line.rfind('!', 0) != 0 || comma == std::string::npos) continue;  // text, or "!EOF"
    CueCard card = ReadCueCard(file, line.substr(1, comma - 1));
    EXPECT_TRUE(card.found && !card.edited) << line;
    ++cards;
  }
  EXPECT_GE(cards, 40);
  EXPECT_LE(cards, 50);
  for (const char* tag : {"DW01", "DW01b", "DW01c", "DW02", "DW03", "DW03n", "DW04", "DW04n", "DW05", "DW05n", "DW06",
                          "DW07", "DW07a", "DW08", "DW09", "DW10", "DW10a", "DW11", "DW11a", "DW11b", "DW12", "DW13",
                          "DW14", "frmAPR", "frmCalculator", "Data", "ANOVA"})
    EXPECT_TRUE(ReadCueCard(file, tag).found) << tag;
}

TEST(CueCards, AnEditedCardSaysSoUntilTheResetAndAMissingTagShowsNothing) {
  TempDir dir;
  std::string file = dir / "CueCards.TXT";
  WriteFile(file, "!ONE,0000\nTitle\nFirst line\n\nSecond paragraph\n!TWO,0000\nOther\nText\n!EOF\n");
  std::string error;
  ASSERT_TRUE(AdminResetCueCards(file, error)) << error;
  CueCard card = ReadCueCard(file, "ONE");
  ASSERT_TRUE(card.found);
  EXPECT_EQ(card.title, "Title");
  EXPECT_EQ(card.text, "First line \n\n Second paragraph ");

  std::string text = ReadFile(file);
  text.replace(text.find("First"), 5, "Frist");  // same letters, other places
  WriteFile(file, text);
  EXPECT_TRUE(ReadCueCard(file, "ONE").edited);
  EXPECT_FALSE(ReadCueCard(file, "TWO").edited);
  EXPECT_FALSE(ReadCueCard(file, "THREE").found);
  ASSERT_TRUE(AdminResetCueCards(file, error));
  EXPECT_FALSE(ReadCueCard(file, "ONE").edited);
  EXPECT_EQ(ReadCueCard(file, "ONE").text.substr(0, 5), "Frist");
}

// A file without one card is no cue-card file: the reset refuses it and
// leaves it; a card that cannot be shown is said, by its cause.
TEST(CueCards, AFileWithoutCardsIsNotRewrittenAndAMissingCardIsSaid) {
  TempDir dir;
  std::string file = dir / "CueCards.TXT";
  WriteFile(file, "some notes\nof no card\n");
  std::string error;
  EXPECT_FALSE(AdminResetCueCards(file, error));
  EXPECT_NE(error.find("no cue cards"), std::string::npos) << error;
  EXPECT_EQ(ReadFile(file), "some notes\nof no card\n");

  SetProgramFolder(dir.str());
  EXPECT_NE(CueCardComplaint("ONE").find("no cue card \"ONE\""), std::string::npos);
  std::filesystem::remove(file);
  EXPECT_NE(CueCardComplaint("ONE").find("missing or unreadable"), std::string::npos);
  SetProgramFolder("");
}

}  // namespace
}  // namespace kestrow
