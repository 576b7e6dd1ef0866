#include "desktop/widgets/meter_bar.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "desktop/text_convert.h"
#include "desktop/widgets/scheme.h"

namespace kestrum {
namespace {

constexpr int kSegments = 32;
constexpr double kScaleFont = 0.8;  // against the widget's font

// The marks that a reader looks for come first; what would touch one of them is left out.
int Rank(const ScaleMark& mark) {
  if (mark.text == "9") return 0;
  if (mark.text == "+60" || mark.text == "+20" || mark.text == "+40") return 1;
  if (mark.text == "1" || mark.text == "3" || mark.text == "5" || mark.text == "7") return 2;
  return 3;
}

}  // namespace

MeterBar::MeterBar(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void MeterBar::Redraw() {
  still_.Drop();
  update();
}

void MeterBar::setMaximum(int maximum) {
  maximum_ = std::max(1, maximum);
  Redraw();
}

void MeterBar::setValue(int value) {
  if (value == value_) return;
  UpdateBetween(value_, value);
  value_ = value;
}

void MeterBar::SetPeak(int peak) {
  if (peak == peak_) return;
  if (peak_ >= 0) UpdateBetween(peak_, peak_);
  if (peak >= 0) UpdateBetween(peak, peak);
  peak_ = peak;
}

void MeterBar::SetSegments(bool segments) {
  segments_ = segments;
  update();
}

void MeterBar::SetScale(std::vector<ScaleMark> marks) {
  marks_ = std::move(marks);
  Redraw();
}

void MeterBar::SetStale(bool stale) {
  if (stale == stale_) return;
  stale_ = stale;
  Redraw();
}

void MeterBar::SetHeightShare(double share) {
  if (share == height_share_) return;
  height_share_ = share;
  updateGeometry();
  Redraw();
}

int MeterBar::ScaleHeight() const {
  return static_cast<int>(std::max(fontMetrics().height() * kScaleFont * 1.25, height() * 0.26));
}

QSize MeterBar::sizeHint() const {
  const double bar = fontMetrics().height() * 1.5 * height_share_;
  return {fontMetrics().averageCharWidth() * 24,
          static_cast<int>(bar + fontMetrics().height() * kScaleFont * 1.25)};
}

QSize MeterBar::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 12, sizeHint().height()};
}

QRectF MeterBar::Track() const {
  return QRectF(0, 0, width(), height() - ScaleHeight()).adjusted(1, 1, -1, -1);
}

double MeterBar::XOf(double value) const {
  const QRectF room = Track().adjusted(2, 0, -2, 0);
  return room.left() + room.width() * std::clamp(value / maximum_, 0.0, 1.0);
}

void MeterBar::UpdateBetween(int one, int other) {
  const double step = Track().width() / kSegments;  // whole segments change
  const double from = XOf(std::min(one, other)) - step - 2;
  const double to = XOf(std::max(one, other)) + step + 2;
  update(QRectF(from, 0, to - from, Track().height() + 2).toAlignedRect());
}

void MeterBar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) Redraw();
}

void MeterBar::PaintScale(QPainter& painter) const {
  const Scheme& scheme = SchemeOf(palette());
  QFont small = font();
  small.setPixelSize(std::max(7, static_cast<int>(ScaleHeight() * 0.72)));
  painter.setFont(small);
  const QFontMetricsF metrics(small);
  std::vector<ScaleMark> ranked = marks_;
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const ScaleMark& a, const ScaleMark& b) { return Rank(a) < Rank(b); });
  std::vector<QRectF> taken;
  const double top = Track().bottom() + 1;
  for (const ScaleMark& mark : ranked) {
    const QString text = ToQt(mark.text);
    const double wide = metrics.horizontalAdvance(text);
    const double x = XOf(mark.value);
    const double tick = ScaleHeight() * 0.2;
    painter.setPen(QPen(scheme.quiet, std::max(1.0, tick / 3)));
    painter.drawLine(QPointF(x, top), QPointF(x, top + tick));
    QRectF room(std::clamp(x - wide / 2, 0.0, std::max(0.0, width() - wide)), top + tick, wide,
                ScaleHeight() - tick);
    const QRectF aired = room.adjusted(-wide * 0.2 - 2, 0, wide * 0.2 + 2, 0);
    const bool fits = std::none_of(taken.begin(), taken.end(),
                                   [&aired](const QRectF& other) { return other.intersects(aired); });
    if (!fits) continue;
    taken.push_back(aired);
    painter.drawText(QPointF(room.left(), room.bottom() - metrics.descent()), text);
  }
}

void MeterBar::PaintStill() {
  const Scheme& scheme = SchemeOf(palette());
  QPainter painter(&still_.Begin(*this, palette().color(QPalette::Window)));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(scheme.line, 1));
  painter.setBrush(scheme.bar_ground);
  const QRectF track = Track().adjusted(0.5, 0.5, -0.5, -0.5);
  painter.drawRoundedRect(track, 3, 3);
  if (stale_) {
    painter.setClipRect(track.adjusted(1, 1, -1, -1));
    const double step = std::max(8.0, track.height() * 0.55);
    painter.setPen(QPen(scheme.hatch, step * 0.4));
    for (double x = track.left() - track.height(); x < track.right(); x += step) {
      painter.drawLine(QPointF(x, track.bottom()), QPointF(x + track.height(), track.top()));
    }
    painter.setClipping(false);
  }
  PaintScale(painter);
}

void MeterBar::paintEvent(QPaintEvent* event) {
  if (still_.IsDue(*this)) PaintStill();
  QPainter painter(this);
  const QRectF part = event->rect();
  still_.Draw(painter, part);
  const Scheme& scheme = SchemeOf(palette());
  const QRectF room = Track().adjusted(2, 3, -2, -3);
  if (!stale_ && value_ > 0) {
    if (segments_) {
      const double step = room.width() / kSegments;
      // A reading above zero lights at least one segment.
      const int lit = std::min(kSegments, static_cast<int>(1.0 * value_ / maximum_ * kSegments + 1));
      for (int i = 0; i < lit; ++i) {
        const QRectF segment(room.left() + i * step + step * 0.1, room.top(), step * 0.8, room.height());
        if (segment.intersects(part)) painter.fillRect(segment, scheme.bar);
      }
    } else {
      painter.fillRect(QRectF(room.left(), room.top(), XOf(value_) - room.left(), room.height()), scheme.bar);
    }
  }
  if (!stale_ && peak_ > 0) {
    const double thick = std::max(2.0, room.height() / 12);
    painter.fillRect(QRectF(XOf(peak_) - thick / 2, room.top() - 1, thick, room.height() + 2), scheme.peak);
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 3));
    painter.drawRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5));
  }
}

}  // namespace kestrum
