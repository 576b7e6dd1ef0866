#pragma once

#include <QColor>
#include <QPalette>

#include "forms/indicators.h"

namespace kestrum {

// Ground and ink of a lamp. The edge stands out from the window where the ground alone does not.
struct LampShades {
  QColor ground;
  QColor ink;
  QColor sign;  // the shape that tells the state
  QColor edge;
};

// All colours of the windows, in one place. Texts have a contrast of at least 4.5 to 1, lamps and bars of at
// least 3 to 1; red and amber lamps are for trouble alone.
struct Scheme {
  QColor ground;  // of windows and readouts
  QColor ink;     // texts
  QColor quiet;   // headings, scales
  QColor line;    // frames
  QColor bar;     // lit part of the meter, line of the chart
  QColor bar_ground;
  QColor peak;
  QColor hatch;  // over a meter that is not true
  QColor button;
  QColor dial;     // ground of a dial
  QColor halo;     // beside a circle of a fixed colour, so that it is seen
  QColor logging;  // ground of the logging button while it logs
  QColor logging_ink;

  // `lit` fills a good lamp; else it is outlined.
  LampShades Lamp(LampState state, bool lit) const;
  bool night = false;
};

const Scheme& DayScheme();    // black on white
const Scheme& NightScheme();  // amber on black, no large light area

// The palette that carries a scheme to every widget, and the scheme of a palette.
QPalette PaletteOf(const Scheme& scheme);
const Scheme& SchemeOf(const QPalette& palette);

// A colour at a third of its strength on the ground: what is shown is no longer true.
QColor Faded(const QColor& ink, const QColor& ground);

// Relative luminance contrast of two colours, 1 to 21.
double Contrast(const QColor& one, const QColor& other);

}  // namespace kestrum
