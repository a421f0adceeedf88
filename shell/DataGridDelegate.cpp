#include "shell/DataGridDelegate.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace kestrow {

void DataGridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  editing_ = index;
  auto* line = qobject_cast<QLineEdit*>(editor);
  if (line && StartText) {
    // The cell's text, selected: typing replaces it, the arrows keep it.
    line->setText(StartText(index.row(), index.column()));
    line->selectAll();
    return;
  }
  QStyledItemDelegate::setEditorData(editor, index);
}

bool DataGridDelegate::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && EnterMove) {
      auto* editor = qobject_cast<QWidget*>(object);
      emit commitData(editor);
      emit closeEditor(editor, QAbstractItemDelegate::NoHint);
      int row = editing_.row(), col = editing_.column();
      EnterMove(row, col);
      emit moveTo(row, col);
      return true;
    }
  }
  return QStyledItemDelegate::eventFilter(object, event);
}

}  // namespace kestrow
