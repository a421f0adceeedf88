#include "shell/frmNonLin.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "core/Report.h"
#include "core/Study.h"
#include "shell/Buttons.h"
#include "shell/QtText.h"
#include "shell/Translate.h"

namespace kestrow {

frmNonLin::frmNonLin(Study& study, const Statistics& stats, QWidget* parent)
    : QDialog(parent), study_(study), stats_(stats) {
  setObjectName("frmNonLin");
  setWindowTitle("Non-linearity Test");
  auto* layout = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  auto label = [this](const char* name, const char* caption) {
    auto* l = new QLabel(caption, this);
    l->setObjectName(name);
    return l;
  };
  auto value = [this](const char* name) {
    auto* l = new QLabel(this);
    l->setObjectName(QString(name) + "Value");
    l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return l;
  };
  cmbRV = new QComboBox(this);
  cmbRV->setObjectName("cmbRV");
  for (const StudyRespVar& srv : study.StudyRespVars) cmbRV->addItem(Q(study.GetPRVName(srv.sKey)));
  cmbConf = new QComboBox(this);
  cmbConf->setObjectName("cmbConf");
  for (int c : NONLIN_CONFIDENCE) cmbConf->addItem(" " + QString::number(c));
  cmbConf->setCurrentIndex(1);
  form->addRow(label("lblRV", "Response variable:"), cmbRV);
  form->addRow(label("lblConf", "Confidence (%):"), cmbConf);
  form->addRow(label("lblBaseAvg", "Average for base design"), lblBaseAvg = value("lblBaseAvg"));
  form->addRow(label("lblCentreAvg", "Average for center points"), lblCentreAvg = value("lblCentreAvg"));
  form->addRow(label("lblENonLin", "Effect of non-linearity"), lblENonLin = value("lblENonLin"));
  form->addRow(label("lblSigma", "Sigma to test non-linearity"), lblSigma = value("lblSigma"));
  form->addRow(label("lblDL", "Decision limits for non-linearity"), lblDL = value("lblDL"));
  layout->addLayout(form);
  layout->addWidget(label("lblConclusion", "Conclusion:"));
  lblConclusion = value("lblConclusion");
  lblConclusion->setWordWrap(true);
  lblConclusion->setMinimumWidth(360);
  layout->addWidget(lblConclusion);
  auto* buttons = new QDialogButtonBox(this);
  cmdPrint = AddButton(buttons, "cmdPrint", "&Print", QDialogButtonBox::ActionRole);
  cmdOK = AddButton(buttons, "cmdOK", "OK", QDialogButtonBox::AcceptRole);
  cmdOK->setDefault(true);
  layout->addWidget(buttons);

  connect(cmbRV, &QComboBox::currentIndexChanged, this, [this](int i) {
    iRVnum = i + 1;
    ComputeNonLin();
  });
  connect(cmbConf, &QComboBox::currentIndexChanged, this, [this] { ComputeNonLin(); });
  connect(cmdPrint, &QPushButton::clicked, this, [this] {
    ShowTextReport([this](const std::string& file) {
      return WriteNonLin(*gProblem, study_, iRVnum, Confidence(), result_, file);
    });
  });
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
  TranslateForm(this);
  ComputeNonLin();
}

int frmNonLin::Confidence() const {
  int i = cmbConf->currentIndex();
  return NONLIN_CONFIDENCE[i >= 0 && i < 3 ? i : 1];
}

void frmNonLin::ComputeNonLin() {
  result_ = kestrow::ComputeNonLin(study_, stats_, iRVnum, Confidence());
  lblBaseAvg->setText(Q(result_.lblBaseAvg));
  lblCentreAvg->setText(Q(result_.lblCentreAvg));
  lblENonLin->setText(Q(result_.lblENonLin));
  lblSigma->setText(Q(result_.lblSigma));
  lblDL->setText(Q(result_.lblDL));
  lblConclusion->setText(Q(result_.lblConclusion));
}

}  // namespace kestrow
