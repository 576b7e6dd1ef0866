#include "desktop/widgets/pelorus_widget.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr int kTickEvery_deg = 10;

QPointF OnCircle(double angle_deg, double radius) {
  const double angle = angle_deg * std::numbers::pi / 180;
  return {radius * std::sin(angle), -radius * std::cos(angle)};
}

}  // namespace

PelorusWidget::PelorusWidget(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PelorusWidget::SetNeedle(const std::string& text) {
  needle_deg_.reset();
  if (Trim(text) != "32768") needle_deg_ = Val(text);
  update();
}

QSize PelorusWidget::sizeHint() const {
  const int side = fontMetrics().height() * 12;
  return {side, side};
}

QSize PelorusWidget::minimumSizeHint() const {
  const int side = fontMetrics().height() * 7;
  return {side, side};
}

void PelorusWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(QRectF(rect()).center());
  const double radius = std::min(width(), height()) / 2.0 - 1;
  PaintRose(painter, radius);
  if (needle_deg_) PaintNeedle(painter, radius);
}

void PelorusWidget::PaintRose(QPainter& painter, double radius) {
  const QColor ink = palette().color(QPalette::WindowText);
  QColor faint = ink;
  faint.setAlphaF(0.45F);
  painter.setPen(QPen(faint, radius / 60));
  painter.setBrush(palette().base());
  painter.drawEllipse(QPointF(), radius * 0.98, radius * 0.98);
  for (int angle_deg = 0; angle_deg < 360; angle_deg += kTickEvery_deg) {
    const bool major = angle_deg % 30 == 0;
    painter.setPen(QPen(major ? ink : faint, radius / (major ? 40 : 80)));
    painter.drawLine(OnCircle(angle_deg, radius * 0.94), OnCircle(angle_deg, radius * (major ? 0.84 : 0.89)));
  }
  QFont letters = font();
  letters.setPixelSize(std::max(6, static_cast<int>(radius * 0.22)));
  letters.setBold(true);
  painter.setFont(letters);
  painter.setPen(ink);
  constexpr std::array<const char*, 4> kQuarters = {"N", "E", "S", "W"};
  for (int quarter = 0; quarter < 4; ++quarter) {
    QRectF room(0, 0, radius * 0.4, radius * 0.3);
    room.moveCenter(OnCircle(quarter * 90, radius * 0.68));
    painter.drawText(room, Qt::AlignCenter, QLatin1String(kQuarters.at(static_cast<std::size_t>(quarter))));
  }
}

void PelorusWidget::PaintNeedle(QPainter& painter, double radius) {
  painter.save();
  painter.rotate(*needle_deg_);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xE5, 0x39, 0x35));
  const double half = radius * 0.09;
  const QPolygonF head({QPointF(0, -radius * 0.82), QPointF(half, 0), QPointF(-half, 0)});
  painter.drawPolygon(head);
  painter.setBrush(palette().color(QPalette::Mid));
  const QPolygonF tail({QPointF(0, radius * 0.5), QPointF(half, 0), QPointF(-half, 0)});
  painter.drawPolygon(tail);
  painter.setBrush(palette().color(QPalette::WindowText));
  painter.drawEllipse(QPointF(), half, half);
  painter.restore();
}

}  // namespace kestrum
