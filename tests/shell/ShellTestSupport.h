// Helpers shared by the form tests: the English dictionary of the build, a
// scripted Ui in place of the message boxes, and a sample as the open problem.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>
#include <QString>
#include <memory>
#include <string>

#include "core/Globals.h"
#include "core/Language.h"
#include "core/Paths.h"
#include "core/ScriptedUi.h"
#include "core/Settings.h"

namespace kestrow::test {

// Runs f on the modal dialog of type D as soon as it is up.
template <class D, class F>
void WhenUp(F f) {
  auto* timer = new QTimer;
  timer->setInterval(5);
  QObject::connect(timer, &QTimer::timeout, [timer, f] {
    auto* d = qobject_cast<D*>(QApplication::activeModalWidget());
    if (!d) return;
    timer->stop();
    timer->deleteLater();
    f(d);
  });
  timer->start();
}

// The text of a dictionary tag.
inline QString T(const char* tag) { return QString::fromStdString(GetText(tag)); }

// The build's folder as the program folder, with its English dictionary open.
inline bool OpenEnglish() {
  SetProgramFolder(KESTROW_BIN);
  return OpenLanguage(KESTROW_BIN "/KSTlang.MDB", "English");
}

// Installs a fresh ScriptedUi, which the Ui owns, and the default settings.
inline ScriptedUi* FreshUi() {
  auto* ui = new ScriptedUi();
  InstallUi(std::unique_ptr<Ui>(ui));
  gSettings = Settings();
  return ui;
}

// Opens SAMPDATA/<name>.KSW as the problem.
inline bool OpenSample(const char* name) {
  auto p = std::make_unique<Problem>();
  if (!p->Load(std::string(KESTROW_SAMPDATA "/") + name + ".KSW")) return false;
  ReplaceProblem(std::move(p));
  return true;
}

// Clicks the button; the text of the error box the click showed, or an empty
// text when it showed none (or its last message was no error).
inline QString ErrorAfter(ScriptedUi& ui, QAbstractButton* button) {
  std::size_t before = ui.messages.size();
  button->click();
  if (ui.messages.size() == before || ui.messages.back().kind != "error") return QString();
  return QString::fromStdString(ui.messages.back().text);
}

}  // namespace kestrow::test
