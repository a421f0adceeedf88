#include "shell/Translate.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QWidget>

namespace kestrow {

namespace {

// "optXform_2" is control optXform, index 2.
void SplitName(const QString& objectName, std::string& name, int& index) {
  static const QRegularExpression arrayName("^(.*)_(\\d+)$");
  auto m = arrayName.match(objectName);
  if (m.hasMatch()) {
    name = m.captured(1).toStdString();
    index = m.captured(2).toInt();
  } else {
    name = objectName.toStdString();
    index = 0;
  }
}

QString CaptionOf(QObject* o) {
  if (auto* a = qobject_cast<QAction*>(o)) return a->text();
  if (auto* b = qobject_cast<QAbstractButton*>(o)) return b->text();
  if (auto* l = qobject_cast<QLabel*>(o)) return l->text();
  if (auto* g = qobject_cast<QGroupBox*>(o)) return g->title();
  if (auto* m = qobject_cast<QMenu*>(o)) return m->title();
  return QString();
}

void SetCaption(QObject* o, const QString& text) {
  if (auto* a = qobject_cast<QAction*>(o)) a->setText(text);
  else if (auto* b = qobject_cast<QAbstractButton*>(o)) b->setText(text);
  else if (auto* l = qobject_cast<QLabel*>(o)) l->setText(text);
  else if (auto* g = qobject_cast<QGroupBox*>(o)) g->setTitle(text);
  else if (auto* m = qobject_cast<QMenu*>(o)) m->setTitle(text);
}

template <class F>
void ForEachCaptioned(QWidget* form, F each) {
  for (QObject* o : form->findChildren<QObject*>()) {
    if (o->objectName().isEmpty() || CaptionOf(o).isNull()) continue;
    if (qobject_cast<QMenu*>(o)) {
      each(o);
      continue;
    }
    if (qobject_cast<QAction*>(o) || qobject_cast<QWidget*>(o)) each(o);
  }
}

}  // namespace

void TranslateForm(QWidget* form) {
  std::string formName = form->objectName().toStdString();
  std::string caption;
  if (FormCaption(formName, formName, 0, caption)) form->setWindowTitle(QString::fromStdString(caption));
  ForEachCaptioned(form, [&](QObject* o) {
    std::string name;
    int index;
    SplitName(o->objectName(), name, index);
    if (FormCaption(formName, name, index, caption)) SetCaption(o, QString::fromStdString(caption));
  });
}

std::vector<FormCaptionRow> FormCaptions(QWidget* form) {
  std::vector<FormCaptionRow> rows;
  std::string formName = form->objectName().toStdString();
  static const QRegularExpression letter("[A-Za-z]");
  if (form->windowTitle().contains(letter)) rows.push_back({formName + "." + formName, 0, form->windowTitle().toStdString()});
  ForEachCaptioned(form, [&](QObject* o) {
    QString text = CaptionOf(o);
    if (!text.contains(letter)) return;
    std::string name;
    int index;
    SplitName(o->objectName(), name, index);
    rows.push_back({formName + "." + name, index, text.toStdString()});
  });
  return rows;
}

QString Tr(const char* tag) { return QString::fromStdString(GetText(tag)); }

}  // namespace kestrow
