#include "plots/plot_style.h"

#include "map/map_decorations.h"

namespace orvandi {

PlotInk PlotInkOf(const QPalette& palette) {
  const MapInk map = InkOf(palette);
  PlotInk ink;
  ink.ground = map.dark ? QColor(0x1B, 0x1F, 0x24) : QColor(Qt::white);
  ink.grid = map.dark ? QColor(0x30, 0x36, 0x3D) : QColor(0xE3, 0xE6, 0xE8);
  ink.axis = map.dark ? QColor(0x5A, 0x63, 0x6D) : QColor(0xA5, 0xAC, 0xB2);
  ink.text = map.dark ? QColor(0xC3, 0xC9, 0xD0) : QColor(0x45, 0x4C, 0x53);
  ink.strong = map.text;
  ink.rim = map.dark ? QColor(255, 255, 255, 50) : QColor(Qt::transparent);
  return ink;
}

void StyleAxis(QCPAxis* axis, const PlotInk& ink) {
  axis->setBasePen(QPen(ink.axis, 1));
  axis->setTickPen(QPen(ink.axis, 1));
  axis->setSubTickPen(QPen(ink.axis, 1));
  axis->setTickLabelColor(ink.text);
  axis->setLabelColor(ink.text);
  axis->grid()->setPen(QPen(ink.grid, 1));
  axis->grid()->setZeroLinePen(QPen(ink.grid, 1));
  axis->setTickLength(0, 4);
  axis->setSubTickLength(0, 2);
  axis->setLabelPadding(3);
}

void StylePlot(QCustomPlot& plot, const PlotInk& ink) {
  plot.setBackground(QBrush(ink.ground));
  QFont font = plot.font();
  font.setPointSizeF(qMax(font.pointSizeF() * 0.9, 7.0));
  for (QCPAxis* axis : {plot.xAxis, plot.yAxis, plot.xAxis2, plot.yAxis2}) {
    if (axis == nullptr) continue;
    StyleAxis(axis, ink);
    axis->setTickLabelFont(font);
    axis->setLabelFont(font);
  }
  if (plot.legend != nullptr) {
    QColor ground = ink.ground;
    ground.setAlpha(225);
    plot.legend->setBrush(ground);
    plot.legend->setBorderPen(QPen(ink.grid, 1));
    plot.legend->setTextColor(ink.strong);
    plot.legend->setFont(font);
    plot.legend->setRowSpacing(0);
    plot.legend->setIconSize(22, 10);
    plot.legend->setMargins(QMargins(6, 3, 6, 3));
  }
}

}  // namespace orvandi
