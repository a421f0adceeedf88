// The list behind every "choose several items" question: rows of a text, a
// key and a tick, at most 50, shown through the Ui as a list of check boxes.
// OK takes the ticks over, Cancel leaves them; a check of the dialog's owner
// may refuse a set of ticks on OK, and the list then stays open.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kestrow {

class CheckList {
 public:
  static constexpr int MAX_ROWS = 50;

  struct Row {
    std::string text, key;
    bool checked = false;
  };

  std::string caption = "Select...";
  std::string prompt;  // the line above the rows
  // The complaint about a set of ticks (one flag a row), or empty to accept.
  std::function<std::string(const std::vector<bool>& ticks)> check;

  // An empty list with the default caption.
  void Init();
  // Appends a row; false, with nothing added, past the 50th.
  bool Add(const std::string& text, const std::string& key, bool checked);
  // Runs the list through the Ui; true on OK.
  bool Show();
  // Takes ticks over, in the order they were given (the order of choice);
  // false, with the complaint of the check and nothing changed, when refused.
  bool Accept(const std::vector<int>& tickedRows, std::string& complaint);

  bool IsKeyChecked(const std::string& key) const;
  // The texts of the ticked rows joined by ", ", in row order.
  std::string GetCheckedString() const;
  // Their keys joined by ",", in row order.
  std::string GetCheckedKeys() const;
  // The ticked rows in the order they were chosen.
  const std::vector<int>& OrderOfChoice() const { return order_; }

  const std::vector<Row>& Rows() const { return rows_; }

 private:
  std::vector<Row> rows_;
  std::vector<int> order_;
};

}  // namespace kestrow
