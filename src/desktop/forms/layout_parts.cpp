#include "desktop/forms/layout_parts.h"

#include <QFontInfo>

namespace kestrum {

QFont ScaledFont(const QWidget* widget, double scale) {
  QFont font = widget->font();
  font.setPointSizeF(QFontInfo(font).pointSizeF() * scale);
  return font;
}

int Characters(const QWidget* widget, int characters) {
  return widget->fontMetrics().averageCharWidth() * characters;
}

QVBoxLayout* PanelRows(QWidget* panel) {
  auto* rows = new QVBoxLayout(panel);
  const int small = panel->fontMetrics().height();
  // The group box itself keeps the room of its heading.
  rows->setContentsMargins(small / 4, 0, small / 4, 0);
  rows->setSpacing(small / 5);
  return rows;
}

QHBoxLayout* Line() {
  auto* line = new QHBoxLayout;
  line->setSpacing(QFontMetrics(QFont()).height() / 4);
  return line;
}

QLabel* MakeHeading(const QString& text, QWidget* parent) {
  auto* heading = new QLabel(text, parent);
  heading->setFont(ScaledFont(heading, kHeadingScale));
  return heading;
}

QVBoxLayout* Headed(const QString& heading, QWidget* value) {
  auto* column = new QVBoxLayout;
  column->setSpacing(0);
  column->addWidget(MakeHeading(heading, value->parentWidget()));
  column->addWidget(value);
  return column;
}

}  // namespace kestrum
