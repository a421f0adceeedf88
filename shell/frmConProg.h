// The progress window of contour tracing: the level being traced, and Stop.
#pragma once

#include <QDialog>

#include "regression/ContourPlot.h"

class QLabel;
class QPushButton;

namespace kestrow {

class frmConProg : public QDialog, public ContourProgress {
  Q_OBJECT

 public:
  explicit frmConProg(QWidget* parent = nullptr);
  void Show() override;
  void Progress(float fContour, const std::string& sRV) override;
  void Hide() override;
  bool Stopped() const override { return stopped_; }

  QLabel* lblMsg;
  QPushButton* cmdStop;

 protected:
  // Escape or a close by the title bar stops the tracing too.
  void reject() override { stopped_ = true; }

 private:
  bool stopped_ = false;
};

// Installs the window as the tracing's progress while it lives.
class ConProgScope {
 public:
  explicit ConProgScope(frmConProg& window) : before_(gConProg) { gConProg = &window; }
  ~ConProgScope() { gConProg = before_; }
  ConProgScope(const ConProgScope&) = delete;
  ConProgScope& operator=(const ConProgScope&) = delete;

 private:
  ContourProgress* before_;
};

}  // namespace kestrow
