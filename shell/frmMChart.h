// The multi-chart dialog: up to six of the study's charts, ticked in a list.
// Its rules are those of MultiChartForm.
#pragma once

#include "shell/AnalysisDialog.h"
#include "workbench/MultiChart.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace kestrow {

class frmMChart : public AnalysisDialog<MultiChartForm> {
  Q_OBJECT

 public:
  frmMChart(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QLabel* lblSelect;
  QListWidget* grdMChart;
  QPushButton *cmdOK, *cmdCancel;

 private:
  void FromForm() override;
};

}  // namespace kestrow
