#include "shell/GridModel.h"

#include <QFont>
#include <QTableView>

#include "core/Text.h"
#include "shell/Colours.h"

namespace kestrow {

GridModel::GridModel(Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(grid) {
  grid_.Changed = [this](int row, int col) {
    if (row < 0) {
      beginResetModel();
      endResetModel();
    } else {
      QModelIndex i = index(row, col);
      emit dataChanged(i, i);
    }
  };
}

GridModel::~GridModel() { grid_.Changed = nullptr; }

int GridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : grid_.Rows(); }
int GridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : grid_.Cols(); }

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  int r = index.row(), c = index.column();
  bool fixed = r < grid_.FixedRows || c < grid_.FixedCols;
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return QString::fromStdString(grid_.Text(r, c));
    case Qt::BackgroundRole:
      if (fixed || grid_.RowData(r) > 100) return QColor(0xE8, 0xE8, 0xE8);
      return ToQColor(grid_.Back(r, c));
    case Qt::ForegroundRole:
      return ToQColor(grid_.Fore(r, c));
    case Qt::FontRole:
      if (fixed || grid_.RowData(r) > 100) {
        QFont f;
        f.setBold(true);
        return f;
      }
      return {};
    case Qt::ToolTipRole:
      if (grid_.Text(r, c).empty()) return {};
      return QString::fromStdString(grid_.Text(r, c));
    case Qt::TextAlignmentRole:
      if (fixed || grid_.MergeAt(r, c)) return int(Qt::AlignCenter);
      // Numbers line up on the right, words on the left.
      if (grid_.Text(r, c).empty() || IsNumeric(grid_.Text(r, c)) || grid_.Text(r, c)[0] == '<')
        return int(Qt::AlignRight | Qt::AlignVCenter);
      return int(Qt::AlignLeft | Qt::AlignVCenter);
    default:
      return {};
  }
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (Editable && Editable(index.row(), index.column())) f |= Qt::ItemIsEditable;
  return f;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::EditRole || !Commit) return false;
  return Commit(index.row(), index.column(), value.toString());
}

void GridModel::FitColumns(QTableView* view, int maxChars) {
  view->resizeColumnsToContents();
  int widest = view->fontMetrics().averageCharWidth() * maxChars + 12;
  for (int c = 0; c < view->model()->columnCount(); ++c)
    if (view->columnWidth(c) > widest) view->setColumnWidth(c, widest);
}

void GridModel::ApplyLayout(QTableView* view) const {
  view->clearSpans();
  for (const Grid::Range& m : grid_.Merges) view->setSpan(m.row, m.col, m.rows, m.cols);
  for (int c = 0; c < grid_.Cols(); ++c) {
    // Twips to pixels at the usual 15 twips a pixel.
    int twips = grid_.ColWidth(c);
    view->setColumnWidth(c, twips > 0 ? twips / 15 + 8 : 90);
  }
}

}  // namespace kestrow
