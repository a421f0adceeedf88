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

// The list of several items to tick, behind every "choose several" command.
class frmList : public QDialog {
  Q_OBJECT

 public:
  struct Row {
    std::string text, key;
    bool checked = false;
  };
  frmList(const std::vector<Row>& rows, QWidget* parent = nullptr);
  // The keys of the ticked rows, in order (OK takes the ticks, Cancel leaves them).
  std::vector<std::string> CheckedKeys() const;
  QListWidget* lstItems;
};

}  // namespace kestrow
