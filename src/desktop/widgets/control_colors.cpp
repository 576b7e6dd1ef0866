#include "desktop/widgets/control_colors.h"

#include <QLineEdit>
#include <QPalette>

#include "desktop/widgets/readout.h"

namespace kestrum {
namespace {

struct Pair {
  QColor background;
  QColor text;
};

// Contrast of text to background is above 4.5 to 1 in each pair, whatever the desktop's theme.
Pair Shades(Color color) {
  switch (color) {
    case Color::kRed:
      return {QColor(0xC6, 0x28, 0x28), Qt::white};
    case Color::kGreen:
      return {QColor(0x2E, 0x7D, 0x32), Qt::white};
    case Color::kBlue:
      return {QColor(0x15, 0x65, 0xC0), Qt::white};
    case Color::kWarning:
    case Color::kSystem:
      break;
  }
  return {QColor(0xFF, 0xA0, 0x00), Qt::black};
}

}  // namespace

void PaintBackground(QWidget* widget, Color color) {
  if (auto* line = qobject_cast<TextLine*>(widget); line != nullptr && line->HasDot()) {
    line->SetDot(color == Color::kSystem ? QColor(Qt::transparent) : Shades(color).background);
    return;
  }
  if (color == Color::kSystem) {
    widget->setPalette(QPalette());
    widget->setAutoFillBackground(false);
    return;
  }
  const Pair shades = Shades(color);
  QPalette palette;
  // Only what the widget itself paints: the boxes and lists within a frame keep their own ground.
  const bool is_box = qobject_cast<QLineEdit*>(widget) != nullptr;
  palette.setColor(is_box ? QPalette::Base : QPalette::Window, shades.background);
  palette.setColor(is_box ? QPalette::Text : QPalette::WindowText, shades.text);
  widget->setPalette(palette);
  widget->setAutoFillBackground(true);
}

QColor ShapeColor(Color color) {
  const int number = static_cast<int>(color);
  if (number < 0) return Qt::black;
  return {number & 0xFF, (number >> 8) & 0xFF, (number >> 16) & 0xFF};  // red is the low byte
}

}  // namespace kestrum
