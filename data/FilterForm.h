// The rules of the filter dialog: a check list of "All data" and every level
// of every factor not left out; OK gathers up to six filters.
#pragma once

#include <string>
#include <vector>

namespace kestrow {

class Study;

class FilterForm {
 public:
  struct Row {
    std::string key;     // "f;l", or "0;0" for all data
    std::string factor;  // the factor's name (the text "All data" on the first row)
    std::string level;   // the level's name
    bool checked = false;
  };

  // Fills the rows; sExcludeList holds comma-joined factor numbers left out.
  void Load(const Study& study, const std::string& sFilterList, const std::string& sExcludeList);
  // OK: the complaint (fewer than 1 or more than 6 ticked), or empty with the
  // keys of the ticked rows, in row order, in sFilterList.
  std::string OK();

  std::vector<Row> rows;
  std::string sFilterList;
  bool changed = false;
};

}  // namespace kestrow
