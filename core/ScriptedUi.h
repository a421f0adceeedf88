// A Ui for tests: records every message and answers questions from a queue
// (No, or false, when the queue is empty).
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "core/CheckList.h"
#include "core/Ui.h"

namespace kestrow {

class ScriptedUi : public Ui {
 public:
  struct Message {
    std::string kind;  // "error", "info", "yesno", "warn", "yesnocancel", "okcancel"
    std::string text;
  };

  void ErrorBox(const std::string& text) override { messages.push_back({"error", text}); }
  void InfoBox(const std::string& text) override { messages.push_back({"info", text}); }
  Answer YesNoBox(const std::string& text) override {
    messages.push_back({"yesno", text});
    return Next(Answer::No);
  }
  bool WarnYesNo(const std::string& text) override {
    messages.push_back({"warn", text});
    return Next(Answer::No) == Answer::Yes;
  }
  // Recorded as a warning whose text begins with the title and a line end.
  bool WarnYesNoTitled(const std::string& title, const std::string& text) override {
    messages.push_back({"warn", "[" + title + "]\n" + text});
    return Next(Answer::No) == Answer::Yes;
  }
  Answer YesNoCancelBox(const std::string& text) override {
    messages.push_back({"yesnocancel", text});
    return Next(Answer::Cancel);
  }
  bool OkCancelBox(const std::string& text) override {
    messages.push_back({"okcancel", text});
    return Next(Answer::Cancel) == Answer::Ok;
  }

  void ShowTextFile(const std::string& editor, const std::string& file) override {
    messages.push_back({"editor", editor + " " + file});
  }

  std::string SaveFileDialog(const std::string& title, const std::string&, const std::string&,
                             const std::string&) override {
    messages.push_back({"savedialog", title});
    if (savePaths.empty()) return "";
    std::string p = savePaths.front();
    savePaths.pop_front();
    return p;
  }
  // Ticks the rows of the next answer's keys, in its order, and OK; with no
  // answer queued, Cancel. A set the list's check refuses is recorded as an
  // error and, as its dialog would stay open until Cancel, comes back false.
  bool ShowCheckList(CheckList& list) override {
    messages.push_back({"checklist", list.caption});
    if (checkListAnswers.empty()) return false;
    std::vector<std::string> keys = checkListAnswers.front();
    checkListAnswers.pop_front();
    std::vector<int> rows;
    for (const std::string& key : keys)
      for (std::size_t i = 0; i < list.Rows().size(); ++i)
        if (list.Rows()[i].key == key) rows.push_back(static_cast<int>(i));
    std::string complaint;
    if (list.Accept(rows, complaint)) return true;
    messages.push_back({"error", complaint});
    return false;
  }
  void Beep() override { ++beeps; }

  std::vector<Message> messages;
  std::deque<Answer> answers;
  std::deque<std::string> savePaths;  // answers of save dialogs; empty: cancelled
  std::deque<std::vector<std::string>> checkListAnswers;  // keys ticked in a check list
  int beeps = 0;

 private:
  Answer Next(Answer otherwise) {
    if (answers.empty()) return otherwise;
    Answer a = answers.front();
    answers.pop_front();
    return a;
  }
};

}  // namespace kestrow
