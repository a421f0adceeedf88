#include "designs/DesignsDb.h"

#include <sqlite3.h>

#include <cstdlib>

#include "core/Paths.h"
#include "core/Text.h"

namespace kestrow {

std::string DesignsDb::Row::Text(const std::string& column) const {
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (EqualsNoCase(columns[i], column)) return values[i].value_or("");
  return "";
}

bool DesignsDb::Row::IsNull(const std::string& column) const {
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (EqualsNoCase(columns[i], column)) return !values[i].has_value();
  return true;
}

long DesignsDb::Row::Number(const std::string& column) const {
  return std::strtol(Text(column).c_str(), nullptr, 10);
}

bool DesignsDb::Open(const std::string& path) {
  Close();
  std::string file = path.empty() ? JoinPath(ProgramFolder(), "DESIGNS.MDB") : path;
  if (sqlite3_open_v2(file.c_str(), &db_, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    Close();
    return false;
  }
  // A file that is no database fails at its first read, so read once here.
  sqlite3_stmt* st = nullptr;
  bool ok = sqlite3_prepare_v2(db_, "SELECT count(*) FROM sqlite_master", -1, &st, nullptr) == SQLITE_OK &&
            sqlite3_step(st) == SQLITE_ROW;
  sqlite3_finalize(st);
  if (!ok) Close();
  return ok;
}

void DesignsDb::Close() {
  if (db_) sqlite3_close(db_);
  db_ = nullptr;
}

bool DesignsDb::Query(const std::string& sql, std::vector<Row>& rows, std::string& error) const {
  rows.clear();
  if (!db_) {
    error = "the design catalogue is not open";
    return false;
  }
  sqlite3_stmt* st = nullptr;
  if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &st, nullptr) != SQLITE_OK) {
    error = sqlite3_errmsg(db_);
    return false;
  }
  int n = sqlite3_column_count(st);
  std::vector<std::string> names;
  for (int i = 0; i < n; ++i) names.push_back(sqlite3_column_name(st, i));
  int rc;
  while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    Row row;
    row.columns = names;
    for (int i = 0; i < n; ++i) {
      if (sqlite3_column_type(st, i) == SQLITE_NULL) {
        row.values.emplace_back(std::nullopt);
      } else {
        const unsigned char* t = sqlite3_column_text(st, i);
        row.values.emplace_back(std::string(t ? reinterpret_cast<const char*>(t) : ""));
      }
    }
    rows.push_back(std::move(row));
  }
  if (rc != SQLITE_DONE) error = sqlite3_errmsg(db_);
  sqlite3_finalize(st);
  return rc == SQLITE_DONE;
}

}  // namespace kestrow
