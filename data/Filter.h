// A filter: the runs of a study at one level of one factor. Its text is the
// factor's number and the level's number joined by ";"; "0;0" is all data.
#pragma once

#include <cstdint>
#include <string>

namespace kestrow {

class Study;

class Filter {
 public:
  void Init(const Study& study, const std::string& text, int rv, int mode);
  void InitnoRV(const Study& study, const std::string& text, int mode);
  // True for every run of "0;0", else for the runs at the filter's level.
  bool bRunIsGood(int run) const;
  // The good observations of the response in the filter's runs (mode 0), or
  // the number of those runs with more than one (other modes: runs that can
  // give a range).
  std::int16_t CountItems() const;
  std::int16_t CountItemsnoRV() const { return CountItems(); }
  void ResetCount() { iRunPtr = 0; }
  // Moves to the next run at the filter's level, or past the last run; the
  // value it gives is always MISSING_VALUE: the walk is all it does.
  float GetNextValue();

  const Study* study = nullptr;
  std::string text;
  std::int16_t iMode = 0;
  std::int16_t iRV = 0;
  std::int16_t iFactor = 0;
  std::int16_t iLevel = 0;
  std::int16_t iRunPtr = 0;
};

// The caption of a filter text: "All Data", or factor name " = " level name;
// empty for a text without ";".
std::string FilterToText(const Study& study, const std::string& text);

}  // namespace kestrow
