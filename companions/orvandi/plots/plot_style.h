#pragma once

#include <QPalette>

#include "plots/qcustomplot_qt.h"

namespace orvandi {

// The colours of plots, from the palette of the desktop.
struct PlotInk {
  QColor ground, grid, axis, text, strong;
  QColor rim;  // of dots: keeps dark ones visible on a dark ground
};
PlotInk PlotInkOf(const QPalette& palette);

void StyleAxis(QCPAxis* axis, const PlotInk& ink);
// Ground, axes, grid and legend of an ordinary plot.
void StylePlot(QCustomPlot& plot, const PlotInk& ink);

}  // namespace orvandi
