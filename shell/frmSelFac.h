// Choosing and ordering the factors of a study: the factor at the top is the
// hardest to change, the one at the bottom the easiest, and the order sets the
// design's columns.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

class QListWidget;
class QPushButton;

namespace kestrow {

class frmSelFac : public QDialog {
  Q_OBJECT

 public:
  // All the problem's factors; `used` are those in the study, in order.
  frmSelFac(const std::vector<std::string>& used, QWidget* parent = nullptr);

  QListWidget* lstAvailable;
  QListWidget* lstUsed;
  QPushButton *cmdLR, *cmdLRMany, *cmdRL, *cmdRLMany, *cmdOK, *cmdCancel;

  // The keys of the used factors, in list order, after OK.
  std::vector<std::string> Used() const;

 private:
  void Move(QListWidget* from, QListWidget* to, bool all);
  void cmdOK_Click();
};

}  // namespace kestrow
