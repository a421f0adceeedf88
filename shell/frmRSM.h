// The response surface dialog: the two angles of the view, the net's size,
// shading, fill, rainbow and hidden net, the factors plotted and the values
// of the others, with a small preview that follows the sliders. Its rules
// are those of RSMForm.
#pragma once

#include "regression/RSMForm.h"
#include "shell/AnalysisDialog.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QSlider;
class QTableWidget;

namespace kestrow {

class frmRSM : public AnalysisDialog<RSMForm> {
  Q_OBJECT

 public:
  enum Column { COL_PLOT, COL_FACTOR, COL_VALUE };

  frmRSM(Study& study, const Statistics& stats, QWidget* parent = nullptr);

  QSlider *sldAlpha, *sldBeta, *sldNetsize;
  QLabel *lblAlpha, *lblBeta, *lblNetsize, *pic1;
  QCheckBox *chkFilled, *chkShade, *chkRainbow, *chkHideNet;
  QTableWidget* grdSelFac;
  QPushButton *cmdOK, *cmdCancel;

  // Repaints the preview from the dialog as it stands.
  void RepaintPreview();

 private:
  void FromForm() override;
  bool filling_ = false;
};

}  // namespace kestrow
