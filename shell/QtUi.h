// The engine's messages and questions as Qt message boxes.
#pragma once

#include "core/Ui.h"

class QWidget;

namespace kestrow {

class QtUi : public Ui {
 public:
  explicit QtUi(QWidget* parent = nullptr) : parent_(parent) {}
  void SetParent(QWidget* parent) { parent_ = parent; }

  void ErrorBox(const std::string& text) override;
  void InfoBox(const std::string& text) override;
  Answer YesNoBox(const std::string& text) override;
  bool WarnYesNo(const std::string& text) override;
  bool WarnYesNoTitled(const std::string& title, const std::string& text) override;
  Answer YesNoCancelBox(const std::string& text) override;
  bool OkCancelBox(const std::string& text) override;
  void DoEvents() override;
  std::string SaveFileDialog(const std::string& title, const std::string& folder, const std::string& filter,
                             const std::string& name) override;
  void ShowTextFile(const std::string& editor, const std::string& file) override;
  bool ShowCheckList(CheckList& list) override;
  void Beep() override;

 private:
  QWidget* parent_;
};

}  // namespace kestrow
