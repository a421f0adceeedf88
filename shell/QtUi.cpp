#include "shell/QtUi.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QProcess>

#include "core/Sentinels.h"
#include "shell/QtText.h"
#include "shell/frmList.h"

namespace kestrow {

void QtUi::ErrorBox(const std::string& text) {
  QMessageBox::warning(parent_, PROGRAM_TITLE, Q(text));
}

void QtUi::InfoBox(const std::string& text) {
  QMessageBox::information(parent_, PROGRAM_TITLE, Q(text));
}

Answer QtUi::YesNoBox(const std::string& text) {
  auto b = QMessageBox::question(parent_, PROGRAM_TITLE, Q(text), QMessageBox::Yes | QMessageBox::No,
                                 QMessageBox::No);
  return b == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

bool QtUi::WarnYesNo(const std::string& text) {
  auto b = QMessageBox::warning(parent_, QString(PROGRAM_TITLE) + " - Warning!", Q(text),
                                QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
  return b == QMessageBox::Yes;
}

bool QtUi::WarnYesNoTitled(const std::string& title, const std::string& text) {
  auto b = QMessageBox::warning(parent_, Q(title), Q(text), QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
  return b == QMessageBox::Yes;
}

Answer QtUi::YesNoCancelBox(const std::string& text) {
  auto b = QMessageBox::question(parent_, PROGRAM_TITLE, Q(text),
                                 QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Cancel);
  return b == QMessageBox::Yes ? Answer::Yes : b == QMessageBox::No ? Answer::No : Answer::Cancel;
}

bool QtUi::OkCancelBox(const std::string& text) {
  auto b = QMessageBox::question(parent_, PROGRAM_TITLE, Q(text), QMessageBox::Ok | QMessageBox::Cancel,
                                 QMessageBox::Ok);
  return b == QMessageBox::Ok;
}

void QtUi::DoEvents() { QApplication::processEvents(); }

std::string QtUi::SaveFileDialog(const std::string& title, const std::string& folder, const std::string& filter,
                                 const std::string& name) {
  // "Name (*.EXT)|*.EXT|..." as Qt writes it: "Name (*.EXT);;...", each with
  // the extension that a name typed without one takes.
  QStringList parts = Q(filter).split('|');
  QStringList filters, suffixes;
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    filters << parts[i];
    suffixes << parts[i + 1].section('.', -1);
  }
  QFileDialog dialog(parent_, Q(title), QDir(Q(folder)).filePath(Q(name)));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setNameFilters(filters);
  if (!suffixes.isEmpty()) dialog.setDefaultSuffix(suffixes[0]);
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& chosen) {
    int i = filters.indexOf(chosen);
    if (i >= 0) dialog.setDefaultSuffix(suffixes[i]);
  });
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::string();
  return dialog.selectedFiles().first().toStdString();
}

void QtUi::ShowTextFile(const std::string& editor, const std::string& file) {
  if (!QProcess::startDetached(QString::fromStdString(editor), {QString::fromStdString(file)}))
    ErrorBox("The text editor " + editor + " cannot be started.");
}

bool QtUi::ShowCheckList(CheckList& list) {
  frmList form(list, parent_);
  return form.exec() == QDialog::Accepted;
}

void QtUi::Beep() { QApplication::beep(); }

}  // namespace kestrow
