#include "desktop/widgets/meter_bar.h"

#include <QPainter>
#include <algorithm>

namespace kestrum {
namespace {

constexpr int kSegments = 32;

}  // namespace

MeterBar::MeterBar(QWidget* parent) : QProgressBar(parent) {
  setTextVisible(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void MeterBar::SetSegments(bool segments) {
  segments_ = segments;
  update();
}

void MeterBar::SetHeightShare(double share) {
  height_share_ = share;
  updateGeometry();
}

QSize MeterBar::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 24,
          static_cast<int>(fontMetrics().height() * 2 * height_share_)};
}

QSize MeterBar::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 12, sizeHint().height()};
}

void MeterBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double line = std::max(1.0, fontMetrics().height() / 16.0);
  const QRectF track = QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2);
  painter.setPen(QPen(palette().color(QPalette::Mid), line));
  painter.setBrush(palette().base());
  painter.drawRoundedRect(track, line * 2, line * 2);

  const QRectF room = track.adjusted(line * 2, line * 2, -line * 2, -line * 2);
  const double share = static_cast<double>(value() - minimum()) / std::max(1, maximum() - minimum());
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette().highlight());
  if (!segments_) {
    painter.drawRect(QRectF(room.left(), room.top(), room.width() * share, room.height()));
    return;
  }
  const double step = room.width() / kSegments;
  // A reading above zero lights at least one segment.
  const int lit = static_cast<int>(share * kSegments + (share > 0 ? 1 : 0));
  for (int i = 0; i < std::min(lit, kSegments); ++i) {
    painter.drawRect(QRectF(room.left() + i * step, room.top(), step * 0.72, room.height()));
  }
}

}  // namespace kestrum
