#include "desktop/widgets/log_button.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>

#include "desktop/widgets/scheme.h"

namespace kestrum {

LogButton::LogButton(QWidget* parent) : QPushButton(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void LogButton::ShowLogging(bool logging) {
  logging_ = logging;
  setFocusPolicy(logging ? Qt::NoFocus : Qt::StrongFocus);
  update();
}

QSize LogButton::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 22, fontMetrics().height() * 2};
}

void LogButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Scheme& scheme = SchemeOf(palette());
  const double edge = std::max(2.0, height() / 22.0);
  const QRectF body = QRectF(rect()).adjusted(edge / 2, edge / 2, -edge / 2, -edge / 2);
  const bool marked = hasFocus() || isDown();
  painter.setPen(
      QPen(marked ? palette().color(QPalette::Highlight) : (logging_ ? scheme.logging : scheme.quiet),
           marked ? edge * 1.6 : edge));
  painter.setBrush(logging_ ? scheme.logging : scheme.ground);
  painter.drawRoundedRect(body, edge * 2, edge * 2);

  QFont large = font();
  large.setWeight(QFont::Bold);
  large.setPixelSize(std::max(9, static_cast<int>(height() * 0.44)));
  double wide = QFontMetricsF(large).horizontalAdvance(text().remove(QLatin1Char('&')));
  const double dot = height() * 0.32;
  const double room = width() - edge * 4 - dot * 2;
  if (wide > room) {
    large.setPixelSize(std::max(7, static_cast<int>(large.pixelSize() * room / wide)));
    wide = QFontMetricsF(large).horizontalAdvance(text().remove(QLatin1Char('&')));
  }
  painter.setFont(large);
  painter.setPen(logging_ ? scheme.logging_ink : scheme.ink);
  painter.drawText(QRectF(rect()), Qt::AlignCenter | Qt::TextShowMnemonic, text());
  const QPointF place(width() / 2.0 - wide / 2 - dot, height() / 2.0);
  painter.setPen(QPen(logging_ ? scheme.logging_ink : scheme.quiet, dot * 0.14));
  painter.setBrush(logging_ ? QBrush(scheme.logging_ink) : QBrush(Qt::NoBrush));
  painter.drawEllipse(place, dot / 2, dot / 2);
}

}  // namespace kestrum
