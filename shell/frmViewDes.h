// The Design Viewer: the study's treatments, contrasts and aliases, read-only.
// A click on a contrast's heading tells what the contrast stands for.
#pragma once

#include <QDialog>

#include "core/Grid.h"

class QLabel;
class QTableView;

namespace kestrow {

class GridModel;
class Study;

class frmViewDes : public QDialog {
  Q_OBJECT

 public:
  frmViewDes(const Study& study, QWidget* parent = nullptr);
  QTableView* grdDesign;
  QLabel* lblSource;

 private:
  void CellClicked(int row, int col);
  const Study& study_;
  Grid grid_;
  GridModel* model_;
};

}  // namespace kestrow
