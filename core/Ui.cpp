#include "core/Ui.h"

#include <iostream>

#include "core/Sentinels.h"
#include "core/Settings.h"

namespace kestrow {

namespace {

std::unique_ptr<Ui>& Installed() {
  static std::unique_ptr<Ui> ui = std::make_unique<ConsoleUi>();
  return ui;
}

void Print(const char* kind, const std::string& text) {
  std::cerr << PROGRAM_TITLE << kind << ": " << text << "\n";
}

}  // namespace

Ui& CurrentUi() { return *Installed(); }

std::unique_ptr<Ui> InstallUi(std::unique_ptr<Ui> ui) {
  std::unique_ptr<Ui> old = std::move(Installed());
  Installed() = std::move(ui);
  return old;
}

void ErrorBox(const std::string& text) { CurrentUi().ErrorBox(text); }
void InfoBox(const std::string& text) { CurrentUi().InfoBox(text); }
Answer YesNoBox(const std::string& text) { return CurrentUi().YesNoBox(text); }
bool WarnYesNo(const std::string& text) { return CurrentUi().WarnYesNo(text); }
bool WarnYesNoTitled(const std::string& title, const std::string& text) {
  return CurrentUi().WarnYesNoTitled(title, text);
}

void ReportError(const std::string& description, const std::string& procedure) {
  ErrorBox(description + " [" + procedure + "]");
}

bool ConfirmCancel(bool changed) {
  if (!changed || !gSettings.ConfirmCancel) return true;
  return YesNoBox("Do you wish to CANCEL your changes?") == Answer::Yes;
}

void ConsoleUi::ErrorBox(const std::string& text) { Print("", text); }
void ConsoleUi::InfoBox(const std::string& text) { Print("", text); }

Answer ConsoleUi::YesNoBox(const std::string& text) {
  Print("", text + (answerYes_ ? " (Yes)" : " (No)"));
  return answerYes_ ? Answer::Yes : Answer::No;
}

bool ConsoleUi::WarnYesNo(const std::string& text) {
  Print(" - Warning!", text + (answerYes_ ? " (Yes)" : " (No)"));
  return answerYes_;
}

Answer ConsoleUi::YesNoCancelBox(const std::string& text) {
  Print("", text + (answerYes_ ? " (Yes)" : " (No)"));
  return answerYes_ ? Answer::Yes : Answer::No;
}

bool ConsoleUi::OkCancelBox(const std::string& text) {
  Print("", text + (answerYes_ ? " (OK)" : " (Cancel)"));
  return answerYes_;
}

}  // namespace kestrow
