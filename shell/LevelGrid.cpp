#include "shell/LevelGrid.h"

#include <QTableWidget>

namespace kestrow {

void LevelsToGrid(const FactorForm& form, QTableWidget* grid) {
  for (int r = 0; r < FactorForm::LEVEL_ROWS; ++r) {
    const auto& row = form.grdLevels[static_cast<std::size_t>(r)];
    grid->setItem(r, 0, new QTableWidgetItem(QString::fromStdString(row.coding)));
    grid->setItem(r, 1, new QTableWidgetItem(QString::fromStdString(row.value)));
    grid->setItem(r, 2, new QTableWidgetItem(QString::fromStdString(row.desc)));
  }
}

void LevelsFromGrid(const QTableWidget* grid, FactorForm& form) {
  for (int r = 0; r < FactorForm::LEVEL_ROWS; ++r) {
    auto text = [&](int c) { return grid->item(r, c) ? grid->item(r, c)->text().toStdString() : std::string(); };
    form.grdLevels[static_cast<std::size_t>(r)] = {text(0), text(1), text(2)};
  }
}

}  // namespace kestrow
