#include "shell/frmTest.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStringList>
#include <QVBoxLayout>
#include <algorithm>
#include <string>

#include "shell/Translate.h"
#include "workbench/StatBench.h"

namespace kestrow {

const char* const frmTest::ROUTINE_NAMES[ROUTINES] = {
    "FProbability", "FValue",     "tProbability", "NormalProbability", "NormalValue",  "ReadTableB",
    "ReadTableC",   "ReadTableD", "ReadTableF",   "ReadtPercent",      "ReadDuncanRow"};

namespace {

// The table readers are tried at one level of significance only.
const char* FIXED_ALPHA = "0.1";

// A result of several lines on one line: ReadTableB's "v; d2", and
// ReadDuncanRow's "p: range" for each of its columns.
QString OneLine(const std::string& text) {
  return QString::fromStdString(text).replace('\t', ": ").replace('\n', "; ");
}

}  // namespace

frmTest::frmTest(QWidget* parent) : QDialog(parent) {
  setObjectName("frmTest");
  setWindowTitle("Test the Stats and Table Routines (alpha fixed at 0.1)");
  // The buttons and results line up after the widest row of arguments.
  int widest = 0;
  for (const char* name : ROUTINE_NAMES) widest = std::max(widest, int(FindBenchRoutine(name)->count));
  auto* grid = new QGridLayout;
  for (int i = 0; i < ROUTINES; ++i) {
    const BenchRoutine* routine = FindBenchRoutine(ROUTINE_NAMES[i]);
    QStringList names = QString(routine->arguments).split(' ');
    lblRoutine[i] = new QLabel(QString("%1(%2)").arg(routine->name, names.join(", ")), this);
    grid->addWidget(lblRoutine[i], i, 0);
    for (int a = 0; a < names.size(); ++a) {
      if (names[a] == "column") {
        // A column of the table is picked from its names, never typed.
        cboColumn = new QComboBox(this);
        cboColumn->setObjectName("cboColumn");
        for (const std::string& c : TableCColumns()) cboColumn->addItem(QString::fromStdString(c));
        args_[i].push_back(cboColumn);
        grid->addWidget(cboColumn, i, 1 + a);
        continue;
      }
      auto* arg = new QLineEdit(this);
      arg->setObjectName(QString("txtArg_%1_%2").arg(i).arg(a));
      arg->setPlaceholderText(names[a]);
      arg->setMaximumWidth(90);
      if (names[a] == "alpha") {
        arg->setText(FIXED_ALPHA);
        arg->setReadOnly(true);
        arg->setEnabled(false);
      } else {
        // Return in an argument does the row, as its button would.
        connect(arg, &QLineEdit::returnPressed, this, [this, i] { cmdDoIt_Click(i); });
      }
      txtArg[i].push_back(arg);
      args_[i].push_back(arg);
      grid->addWidget(arg, i, 1 + a);
    }
    cmdDoIt[i] = new QPushButton("Do It!", this);
    cmdDoIt[i]->setObjectName(QString("cmdDoIt_%1").arg(i));
    connect(cmdDoIt[i], &QPushButton::clicked, this, [this, i] { cmdDoIt_Click(i); });
    grid->addWidget(cmdDoIt[i], i, 1 + widest);
    txtResult[i] = new QLineEdit(this);
    txtResult[i]->setObjectName(QString("txtResult_%1").arg(i));
    txtResult[i]->setReadOnly(true);
    txtResult[i]->setMinimumWidth(260);
    grid->addWidget(txtResult[i], i, 2 + widest);
  }
  grid->setColumnStretch(2 + widest, 1);

  cmdQuit = new QPushButton("Quit", this);
  cmdQuit->setObjectName("cmdQuit");
  connect(cmdQuit, &QPushButton::clicked, this, &QDialog::accept);
  auto* foot = new QHBoxLayout;
  foot->addStretch();
  foot->addWidget(cmdQuit);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addLayout(foot);
  TranslateForm(this);
}

void frmTest::cmdDoIt_Click(int index) {
  if (index < 0 || index >= ROUTINES) return;
  std::vector<std::string> args;
  for (QWidget* arg : args_[index]) {
    auto* box = qobject_cast<QComboBox*>(arg);
    args.push_back((box ? box->currentText() : static_cast<QLineEdit*>(arg)->text()).toStdString());
  }
  std::string out, error;
  if (RunBenchRoutine(ROUTINE_NAMES[index], args, out, error) == BenchResult::Done) {
    txtResult[index]->setText(OneLine(out));
    txtResult[index]->setToolTip(QString::fromStdString(out));
  } else {
    txtResult[index]->setText(QString::fromStdString(error));
    txtResult[index]->setToolTip(QString());
  }
  txtResult[index]->setCursorPosition(0);
}

}  // namespace kestrow
