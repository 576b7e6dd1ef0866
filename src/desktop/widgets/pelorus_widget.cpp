#include "desktop/widgets/pelorus_widget.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

#include "desktop/widgets/dial_parts.h"

namespace kestrum {
namespace {

const QColor kNeedleRed(0xFF, 0x00, 0x00);

}  // namespace

PelorusWidget::PelorusWidget(QWidget* parent) : Dial(12, 7, parent) {}

void PelorusWidget::SetNeedle(Needle needle_deg) {
  needle_deg_ = needle_deg;
  update();
}

void PelorusWidget::SetCourse(Needle course_deg) {
  const Needle course = course_deg ? Needle(std::round(*course_deg)) : std::nullopt;
  if (course == course_deg_) return;
  course_deg_ = course;
  update();
}

// Room for the front mark above the rim.
double PelorusWidget::Radius() const {
  return std::min(width(), height()) / 2.0 * 0.86;
}

void PelorusWidget::PaintStill() {
  const Scheme& scheme = SchemeOf(palette());
  QPainter painter(&still().Begin(*this, palette().color(QPalette::Window)));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(QRectF(rect()).center());
  const double radius = Radius();
  painter.setPen(QPen(scheme.quiet, std::max(1.5, radius / 45)));
  painter.setBrush(scheme.dial);
  painter.drawEllipse(QPointF(), radius, radius);
  PaintTicks(painter, radius, scheme);
  PaintCar(painter, radius, scheme);
  PaintFrontMark(painter, radius, scheme);
}

void PelorusWidget::PaintLetters(QPainter& painter, double radius) const {
  constexpr std::array<const char*, 4> kQuarters = {"N", "E", "S", "W"};
  const Scheme& scheme = SchemeOf(palette());
  QFont letters = font();
  letters.setPixelSize(std::max(7, static_cast<int>(radius * 0.19)));
  letters.setBold(true);
  painter.setFont(letters);
  for (int quarter = 0; quarter < 4; ++quarter) {
    painter.setPen(quarter == 0 ? scheme.ink : scheme.quiet);
    QRectF room(0, 0, radius * 0.3, radius * 0.3);
    room.moveCenter(OnCircle(quarter * 90 - *course_deg_, radius * 0.68));
    painter.drawText(room, Qt::AlignCenter, QLatin1String(kQuarters.at(static_cast<std::size_t>(quarter))));
  }
}

void PelorusWidget::paintEvent(QPaintEvent* /*event*/) {
  if (still().IsDue(*this)) PaintStill();
  QPainter painter(this);
  const Scheme& scheme = SchemeOf(palette());
  if (Stale()) {
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.setOpacity(kFadedDial);
  }
  still().Draw(painter);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(QRectF(rect()).center());
  const double radius = Radius();
  if (course_deg_) PaintLetters(painter, radius);
  if (needle_deg_) {
    PaintArrow(painter, OnCircle(*needle_deg_, radius * 0.94), radius, kNeedleRed);
  }
  if (!Stale()) return;
  painter.setOpacity(1);
  PaintBadge(painter, radius, Badge(), scheme);
}

}  // namespace kestrum
