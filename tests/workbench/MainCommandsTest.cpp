// The main window's rules without the window: the save question, opening,
// deleting and locking, the tree, and the factor and response dialogs.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/Language.h"
#include "core/Paths.h"
#include "core/Startup.h"
#include "core/TestSupport.h"
#include "workbench/FactorForm.h"
#include "workbench/MainCommands.h"
#include "workbench/ProblemTree.h"
#include "workbench/RVForm.h"

namespace kestrow {
namespace {

using namespace test;

class CommandsTest : public ScratchTest {
 protected:
  void SetUp() override { OpenLanguage(std::string(KESTROW_BIN) + "/KSTlang.MDB", "English"); }
  void TearDown() override { CloseLanguage(); }
};

TEST_F(CommandsTest, SaveLogicAsksOnlyWhenChangedAndAnUntitledProblemGoesThroughTheSaveDialog) {
  CreateNew();
  EXPECT_TRUE(SaveLogic());
  EXPECT_TRUE(ui->messages.empty());
  gProblem->bChanged = true;
  ui->answers = {Answer::Cancel};
  EXPECT_FALSE(SaveLogic());
  EXPECT_EQ(ui->messages.back().text, "Current file has changed. Do you wish to save the changes?");
  ui->answers = {Answer::Yes};  // and the dialog is cancelled: stay, with the problem as it is
  EXPECT_FALSE(SaveLogic());
  EXPECT_TRUE(gProblem->bChanged);
  ui->answers = {Answer::Yes};
  ui->savePaths = {dir / "named"};
  EXPECT_TRUE(SaveLogic());
  EXPECT_FALSE(gProblem->bChanged);
  EXPECT_EQ(gProblem->sPathFileName, dir / "named.KSW");
  EXPECT_TRUE(Problem().Load(dir / "named.KSW"));
}

TEST_F(CommandsTest, AFailedSaveInSaveLogicKeepsTheCloseFromGoingOn) {
  gProblem = Sample("PlasmaEtch");
  gProblem->sPathFileName = "/nonexistent/folder/p.KSW";
  gProblem->bChanged = true;
  ui->answers = {Answer::Yes};
  EXPECT_FALSE(SaveLogic());
  EXPECT_EQ(ui->messages.back().text, "Error saving file /nonexistent/folder/p.KSW");
}

TEST_F(CommandsTest, OpenReplacesTheProblemOnlyOnSuccessAndRemembersTheFile) {
  std::string good = std::string(KESTROW_SAMPDATA) + "/PlasmaEtch.KSW";
  ASSERT_TRUE(OpenKSTFile(good));
  EXPECT_EQ(gSettings.RecentFile[1], good);
  EXPECT_EQ(gSettings.DataDir, KESTROW_SAMPDATA);
  WriteFile(dir / "bad.KSW", "nonsense");
  EXPECT_FALSE(OpenKSTFile(dir / "bad.KSW"));
  EXPECT_EQ(gProblem->sName, "Plasma etch");
  EXPECT_EQ(ui->messages.back().text, dir / "bad.KSW" + "\n" + GetText("MNerr8"));
}

TEST_F(CommandsTest, DeletingAFactorKeepsTheLockedStudiesThatUseIt) {
  gProblem = Sample("PlasmaEtch");
  AddLockedCopy(*gProblem, "s2");
  ui->answers = {Answer::Yes};
  ASSERT_TRUE(DeleteFactor("f1"));
  EXPECT_EQ(ui->messages.back().kind, "warn");
  EXPECT_EQ(gProblem->Studies.Count(), 1);
  EXPECT_EQ(gProblem->Studies(1).sKey, "s2");
  EXPECT_EQ(gProblem->Studies(1).GetFactorName(1), "Power");  // its own copy
  EXPECT_TRUE(gProblem->bChanged);
}

TEST_F(CommandsTest, AnUnusedFactorIsAskedAboutWithAPlainQuestionAndNoKeepsIt) {
  gProblem = Sample("PlasmaEtch");
  Factor spare;
  spare.sKey = "f9";
  spare.sName = "Spare";
  gProblem->Factors.Add(spare, "f9");
  EXPECT_FALSE(DeleteFactor("f9"));
  EXPECT_EQ(ui->messages.back().kind, "yesno");
  EXPECT_TRUE(gProblem->Factors.Find("f9"));
}

TEST_F(CommandsTest, DeletingAResponseAndAStudy) {
  gProblem = Sample("CatalystTrial");
  ui->answers = {Answer::Yes};
  ASSERT_TRUE(DeleteRespVar("v2"));
  EXPECT_EQ(gProblem->Studies.Count(), 0);
  gProblem = Sample("PlasmaEtch");
  gStudy = &gProblem->Studies(1);
  ui->answers = {Answer::Yes};
  ASSERT_TRUE(DeleteStudy("s1"));
  EXPECT_EQ(gStudy, nullptr);
  EXPECT_EQ(gProblem->GetNextNode("s"), "s1");
}

TEST_F(CommandsTest, LockingAStudyWithMissingDataAsksTwice) {
  gProblem = Sample("CatalystTrial");
  ui->answers = {Answer::Yes, Answer::No};
  EXPECT_FALSE(LockStudy("s1"));
  EXPECT_FALSE(gProblem->Studies(1).IsLocked());
  ui->answers = {Answer::Yes, Answer::Yes};
  EXPECT_TRUE(LockStudy("s1"));
  EXPECT_TRUE(gProblem->Studies(1).IsLocked());
  EXPECT_FALSE(LockStudy("s1"));  // one way only
}

TEST_F(CommandsTest, TheTreeHasANodeForEverythingAndMarksALockedStudy) {
  gProblem = Sample("SupplierQualification");
  auto tree = ProblemToTree(*gProblem);
  auto find = [&](const std::string& key) {
    auto it = std::find_if(tree.begin(), tree.end(), [&](const TreeNode& n) { return n.key == key; });
    return it == tree.end() ? nullptr : &*it;
  };
  ASSERT_TRUE(find("s1"));
  EXPECT_EQ(find("s1")->icon, "lock");
  EXPECT_EQ(find("w1+f1")->parent, "w1");
  EXPECT_EQ(find("w1+f1")->caption, "Supplier");
  gSettings.TreeIcons = false;
  tree = ProblemToTree(*gProblem);
  EXPECT_EQ(find("s1")->icon, "study");
  EXPECT_EQ(find("s1")->caption, "Qualification lot 1 [" + GetText("Locked") + "]");
}

TEST_F(CommandsTest, AnUnstructuredStudyOffersNoneOfTheFirstEightAnalyses) {
  Study s;
  EXPECT_EQ(AnalysisNodes(s).size(), 14u);
  s.iDesFlag = DES_UNSTRUCTURED;
  EXPECT_EQ(AnalysisNodes(s), (std::vector<int>{15, 7, 14, 9, 10, 11}));
}

TEST_F(CommandsTest, NodeKeysNameTheirStudyAndDetail) {
  NodeRef r = ParseNodeKey("z12+13");
  EXPECT_EQ(r.kind, 'z');
  EXPECT_EQ(r.studyKey, "s12");
  EXPECT_EQ(r.number, 13);
  EXPECT_EQ(ParseNodeKey("w3+f2").detail, "f2");
  EXPECT_EQ(ParseNodeKey("d7").studyKey, "s7");
  EXPECT_EQ(ParseNodeKey("f4").studyKey, "");
}

TEST_F(CommandsTest, FactorDialogRefusesLongAndRepeatedLevelsAndStoresACleanFactor) {
  gProblem = Sample("PlasmaEtch");
  FactorForm form;
  form.Begin(EditMode::New);
  Factor out;
  form.txtName = "Pressure";
  form.grdLevels[0].value = "200";
  form.grdLevels[1].value = "1000000";
  EXPECT_EQ(form.ValidateForm(out), SubstituteCopy(GetText("Ferr4"), "6"));
  form.grdLevels[1].value = "2e2";
  EXPECT_EQ(form.ValidateForm(out), GetText("WIZerr5"));  // 2e2 is 200 again
  form.grdLevels[1].value = "1e400";  // numeric text, but beyond any float
  EXPECT_EQ(form.ValidateForm(out), GetText("Ferr5"));
  form.grdLevels[1].value = "150";
  form.grdLevels[1].coding = "low";  // a coding is a number, MAX or MIN
  EXPECT_EQ(form.ValidateForm(out), GetText("Ferr7"));
  form.grdLevels[1].value = "150.0";
  form.grdLevels[1].coding = "min";
  EXPECT_EQ(form.ValidateForm(out), "");
  EXPECT_EQ(out.Levels(1).sName, "150");  // sorted, and the float's text
  EXPECT_EQ(out.Levels(1).fCode, TARGET_MIN);
  bool stored;
  EXPECT_EQ(form.OK(stored), "");
  EXPECT_TRUE(stored);
  EXPECT_TRUE(gProblem->Factors.Find("f4"));
}

TEST_F(CommandsTest, CopyingAFactorPrefixesItsDescriptionAndNeedsANewName) {
  gProblem = Sample("PlasmaEtch");
  FactorForm form;
  form.Begin(EditMode::Copy, "f1");
  EXPECT_EQ(form.txtDesc, GetText("Copyof") + "RF power");
  EXPECT_EQ(form.grdLevels[0].value, "275");
  Factor out;
  EXPECT_EQ(form.ValidateForm(out), GetText("WIZerr3"));
}

TEST_F(CommandsTest, EditingAFactorInUseAsksAndNoKeepsItAsItWas) {
  gProblem = Sample("PlasmaEtch");
  FactorForm form;
  form.Begin(EditMode::Edit, "f1");
  form.txtName = "RF power";
  ui->answers = {Answer::No};
  bool stored;
  EXPECT_EQ(form.OK(stored), "");
  EXPECT_FALSE(stored);
  EXPECT_EQ(gProblem->Factors.Find("f1")->sName, "Power");
  ui->answers = {Answer::Yes};
  form.OK(stored);
  EXPECT_TRUE(stored);
  EXPECT_EQ(gProblem->Factors.Find("f1")->sName, "RF power");
  EXPECT_EQ(gProblem->Studies(1).GetFactorName(1), "RF power");
}

TEST_F(CommandsTest, ResponseDialogChecksNameAndTarget) {
  gProblem = Sample("PlasmaEtch");
  RVForm form;
  form.Begin(EditMode::New);
  RespVar out;
  EXPECT_EQ(form.RVOK(out), GetText("Ferr1"));
  form.txtName = "Etch rate";
  EXPECT_EQ(form.RVOK(out), GetText("WIZerr8"));
  form.txtName = "Uniformity";
  form.txtTarget = "best";
  EXPECT_EQ(form.RVOK(out), GetText("WIZerr9"));
  form.txtTarget = " max ";
  EXPECT_EQ(form.RVOK(out), "");
  EXPECT_EQ(out.fTarget, TARGET_MAX);
}

TEST_F(CommandsTest, StartUpEndsWithoutTheLanguageOrTheDesignsButWritesTheSettings) {
  setenv("KESTROW_CONFIG_DIR", dir.str().c_str(), 1);
  SetProgramFolder(dir.str());  // a program folder with no databases
  EXPECT_FALSE(StartUp(""));
  EXPECT_NE(ui->messages.back().text.find("[Main]"), std::string::npos);
  EXPECT_TRUE(FileExists(dir / "KestWin.INI"));

  // With the language but without the design catalogue.
  std::filesystem::copy_file(std::string(KESTROW_BIN) + "/KSTlang.MDB", dir / "KSTlang.MDB");
  EXPECT_FALSE(StartUp(""));
  EXPECT_EQ(ui->messages.back().text, "Cannot locate designs database, DESIGNS.MDB");

  std::filesystem::copy_file(std::string(KESTROW_BIN) + "/DESIGNS.MDB", dir / "DESIGNS.MDB");
  ui->messages.clear();
  EXPECT_TRUE(StartUp("-ADMIN /data/Run.KSW"));
  EXPECT_TRUE(gbAdmin);
  SetProgramFolder("");
  unsetenv("KESTROW_CONFIG_DIR");
}

TEST_F(CommandsTest, TheTextEditorAdviceNamesWhatIsWrong) {
  gSettings.TextEd = "";
  EXPECT_EQ(TextEditorAdvice().rfind("No text editor is defined.  You will not", 0), 0u);
  gSettings.TextEd = "/no/such/editor";
  EXPECT_EQ(TextEditorAdvice().rfind("The file '/no/such/editor' cannot be found.  You will not", 0), 0u);
  gSettings.TextEd = "/bin/sh";
  EXPECT_EQ(TextEditorAdvice(), "");
}

}  // namespace
}  // namespace kestrow
