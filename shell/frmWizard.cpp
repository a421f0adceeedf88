#include "shell/frmWizard.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Text.h"
#include "core/Ui.h"
#include "shell/LevelGrid.h"
#include "shell/QtText.h"
#include "shell/Translate.h"
#include "shell/frmDesSel.h"
#include "shell/frmSelFac.h"

namespace kestrow {

namespace {

struct PageInfo {
  const char* name;
  const char* captionTag;
  const char* caption;
};
const PageInfo PAGES[] = {{"frmWiz01", "WIZ1cap", "Problem formulation"},
                          {"frmWiz02", "WIZ2cap", "Factor definition"},
                          {"frmWiz03", "WIZ3cap", "Factors"},
                          {"frmWiz04", "WIZ4cap", "Response variable definition"},
                          {"frmWiz05", "WIZ5cap", "Response variables"},
                          {"frmWiz06", "WIZ6cap", "Study preparation (1)"},
                          {"frmWiz07", "WIZ7cap", "Study preparation (2)"},
                          {"frmWiz08", "WIZ8cap", "Study preparation (3)"}};

}  // namespace

frmWizard::frmWizard(QWidget* parent) : QDialog(parent) {
  setObjectName("frmWizard");
  pages_ = new QStackedWidget(this);
  auto edit = [&](QWidget* page, const char* name) {
    auto* e = new QLineEdit(page);
    e->setObjectName(name);
    return e;
  };
  // The lists wrap a long name onto more lines rather than cut it or scroll
  // sideways.
  auto wrapping = [&](QWidget* page, const char* name) {
    auto* l = new QListWidget(page);
    l->setObjectName(name);
    l->setWordWrap(true);
    l->setTextElideMode(Qt::ElideNone);
    l->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return l;
  };
  auto page = [&](int i) {
    auto* w = new QWidget(pages_);
    w->setObjectName(PAGES[i].name);
    pages_->addWidget(w);
    return w;
  };

  QWidget* p1 = page(0);
  txtProblem = edit(p1, "txtName");
  txtProblemDesc = edit(p1, "txtDesc");
  auto* f1 = new QFormLayout(p1);
  f1->addRow("Problem name:", txtProblem);
  f1->addRow("Description:", txtProblemDesc);

  QWidget* p2 = page(1);
  txtFactor = edit(p2, "txtFactor");
  txtFactorAbbr = edit(p2, "txtAbbr");
  txtFactorDesc = edit(p2, "txtFactorDesc");
  chkNumeric = new QCheckBox("Factor is discrete / non-numeric", p2);
  chkNumeric->setObjectName("chkNumeric");
  chkControlled = new QCheckBox("This is a known, controllable noise factor", p2);
  chkControlled->setObjectName("chkControlled");
  grdLevels = new QTableWidget(FactorForm::LEVEL_ROWS, 3, p2);
  grdLevels->setObjectName("grdLevels");
  grdLevels->setHorizontalHeaderLabels({Tr("Coding"), Tr("Value"), Tr("Desc")});
  grdLevels->horizontalHeader()->setStretchLastSection(true);
  cmdAddFactor = new QPushButton("&Add factor", p2);
  cmdAddFactor->setObjectName("cmdAdd");
  auto* f2 = new QFormLayout(p2);
  f2->addRow("Factor name:", txtFactor);
  f2->addRow("Abbreviation:", txtFactorAbbr);
  f2->addRow("Description:", txtFactorDesc);
  f2->addRow(chkNumeric);
  f2->addRow(chkControlled);
  f2->addRow(grdLevels);
  f2->addRow(cmdAddFactor);

  QWidget* p3 = page(2);
  lstFactors = wrapping(p3, "lstFactors");
  (new QVBoxLayout(p3))->addWidget(lstFactors);

  QWidget* p4 = page(3);
  txtRV = edit(p4, "txtRV");
  txtRVAbbr = edit(p4, "txtRVAbbr");
  txtRVDesc = edit(p4, "txtRVDesc");
  txtUnits = edit(p4, "txtUnits");
  txtTarget = edit(p4, "txtTarget");
  cmdAddRV = new QPushButton("&Add response variable", p4);
  cmdAddRV->setObjectName("cmdAdd");
  auto* f4 = new QFormLayout(p4);
  f4->addRow("Response variable:", txtRV);
  f4->addRow("Abbreviation:", txtRVAbbr);
  f4->addRow("Description:", txtRVDesc);
  f4->addRow("Units:", txtUnits);
  f4->addRow("Target (a number, MAX or MIN):", txtTarget);
  f4->addRow(cmdAddRV);

  QWidget* p5 = page(4);
  lstRespVars = wrapping(p5, "lstRespVars");
  (new QVBoxLayout(p5))->addWidget(lstRespVars);

  QWidget* p6 = page(5);
  txtStudy = edit(p6, "txtStudy");
  txtStudyDesc = edit(p6, "txtStudyDesc");
  auto* f6 = new QFormLayout(p6);
  f6->addRow("Study name:", txtStudy);
  f6->addRow("Description:", txtStudyDesc);

  QWidget* p7 = page(6);
  cmdStudyFactors = new QPushButton("Choose the &factors...", p7);
  cmdStudyFactors->setObjectName("cmdFactors");
  cmdStudyDesign = new QPushButton("Choose the &design...", p7);
  cmdStudyDesign->setObjectName("cmdDesign");
  lblStudyFactors = new QLabel(p7);
  lblStudyFactors->setWordWrap(true);
  lblStudyDesign = new QLabel(p7);
  auto* f7 = new QFormLayout(p7);
  f7->addRow(cmdStudyFactors, lblStudyFactors);
  f7->addRow(cmdStudyDesign, lblStudyDesign);

  QWidget* p8 = page(7);
  grdRVs = wrapping(p8, "grdRVs");
  txtReps = edit(p8, "txtReps");
  txtReps->setText("2");
  chkRnd = new QCheckBox("Randomize the run order", p8);
  chkRnd->setObjectName("chkRnd");
  chkRnd->setChecked(true);
  auto* f8 = new QFormLayout(p8);
  f8->addRow("Response variables:", grdRVs);
  f8->addRow("Replications:", txtReps);
  f8->addRow(chkRnd);

  cmdPrev = new QPushButton("< &Back", this);
  cmdPrev->setObjectName("cmdPrev");
  cmdNext = new QPushButton("&Next >", this);
  cmdNext->setObjectName("cmdNext");
  cmdNext->setDefault(true);
  cmdCancel = new QPushButton("Cancel", this);
  cmdCancel->setObjectName("cmdCancel");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdPrev);
  buttons->addWidget(cmdNext);
  buttons->addWidget(cmdCancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(pages_, 1);
  layout->addLayout(buttons);

  connect(cmdNext, &QPushButton::clicked, this, &frmWizard::cmdNext_Click);
  connect(cmdPrev, &QPushButton::clicked, this, &frmWizard::cmdPrev_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(cmdAddFactor, &QPushButton::clicked, this, [this] {
    FactorFromForm();
    if (!Complain(wizard_.Wiz02Add())) FactorToForm();
  });
  connect(cmdAddRV, &QPushButton::clicked, this, [this] {
    RVFromForm();
    if (!Complain(wizard_.Wiz04Add())) RVToForm();
  });
  connect(cmdStudyFactors, &QPushButton::clicked, this, [this] {
    std::vector<std::string> used;
    for (const Item& item : gStudyEdit.Factors) used.push_back(item.sKey);
    frmSelFac dialog(used, this);
    if (dialog.exec() != QDialog::Accepted) return;
    gStudyEdit.Factors.Clear();
    for (const std::string& k : dialog.Used()) gStudyEdit.Factors.Add(Item{k});
    gStudyEdit.ZapDesign();
    Show(7);
  });
  connect(cmdStudyDesign, &QPushButton::clicked, this, [this] {
    if (gStudyEdit.Factors.Empty()) {
      Complain(GetText("WIZerre"));
      return;
    }
    frmDesSel(gStudyEdit, this).exec();
    Show(7);
  });

  wizard_.Begin();
  for (QWidget* w : findChildren<QWidget*>()) {
    if (w->objectName().startsWith("frmWiz")) TranslateForm(w);
  }
  FactorToForm();
  RVToForm();
  Show(1);
  resize(600, 520);
}

int frmWizard::Step() const { return pages_->currentIndex() + 1; }

bool frmWizard::Complain(const std::string& text) {
  if (text.empty()) return false;
  ErrorBox(text);
  return true;
}

void frmWizard::FactorToForm() {
  const FactorForm& f = wizard_.factor;
  txtFactor->setText(Q(f.txtName));
  txtFactorAbbr->setText(Q(f.txtAbbr));
  txtFactorDesc->setText(Q(f.txtDesc));
  chkNumeric->setChecked(f.chkNumeric);
  chkControlled->setChecked(f.chkControlled);
  LevelsToGrid(f, grdLevels);
}

void frmWizard::FactorFromForm() {
  FactorForm& f = wizard_.factor;
  f.txtName = txtFactor->text().toStdString();
  f.txtAbbr = txtFactorAbbr->text().toStdString();
  f.txtDesc = txtFactorDesc->text().toStdString();
  f.chkNumeric = chkNumeric->isChecked();
  f.chkControlled = chkControlled->isChecked();
  LevelsFromGrid(grdLevels, f);
}

void frmWizard::RVToForm() {
  const RVForm& rv = wizard_.respVar;
  txtRV->setText(Q(rv.txtName));
  txtRVAbbr->setText(Q(rv.txtAbbr));
  txtRVDesc->setText(Q(rv.txtDesc));
  txtUnits->setText(Q(rv.txtUnits));
  txtTarget->setText(Q(rv.txtTarget));
}

void frmWizard::RVFromForm() {
  RVForm& rv = wizard_.respVar;
  rv.txtName = txtRV->text().toStdString();
  rv.txtAbbr = txtRVAbbr->text().toStdString();
  rv.txtDesc = txtRVDesc->text().toStdString();
  rv.txtUnits = txtUnits->text().toStdString();
  rv.txtTarget = txtTarget->text().toStdString();
}

void frmWizard::Show(int step) {
  pages_->setCurrentIndex(step - 1);
  const PageInfo& info = PAGES[step - 1];
  std::string caption = GetText(info.captionTag);
  // The dictionary's captions carry the wizard's name already.
  setWindowTitle(caption.empty() ? QString("Kestrow Wizard - ") + info.caption : Q(caption));
  cmdPrev->setEnabled(step > 1);
  cmdNext->setText(step == 8 ? "&Finish" : "&Next >");
  if (step == 3) {
    lstFactors->clear();
    for (const Factor& f : gProblem->Factors) {
      QStringList levels;
      for (const Level& l : f.Levels) levels << Q(l.sName);
      lstFactors->addItem(QString("%1   %2 %3   (%4)")
                              .arg(Q(f.sName))
                              .arg(f.Levels.Count())
                              .arg(Tr("levels"))
                              .arg(levels.join(", ")));
    }
  } else if (step == 5) {
    lstRespVars->clear();
    for (const RespVar& rv : gProblem->RespVars) lstRespVars->addItem(Q(rv.sName + " - " + rv.sDesc));
  } else if (step == 7) {
    QStringList names;
    for (int f = 1; f <= gStudyEdit.Factors.Count(); ++f) names << Q(gStudyEdit.GetFactorName(f));
    lblStudyFactors->setText(names.join(", "));
    lblStudyDesign->setText(Q(gStudyEdit.sDesignName));
  } else if (step == 8) {
    grdRVs->clear();
    for (const RespVar& rv : gProblem->RespVars) {
      auto* item = new QListWidgetItem(Q(rv.sName), grdRVs);
      item->setData(Qt::UserRole, Q(rv.sKey));
      item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
      item->setCheckState(gProblem->RespVars.Count() == 1 ? Qt::Checked : Qt::Unchecked);
    }
    bool fixed = gStudyEdit.iDesFlag & (DES_UNSTRUCTURED | DES_BLOCKED);
    if (fixed) {
      txtReps->setText("1");
      chkRnd->setChecked(false);
    }
    txtReps->setEnabled(!fixed);
    chkRnd->setEnabled(!fixed);
  }
}

void frmWizard::cmdNext_Click() {
  std::string complaint;
  switch (Step()) {
    case 1: complaint = wizard_.Wiz01OK(txtProblem->text().toStdString(), txtProblemDesc->text().toStdString()); break;
    case 2:
      FactorFromForm();
      complaint = wizard_.Wiz02OK();
      if (complaint.empty()) FactorToForm();
      break;
    case 4:
      RVFromForm();
      complaint = wizard_.Wiz04OK();
      if (complaint.empty()) RVToForm();
      break;
    case 6: complaint = wizard_.Wiz06OK(txtStudy->text().toStdString(), txtStudyDesc->text().toStdString()); break;
    case 7: complaint = wizard_.Wiz07OK(); break;
    case 8: {
      std::vector<std::string> keys;
      for (int i = 0; i < grdRVs->count(); ++i)
        if (grdRVs->item(i)->checkState() == Qt::Checked)
          keys.push_back(grdRVs->item(i)->data(Qt::UserRole).toString().toStdString());
      complaint = wizard_.Wiz08OK(keys, txtReps->text().toStdString(), chkRnd->isChecked());
      if (!Complain(complaint)) accept();
      return;
    }
    default: break;
  }
  if (!Complain(complaint)) Show(Step() + 1);
}

void frmWizard::cmdPrev_Click() {
  int step = Step();
  // Going back from a page with text on it loses that text: ask first.
  if (step == 2) {
    FactorFromForm();
    if (wizard_.Wiz02HasText() && !SetupWizard::ConfirmBack("WIZerr6a")) return;
  } else if (step == 4) {
    RVFromForm();
    if (wizard_.Wiz04HasText() && !SetupWizard::ConfirmBack("WIZerra")) return;
  } else if (step == 6 && !txtStudy->text().trimmed().isEmpty()) {
    if (!SetupWizard::ConfirmBack("WIZerrd")) return;
  }
  if (step > 1) Show(step - 1);
}

}  // namespace kestrow
