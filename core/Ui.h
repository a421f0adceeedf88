// The one way the engine reaches the user. The workbench installs message
// boxes, the command line a console, and the tests a scripted Ui that records
// every message and answers from a queue.
#pragma once

#include <memory>
#include <string>

namespace kestrow {

enum class Answer { Yes, No, Cancel, Ok };

class CheckList;

class Ui {
 public:
  virtual ~Ui() = default;
  virtual void ErrorBox(const std::string& text) = 0;   // exclamation icon, OK only
  virtual void InfoBox(const std::string& text) = 0;    // information icon, OK only
  virtual Answer YesNoBox(const std::string& text) = 0; // question icon, No the default
  virtual bool WarnYesNo(const std::string& text) = 0;  // warning icon, title " - Warning!"
  // The same question under a title of its own (the wizard's "Kestrow Wizard").
  virtual bool WarnYesNoTitled(const std::string& title, const std::string& text) {
    (void)title;
    return WarnYesNo(text);
  }
  virtual Answer YesNoCancelBox(const std::string& text) = 0;  // the save question
  virtual bool OkCancelBox(const std::string& text) = 0;       // the fractional editor's question
  // A save dialog with an overwrite prompt; the chosen path, or empty when
  // cancelled. The filter is "Name (*.EXT)|*.EXT".
  virtual std::string SaveFileDialog(const std::string& title, const std::string& folder,
                                     const std::string& filter, const std::string& name) {
    (void)title, (void)folder, (void)filter, (void)name;
    return std::string();
  }
  // Runs a check list modally: the user ticks its rows; true on OK, with the
  // ticks taken over (CheckList::Accept), false on Cancel with them as they
  // were. Without a window nothing can be ticked: Cancel.
  virtual bool ShowCheckList(CheckList& list) {
    (void)list;
    return false;
  }
  // Shows a text file in the given editor program, without waiting for it.
  virtual void ShowTextFile(const std::string& editor, const std::string& file) { (void)editor, (void)file; }
  // The warning sound of a refused entry.
  virtual void Beep() {}
  // Long loops call these so that the window stays alive and Stop works.
  virtual void DoEvents() {}
  virtual bool StopRequested() { return false; }
};

// The Ui in force; a console one until another is installed.
Ui& CurrentUi();
// Installs a Ui and returns the one it replaces.
std::unique_ptr<Ui> InstallUi(std::unique_ptr<Ui> ui);

void ErrorBox(const std::string& text);
void InfoBox(const std::string& text);
Answer YesNoBox(const std::string& text);
bool WarnYesNo(const std::string& text);
bool WarnYesNoTitled(const std::string& title, const std::string& text);

// An unexpected failure of a procedure: the description, a blank and the
// procedure's name in brackets, as in "Disk full [Save]".
void ReportError(const std::string& description, const std::string& procedure);

// Returns true at once unless something changed and the setting ConfirmCancel
// is on; then asks whether to cancel the changes.
bool ConfirmCancel(bool changed);

// Messages to stderr; every question answered by one rule.
class ConsoleUi : public Ui {
 public:
  explicit ConsoleUi(bool answerYes = false) : answerYes_(answerYes) {}
  void ErrorBox(const std::string& text) override;
  void InfoBox(const std::string& text) override;
  Answer YesNoBox(const std::string& text) override;
  bool WarnYesNo(const std::string& text) override;
  Answer YesNoCancelBox(const std::string& text) override;
  bool OkCancelBox(const std::string& text) override;

 private:
  bool answerYes_;
};

}  // namespace kestrow
