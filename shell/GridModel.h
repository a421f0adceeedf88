// The engine's Grid as a Qt table model: text, colours and alignment per
// cell; fixed rows and columns look like headings. Editing goes through the
// grid's owner, which holds the rules.
#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "core/Grid.h"

class QTableView;

namespace kestrow {

class GridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit GridModel(Grid& grid, QObject* parent = nullptr);
  ~GridModel() override;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  // Which cells may be edited at all; the rules of an entry come from the owner.
  std::function<bool(int row, int col)> Editable;
  // Called with a typed text; returns false when the entry was refused.
  std::function<bool(int row, int col, const QString& text)> Commit;

  // Spans and column widths of the grid on a view.
  void ApplyLayout(QTableView* view) const;
  // Sizes the columns to their contents, none wider than maxChars average
  // characters: a long name is cut (its whole text is the cell's tool tip)
  // rather than pushing the figures beside it out of sight.
  static void FitColumns(QTableView* view, int maxChars);

  Grid& grid() { return grid_; }

 private:
  Grid& grid_;
};

}  // namespace kestrow
