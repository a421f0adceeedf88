#include "stats/TableReaders.h"

#include <sqlite3.h>

#include <cstdlib>
#include <vector>

#include "core/Paths.h"
#include "core/Sentinels.h"
#include "core/Text.h"
#include "core/Ui.h"

namespace kestrow {

namespace {

// What a read past the first or last record of a selection reports.
constexpr const char* kNoRecord = "No current record.";

// The rows of one selection, every field as a number; a field's number is
// what its name reads as (0 for a name such as "v2").
struct Records {
  std::vector<std::string> names;
  std::vector<std::vector<double>> rows;
  double FieldNumber(std::size_t i) const { return std::strtod(names[i].c_str(), nullptr); }
};

class TablesDb {
 public:
  TablesDb(const TablesDb&) = delete;
  TablesDb& operator=(const TablesDb&) = delete;
  TablesDb() {
    std::string file = JoinPath(ProgramFolder(), "TABLES.MDB");
    bool ok = sqlite3_open_v2(file.c_str(), &db_, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK;
    if (ok) {  // a file that is no database fails at its first read
      sqlite3_stmt* st = nullptr;
      ok = sqlite3_prepare_v2(db_, "SELECT count(*) FROM sqlite_master", -1, &st, nullptr) == SQLITE_OK &&
           sqlite3_step(st) == SQLITE_ROW;
      sqlite3_finalize(st);
    }
    if (!ok) {
      ReportError("Cannot open " + file, "Open Db");
      Close();
    }
  }
  ~TablesDb() { Close(); }
  bool IsOpen() const { return db_ != nullptr; }

  // False, with the store's reason, when the selection fails.
  bool Select(const std::string& sql, Records& out, std::string& error) const {
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &st, nullptr) != SQLITE_OK) {
      error = sqlite3_errmsg(db_);
      return false;
    }
    int n = sqlite3_column_count(st);
    for (int i = 0; i < n; ++i) out.names.push_back(sqlite3_column_name(st, i));
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
      std::vector<double> row;
      for (int i = 0; i < n; ++i) row.push_back(sqlite3_column_double(st, i));
      out.rows.push_back(std::move(row));
    }
    if (rc != SQLITE_DONE) error = sqlite3_errmsg(db_);
    sqlite3_finalize(st);
    return rc == SQLITE_DONE;
  }

 private:
  void Close() {
    if (db_) sqlite3_close(db_);
    db_ = nullptr;
  }
  sqlite3* db_ = nullptr;
};

// Selects, reporting a failure or an empty selection with the reader's tag.
bool SelectRows(const TablesDb& db, const std::string& sql, Records& out, const char* tag) {
  std::string error;
  if (!db.Select(sql, out, error)) {
    ReportError(error, tag);
    return false;
  }
  if (out.rows.empty()) {
    ReportError(kNoRecord, tag);
    return false;
  }
  return true;
}

// Walks rows forward while the key field is below the request; the index of
// the row reached, or the row count when the walk runs off the end.
std::size_t WalkRows(const Records& r, std::size_t keyField, double request) {
  std::size_t i = 0;
  while (i < r.rows.size() && r.rows[i][keyField] < request) ++i;
  return i;
}

// Walks fields from firstValue while the request exceeds the field's number;
// the index reached, or the field count when the walk runs off the end.
std::size_t WalkFields(const Records& r, std::size_t firstValue, double request) {
  std::size_t i = firstValue;
  while (i < r.names.size() && request > r.FieldNumber(i)) ++i;
  return i;
}

}  // namespace

void ReadTableB(std::int16_t n, std::int16_t k, float& v, float& d2) {
  TablesDb db;
  if (!db.IsOpen()) return;
  Records r;
  if (!SelectRows(db, "SELECT k, v, d2 FROM TableB WHERE n = " + std::to_string(n) + " ORDER BY n, k", r,
                  "ReadTableB"))
    return;
  std::size_t i = WalkRows(r, 0, k);
  if (i == r.rows.size()) return ReportError(kNoRecord, "ReadTableB");
  if (r.rows[i][0] == k) {
    v = static_cast<float>(r.rows[i][1]);
    d2 = static_cast<float>(r.rows[i][2]);
    return;
  }
  // The closing row of this n: the increment of v per extra subgroup and the
  // limiting d2, applied from the last tabled row.
  if (i == 0) return ReportError(kNoRecord, "ReadTableB");
  float c = static_cast<float>(r.rows[i][1]);
  float limit = static_cast<float>(r.rows[i][2]);
  auto k0 = static_cast<std::int16_t>(r.rows[i - 1][0]);
  float v0 = static_cast<float>(r.rows[i - 1][1]);
  v = v0 + static_cast<float>(k - k0) * c;
  d2 = limit + limit / (4.0f * v);
}

float ReadTableC(std::int16_t n, const std::string& columnName) {
  TablesDb db;
  if (!db.IsOpen()) return MISSING_VALUE;
  Records r;
  // The name stands in brackets as an identifier; one that would close them
  // is no column, and no text can become part of the query.
  if (columnName.find(']') != std::string::npos) {
    ReportError("no such column: " + columnName, "ReadTableC");
    return MISSING_VALUE;
  }
  if (!SelectRows(db, "SELECT [" + columnName + "] FROM TableC WHERE n = " + std::to_string(n), r, "ReadTableC"))
    return MISSING_VALUE;
  float value = static_cast<float>(r.rows[0][0]);
  return value == 0.0f ? MISSING_VALUE : value;
}

void ReadTableD(float alpha, float v, std::int16_t k, float& h) {
  TablesDb db;
  if (!db.IsOpen()) return;
  Records r;
  if (!SelectRows(db,
                  "SELECT * FROM TableD WHERE Alphax100 = " + ShortestText(alpha * 100.0f) +
                      " ORDER BY Alphax100, v",
                  r, "ReadTableD"))
    return;
  // Fields 0 and 1 are the keys Alphax100 and v.
  std::size_t high = WalkFields(r, 2, k);
  if (high == r.names.size()) return ReportError(kNoRecord, "ReadTableD");
  std::size_t low = r.FieldNumber(high) == k ? high : high - 1;
  std::size_t rowHigh = WalkRows(r, 1, v);
  if (rowHigh == r.rows.size()) return ReportError(kNoRecord, "ReadTableD");
  std::size_t rowLow = rowHigh;
  if (r.rows[rowHigh][1] != v) {
    if (rowHigh == 0) return ReportError(kNoRecord, "ReadTableD");
    rowLow = rowHigh - 1;
  }
  auto inK = [&](std::size_t row) {
    float lo = static_cast<float>(r.rows[row][low]);
    float hi = static_cast<float>(r.rows[row][high]);
    if (low == high) return lo;
    float kLow = static_cast<float>(r.FieldNumber(low)), kHigh = static_cast<float>(r.FieldNumber(high));
    return lo + (hi - lo) * (static_cast<float>(k) - kLow) / (kHigh - kLow);
  };
  float hLow = inK(rowLow), hHigh = inK(rowHigh);
  if (rowLow == rowHigh) {
    h = hLow;
    return;
  }
  auto vLow = static_cast<std::int16_t>(r.rows[rowLow][1]);
  auto vHigh = static_cast<std::int16_t>(r.rows[rowHigh][1]);
  h = hLow + (hHigh - hLow) * (v - static_cast<float>(vLow)) / static_cast<float>(vHigh - vLow);
}

float ReadTableF(float alpha, float v1, float v2) {
  const char* table = alpha == 0.01f ? "TableF01" : alpha == 0.05f ? "TableF05" : alpha == 0.1f ? "TableF10" : nullptr;
  if (!table) {
    ErrorBox("Invalid alpha level for ANOVA");
    return MISSING_VALUE;
  }
  TablesDb db;
  if (!db.IsOpen()) return MISSING_VALUE;
  Records r;
  if (!SelectRows(db, std::string("SELECT * FROM ") + table + " ORDER BY v2", r, "ReadTableF")) return MISSING_VALUE;
  std::size_t high = WalkFields(r, 1, v1);
  if (high == r.names.size()) {
    ReportError(kNoRecord, "ReadTableF");
    return MISSING_VALUE;
  }
  std::size_t low = high;
  float fraction = 0;
  if (r.FieldNumber(high) != v1) {
    low = high - 1;
    float lo = static_cast<float>(r.FieldNumber(low)), hi = static_cast<float>(r.FieldNumber(high));
    fraction = (v1 - lo) / (hi - lo);
  }
  std::size_t rowHigh = WalkRows(r, 0, v2);
  if (rowHigh == r.rows.size() || (r.rows[rowHigh][0] != v2 && rowHigh == 0)) {
    ReportError(kNoRecord, "ReadTableF");
    return MISSING_VALUE;
  }
  std::size_t rowLow = r.rows[rowHigh][0] == v2 ? rowHigh : rowHigh - 1;
  auto inV1 = [&](std::size_t row) {
    float lo = static_cast<float>(r.rows[row][low]), hi = static_cast<float>(r.rows[row][high]);
    return lo + (hi - lo) * fraction;
  };
  float fLow = inV1(rowLow), fHigh = inV1(rowHigh);
  float v2Low = static_cast<float>(r.rows[rowLow][0]), v2High = static_cast<float>(r.rows[rowHigh][0]);
  float rowFraction = v2High == v2Low ? 0.0f : (v2 - v2Low) / (v2High - v2Low);
  return fLow + (fHigh - fLow) * rowFraction;
}

bool ReadtPercent(std::int16_t v, float alpha, float& t) {
  TablesDb db;
  if (!db.IsOpen()) return false;
  Records r;
  std::string column = ShortestText(alpha * 1000.0f);
  if (!SelectRows(db, "SELECT v, [" + column + "] FROM tPercent ORDER BY v", r, "ReadtPercent")) return false;
  std::size_t i = WalkRows(r, 0, v);
  if (i == r.rows.size() || (r.rows[i][0] != v && i == 0)) {
    ReportError(kNoRecord, "ReadtPercent");
    return false;
  }
  float high = static_cast<float>(r.rows[i][1]);
  if (r.rows[i][0] == v) {
    t = high;
    return true;
  }
  float tLow = static_cast<float>(r.rows[i - 1][1]);
  float vLow = static_cast<float>(r.rows[i - 1][0]), vHigh = static_cast<float>(r.rows[i][0]);
  t = tLow + (high - tLow) * (static_cast<float>(v) - vLow) / (vHigh - vLow);
  return true;
}

float ReadtPercent(std::int16_t v, float alpha) {
  float t = 0;  // the result of a failed lookup stays as it starts
  ReadtPercent(v, alpha, t);
  return t;
}

void ReadDuncanRow(std::int16_t f, float alpha, DuncanRows& table) {
  TablesDb db;
  if (!db.IsOpen()) return;
  Records r;
  if (!SelectRows(db, std::string("SELECT * FROM ") + (alpha == 0.01f ? "Duncan01" : "Duncan05") + " ORDER BY f", r,
                  "ReadDuncanRow"))
    return;
  if (r.names.size() < 14) return ReportError(kNoRecord, "ReadDuncanRow");
  std::size_t row = WalkRows(r, 0, f);
  if (row == r.rows.size()) return ReportError(kNoRecord, "ReadDuncanRow");
  auto fill = [&](std::size_t from, std::size_t column) {
    for (std::size_t i = 0; i < 14; ++i) {
      table[i][1] = i == 0 ? 0.0f : static_cast<float>(r.FieldNumber(i));
      table[i][column] = static_cast<float>(r.rows[from][i]);
    }
  };
  fill(row, 2);
  if (r.rows[row][0] <= f) return;
  if (row == 0) return ReportError(kNoRecord, "ReadDuncanRow");
  fill(row - 1, 3);
  float fraction = (static_cast<float>(f) - table[0][3]) / (table[0][2] - table[0][3]);
  for (std::size_t i = 1; i < 14; ++i) table[i][2] = table[i][3] + (table[i][2] - table[i][3]) * fraction;
}

}  // namespace kestrow
