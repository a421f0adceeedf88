#include "shell/frmCalculator.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "core/Language.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"
#include "shell/frmCueCard.h"
#include "workbench/RegressionPrint.h"

namespace kestrow {

namespace {

constexpr int RESTRAINT_ROWS = 8;

QLabel* Shown(QWidget* parent, const char* name) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

}  // namespace

frmCalculator::frmCalculator(Study& study, QWidget* parent) : QDialog(parent), form_(study) {
  setObjectName("frmCalculator");
  setWindowTitle(Q(form_.caption));
  auto* layout = new QVBoxLayout(this);
  auto* equation = new QFormLayout;
  lblEquation = Shown(this, "lblEquation");
  lblEquation->setText(Q(form_.lblEquation));
  equation->addRow(new QLabel(Q(GetText("RegEq")), this), lblEquation);
  layout->addLayout(equation);

  tabs = new QTabWidget(this);
  tabs->setObjectName("tabs");
  // Evaluate: a value for each factor of the model, in the model's units.
  auto* evaluate = new QWidget(tabs);
  auto* evalRows = new QVBoxLayout(evaluate);
  grdEval = new QTableWidget(static_cast<int>(form_.Factors().size()), 3, evaluate);
  grdEval->setObjectName("grdEval");
  grdEval->setHorizontalHeaderLabels({"Factor", "Range", "Value"});
  grdEval->verticalHeader()->hide();
  for (int r = 0; r < grdEval->rowCount(); ++r) {
    auto* name = new QTableWidgetItem(Q(form_.Factors()[static_cast<std::size_t>(r)].sName));
    name->setFlags(Qt::ItemIsEnabled);
    grdEval->setItem(r, EVAL_FACTOR, name);
    auto* range = new QTableWidgetItem(Q(form_.RangeText(static_cast<std::size_t>(r))));
    range->setFlags(Qt::ItemIsEnabled);
    grdEval->setItem(r, EVAL_RANGE, range);
    grdEval->setItem(r, EVAL_VALUE, new QTableWidgetItem);
  }
  grdEval->horizontalHeader()->setStretchLastSection(true);
  grdEval->resizeColumnsToContents();
  evalRows->addWidget(grdEval);
  auto* evalFoot = new QHBoxLayout;
  cmdEvaluate = NamedButton(evaluate, "cmdEvaluate", "Evaluate");
  lblValue = Shown(evaluate, "lblValue");
  evalFoot->addWidget(cmdEvaluate);
  evalFoot->addWidget(lblValue, 1);
  evalRows->addLayout(evalFoot);
  tabs->addTab(evaluate, Q(GetText("CALtab0")));

  // Solve: a target, restraints, the range and the method.
  auto* solve = new QWidget(tabs);
  auto* solveRows = new QVBoxLayout(solve);
  auto* targetRow = new QFormLayout;
  lblTarget = new QLabel(Q(form_.lblTarget), solve);
  lblTarget->setObjectName("lblTarget");
  txtTarget = new QLineEdit(Q(form_.txtTarget), solve);
  txtTarget->setObjectName("txtTarget");
  txtTarget->setToolTip("A number, MAX or MIN");
  targetRow->addRow(lblTarget, txtTarget);
  solveRows->addLayout(targetRow);
  grdRestraints = new QTableWidget(RESTRAINT_ROWS, 3, solve);
  grdRestraints->setObjectName("grdRestraints");
  grdRestraints->setHorizontalHeaderLabels({"Factor", "Relation", "Value"});
  grdRestraints->verticalHeader()->hide();
  QStringList factorNames{QString()};
  for (const CalculatorForm::Factor& f : form_.Factors()) factorNames << Q(f.sName);
  QStringList relations;
  for (const std::string& r : CalculatorForm::Relations()) relations << Q(r);
  for (int r = 0; r < RESTRAINT_ROWS; ++r) {
    auto* factor = new QComboBox(grdRestraints);
    factor->addItems(factorNames);
    grdRestraints->setCellWidget(r, RES_FACTOR, factor);
    auto* relation = new QComboBox(grdRestraints);
    relation->addItems(relations);
    grdRestraints->setCellWidget(r, RES_RELATION, relation);
    grdRestraints->setItem(r, RES_VALUE, new QTableWidgetItem);
  }
  grdRestraints->horizontalHeader()->setStretchLastSection(true);
  grdRestraints->resizeColumnsToContents();
  solveRows->addWidget(grdRestraints);
  auto* options = new QFormLayout;
  cmbRange = new QComboBox(solve);
  cmbRange->setObjectName("cmbRange");
  cmbRange->addItems({"Limit to min/max levels", "Allow +/- 50% deviation"});
  cmbAlgorithm = new QComboBox(solve);
  cmbAlgorithm->setObjectName("cmbAlgorithm");
  cmbAlgorithm->addItems({"2-pass, ordered", "Monte-Carlo method"});
  options->addRow("Range", cmbRange);
  options->addRow("Method", cmbAlgorithm);
  solveRows->addLayout(options);
  auto* solveFoot = new QHBoxLayout;
  cmdSolve = NamedButton(solve, "cmdSolve", "Solve");
  cmdStop = NamedButton(solve, "cmdStop", "Stop");
  cmdStop->setEnabled(false);
  solveFoot->addWidget(cmdSolve);
  solveFoot->addWidget(cmdStop);
  solveFoot->addStretch(1);
  solveRows->addLayout(solveFoot);
  lblSolution = Shown(solve, "lblSolution");
  solveRows->addWidget(lblSolution);
  tabs->addTab(solve, Q(GetText("CALtab1")));
  layout->addWidget(tabs);

  auto* buttons = new QDialogButtonBox(this);
  cmdAddLog = AddButton(buttons, "cmdAddLog", "Add to Print Log", QDialogButtonBox::ActionRole);
  cmdCCHelp = AddButton(buttons, "cmdCCHelp", "Cue card", QDialogButtonBox::HelpRole);
  cmdOK = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  layout->addWidget(buttons);

  const bool model = form_.HasModel();
  tabs->setEnabled(model);
  cmdAddLog->setEnabled(model);
  connect(cmdEvaluate, &QPushButton::clicked, this, [this] { cmdEvaluate_Click(); });
  connect(cmdSolve, &QPushButton::clicked, this, [this] { cmdSolve_Click(); });
  connect(cmdStop, &QPushButton::clicked, this, [this] {
    form_.cmdStop_Click();
    cmdStop->setEnabled(false);
  });
  connect(cmdAddLog, &QPushButton::clicked, this, [this] { PrintCalculator(form_, tabs->currentIndex()); });
  connect(cmdCCHelp, &QPushButton::clicked, this, [this] { ShowCueCard("frmCalculator", this); });
  connect(cmdOK, &QPushButton::clicked, this, [this] {
    form_.cmdStop_Click();
    accept();
  });
  TranslateForm(this);
  resize(620, 520);
}

void frmCalculator::cmdEvaluate_Click() {
  for (int r = 0; r < grdEval->rowCount(); ++r)
    form_.values[static_cast<std::size_t>(r)] = grdEval->item(r, EVAL_VALUE)->text().toStdString();
  if (!form_.cmdEvaluate_Click()) {
    lblValue->clear();
    grdEval->setCurrentCell(form_.errorRow, EVAL_VALUE);
    grdEval->setFocus();
    return;
  }
  lblValue->setText(Q(form_.lblValue));
}

void frmCalculator::ReadRestraints() {
  form_.restraints.clear();
  for (int r = 0; r < grdRestraints->rowCount(); ++r) {
    CalculatorForm::Restraint row;
    row.factor = static_cast<QComboBox*>(grdRestraints->cellWidget(r, RES_FACTOR))->currentText().toStdString();
    row.relation = static_cast<QComboBox*>(grdRestraints->cellWidget(r, RES_RELATION))->currentText().toStdString();
    row.value = grdRestraints->item(r, RES_VALUE)->text().toStdString();
    form_.restraints.push_back(row);
  }
}

// The search runs here, the window kept alive by its calls for events; only
// Stop has meaning while it runs, and Solve is not taken again.
void frmCalculator::cmdSolve_Click() {
  form_.txtTarget = txtTarget->text().toStdString();
  form_.cmbRange = cmbRange->currentIndex();
  form_.cmbAlgorithm = cmbAlgorithm->currentIndex();
  ReadRestraints();
  cmdSolve->setEnabled(false);
  cmdStop->setEnabled(true);
  lblSolution->setText("working...");
  QGuiApplication::setOverrideCursor(Qt::BusyCursor);
  // The Monte-Carlo label tells of each improvement as the search goes.
  QTimer progress;
  progress.setInterval(200);
  connect(&progress, &QTimer::timeout, this, [this] { lblSolution->setText(Q(form_.lblSolution)); });
  progress.start();
  const bool done = form_.cmdSolve_Click();
  progress.stop();
  QGuiApplication::restoreOverrideCursor();
  cmdStop->setEnabled(false);
  cmdSolve->setEnabled(true);
  if (!done) {
    lblSolution->clear();
    if (form_.errorRow >= 0) grdRestraints->selectRow(form_.errorRow);
    return;
  }
  lblSolution->setText(Q(form_.lblSolution));
}

// Closing the window ends a running search.
void frmCalculator::reject() {
  form_.cmdStop_Click();
  QDialog::reject();
}

}  // namespace kestrow
