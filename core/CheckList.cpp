#include "core/CheckList.h"

#include <algorithm>

#include "core/Ui.h"

namespace kestrow {

void CheckList::Init() {
  caption = "Select...";
  prompt.clear();
  check = nullptr;
  rows_.clear();
  order_.clear();
}

bool CheckList::Add(const std::string& text, const std::string& key, bool checked) {
  if (static_cast<int>(rows_.size()) >= MAX_ROWS) return false;
  rows_.push_back(Row{text, key, checked});
  if (checked) order_.push_back(static_cast<int>(rows_.size()) - 1);
  return true;
}

bool CheckList::Show() { return CurrentUi().ShowCheckList(*this); }

bool CheckList::Accept(const std::vector<int>& tickedRows, std::string& complaint) {
  std::vector<bool> ticks(rows_.size(), false);
  std::vector<int> order;
  for (int row : tickedRows)
    if (row >= 0 && row < static_cast<int>(rows_.size()) && !ticks[static_cast<std::size_t>(row)]) {
      ticks[static_cast<std::size_t>(row)] = true;
      order.push_back(row);
    }
  complaint = check ? check(ticks) : std::string();
  if (!complaint.empty()) return false;
  for (std::size_t i = 0; i < rows_.size(); ++i) rows_[i].checked = ticks[i];
  order_ = order;
  return true;
}

bool CheckList::IsKeyChecked(const std::string& key) const {
  auto it = std::find_if(rows_.begin(), rows_.end(), [&](const Row& r) { return r.key == key; });
  return it != rows_.end() && it->checked;
}

std::string CheckList::GetCheckedString() const {
  std::string out;
  for (const Row& r : rows_)
    if (r.checked) out += (out.empty() ? "" : ", ") + r.text;
  return out;
}

std::string CheckList::GetCheckedKeys() const {
  std::string out;
  for (const Row& r : rows_)
    if (r.checked) out += (out.empty() ? "" : ",") + r.key;
  return out;
}

}  // namespace kestrow
