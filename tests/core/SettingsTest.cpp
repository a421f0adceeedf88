// The settings file: defaults, clamps, the two spellings of one colour, the
// recent list and the title macros.
#include <gtest/gtest.h>

#include <array>

#include "core/IniFile.h"
#include "core/Settings.h"
#include "core/TestSupport.h"

namespace kestrow {
namespace {

using namespace test;

TEST(IniFile, SectionsAndKeysIgnoreCaseAndAWriteKeepsTheRest) {
  TempDir dir;
  std::string f = dir / "a.ini";
  WriteFile(f, "; a comment\r\n[General]\r\nGridMode=2\r\nName = \"quoted\"\r\n\r\n[Other]\r\nX=1\r\n");
  EXPECT_EQ(ReadINI(f, "general", "GRIDMODE", "9"), "2");
  EXPECT_EQ(ReadINI(f, "General", "Name", ""), "quoted");
  EXPECT_EQ(ReadINI(f, "General", "Missing", "dflt"), "dflt");
  EXPECT_EQ(ReadINI(dir / "none.ini", "General", "X", "d"), "d");
  ASSERT_TRUE(WriteINI(f, "GENERAL", "gridmode", "0"));
  ASSERT_TRUE(WriteINI(f, "General", "New", "v"));
  ASSERT_TRUE(WriteINI(f, "Third", "K", "w"));
  std::string text = ReadFile(f);
  EXPECT_NE(text.find("; a comment"), std::string::npos);
  EXPECT_NE(text.find("gridmode=0"), std::string::npos);
  EXPECT_EQ(text.find("GridMode=2"), std::string::npos);
  EXPECT_LT(text.find("New=v"), text.find("[Other]"));  // into its own section
  EXPECT_EQ(ReadINI(f, "Other", "X", ""), "1");
  EXPECT_EQ(ReadINI(f, "Third", "K", ""), "w");
}

// The settings file of a test, in a scratch folder.
class SettingsFile : public ScratchTest {
 protected:
  std::string f = dir / "KestWin.INI";
};

// One key of each kind: whole numbers, a negative one, text, colours, the
// numbered headers, floats, and keys whose default is empty.
TEST_F(SettingsFile, AFirstRunWritesEveryKeyWithItsDefault) {
  LoadSettings(f);
  ASSERT_TRUE(SaveSettings(f));
  const char* const written[][3] = {{"General", "GridMode", "1"},         {"General", "ReportNumber", "-1"},
                                    {"General", "Language", "English"},   {"Colors", "DataWindow", "&HC0C0C0"},
                                    {"Graphs", "1Header", "Date: @D||@C"}, {"Graphs", "PrinterMargins", "5"},
                                    {"Graphs", "JPGQuality", "90"}};
  for (auto [section, key, value] : written) EXPECT_EQ(ReadINI(f, section, key, ""), value) << key;
  EXPECT_NE(ReadINI(f, "RecentList", "4File", "absent"), "absent");
  EXPECT_NE(ReadINI(f, "Devices", "LastDevice", "absent"), "absent");
}

TEST_F(SettingsFile, OutOfRangeValuesTakeTheirClampsAndGarbageNeverFails) {
  WriteFile(f,
            "[General]\nGridMode=7\nDefaultReps=31\nNumSF=abc\nReportNumber=1000\nTreeIcons=5\n"
            "Navigation=3\nReportColWidth=\nTextEd=\nSplitX=99999\n"
            "[Graphs]\nPrinterMargins=25\nHdrLinePercent=xyz\nJPGQuality=100\n"
            "[Colors]\nDataGrid=&HZZZ\nDataWindow=&HFF\n");
  LoadSettings(f);
  EXPECT_EQ(gSettings.GridMode, 0);
  EXPECT_EQ(gSettings.DefaultReps, 2);
  EXPECT_EQ(gSettings.NumSF, 4);  // garbage reads as 0, which the clamp turns to 4
  EXPECT_EQ(gSettings.ReportNumber, 1);
  EXPECT_TRUE(gSettings.TreeIcons);
  EXPECT_EQ(gSettings.Navigation, 1);
  EXPECT_EQ(gSettings.ReportColWidth, 10);
  EXPECT_EQ(gSettings.TextEd, "");  // present but empty stays empty
  EXPECT_EQ(gSettings.SplitX, 32767);
  EXPECT_EQ(gSettings.PrinterMargins, 4.0f);  // deliberately not the default of 5
  EXPECT_EQ(gSettings.HdrLinePercent, 2.0f);
  EXPECT_EQ(gSettings.JPGQuality, 90);
  EXPECT_EQ(gSettings.DataGrid, 0x00E0E0E0u);  // not a colour: the default stands
  EXPECT_EQ(gSettings.DataWindow, 0xFFu);
  ASSERT_TRUE(SaveSettings(f));
  EXPECT_EQ(ReadINI(f, "General", "GridMode", ""), "0");  // and is written back as read
}

TEST_F(SettingsFile, AMissingKeyReadsAsItsDefault) {
  WriteFile(f, "[Graphs]\nKSTprinter=PDF\n");
  LoadSettings(f);
  EXPECT_EQ(gSettings.PrinterMargins, 5.0f);
  EXPECT_EQ(gSettings.KSTprinter, "PDF");
}

TEST_F(SettingsFile, TheExtrapolatedColourIsReadUnderOneSpellingAndWrittenUnderTheOther) {
  WriteFile(f, "[Colors]\nExtrapolatedData=&H123456\n");
  LoadSettings(f);
  EXPECT_EQ(gSettings.ExtrapolatedData, 0x003030FFu);  // the right spelling is not read
  WriteFile(f, "[Colors]\nExtraoplatedData=&H123456\n");
  LoadSettings(f);
  EXPECT_EQ(gSettings.ExtrapolatedData, 0x123456u);
  gSettings.ExtrapolatedData = 0xABCDEF;
  ASSERT_TRUE(SaveSettings(f));
  EXPECT_EQ(ReadINI(f, "Colors", "ExtrapolatedData", ""), "&HABCDEF");
  EXPECT_EQ(ReadINI(f, "Colors", "ExtraoplatedData", ""), "&H123456");
}

TEST(RecentList, NewPathsGoOnTopAndAKnownOneMovesUp) {
  ScopedUi ui;
  using List = std::array<std::string, 5>;  // slot 0 is unused
  for (const char* p : {"/a.KSW", "/b.KSW", "/c.KSW", "/d.KSW", "/e.KSW"}) AddToRecentList(p);
  EXPECT_EQ(gSettings.RecentFile, (List{"", "/e.KSW", "/d.KSW", "/c.KSW", "/b.KSW"}));  // /a.KSW dropped off
  AddToRecentList("/c.KSW");
  EXPECT_EQ(gSettings.RecentFile, (List{"", "/c.KSW", "/e.KSW", "/d.KSW", "/b.KSW"}));
  AddToRecentList("/C.KSW");  // the comparison is exact
  EXPECT_EQ(gSettings.RecentFile, (List{"", "/C.KSW", "/c.KSW", "/e.KSW", "/d.KSW"}));
  EXPECT_EQ(RecentMenuCaption(1), "&1  /C.KSW");
  EXPECT_EQ(RecentFileFromCaption(RecentMenuCaption(2)), "/c.KSW");
  gSettings.RecentFile[3].clear();
  EXPECT_EQ(RecentMenuCaption(3), "");
}

TEST(TitleMacros, ExpandEachLetterInEitherCaseAndKeepOthers) {
  ScopedUi ui;
  gSettings.CompanyName = "Acme Labs";
  TitleContext c{"2026-11-21", "/data/plant/etch.KSW", "Plasma etch", "8 Runs", "Screening"};
  EXPECT_EQ(ExpandTitleMacros("Date: @D|@c|@F", c), "Date: 2026-11-21|Acme Labs|etch.KSW");
  EXPECT_EQ(ExpandTitleMacros("@p / @s (@g) @n", c), "Plasma etch / Screening (8 Runs) /data/plant/etch.KSW");
  EXPECT_EQ(ExpandTitleMacros("@V", c).rfind("Kestrow for Windows Version ", 0), 0u);
  EXPECT_EQ(ExpandTitleMacros("a@xb @@ end@", c), "a@xb @@ end@");
}

}  // namespace
}  // namespace kestrow
