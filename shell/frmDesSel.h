// The design selection table: the designs that fit the study's factors, with
// their run counts; OK builds the chosen one.
#pragma once

#include <QDialog>

#include "designs/DesignSelection.h"

class QTableWidget;
class QPushButton;

namespace kestrow {

class frmDesSel : public QDialog {
  Q_OBJECT

 public:
  frmDesSel(Study& study, QWidget* parent = nullptr);

  QTableWidget* grdDesigns;
  QPushButton* cmdOK;
  QPushButton* cmdCancel;
  QPushButton* cmdWizard;
  QPushButton* cmdCriteria;

  // True when the study's design was replaced.
  bool DesignChanged() const { return table_.DesignChanged; }
  DesignSelection& Table() { return table_; }

 private:
  void cmdOK_Click();
  void cmdWizard_Click();

  DesignSelection table_;
};

// The advice of the design wizard.
class frmDesWiz1 : public QDialog {
  Q_OBJECT

 public:
  frmDesWiz1(const DesignSelection::Advice& advice, QWidget* parent = nullptr);
};

// The table of what each design family needs.
class frmDesHelp2 : public QDialog {
  Q_OBJECT

 public:
  explicit frmDesHelp2(QWidget* parent = nullptr);
};

}  // namespace kestrow
