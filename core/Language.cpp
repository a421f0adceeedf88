#include "core/Language.h"

#include <sqlite3.h>

#include <cstdio>

#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

namespace {

// The caption of a form field holds at most this many characters.
constexpr std::size_t FIELD_SIZE = 255;

struct LanguageState {
  sqlite3* db = nullptr;
  std::string language;
  std::string error;
} state;

std::string Column(sqlite3_stmt* st, int i) {
  const unsigned char* t = sqlite3_column_text(st, i);
  return t ? reinterpret_cast<const char*>(t) : "";
}

bool HasColumn(sqlite3* db, const std::string& table, const std::string& column) {
  for (const std::string& name : [&] {
         std::vector<std::string> names;
         sqlite3_stmt* st = nullptr;
         if (sqlite3_prepare_v2(db, ("PRAGMA table_info(" + table + ")").c_str(), -1, &st, nullptr) == SQLITE_OK)
           while (sqlite3_step(st) == SQLITE_ROW) names.push_back(Column(st, 1));
         sqlite3_finalize(st);
         return names;
       }())
    if (name == column) return true;
  return false;
}

std::string Quoted(const std::string& name) {
  std::string out = "\"";
  for (char c : name) out += c == '"' ? std::string("\"\"") : std::string(1, c);
  return out + "\"";
}

// The text of a row in the current language, or English where it is Null.
bool Lookup(const std::string& sql, const std::vector<std::string>& texts, int number, std::string& out) {
  if (!state.db) return false;
  std::string q = "SELECT " + Quoted(state.language) + ", English FROM " + sql;
  sqlite3_stmt* st = nullptr;
  if (sqlite3_prepare_v2(state.db, q.c_str(), -1, &st, nullptr) != SQLITE_OK) return false;
  int i = 1;
  for (const std::string& t : texts) sqlite3_bind_text(st, i++, t.c_str(), -1, SQLITE_TRANSIENT);
  if (number >= 0) sqlite3_bind_int(st, i, number);
  bool found = sqlite3_step(st) == SQLITE_ROW;
  if (found) out = sqlite3_column_type(st, 0) == SQLITE_NULL ? Column(st, 1) : Column(st, 0);
  sqlite3_finalize(st);
  return found;
}

bool Exec(sqlite3* db, const std::string& sql, std::string& error) {
  char* message = nullptr;
  if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message) == SQLITE_OK) return true;
  error = message ? message : "database error";
  sqlite3_free(message);
  return false;
}

bool WriteRows(sqlite3* db, const std::vector<FormCaptionRow>& rows, bool update, std::string& error) {
  if (!Exec(db, "BEGIN", error)) return false;
  sqlite3_stmt* find = nullptr;
  sqlite3_stmt* insert = nullptr;
  sqlite3_stmt* change = nullptr;
  sqlite3_prepare_v2(db, "SELECT 1 FROM Forms WHERE Src=?1 AND Idx=?2", -1, &find, nullptr);
  sqlite3_prepare_v2(db, "INSERT INTO Forms (Src, Idx, English) VALUES (?1, ?2, ?3)", -1, &insert, nullptr);
  sqlite3_prepare_v2(db, "UPDATE Forms SET English=?3 WHERE Src=?1 AND Idx=?2", -1, &change, nullptr);
  for (const FormCaptionRow& row : rows) {
    if (row.english.size() > FIELD_SIZE) {
      InfoBox("Dictionary maker: Item " + row.src + " is " + std::to_string(row.english.size()) +
              " characters!  Ignoring");
      continue;
    }
    bool exists = false;
    if (update) {
      sqlite3_bind_text(find, 1, row.src.c_str(), -1, SQLITE_TRANSIENT);
      sqlite3_bind_int(find, 2, row.idx);
      exists = sqlite3_step(find) == SQLITE_ROW;
      sqlite3_reset(find);
    }
    sqlite3_stmt* st = exists ? change : insert;
    sqlite3_bind_text(st, 1, row.src.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_int(st, 2, row.idx);
    sqlite3_bind_text(st, 3, row.english.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_step(st);
    sqlite3_reset(st);
  }
  sqlite3_finalize(find);
  sqlite3_finalize(insert);
  sqlite3_finalize(change);
  return Exec(db, "COMMIT", error);
}

}  // namespace

bool OpenLanguage(const std::string& path, const std::string& language) {
  CloseLanguage();
  state.error.clear();
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    state.error = "Cannot open the language database " + path + ": " + (db ? sqlite3_errmsg(db) : "out of memory");
    sqlite3_close(db);
    return false;
  }
  if (!HasColumn(db, "Forms", "English") || !HasColumn(db, "Strings", "Tag")) {
    state.error = path + " is not a language database";
    sqlite3_close(db);
    return false;
  }
  if (!HasColumn(db, "Forms", language) || !HasColumn(db, "Strings", language)) {
    state.error = "The language database " + path + " has no language \"" + language + "\"";
    sqlite3_close(db);
    return false;
  }
  state.db = db;
  state.language = language;
  return true;
}

void CloseLanguage() {
  if (state.db) sqlite3_close(state.db);
  state.db = nullptr;
}

bool LanguageIsOpen() { return state.db != nullptr; }
const std::string& LanguageError() { return state.error; }

std::string GetText(const std::string& tag) {
  std::string text;
  Lookup("Strings WHERE Tag=?1", {tag}, -1, text);
  return text;
}

std::string GetTextSpaced(const std::string& tag) { return GetText(tag) + " "; }

void Substitute(std::string& text, const std::string& value) {
  std::size_t at = text.find("%s");
  if (at != std::string::npos) text.replace(at, 2, value);
}

std::string SubstituteCopy(std::string text, const std::string& value) {
  Substitute(text, value);
  return text;
}

std::vector<std::string> ListLanguages() {
  std::vector<std::string> names;
  if (!state.db) return names;
  sqlite3_stmt* st = nullptr;
  if (sqlite3_prepare_v2(state.db, "PRAGMA table_info(Forms)", -1, &st, nullptr) == SQLITE_OK) {
    int i = 0;
    while (sqlite3_step(st) == SQLITE_ROW)
      if (i++ >= 2) names.push_back(Column(st, 1));
  }
  sqlite3_finalize(st);
  return names;
}

bool FormCaption(const std::string& form, const std::string& control, int index, std::string& caption) {
  return Lookup("Forms WHERE Src=?1 AND Idx=?2", {form + "." + (control.empty() ? form : control)}, index, caption);
}

bool BuildDictionary(const std::string& path, const std::vector<FormCaptionRow>& rows, std::string& error) {
  std::remove(path.c_str());
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) != SQLITE_OK) {
    error = db ? sqlite3_errmsg(db) : "out of memory";
    sqlite3_close(db);
    return false;
  }
  bool ok = Exec(db, "CREATE TABLE Forms (Src TEXT(255), Idx INTEGER, English TEXT(255))", error) &&
            Exec(db, "CREATE TABLE Strings (Tag TEXT(50), English TEXT)", error) && WriteRows(db, rows, false, error);
  sqlite3_close(db);
  if (ok) InfoBox("Language database management complete");
  return ok;
}

bool UpdateDictionary(const std::string& path, const std::vector<FormCaptionRow>& rows, std::string& error) {
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
    error = db ? sqlite3_errmsg(db) : "out of memory";
    sqlite3_close(db);
    return false;
  }
  bool ok = WriteRows(db, rows, true, error);
  sqlite3_close(db);
  if (ok) InfoBox("Language database management complete");
  return ok;
}

}  // namespace kestrow
