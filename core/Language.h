// The language database "KSTlang.MDB": every user text by its tag, and the
// captions of the forms. Texts are looked up in the current language and fall
// back to English where a translation is missing.
#pragma once

#include <string>
#include <vector>

namespace kestrow {

// Opens the database read-only for the named language (a column of the table
// Forms). False if the file cannot be opened or has no such language; the
// reason is in LanguageError().
bool OpenLanguage(const std::string& path, const std::string& language);
void CloseLanguage();
bool LanguageIsOpen();
const std::string& LanguageError();

// The text of a tag; empty for an unknown tag or a closed database.
std::string GetText(const std::string& tag);
// The same with a blank behind it, for joining texts.
std::string GetTextSpaced(const std::string& tag);

// Replaces the first "%s" of the text with the value; a second "%s" stays.
void Substitute(std::string& text, const std::string& value);
std::string SubstituteCopy(std::string text, const std::string& value);

// The languages of the database: the columns of Forms from the third on.
std::vector<std::string> ListLanguages();

// The caption of a form's control (control "" for the form's own title) in
// the current language; false when the database has no row for it, and the
// built-in caption stays.
bool FormCaption(const std::string& form, const std::string& control, int index, std::string& caption);

// One caption of a form, as the administrator's dictionary commands collect them.
struct FormCaptionRow {
  std::string src;  // form name, ".", control name
  int idx = 0;      // index in a control array, 0 if none
  std::string english;
};

// Makes a new database of the form captions (no tag texts), replacing the old.
// Captions longer than a field holds are left out with a notice.
bool BuildDictionary(const std::string& path, const std::vector<FormCaptionRow>& rows, std::string& error);
// Adds the rows the database lacks and updates the English of the others.
bool UpdateDictionary(const std::string& path, const std::vector<FormCaptionRow>& rows, std::string& error);

}  // namespace kestrow
