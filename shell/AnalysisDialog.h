// What every analysis dialog has: the response box, the editable alpha box,
// OK and Cancel at the foot, and the OK and Cancel of its engine form (OK
// stores or says the form's refusal; Cancel asks before edits are lost).
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "analyses/FormParts.h"
#include "core/Ui.h"
#include "data/FillRVList.h"

class QComboBox;
class QDialogButtonBox;
class QFormLayout;
class QPushButton;
class QWidget;

namespace kestrow {

class Study;
class Statistics;

// The dialog of an engine form: Form has OK(message), Edited() and stored.
template <class Form>
class AnalysisDialog : public QDialog {
 public:
  // True when OK changed what the study holds.
  bool Stored() const { return form_.stored; }

  void cmdOK_Click() {
    FromForm();
    std::string message;
    if (form_.OK(message) == FormOutcome::Refused) {
      if (!message.empty()) ErrorBox(message);  // an empty refusal has been told already
      return;
    }
    accept();
  }

 protected:
  AnalysisDialog(Study& study, const Statistics& stats, QWidget* parent) : QDialog(parent), form_(study, stats) {}
  void reject() override {
    FromForm();
    if (!ConfirmCancel(form_.Edited())) return;
    QDialog::reject();
  }
  // Moves what the widgets hold into the form.
  virtual void FromForm() {}

  Form form_;
};

// The row "Response variable:" with "cmbRV", filled from the list, showing
// the entry at index (-1 for none).
QComboBox* ResponseRow(QFormLayout* rows, QWidget* parent, const std::vector<RVListEntry>& list, int index);
// The row "Alpha:" with "cmbAlpha", editable, with its choices and the text shown.
QComboBox* AlphaRow(QFormLayout* rows, QWidget* parent, const std::vector<std::string>& choices,
                    const std::string& text);
// "cmdOK" (the default) and "cmdCancel" in a box.
QDialogButtonBox* OkCancel(QWidget* parent, QPushButton*& ok, QPushButton*& cancel);

}  // namespace kestrow
