// Every dialog stays usable with names of 100 characters and factors of 8
// levels: it fits a screen of 1280 x 800, and what it lists can be read
// (nothing clipped, no column as wide as a name). With KESTROW_SHOTS set to a
// folder, each dialog is also saved there as a PNG to be looked at.
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

#include "ShellTestSupport.h"
#include "core/Globals.h"
#include "data/Statistics.h"
#include "designs/Builders.h"
#include "designs/Design.h"
#include "analyses/ANOMForm.h"
#include "core/CheckList.h"
#include "shell/ChartChoiceDialogs.h"
#include "shell/frmANOM.h"
#include "shell/frmMChart.h"
#include "shell/frmANOVA.h"
#include "shell/frmFXplot.h"
#include "shell/frmList.h"
#include "shell/frmMMP.h"
#include "shell/frmPairwise.h"
#include "shell/frmResponse.h"
#include "shell/frmDesSel.h"
#include "shell/frmFactor.h"
#include "shell/frmFilter.h"
#include "shell/frmQuick.h"
#include "shell/frmRV.h"
#include "shell/frmSelFac.h"
#include "shell/frmSetSeq.h"
#include "shell/frmStudy.h"
#include "shell/frmViewDes.h"
#include "shell/frmWizard.h"
#include "shell/frmXform.h"

using namespace kestrow;

namespace {

// A name of 100 characters that starts with its own number.
std::string LongName(const std::string& what, int i) {
  std::string name = what + " " + std::to_string(i) + " ";
  while (name.size() < 100) name += "long name ";
  return name.substr(0, 100);
}

// Three factors of eight levels, two responses, and a replicated full
// factorial of them with data, every name 100 characters long.
void MakeProblem() {
  auto p = std::make_unique<Problem>();
  p->sName = LongName("Problem", 1);
  for (int f = 1; f <= 3; ++f) {
    Factor factor;
    factor.sKey = "f" + std::to_string(f);
    factor.sName = LongName("Factor", f);
    factor.sAbbr = f == 2 ? "" : "F" + std::to_string(f);  // the second one goes by its name
    for (int l = 1; l <= 8; ++l) factor.Levels.Add(Level{std::to_string(100 * l + 5), "", MISSING_VALUE});
    p->Factors.Add(factor, factor.sKey);
  }
  for (int v = 1; v <= 2; ++v) {
    RespVar rv;
    rv.sKey = "v" + std::to_string(v);
    rv.sName = LongName("Response", v);
    rv.fTarget = MISSING_VALUE;
    p->RespVars.Add(rv, rv.sKey);
  }
  Study s;
  s.sKey = "s1";
  s.sName = LongName("Study", 1);
  s.pProblem = p.get();
  for (int f = 1; f <= 3; ++f) s.Factors.Add(Item{"f" + std::to_string(f)});
  for (int v = 1; v <= 2; ++v) s.StudyRespVars.Add(StudyRespVar{"v" + std::to_string(v), 0, 0, 0});
  GetFullyCrossed(s, Design{});
  s.sDesignName = "512-run Full factorial";
  s.iDesFlag = DES_FULLY_CROSSED;
  s.iReps = 2;
  s.SetDataArray();
  for (int run = 1; run <= s.iNumRuns; ++run)
    for (int rep = 1; rep <= 2; ++rep)
      for (int v = 1; v <= 2; ++v) s.SetData(v, run, rep, static_cast<float>(run % 17 + rep + v));
  p->AddStudy(std::move(s));
  ReplaceProblem(std::move(p));
}

}  // namespace

class tst_LongNames : public QObject {
  Q_OBJECT

 private:
  // Shows the dialog, saves its picture when asked to, and checks its size.
  void Look(QDialog& d, const QString& name) {
    d.show();
    QVERIFY(QTest::qWaitForWindowExposed(&d));
    QApplication::processEvents();
    QByteArray shots = qgetenv("KESTROW_SHOTS");
    if (!shots.isEmpty()) d.grab().save(QString::fromUtf8(shots) + "/" + name + ".png");
    QVERIFY2(d.width() <= 1280 && d.height() <= 800,
             qPrintable(QString("%1 is %2 x %3").arg(name).arg(d.width()).arg(d.height())));
  }

 private slots:
  void initTestCase() {
    QVERIFY(test::OpenEnglish());
    test::FreshUi();
    MakeProblem();
  }

  void theStudyDialogListsEveryFactorWhole() {
    frmStudy d(3, "s1");
    Look(d, "frmStudy");
    // Each name on its own line and whole: the last factor is there, and no
    // line is wider than the list.
    QCOMPARE(d.lblFactors->count(), 3);
    QCOMPARE(d.lblFactors->item(2)->text(), QString::fromStdString(LongName("Factor", 3)));
    QCOMPARE(d.lblRespVars->count(), 2);
    for (QListWidget* list : {d.lblFactors, d.lblRespVars})
      for (int i = 0; i < list->count(); ++i)
        QVERIFY(list->visualItemRect(list->item(i)).width() <= list->viewport()->width());
  }

  void theDesignViewerShowsTheLevelsBesideTheNames() {
    frmViewDes d(gProblem->Studies(1));
    Look(d, "frmViewDes");
    // The factor that goes by its long name is cut to a column a level fits,
    // so that every treatment column is in sight.
    int lastFactor = 3;
    QVERIFY(d.grdDesign->columnViewportPosition(lastFactor) + d.grdDesign->columnWidth(lastFactor) <=
            d.grdDesign->viewport()->width());
  }

  void theOtherDialogs() {
    Statistics stats;
    stats.Compute(gProblem->Studies(1));
    gStudyEdit = gProblem->Studies(1);
    {
      frmFactor d(EditMode::Edit, "f1");
      Look(d, "frmFactor");
    }
    {
      frmRV d(EditMode::Edit, "v1");
      Look(d, "frmRV");
    }
    {
      frmANOVA d(gProblem->Studies(1), stats);
      Look(d, "frmANOVA");
    }
    {
      frmDesSel d(gStudyEdit);
      Look(d, "frmDesSel");
    }
    {
      frmSelFac d({"f1", "f2"});
      Look(d, "frmSelFac");
    }
    {
      frmSetSeq d(gProblem->Studies(1));
      Look(d, "frmSetSeq");
    }
    {
      frmXform d(gProblem->Studies(1));
      Look(d, "frmXform");
    }
    {
      frmQuick d;
      Look(d, "frmQuick");
    }
  }

  // The dialogs of the charted analyses, with every chart chosen.
  void theChartDialogs() {
    Statistics stats;
    Study& s = gProblem->Studies(1);
    stats.Compute(s);
    s.ANOM_sCharts = "1WX,1WR,f1,f2,f3";
    s.FXPLOT_sF1Key = "f1";
    s.FXPLOT_sF2Key = "f3";
    s.FXPLOT_sFilter = "2;1,2;8";
    s.RESPONSE_sF1Key = "f1";
    s.RESPONSE_sF2Key = "f2";
    s.RESPONSE_sF3Key = "f3";
    s.ANOM_sRVkey = s.FXPLOT_sRVkey = s.RESPONSE_sRVkey = s.MMP_sRVkey = "v1";
    {
      frmANOM d(s, stats);
      Look(d, "frmANOM");
      QVERIFY(d.lblCharts->wordWrap());
    }
    {
      frmPairwise d(s, stats);
      Look(d, "frmPairwise");
    }
    {
      frmFXplot d(s, stats);
      Look(d, "frmFXplot");
    }
    {
      frmMMP d(s, stats);
      Look(d, "frmMMP");
    }
    {
      frmResponse d(s, stats);
      Look(d, "frmResponse");
    }
    {
      frmResiduals d(s, stats);
      Look(d, "frmResiduals");
    }
    {
      frmMChart d(s, stats);
      Look(d, "frmMChart");
    }
    {
      ANOMForm form(s, stats);
      CheckList list = form.ChartList();
      frmList d(list);
      Look(d, "frmList");
    }
  }

  // The wizard walked with a problem, a factor of 8 levels, a response and a
  // study of long names: each page fits and says its step once in its title.
  void theWizardWithLongNames() {
    frmWizard d;
    auto title = [&](const char* tag) {
      QCOMPARE(d.windowTitle(), test::T(tag));
      QCOMPARE(d.windowTitle().count("Kestrow Wizard"), 1);
    };
    title("WIZ1cap");
    Look(d, "frmWizard1");
    d.txtProblem->setText(QString::fromStdString(LongName("Problem", 2)));
    d.cmdNext->click();
    title("WIZ2cap");
    d.txtFactor->setText(QString::fromStdString(LongName("Factor", 1)));
    for (int l = 0; l < 8; ++l) d.grdLevels->setItem(l, 1, new QTableWidgetItem(QString::number(100 * (l + 1) + 5)));
    Look(d, "frmWizard2");
    d.cmdNext->click();
    title("WIZ3cap");
    Look(d, "frmWizard3");
    QCOMPARE(d.lstFactors->count(), 1);
    QVERIFY(d.lstFactors->visualItemRect(d.lstFactors->item(0)).width() <= d.lstFactors->viewport()->width());
    d.cmdNext->click();
    title("WIZ4cap");
    d.txtRV->setText(QString::fromStdString(LongName("Response", 1)));
    d.cmdNext->click();
    title("WIZ5cap");
    Look(d, "frmWizard5");
    QVERIFY(d.lstRespVars->visualItemRect(d.lstRespVars->item(0)).width() <= d.lstRespVars->viewport()->width());
    d.cmdNext->click();
    title("WIZ6cap");
    d.txtStudy->setText(QString::fromStdString(LongName("Study", 2)));
    d.cmdNext->click();
    title("WIZ7cap");
    Look(d, "frmWizard7");
    d.cmdNext->click();  // no factors chosen: said, and the page stays
    title("WIZ7cap");
  }
};

QTEST_MAIN(tst_LongNames)
#include "tst_LongNames.moc"
