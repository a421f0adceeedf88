// Builds the program's databases from their text sources.
//
//   mkdb lang OUT.MDB Strings.tsv Forms.tsv
//     The language database: table Strings (Tag, then one column per
//     language) and table Forms (Src, Idx, then one column per language).
//     A source is UTF-8, one row a line, fields separated by tabs; "#" starts
//     a comment line; in a text "\n" is a line break, "\t" a tab and "\\" a
//     backslash. A first line "Tag<TAB>English<TAB>Deutsch..." (or "Src<TAB>
//     Idx<TAB>English...") names the language columns; without it the only
//     language is English. A missing translation is stored as Null, so that
//     the English text shows in its place.
//
//   mkdb designs OUT.MDB
//     The design catalogue, empty until its tables are generated.
#include <sqlite3.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

std::vector<std::string> Split(const std::string& line) {
  std::vector<std::string> fields;
  std::string field;
  for (char c : line) {
    if (c == '\t') {
      fields.push_back(field);
      field.clear();
    } else {
      field += c;
    }
  }
  fields.push_back(field);
  return fields;
}

std::string Unescape(const std::string& s) {
  std::string out;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '\\' && i + 1 < s.size()) {
      char e = s[++i];
      out += e == 'n' ? '\n' : e == 't' ? '\t' : e;
    } else {
      out += s[i];
    }
  }
  return out;
}

struct Table {
  std::vector<std::string> header;
  std::vector<std::vector<std::string>> rows;
};

bool ReadTable(const std::string& path, const std::vector<std::string>& keys, Table& t) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::cerr << "mkdb: cannot read " << path << "\n";
    return false;
  }
  t.header = keys;
  t.header.push_back("English");
  std::string line;
  int number = 0;
  bool first = true;
  while (std::getline(in, line)) {
    ++number;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> f = Split(line);
    if (first && f[0] == keys[0]) {
      t.header = f;
      first = false;
      continue;
    }
    first = false;
    if (f.size() < keys.size() + 1 || f.size() > t.header.size() || f[keys.size()].empty()) {
      std::cerr << path << ":" << number << ": expected " << keys.size() + 1 << " to " << t.header.size()
                << " fields with an English text\n";
      return false;
    }
    t.rows.push_back(f);
  }
  return true;
}

std::string Quoted(const std::string& name) { return "\"" + name + "\""; }

bool Exec(sqlite3* db, const std::string& sql) {
  char* message = nullptr;
  if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message) == SQLITE_OK) return true;
  std::cerr << "mkdb: " << (message ? message : "error") << " in: " << sql << "\n";
  sqlite3_free(message);
  return false;
}

bool WriteTable(sqlite3* db, const std::string& name, const Table& t, const std::vector<std::string>& types) {
  std::string create = "CREATE TABLE " + name + " (";
  std::string insert = "INSERT INTO " + name + " VALUES (";
  for (std::size_t i = 0; i < t.header.size(); ++i) {
    create += (i ? ", " : "") + Quoted(t.header[i]) + " " + (i < types.size() ? types[i] : "TEXT");
    insert += (i ? ", ?" : "?") + std::to_string(i + 1);
  }
  if (!Exec(db, create + ")")) return false;
  sqlite3_stmt* st = nullptr;
  sqlite3_prepare_v2(db, (insert + ")").c_str(), -1, &st, nullptr);
  for (const auto& row : t.rows) {
    for (std::size_t i = 0; i < t.header.size(); ++i) {
      if (i >= row.size() || row[i].empty()) {
        sqlite3_bind_null(st, static_cast<int>(i + 1));
      } else if (i < types.size() && types[i] == "INTEGER") {
        sqlite3_bind_int(st, static_cast<int>(i + 1), std::stoi(row[i]));
      } else {
        sqlite3_bind_text(st, static_cast<int>(i + 1), Unescape(row[i]).c_str(), -1, SQLITE_TRANSIENT);
      }
    }
    if (sqlite3_step(st) != SQLITE_DONE) {
      std::cerr << "mkdb: " << sqlite3_errmsg(db) << "\n";
      return false;
    }
    sqlite3_reset(st);
  }
  sqlite3_finalize(st);
  return true;
}

sqlite3* Create(const std::string& path) {
  std::remove(path.c_str());
  sqlite3* db = nullptr;
  if (sqlite3_open(path.c_str(), &db) != SQLITE_OK) {
    std::cerr << "mkdb: cannot create " << path << "\n";
    return nullptr;
  }
  return db;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> a(argv + 1, argv + argc);
  if (a.size() == 4 && a[0] == "lang") {
    Table strings, forms;
    if (!ReadTable(a[2], {"Tag"}, strings) || !ReadTable(a[3], {"Src", "Idx"}, forms)) return 1;
    sqlite3* db = Create(a[1] + ".tmp");
    if (!db) return 1;
    bool ok = Exec(db, "BEGIN") && WriteTable(db, "Strings", strings, {"TEXT", "TEXT"}) &&
              WriteTable(db, "Forms", forms, {"TEXT", "INTEGER", "TEXT"}) &&
              Exec(db, "CREATE UNIQUE INDEX StringsTag ON Strings (Tag)") &&
              Exec(db, "CREATE INDEX FormsSrc ON Forms (Src, Idx)") && Exec(db, "COMMIT");
    sqlite3_close(db);
    return ok && std::rename((a[1] + ".tmp").c_str(), a[1].c_str()) == 0 ? 0 : 1;
  }
  if (a.size() == 2 && a[0] == "designs") {
    sqlite3* db = Create(a[1]);
    if (!db) return 1;
    bool ok = Exec(db, "PRAGMA user_version = 1");
    sqlite3_close(db);
    return ok ? 0 : 1;
  }
  std::cerr << "usage: mkdb lang OUT Strings.tsv Forms.tsv | mkdb designs OUT\n";
  return 2;
}
