#pragma once

#include <QWidget>

#include "forms/control.h"

namespace kestrum {

// Gives the widget the background of a control, shaded so that its text stays readable, with a matching text
// colour; Color::kSystem gives it back to the desktop's palette.
void PaintBackground(QWidget* widget, Color color);

// The pure colour of a shape.
QColor ShapeColor(Color color);

}  // namespace kestrum
