// The language database: lookups, the English fallback, substitution, and
// the administrator's dictionary.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "core/Language.h"
#include "core/TestSupport.h"

namespace kestrow {
namespace {

using test::ScopedUi;
using test::TempDir;

// A small database with a second language that lacks one translation.
std::string TwoLanguages(const TempDir& dir) {
  std::string path = dir / "lang.MDB";
  sqlite3* db = nullptr;
  sqlite3_open(path.c_str(), &db);
  sqlite3_exec(db,
               "CREATE TABLE Forms (Src TEXT, Idx INTEGER, English TEXT, Deutsch TEXT);"
               "CREATE TABLE Strings (Tag TEXT, English TEXT, Deutsch TEXT);"
               "INSERT INTO Strings VALUES ('Run', 'Run', 'Lauf');"
               "INSERT INTO Strings VALUES ('Notes', 'Notes', NULL);"
               "INSERT INTO Strings VALUES ('Two', 'A %s and a %s', 'Ein %s und ein %s');"
               "INSERT INTO Forms VALUES ('frmX.cmdOK', 0, 'OK', 'Gut');"
               "INSERT INTO Forms VALUES ('frmX.opt', 2, 'Second', NULL);",
               nullptr, nullptr, nullptr);
  sqlite3_close(db);
  return path;
}

TEST(Language, LooksUpTagsAndFallsBackToEnglishWhereATranslationIsNull) {
  ScopedUi ui;
  TempDir dir;
  ASSERT_TRUE(OpenLanguage(TwoLanguages(dir), "Deutsch"));
  EXPECT_EQ(GetText("Run"), "Lauf");
  EXPECT_EQ(GetText("Notes"), "Notes");
  EXPECT_EQ(GetText("NoSuchTag"), "");
  EXPECT_EQ(GetTextSpaced("Run"), "Lauf ");
  std::string caption;
  EXPECT_TRUE(FormCaption("frmX", "cmdOK", 0, caption));
  EXPECT_EQ(caption, "Gut");
  EXPECT_TRUE(FormCaption("frmX", "opt", 2, caption));
  EXPECT_EQ(caption, "Second");
  EXPECT_FALSE(FormCaption("frmX", "opt", 1, caption));
  EXPECT_EQ(ListLanguages(), (std::vector<std::string>{"English", "Deutsch"}));
  CloseLanguage();
  EXPECT_EQ(GetText("Run"), "");
}

TEST(Language, OnlyTheFirstPlaceholderIsSubstituted) {
  std::string t = "A %s and a %s";
  Substitute(t, "factor");
  EXPECT_EQ(t, "A factor and a %s");
  EXPECT_EQ(SubstituteCopy("no place", "x"), "no place");
}

TEST(Language, AMissingFileOrLanguageIsRefusedWithItsReason) {
  ScopedUi ui;
  TempDir dir;
  EXPECT_FALSE(OpenLanguage(dir / "none.MDB", "English"));
  EXPECT_NE(LanguageError().find("none.MDB"), std::string::npos);
  EXPECT_FALSE(OpenLanguage(TwoLanguages(dir), "Klingon"));
  EXPECT_NE(LanguageError().find("Klingon"), std::string::npos);
  test::WriteFile(dir / "junk.MDB", "not a database at all");
  EXPECT_FALSE(OpenLanguage(dir / "junk.MDB", "English"));
  EXPECT_FALSE(LanguageIsOpen());
}

TEST(Language, TheBuiltDatabaseHasATextForEveryTagTheProgramUses) {
  ScopedUi ui;
  ASSERT_TRUE(OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English"));
  for (const char* tag : {"Run", "Notes", "Repn", "Results", "Treatments", "Factors", "RVs", "Studies", "RespVars",
                          "Data", "Analysis", "Reports", "Locked", "MNerr4", "MNerr7", "MNerr8", "MNmsgb", "MNmsgc",
                          "MNmsgd", "MNmsge", "MNmsgf", "MNmsgg", "MNmsgh", "Ferr1", "Ferr4", "Ferr5", "WIZerr3",
                          "WIZerr4", "WIZerr5", "WIZerr8", "WIZerr9", "Fmsg2", "Copyof", "SaveAs", "LoadKST",
                          "MNmsg9", "TreeYes", "TreeNo", "TBRtt1", "TBRtt19", "ANOVAhdr", "SEQerr1", "DWtxt01"})
    EXPECT_FALSE(GetText(tag).empty()) << tag;
  EXPECT_NE(GetText("Ferr4").find("%s"), std::string::npos);
  CloseLanguage();
}

TEST(Dictionary, BuildMakesTheTwoTablesAndUpdateAddsAndChanges) {
  ScopedUi ui;
  TempDir dir;
  std::string path = dir / "new.MDB";
  std::string error;
  ASSERT_TRUE(BuildDictionary(path, {{"frmA.cmdOK", 0, "OK"}, {"frmA.lbl", 0, std::string(300, 'x')}}, error));
  ASSERT_TRUE(UpdateDictionary(path, {{"frmA.cmdOK", 0, "Accept"}, {"frmA.opt", 1, "One"}}, error));
  ASSERT_TRUE(OpenLanguage(path, "English"));
  std::string caption;
  EXPECT_TRUE(FormCaption("frmA", "cmdOK", 0, caption));
  EXPECT_EQ(caption, "Accept");
  EXPECT_TRUE(FormCaption("frmA", "opt", 1, caption));
  EXPECT_FALSE(FormCaption("frmA", "lbl", 0, caption));  // too long for its field: left out
  EXPECT_EQ(GetText("Run"), "");  // no tag texts
  CloseLanguage();
  bool noticed = false;
  for (const auto& m : ui->messages) noticed = noticed || m.text.find("300 characters!  Ignoring") != std::string::npos;
  EXPECT_TRUE(noticed);
}

}  // namespace
}  // namespace kestrow
