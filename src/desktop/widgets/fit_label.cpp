#include "desktop/widgets/fit_label.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <cmath>

namespace kestrum {
namespace {

constexpr double kSmallestScale = 0.6;

}  // namespace

FitLabel::FitLabel(double scale, const QString& room, QWidget* parent)
    : QLabel(parent), scale_(scale), room_(room), largest_scale_(scale) {
  setTextFormat(Qt::PlainText);
  setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QFont FitLabel::Scaled(double scale) const {
  QFont result = font();
  result.setPointSizeF(QFontInfo(font()).pointSizeF() * scale);
  return result;
}

QSize FitLabel::sizeHint() const {
  const QFontMetricsF metrics(Scaled(scale_));
  return {static_cast<int>(std::ceil(metrics.horizontalAdvance(room_))) + 2 * margin(),
          static_cast<int>(std::ceil(metrics.height()))};
}

QSize FitLabel::minimumSizeHint() const {
  return sizeHint();
}

QFont FitLabel::FittingFont() const {
  Fitted wanted{text(), contentsRect().size(), font(), largest_scale_};
  // All digits count as the widest one: the text does not change its size from reading to reading.
  for (QChar& character : wanted.shape) {
    if (character.isDigit()) character = QLatin1Char('0');
  }
  if (fitted_for_ == wanted) return fitted_;
  fitted_for_ = wanted;
  fitted_ = Fit(wanted.shape);
  return fitted_;
}

QFont FitLabel::Fit(const QString& text) const {
  const QRectF room = contentsRect();
  const auto fits = [&](double scale) {
    const QFontMetricsF metrics(Scaled(scale));
    return metrics.horizontalAdvance(text) <= room.width() && metrics.height() <= room.height();
  };
  double low = kSmallestScale;
  double high = largest_scale_;
  if (fits(high)) return Scaled(high);
  while (high - low > 0.05) {
    const double middle = (low + high) / 2;
    (fits(middle) ? low : high) = middle;
  }
  return Scaled(low);
}

void FitLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setFont(FittingFont());
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                        text(), QPalette::WindowText);
}

ElidedLabel::ElidedLabel(QWidget* parent, Qt::TextElideMode mode) : QLabel(parent), mode_(mode) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize ElidedLabel::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 16, QLabel::sizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 8, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QString shown = fontMetrics().elidedText(text(), mode_, contentsRect().width());
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                        shown, QPalette::WindowText);
}

}  // namespace kestrum
