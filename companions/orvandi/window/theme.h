#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

class QApplication;

namespace orvandi {

enum class Theme { kDesktop, kLight, kDark };

// Colours of the whole program. kDesktop takes dark or light from the palette that the desktop gave at the
// start.
void ApplyTheme(Theme theme);
QPalette LightPalette();
QPalette DarkPalette();

// One of our own icons in the colour of the palette's text, sharp at any scale.
QIcon IconFor(const QString& name, const QPalette& palette);
// A square of one colour, for lists of layers.
QIcon ColorIcon(const QColor& color);

}  // namespace orvandi
