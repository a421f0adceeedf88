// Read-only access to the design catalogue "DESIGNS.MDB" in the program
// folder, opened for one builder or one form load and closed at once.
#pragma once

#include <optional>
#include <string>
#include <vector>

struct sqlite3;

namespace kestrow {

class DesignsDb {
 public:
  struct Row {
    std::vector<std::string> columns;
    std::vector<std::optional<std::string>> values;
    // The text of a column by name; empty for Null or a missing column.
    std::string Text(const std::string& column) const;
    bool IsNull(const std::string& column) const;
    long Number(const std::string& column) const;
  };

  DesignsDb() = default;
  DesignsDb(const DesignsDb&) = delete;
  DesignsDb& operator=(const DesignsDb&) = delete;
  ~DesignsDb() { Close(); }

  // False when the file cannot be opened as a database.
  bool Open(const std::string& path = std::string());
  void Close();
  // The rows of a query; false with the reason when it fails.
  bool Query(const std::string& sql, std::vector<Row>& rows, std::string& error) const;

 private:
  sqlite3* db_ = nullptr;
};

}  // namespace kestrow
