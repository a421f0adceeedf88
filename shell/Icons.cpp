#include "shell/Icons.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <map>

namespace kestrow {

namespace {

QIcon Badge(const QColor& colour, const QString& glyph, bool round = false) {
  QPixmap pix(32, 32);
  pix.fill(Qt::transparent);
  QPainter p(&pix);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(colour.darker(140), 2));
  p.setBrush(colour);
  if (round) p.drawEllipse(3, 3, 26, 26);
  else p.drawRoundedRect(3, 3, 26, 26, 6, 6);
  p.setPen(Qt::white);
  QFont f = p.font();
  f.setBold(true);
  f.setPixelSize(glyph.size() > 1 ? 12 : 17);
  p.setFont(f);
  p.drawText(QRect(0, 0, 32, 32), Qt::AlignCenter, glyph);
  return QIcon(pix);
}

}  // namespace

QIcon TreeIcon(const std::string& name) {
  static std::map<std::string, QIcon> icons;
  auto it = icons.find(name);
  if (it != icons.end()) return it->second;
  QIcon icon;
  if (name == "problem") icon = Badge(QColor(0x2F, 0x5D, 0xA8), "P");
  else if (name == "factor") icon = Badge(QColor(0x2E, 0x8B, 0x57), "F", true);
  else if (name == "respvar") icon = Badge(QColor(0xD2, 0x69, 0x1E), "Y", true);
  else if (name == "study") icon = Badge(QColor(0x6A, 0x4C, 0x9C), "S");
  else if (name == "lock") icon = Badge(QColor(0x70, 0x70, 0x70), "L");
  else if (name == "data") icon = Badge(QColor(0x1F, 0x7A, 0x8C), "#");
  else if (name == "graph") icon = Badge(QColor(0xB0, 0x3A, 0x2E), "~");
  else if (name == "report") icon = Badge(QColor(0x55, 0x6B, 0x2F), "R");
  icons[name] = icon;
  return icon;
}

QIcon ToolIcon(const std::string& key) {
  QStyle* s = QApplication::style();
  if (key == "New") return s->standardIcon(QStyle::SP_FileIcon);
  if (key == "Open") return s->standardIcon(QStyle::SP_DialogOpenButton);
  if (key == "Save") return s->standardIcon(QStyle::SP_DialogSaveButton);
  if (key == "CueCard") return s->standardIcon(QStyle::SP_MessageBoxInformation);
  if (key == "TreeYes") return s->standardIcon(QStyle::SP_FileDialogListView);
  if (key == "Help") return s->standardIcon(QStyle::SP_DialogHelpButton);
  static const std::map<std::string, std::pair<QColor, QString>> drawn = {
      {"Print", {QColor(0x44, 0x44, 0x44), "Pr"}}, {"Quick", {QColor(0x6A, 0x4C, 0x9C), "Q"}},
      {"Toggle", {QColor(0x1F, 0x7A, 0x8C), "#"}}, {"ViewLog", {QColor(0x55, 0x6B, 0x2F), "Lg"}},
      {"ViewDes", {QColor(0x2E, 0x8B, 0x57), "D"}}, {"UnZoom", {QColor(0xB0, 0x3A, 0x2E), "1:1"}},
      {"EraseLabels", {QColor(0xB0, 0x3A, 0x2E), "x"}}, {"AddLabel", {QColor(0xB0, 0x3A, 0x2E), "A"}},
      {"AddLog", {QColor(0x55, 0x6B, 0x2F), "+"}}};
  auto it = drawn.find(key);
  return it == drawn.end() ? QIcon() : Badge(it->second.first, it->second.second);
}

}  // namespace kestrow
