// Editing of the data grid: an edit starts with the cell's trimmed text, and
// Enter commits it and moves on as the setting Navigation says.
#pragma once

#include <QStyledItemDelegate>
#include <functional>

namespace kestrow {

class DataGridDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  // The text an edit of the cell starts with.
  std::function<QString(int row, int col)> StartText;
  // Where Enter moves from a cell.
  std::function<void(int& row, int& col)> EnterMove;

  void setEditorData(QWidget* editor, const QModelIndex& index) const override;

 protected:
  bool eventFilter(QObject* editor, QEvent* event) override;

 signals:
  // Emitted after an edit ended with Enter: the view moves to the cell.
  void moveTo(int row, int col);

 private:
  mutable QModelIndex editing_;
};

}  // namespace kestrow
