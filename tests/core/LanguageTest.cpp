// The language database: lookups, the English fallback, substitution, and
// the administrator's dictionary.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>

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
               "INSERT INTO Forms VALUES ('frmX.opt', 2, 'Second', NULL);",
               nullptr, nullptr, nullptr);
  sqlite3_close(db);
  return path;
}

TEST(Language, LooksUpTagsAndFallsBackToEnglishWhereATranslationIsNull) {
  TempDir dir;
  ASSERT_TRUE(OpenLanguage(TwoLanguages(dir), "Deutsch"));
  EXPECT_EQ(GetText("Run"), "Lauf");
  EXPECT_EQ(GetText("Notes"), "Notes");
  EXPECT_EQ(GetText("NoSuchTag"), "");
  std::string caption;
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
  TempDir dir;
  EXPECT_FALSE(OpenLanguage(dir / "none.MDB", "English"));
  EXPECT_NE(LanguageError().find("none.MDB"), std::string::npos);
  EXPECT_FALSE(OpenLanguage(TwoLanguages(dir), "Klingon"));
  EXPECT_NE(LanguageError().find("Klingon"), std::string::npos);
  test::WriteFile(dir / "junk.MDB", "not a database at all");
  EXPECT_FALSE(OpenLanguage(dir / "junk.MDB", "English"));
  EXPECT_FALSE(LanguageIsOpen());
}

// The tags are gathered from the sources, where they stand as literals, and
// the few the program puts together are named here.
TEST(Language, TheBuiltDatabaseHasATextForEveryTagTheProgramUses) {
  ASSERT_TRUE(OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English"));
  std::vector<std::string> tags{"TreeYes", "TreeNo", "TBRtt1", "TBRtt19"};
  for (const char* folder : {"core", "data", "designs", "analyses", "stats", "shell", "app/cli"})
    for (const auto& file : std::filesystem::directory_iterator(std::string(KESTROW_RESOURCES) + "/../" + folder)) {
      std::string text = test::ReadFile(file.path().string());
      for (const std::string call : {"GetText(\"", "GetTextSpaced(\"", "Tr(\""})
        for (std::size_t at = text.find(call); at != std::string::npos; at = text.find(call, at + 1)) {
          std::size_t from = at + call.size(), to = text.find('"', from);
          if (text.compare(to, 2, "\")") == 0) tags.push_back(text.substr(from, to - from));  // not a prefix
        }
    }
  EXPECT_GT(tags.size(), 150u);
  for (const std::string& tag : tags) EXPECT_FALSE(GetText(tag).empty()) << tag;
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
  CloseLanguage();
  EXPECT_TRUE(std::any_of(ui->messages.begin(), ui->messages.end(),
                          [](const auto& m) { return m.text.find("300 characters!  Ignoring") != std::string::npos; }));
}

}  // namespace
}  // namespace kestrow
