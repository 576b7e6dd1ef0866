#include "desktop/widgets/dial_parts.h"

#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrum {

QPointF OnCircle(double angle_deg, double radius) {
  const double angle = angle_deg * std::numbers::pi / 180;
  return {radius * std::sin(angle), -radius * std::cos(angle)};
}

void PaintCar(QPainter& painter, double radius, const Scheme& scheme) {
  const double half = radius * 0.16;
  const double length = radius * 0.62;
  painter.setPen(QPen(scheme.quiet, std::max(1.5, radius / 45)));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(-half, -length / 2, half * 2, length), half * 0.75, half * 0.75);
  painter.setPen(Qt::NoPen);
  painter.setBrush(scheme.quiet);
  // The windscreen tells the front from the back.
  const double wide = half * 1.4;
  painter.drawPolygon(QPolygonF({QPointF(-wide / 2, -length * 0.24), QPointF(wide / 2, -length * 0.24),
                                 QPointF(wide * 0.4, -length * 0.1), QPointF(-wide * 0.4, -length * 0.1)}));
}

void PaintFrontMark(QPainter& painter, double radius, const Scheme& scheme) {
  const double half = radius * 0.085;
  painter.setPen(Qt::NoPen);
  painter.setBrush(scheme.ink);
  painter.drawPolygon(QPolygonF({QPointF(0, -radius - half * 1.9), QPointF(half, -radius - half * 0.2),
                                 QPointF(-half, -radius - half * 0.2)}));
}

void PaintTicks(QPainter& painter, double radius, const Scheme& scheme) {
  for (int angle_deg = 0; angle_deg < 360; angle_deg += 10) {
    const bool major = angle_deg % 30 == 0;
    painter.setPen(QPen(scheme.quiet, std::max(1.0, radius / (major ? 32 : 70)), Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(OnCircle(angle_deg, radius * 0.95), OnCircle(angle_deg, radius * (major ? 0.84 : 0.9)));
  }
}

void PaintArrow(QPainter& painter, const QPointF& tip, double radius, const QColor& color) {
  const double length = std::hypot(tip.x(), tip.y());
  if (length < 1) return;
  const QPointF along = tip / length;
  const QPointF across(-along.y(), along.x());
  const double body = radius * 0.055;
  const double head = radius * 0.15;
  const double head_length = std::min(radius * 0.34, length);
  const QPointF neck = tip - along * head_length;
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawPolygon(QPolygonF({across * body, neck + across * body, neck + across * head, tip,
                                 neck - across * head, neck - across * body, -across * body}));
}

void PaintBadge(QPainter& painter, double radius, const QString& text, const Scheme& scheme) {
  if (text.isEmpty()) return;
  const LampShades shades = scheme.Lamp(LampState::kNote, true);
  QFont font = painter.font();
  font.setBold(true);
  font.setPixelSize(std::max(9, static_cast<int>(radius * 0.26)));
  painter.setFont(font);
  const double wide = std::min(radius * 2, QFontMetricsF(font).horizontalAdvance(text) + radius * 0.3);
  const QRectF room(-wide / 2, -radius * 0.22, wide, radius * 0.44);
  painter.setPen(QPen(shades.edge, std::max(1.0, radius / 60)));
  painter.setBrush(shades.ground);
  painter.drawRoundedRect(room, radius * 0.05, radius * 0.05);
  painter.setPen(shades.ink);
  painter.drawText(room, Qt::AlignCenter, text);
}

}  // namespace kestrum
