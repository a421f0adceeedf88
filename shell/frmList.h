// The list of check boxes behind every "choose several items" question. The
// rows and the check that may refuse a set of ticks are the CheckList's;
// this form shows them and remembers the order in which boxes are ticked.
#pragma once

#include <QDialog>
#include <vector>

class QCheckBox;
class QLabel;
class QPushButton;

namespace kestrow {

class CheckList;

class frmList : public QDialog {
  Q_OBJECT

 public:
  frmList(CheckList& list, QWidget* parent = nullptr);

  QLabel* lblPrompt;
  std::vector<QCheckBox*> chkItem;
  QPushButton *cmdOK, *cmdCancel;

  // OK: the ticks go to the list, unless its check refuses them (said, and
  // the form stays).
  void cmdOK_Click();

 private:
  CheckList& list_;
  std::vector<int> order_;  // rows ticked, in the order of ticking
};

}  // namespace kestrow
