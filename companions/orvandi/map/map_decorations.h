#pragma once

#include <QPainter>
#include <QPalette>
#include <QString>
#include <functional>
#include <vector>

#include "map/color_scale.h"
#include "map/projection.h"

namespace orvandi {

struct Transmitter {
  Place place;
  QString name;
};

// What the colours of the map mean.
struct Legend {
  QString title;  // "dBµV/m"
  ColorScale scale;
  std::function<QString(double)> text;  // of a value of the scale
};

// A square of the map in one colour.
struct MapCell {
  Place south_west;
  Place north_east;
  double value = 0;
  QString text;  // told on hover
};

// The colours that the furniture of the map is painted with.
struct MapInk {
  QColor ground, line, text, faint_text, card, accent;
  bool dark = false;
};
MapInk InkOf(const QPalette& palette);

// The greatest of 1, 2, 5, 10, 20, ... (times any power of ten) that is not above `limit`.
double RoundStep(double limit);
// "250 m", "2 km".
QString DistanceText(double km);

// Without the labels that would stand below `covered`.
void PaintGrid(QPainter& painter, const Camera& camera, const MapInk& ink, const QRectF& covered);
// The labels of the rings come apart, over the dots.
void PaintRings(QPainter& painter, const Camera& camera, const MapInk& ink, const Place& center);
void PaintRingLabels(QPainter& painter, const Camera& camera, const MapInk& ink, const Place& center);
void PaintTransmitter(QPainter& painter, const Camera& camera, const MapInk& ink, const Transmitter& site);
void PaintCells(QPainter& painter, const Camera& camera, const std::vector<MapCell>& cells,
                const ColorScale& scale);
// The two return the rectangle that they took.
QRectF PaintScaleBar(QPainter& painter, const Camera& camera, const MapInk& ink);
// Where the legend is painted.
QRectF LegendCard(const QPainter& painter, QSizeF size, const Legend& legend);
void PaintLegend(QPainter& painter, QSizeF size, const MapInk& ink, const Legend& legend);
void PaintAttribution(QPainter& painter, QSizeF size, const MapInk& ink, const QString& text);

}  // namespace orvandi
