#pragma once

#include <QPainter>
#include <QString>

#include "desktop/widgets/scheme.h"

// What both dials are made of. The centre of the dial is the origin, the front of the car is at the top.
namespace kestrum {

// A place on a circle around the origin; degrees clockwise from the top.
QPointF OnCircle(double angle_deg, double radius);
// A car seen from above, and the mark at the front.
void PaintCar(QPainter& painter, double radius, const Scheme& scheme);
void PaintFrontMark(QPainter& painter, double radius, const Scheme& scheme);
// Ticks every 10 degrees inside the radius, longer ones every 30.
void PaintTicks(QPainter& painter, double radius, const Scheme& scheme);
// An arrow from the origin to `tip`.
void PaintArrow(QPainter& painter, const QPointF& tip, double radius, const QColor& color);
// "14 s old" across the dial.
void PaintBadge(QPainter& painter, double radius, const QString& text, const Scheme& scheme);

// Strength of a dial that is not true.
inline constexpr double kFadedDial = 0.34;

}  // namespace kestrum
