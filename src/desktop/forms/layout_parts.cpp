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
