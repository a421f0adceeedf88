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
//   mkdb designs OUT.MDB SRC_DIR
//     The design catalogue, from Static2kp.tsv and OrthoCon.tsv in SRC_DIR;
//     see the designs part below.
#include <sqlite3.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
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

// Reads a tab-separated source file: every line that is neither blank nor a
// "#" comment goes to `row` with its number and its fields. False when the
// file cannot be read or `row` refuses a line.
bool ReadLines(const std::string& path, const std::function<bool(int, std::vector<std::string>&)>& row) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::cerr << "mkdb: cannot read " << path << "\n";
    return false;
  }
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> f = Split(line);
    if (!row(number, f)) return false;
  }
  return true;
}

bool ReadTable(const std::string& path, const std::vector<std::string>& keys, Table& t) {
  t.header = keys;
  t.header.push_back("English");
  bool first = true;
  return ReadLines(path, [&](int number, std::vector<std::string>& f) {
    if (first && f[0] == keys[0]) {
      t.header = f;
      first = false;
      return true;
    }
    first = false;
    if (f.size() < keys.size() + 1 || f.size() > t.header.size() || f[keys.size()].empty()) {
      std::cerr << path << ":" << number << ": expected " << keys.size() + 1 << " to " << t.header.size()
                << " fields with an English text\n";
      return false;
    }
    t.rows.push_back(f);
    return true;
  });
}

std::string Quoted(const std::string& name) { return "\"" + name + "\""; }

bool Exec(sqlite3* db, const std::string& sql) {
  char* message = nullptr;
  if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message) == SQLITE_OK) return true;
  std::cerr << "mkdb: " << (message ? message : "error") << " in: " << sql << "\n";
  sqlite3_free(message);
  return false;
}

// Inserts the row bound to the statement and makes it ready for the next;
// a failure is reported.
bool StepRow(sqlite3* db, sqlite3_stmt* st) {
  bool ok = sqlite3_step(st) == SQLITE_DONE;
  if (!ok) std::cerr << "mkdb: " << sqlite3_errmsg(db) << "\n";
  sqlite3_reset(st);
  return ok;
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
    if (!StepRow(db, st)) {
      sqlite3_finalize(st);
      return false;
    }
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

// ---- The design catalogue ------------------------------------------------
//
// DESIGNS.MDB holds SitList, Names, Recipes and Treatments, the tables of the
// recipe designs (created here with their columns, and empty for now), and
// the two tables below, generated from text sources in the source folder.
//
// Static2kp, from Static2kp.tsv: the regular two-level fractions 2^(k-p). A
// source row gives k, p and the p generator words. A word names its factors in
// alphabetical order and ends with the added factor, so "ABCE" states E = ABC;
// the base factors are the first k-p letters, the added factors the letters
// after them in order, and each added factor is an interaction of two or more
// base factors. The generator sets are minimum-aberration designs (Fries &
// Hunter 1980): those of the table of selected 2^(k-p) designs in
// Montgomery's "Design and Analysis of Experiments", and for the sizes that
// table leaves out, designs found by an exhaustive search of our own; the
// source says which row comes from where. Nothing else of a row is copied, it
// is computed here:
//   Runs        2^(k-p);
//   Resolution  the length of the shortest word of the defining relation,
//               whose 2^p - 1 words are the products of the non-empty sets of
//               generator words (a product of words is the symmetric
//               difference of their letters);
//   MaxI        the highest order of interaction listed as an alias: 3 for
//               designs of up to 32 runs, 2 above.
// Columns F(p+1) to F11 are Null. A row that is not a well-formed regular
// fraction stops the build with the file and line.
//
// OrthoCon, checked against OrthoCon.tsv: the orthogonal polynomial contrasts
// of 2 to 8 equally spaced levels. The coefficients are computed by
// Gram-Schmidt: the degree-d column starts as the level times the column of
// degree d-1 (the same span as the d-th power, with far smaller numbers), is
// made orthogonal to every lower column in whole-number arithmetic, divided
// by the greatest common divisor of its entries and signed so that its last
// entry is positive. These are the published values of Fisher & Yates,
// "Statistical Tables for Biological, Agricultural and Medical Research"
// (table of orthogonal polynomials), which OrthoCon.tsv carries; a computed
// row that differs from its source row stops the build. ConName is what the
// program's classification of the column against its factor gives: the
// levels with positive coefficients against those with negative ones, zeros
// on neither side, the side that sorts first as text in front ("1v3", "13v2").

// Stored generator words have room for this many added factors (F1 ... F11),
// and a contrast's coefficient buffer for this many levels.
constexpr int MAX_GENERATORS = 11;
constexpr int MAX_LEVELS = 8;

struct SourceRow {
  int line;                         // line number in the source, for messages
  std::vector<std::string> fields;  // the tab-separated fields, trailing empty ones dropped
};

bool SourceError(const std::string& path, int line, const std::string& message) {
  std::cerr << path << ":" << line << ": " << message << "\n";
  return false;
}

// Reads a designs source: rows of tab-separated fields, "#" comment lines and
// blank lines skipped. The first row must name the columns as `header` does.
bool ReadSource(const std::string& path, const std::vector<std::string>& header, std::vector<SourceRow>& rows) {
  bool first = true;
  int last = 0;
  bool ok = ReadLines(path, [&](int number, std::vector<std::string>& f) {
    last = number;
    while (!f.empty() && f.back().empty()) f.pop_back();
    if (!first) {
      rows.push_back({number, f});
      return true;
    }
    first = false;
    if (f == header) return true;
    std::string names;
    for (const auto& h : header) names += (names.empty() ? "" : " ") + h;
    return SourceError(path, number, "expected the column names " + names);
  });
  if (ok && first) return SourceError(path, last, "no column names");
  return ok;
}

// A whole number in [low, high], digits with an optional leading "-".
bool ParseInt(const std::string& text, int low, int high, int& value) {
  if (text.empty() || text.size() > 6) return false;
  std::size_t i = text[0] == '-' ? 1 : 0;
  if (i == text.size()) return false;
  for (std::size_t j = i; j < text.size(); ++j)
    if (text[j] < '0' || text[j] > '9') return false;
  value = std::stoi(text);
  return value >= low && value <= high;
}

struct Fraction {
  int k = 0, p = 0;                // factors, and added factors
  std::vector<std::string> words;  // the generator words F1 ... Fp
  int runs = 0, resolution = 0, maxI = 0;
};

// Checks one source row and computes Runs, Resolution and MaxI.
bool ReadFraction(const std::string& path, const SourceRow& row, Fraction& d) {
  const auto& f = row.fields;
  if (f.size() < 2 || !ParseInt(f[0], 3, 26, d.k))
    return SourceError(path, row.line, "k must be a whole number from 3 to 26");
  if (!ParseInt(f[1], 1, MAX_GENERATORS, d.p) || d.k - d.p < 2)
    return SourceError(path, row.line,
                       "p must be a whole number from 1 to " + std::to_string(MAX_GENERATORS) +
                           " that leaves at least two base factors");
  if (static_cast<int>(f.size()) - 2 != d.p)
    return SourceError(path, row.line,
                       "p is " + std::to_string(d.p) + " but the row has " + std::to_string(f.size() - 2) +
                           " generator words");
  const int base = d.k - d.p;
  std::vector<std::uint32_t> masks;
  for (int i = 0; i < d.p; ++i) {
    const std::string& w = f[static_cast<std::size_t>(i) + 2];
    const char added = static_cast<char>('A' + base + i);
    for (std::size_t j = 0; j < w.size(); ++j) {
      if (w[j] < 'A' || w[j] >= 'A' + d.k)
        return SourceError(path, row.line,
                           "word " + w + ": '" + w[j] + "' is not one of the factors A to " +
                               static_cast<char>('A' + d.k - 1));
      if (j > 0 && w[j] <= w[j - 1])
        return SourceError(path, row.line, "word " + w + ": letters not in alphabetical order, or repeated");
    }
    if (w.empty() || w.back() != added)
      return SourceError(path, row.line, "word " + w + " must end with its added factor " + added);
    if (w.size() > 1 && w[w.size() - 2] >= 'A' + base)
      return SourceError(path, row.line,
                         "word " + w + ": an added factor is an interaction of base factors A to " +
                             static_cast<char>('A' + base - 1) + " only");
    if (w.size() < 3)
      return SourceError(path, row.line, "word " + w + " needs two or more base factors");
    std::uint32_t m = 0;
    for (char c : w) m |= 1u << (c - 'A');
    masks.push_back(m);
    d.words.push_back(w);
  }
  // Each product contains the added letters of its own generators, so it is
  // never empty and the generators are independent by construction.
  d.resolution = d.k;
  for (std::uint32_t s = 1; s < (1u << d.p); ++s) {
    std::uint32_t word = 0;
    for (int b = 0; b < d.p; ++b)
      if (s >> b & 1u) word ^= masks[static_cast<std::size_t>(b)];
    d.resolution = std::min(d.resolution, std::popcount(word));
  }
  d.runs = 1 << base;
  d.maxI = d.runs <= 32 ? 3 : 2;
  return true;
}

long long Gcd(long long a, long long b) {
  if (a < 0) a = -a;
  if (b < 0) b = -b;
  while (b) {
    long long t = a % b;
    a = b;
    b = t;
  }
  return a;
}

long long Dot(const std::vector<long long>& a, const std::vector<long long>& b) {
  long long s = 0;
  for (std::size_t i = 0; i < a.size(); ++i) s += a[i] * b[i];
  return s;
}

// The orthogonal polynomial contrasts of `levels` equally spaced levels, of
// degree 1 to levels-1, in the smallest whole numbers with a positive last
// entry. The levels are placed at 2l - levels - 1 (l = 1 ... levels), which
// keeps them whole and centred.
std::vector<std::vector<long long>> OrthogonalPolynomials(int levels) {
  const std::size_t n = static_cast<std::size_t>(levels);
  std::vector<std::vector<long long>> q{std::vector<long long>(n, 1)};
  for (int degree = 1; degree < levels; ++degree) {
    std::vector<long long> v(n);
    for (std::size_t l = 0; l < n; ++l) v[l] = (2 * static_cast<long long>(l) + 1 - levels) * q.back()[l];
    for (const auto& lower : q) {
      const long long a = Dot(lower, lower), b = Dot(v, lower);
      long long g = 0;
      for (std::size_t l = 0; l < n; ++l) {
        v[l] = a * v[l] - b * lower[l];
        g = Gcd(g, v[l]);
      }
      for (auto& x : v) x /= g;
    }
    if (v.back() < 0)
      for (auto& x : v) x = -x;
    q.push_back(v);
  }
  q.erase(q.begin());
  return q;
}

// The side lists of a contrast column, as the program classifies it.
std::string ContrastName(const std::vector<long long>& column) {
  std::string plus, minus;
  for (std::size_t l = 0; l < column.size(); ++l) {
    if (column[l] > 0) plus += static_cast<char>('1' + l);
    if (column[l] < 0) minus += static_cast<char>('1' + l);
  }
  return plus < minus ? plus + "v" + minus : minus + "v" + plus;
}

std::string JoinNumbers(const std::vector<long long>& column) {
  std::string s;
  for (long long x : column) s += (s.empty() ? "" : ",") + std::to_string(x);
  return s;
}

struct OrthoContrast {
  int levels = 0, index = 0;
  std::string name, list;
};

// Computes the contrasts of 2 to MAX_LEVELS levels and checks each against
// its row of the source, which must hold every one of them exactly once.
bool MakeContrasts(const std::string& path, const std::vector<SourceRow>& rows, std::vector<OrthoContrast>& out) {
  std::map<std::pair<int, int>, const SourceRow*> byKey;
  for (const auto& row : rows) {
    const auto& f = row.fields;
    int levels = 0, index = 0;
    if (f.size() != 4) return SourceError(path, row.line, "expected Levels, Index, ConName and ConList");
    if (!ParseInt(f[0], 2, MAX_LEVELS, levels))
      return SourceError(path, row.line, "Levels must be a whole number from 2 to " + std::to_string(MAX_LEVELS));
    if (!ParseInt(f[1], 1, levels - 1, index))
      return SourceError(path, row.line, "Index must be a whole number from 1 to " + std::to_string(levels - 1));
    auto [at, fresh] = byKey.emplace(std::make_pair(levels, index), &row);
    if (!fresh)
      return SourceError(path, row.line, "a second row for " + f[0] + " levels, index " + f[1] +
                                             " (the first is on line " + std::to_string(at->second->line) + ")");
  }
  for (int levels = 2; levels <= MAX_LEVELS; ++levels) {
    const auto columns = OrthogonalPolynomials(levels);
    for (int index = 1; index < levels; ++index) {
      const auto& column = columns[static_cast<std::size_t>(index - 1)];
      OrthoContrast c{levels, index, ContrastName(column), JoinNumbers(column)};
      for (long long x : column)
        if (x < -99 || x > 99) {
          std::cerr << path << ": the contrast of " << levels << " levels, index " << index << " (" << c.list
                    << ") has a coefficient beyond the two characters a packed level holds\n";
          return false;
        }
      auto it = byKey.find({levels, index});
      if (it == byKey.end()) {
        std::cerr << path << ": no row for " << levels << " levels, index " << index << "; computed " << c.name
                  << "\t" << c.list << "\n";
        return false;
      }
      const SourceRow& row = *it->second;
      if (row.fields[3] != c.list)
        return SourceError(path, row.line, "ConList " + row.fields[3] + " differs from the computed " + c.list);
      if (row.fields[2] != c.name)
        return SourceError(path, row.line, "ConName " + row.fields[2] + " differs from the computed " + c.name);
      out.push_back(c);
    }
  }
  return true;
}

bool CreateRecipeTables(sqlite3* db) {
  return Exec(db,
              "CREATE TABLE SitList (NameCode INTEGER, Min2 INTEGER, Max2 INTEGER, Min3 INTEGER, Max3 INTEGER, "
              "Num4 INTEGER, NGT4 INTEGER, Flags INTEGER, Runs INTEGER, RecipeID TEXT)") &&
         Exec(db, "CREATE TABLE Names (NameCode INTEGER, Name TEXT)") &&
         Exec(db,
              "CREATE TABLE Recipes (RecipeID TEXT, BaseCode TEXT, Mod4 TEXT, Mod8 TEXT, FullyCrossed TEXT, "
              "Reflectable TEXT)") &&
         Exec(db, "CREATE TABLE Treatments (RecipeId TEXT, Idx INTEGER, L INTEGER, DC TEXT, NDC TEXT, NC TEXT)");
}

bool WriteFractions(sqlite3* db, const std::vector<Fraction>& fractions) {
  std::string create = "CREATE TABLE Static2kp (k INTEGER, p INTEGER, Runs INTEGER, Resolution INTEGER, MaxI INTEGER";
  std::string insert = "INSERT INTO Static2kp VALUES (?, ?, ?, ?, ?";
  for (int i = 1; i <= MAX_GENERATORS; ++i) {
    create += ", F" + std::to_string(i) + " TEXT";
    insert += ", ?";
  }
  if (!Exec(db, create + ")") || !Exec(db, "CREATE UNIQUE INDEX Static2kpKP ON Static2kp (k, p)")) return false;
  sqlite3_stmt* st = nullptr;
  if (sqlite3_prepare_v2(db, (insert + ")").c_str(), -1, &st, nullptr) != SQLITE_OK) return false;
  bool ok = true;
  for (const auto& d : fractions) {
    const int values[] = {d.k, d.p, d.runs, d.resolution, d.maxI};
    for (int i = 0; i < 5; ++i) sqlite3_bind_int(st, i + 1, values[i]);
    for (int i = 0; i < MAX_GENERATORS; ++i) {
      if (i < d.p)
        sqlite3_bind_text(st, 6 + i, d.words[static_cast<std::size_t>(i)].c_str(), -1, SQLITE_TRANSIENT);
      else
        sqlite3_bind_null(st, 6 + i);
    }
    if (!(ok = StepRow(db, st))) break;
  }
  sqlite3_finalize(st);
  return ok;
}

bool WriteContrasts(sqlite3* db, const std::vector<OrthoContrast>& contrasts) {
  if (!Exec(db, "CREATE TABLE OrthoCon (Levels INTEGER, \"Index\" INTEGER, ConName TEXT, ConList TEXT)") ||
      !Exec(db, "CREATE UNIQUE INDEX OrthoConLevels ON OrthoCon (Levels, \"Index\")"))
    return false;
  sqlite3_stmt* st = nullptr;
  if (sqlite3_prepare_v2(db, "INSERT INTO OrthoCon VALUES (?, ?, ?, ?)", -1, &st, nullptr) != SQLITE_OK) return false;
  bool ok = true;
  for (const auto& c : contrasts) {
    sqlite3_bind_int(st, 1, c.levels);
    sqlite3_bind_int(st, 2, c.index);
    sqlite3_bind_text(st, 3, c.name.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(st, 4, c.list.c_str(), -1, SQLITE_TRANSIENT);
    if (!(ok = StepRow(db, st))) break;
  }
  sqlite3_finalize(st);
  return ok;
}

int MakeDesigns(const std::string& out, const std::string& sourceDir) {
  const std::string fractionsPath = sourceDir + "/Static2kp.tsv";
  const std::string contrastsPath = sourceDir + "/OrthoCon.tsv";
  std::vector<std::string> fractionHeader{"k", "p"};
  for (int i = 1; i <= MAX_GENERATORS; ++i) fractionHeader.push_back("F" + std::to_string(i));
  std::vector<SourceRow> fractionRows, contrastRows;
  if (!ReadSource(fractionsPath, fractionHeader, fractionRows) ||
      !ReadSource(contrastsPath, {"Levels", "Index", "ConName", "ConList"}, contrastRows))
    return 1;

  std::vector<Fraction> fractions;
  std::map<std::pair<int, int>, int> firstLine;
  for (const auto& row : fractionRows) {
    Fraction d;
    if (!ReadFraction(fractionsPath, row, d)) return 1;
    auto [at, fresh] = firstLine.emplace(std::make_pair(d.k, d.p), row.line);
    if (!fresh) {
      SourceError(fractionsPath, row.line,
                  "a second row for k=" + std::to_string(d.k) + ", p=" + std::to_string(d.p) +
                      " (the first is on line " + std::to_string(at->second) + ")");
      return 1;
    }
    fractions.push_back(d);
  }
  std::vector<OrthoContrast> contrasts;
  if (!MakeContrasts(contrastsPath, contrastRows, contrasts)) return 1;

  sqlite3* db = Create(out + ".tmp");
  if (!db) return 1;
  bool ok = Exec(db, "BEGIN") && Exec(db, "PRAGMA user_version = 1") && CreateRecipeTables(db) &&
            WriteFractions(db, fractions) && WriteContrasts(db, contrasts) && Exec(db, "COMMIT");
  sqlite3_close(db);
  if (!ok) {
    std::remove((out + ".tmp").c_str());
    return 1;
  }
  return std::rename((out + ".tmp").c_str(), out.c_str()) == 0 ? 0 : 1;
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
  if (a.size() == 3 && a[0] == "designs") return MakeDesigns(a[1], a[2]);
  std::cerr << "usage: mkdb lang OUT Strings.tsv Forms.tsv | mkdb designs OUT SRC_DIR\n";
  return 2;
}
