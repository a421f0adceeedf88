// The commands of the main window that are not widgets: new, open, save, the
// save question, and adding, editing, copying, deleting and locking factors,
// response variables and studies. They work on the open problem (gProblem)
// and speak to the user through the Ui.
#pragma once

#include <string>

namespace kestrow {

// A new problem: "New Problem" in "untitled.KSW".
void CreateNew();

// The save question when the problem has changed: true unless the user
// cancels. Yes saves (through a save dialog for an untitled problem).
bool SaveLogic();

// Opens a problem file in place of the open one; a failed open leaves the
// open problem as it was and reports the file and the failure.
bool OpenKSTFile(const std::string& path);

// True while the problem has never been saved under a name of its own.
bool IsUntitled();
// Saves under the problem's name (an untitled problem through SaveAs).
bool FileSave();
// Saves under a name chosen in a save dialog (or the one given).
bool FileSaveAs(const std::string& chosen = std::string());

// Whether a study uses the factor or the response variable.
bool FactorIsUsed(const std::string& key);
bool RespVarIsUsed(const std::string& key);

// Deletes after the question; the studies that use the factor or response
// variable go with it, except locked ones, which hold their own copies.
bool DeleteFactor(const std::string& key);
bool DeleteRespVar(const std::string& key);
bool DeleteStudy(const std::string& key);
// Removes every study marked with bTag.
void ZapTaggedStudies();

// Locks a study after the warnings.
bool LockStudy(const std::string& key);

// The window title: the program title, " - ", and the file name.
std::string MainTitle();

}  // namespace kestrow
