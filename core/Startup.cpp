#include "core/Startup.h"

#include <chrono>

#include "core/CommandLine.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Ui.h"

namespace kestrow {

std::string TextEditorAdvice() {
  std::string complaint;
  if (gSettings.TextEd.empty()) {
    complaint = "No text editor is defined.";
  } else if (!FileExists(gSettings.TextEd)) {
    complaint = "The file '" + gSettings.TextEd + "' cannot be found.";
  }
  if (complaint.empty()) return "";
  return complaint + "  You will not be able to view or print text reports.  To " +
         "define an editor, see the 'Reports' tab under Tools-Preferences";
}

bool StartUp(const std::string& commandLine) {
  gsHelpFile = JoinPath(ProgramFolder(), "KestWin.Hlp");
  LoadSettings();
  bool run = true;
  if (!OpenLanguage(JoinPath(ProgramFolder(), "KSTlang.MDB"), gSettings.Language)) {
    ErrorBox(LanguageError() + " [Main]");
    run = false;
  } else if (!FileExists(JoinPath(ProgramFolder(), "DESIGNS.MDB"))) {
    ErrorBox("Cannot locate designs database, DESIGNS.MDB");
    run = false;
  } else {
    if (std::string advice = TextEditorAdvice(); !advice.empty()) InfoBox(advice);
    gPlatformRandom.seed(static_cast<std::mt19937::result_type>(
        std::chrono::system_clock::now().time_since_epoch().count()));
    TakeCommandLine(commandLine);
  }
  SaveSettings();
  return run;
}

}  // namespace kestrow
