#include "desktop/widgets/readout.h"

#include <QEvent>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desktop/widgets/scheme.h"

namespace kestrum {
namespace {

constexpr double kTailShare = 0.55;      // size of what follows the first blank
constexpr double kLineHeight = 1.16;     // of a font, in its pixel size
constexpr double kSmallestShare = 0.75;  // of its font, before a text is shortened
constexpr double kMeasure_px = 100;      // size in which texts are measured
constexpr double kLargestWithoutEnd = 1000;

QFont Semibold(const QFont& base, double pixels) {
  QFont font = base;
  font.setWeight(QFont::DemiBold);
  font.setPixelSize(std::max(6, static_cast<int>(pixels)));
  return font;
}

struct Parts {
  QString main;
  QString tail;
};

Parts Split(const QString& text) {
  const QString trimmed = text.trimmed();
  const auto blank = trimmed.indexOf(QLatin1Char(' '));
  if (blank < 0) return {trimmed, {}};
  return {trimmed.left(blank), trimmed.mid(blank)};
}

double BasePixels(const QWidget& widget) {
  return QFontInfo(widget.font()).pixelSize();
}

double WidthAt100(const QFont& base, const QString& text) {
  const Parts parts = Split(text);
  return QFontMetricsF(Semibold(base, kMeasure_px)).horizontalAdvance(parts.main) +
         QFontMetricsF(Semibold(base, kMeasure_px)).horizontalAdvance(parts.tail) * kTailShare;
}

// Draws in a room of the given size; returns where the text ends.
struct Place {
  double left;
  double baseline;
};
double DrawParts(QPainter& painter, const Parts& parts, const QFont& main, const QFont& tail, Place place) {
  painter.setFont(main);
  painter.drawText(QPointF(place.left, place.baseline), parts.main);
  const double end = place.left + QFontMetricsF(main).horizontalAdvance(parts.main);
  if (parts.tail.isEmpty()) return end;
  painter.setFont(tail);
  painter.drawText(QPointF(end, place.baseline), parts.tail);
  return end + QFontMetricsF(tail).horizontalAdvance(parts.tail);
}

}  // namespace

TextLine::TextLine(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TextLine::SetText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  update();
}

void TextLine::SetStale(bool stale) {
  if (stale == stale_) return;
  stale_ = stale;
  update();
}

void TextLine::SetDot(const QColor& color) {
  dot_ = color;
  update();
}

void TextLine::MakePressable() {
  setFocusPolicy(Qt::TabFocus);
}

QSize TextLine::sizeHint() const {
  return {fontMetrics().averageCharWidth() * characters_, fontMetrics().height()};
}

QSize TextLine::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * std::min(characters_, 8), fontMetrics().height()};
}

QColor TextLine::Ground() const {
  return palette().color(QPalette::Window);
}

QColor TextLine::Ink() const {
  const QColor ink = palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole());
  return stale_ ? Faded(ink, Ground()) : ink;
}

void TextLine::PaintGround(QPainter& painter) const {
  painter.fillRect(rect(), Ground());
  if (!hasFocus()) return;
  const double line = std::max(2.0, BasePixels(*this) / 8);
  painter.setPen(QPen(palette().color(QPalette::Highlight), line));
  painter.drawRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2));
}

void TextLine::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  PaintGround(painter);
  painter.setPen(Ink());
  QString shown = text_;
  // Most texts fit, and measuring costs more than drawing.
  if (text_.size() * fontMetrics().maxWidth() > width()) {
    // A little smaller first, then shortened.
    const double wide = fontMetrics().horizontalAdvance(text_);
    const double share = std::clamp(width() / std::max(1.0, wide), kSmallestShare, 1.0);
    QFont smaller = font();
    smaller.setPixelSize(std::max(6, static_cast<int>(QFontInfo(smaller).pixelSize() * share)));
    painter.setFont(smaller);
    shown = painter.fontMetrics().elidedText(text_, elide_, width());
  }
  QRect room = rect();
  if (has_dot_) {
    const double size = height() * 0.4;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(dot_);
    painter.drawEllipse(QRectF(1, (height() - size) / 2, size, size));
    room.setLeft(static_cast<int>(size * 1.6));
  }
  painter.drawText(room, static_cast<int>(alignment_ | Qt::TextSingleLine), shown);
}

Readout::Readout(double scale, const QString& longest, QWidget* parent)
    : TextLine(parent), scale_(scale), longest_(longest), largest_scale_(kLargestWithoutEnd) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize Readout::sizeHint() const {
  const double pixels = BasePixels(*this) * scale_;
  return {static_cast<int>(std::ceil(WidthAt100(font(), longest_) * pixels / kMeasure_px)) + 2,
          static_cast<int>(std::ceil(pixels * kLineHeight))};
}

QSize Readout::minimumSizeHint() const {
  return sizeHint();
}

void Readout::PrepareFonts() const {
  if (prepared_) return;
  prepared_ = true;
  const double by_width = (width() - 2) * kMeasure_px / std::max(1.0, WidthAt100(font(), longest_));
  const double pixels = std::min({by_width, height() / kLineHeight, BasePixels(*this) * largest_scale_});
  main_font_ = Semibold(font(), pixels);
  tail_font_ = Semibold(font(), pixels * kTailShare);
}

double Readout::FontPixels() const {
  PrepareFonts();
  return main_font_.pixelSize();
}

double Readout::TextWidth(const QString& text) const {
  PrepareFonts();
  const Parts parts = Split(text);
  return QFontMetricsF(main_font_).horizontalAdvance(parts.main) +
         QFontMetricsF(tail_font_).horizontalAdvance(parts.tail);
}

void Readout::resizeEvent(QResizeEvent* event) {
  TextLine::resizeEvent(event);
  prepared_ = false;
}

void Readout::changeEvent(QEvent* event) {
  TextLine::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) prepared_ = false;
}

void Readout::paintEvent(QPaintEvent* /*event*/) {
  PrepareFonts();
  QPainter painter(this);
  PaintGround(painter);
  painter.setPen(Ink());
  const QFontMetricsF metrics(main_font_);
  const double baseline = (height() + metrics.ascent() - metrics.descent()) / 2;
  const bool right = (alignment() & Qt::AlignRight) != 0;
  const bool centre = (alignment() & Qt::AlignHCenter) != 0;
  double left = 1;
  if (right || centre) {
    const double rest = width() - 1 - TextWidth(text());
    left = right ? rest : rest / 2;
  }
  DrawParts(painter, Split(text()), main_font_, tail_font_, {left, baseline});
}

QSize SignalLine::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 30, fontMetrics().height() * 3};
}

QSize SignalLine::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 20, fontMetrics().height() * 2};
}

void SignalLine::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  PaintGround(painter);
  painter.setPen(Ink());
  const QStringList texts = text().split(QStringLiteral(", "));
  // "S9" and "+ 60dB" beside "50000.0 uV" and "20750.0 mV/m" are the longest.
  const double s_width = WidthAt100(font(), QStringLiteral("S9 + 60dB"));
  const double value_width = WidthAt100(font(), QStringLiteral("20750.0 mV/m"));
  constexpr double kValueShare = 0.46;  // size of the values against the S value
  const double pixels =
      std::min(height() / kLineHeight,
               width() * kMeasure_px / (s_width + value_width * kValueShare + kMeasure_px / 3));
  const QFont s_font = Semibold(font(), pixels);
  const QFontMetricsF s_metrics(s_font);
  const double baseline = (height() + s_metrics.ascent() - s_metrics.descent()) / 2;
  DrawParts(painter, Split(texts.value(0)), s_font, Semibold(font(), pixels * kTailShare), {1, baseline});
  const QFont value_font = Semibold(font(), pixels * kValueShare);
  const QFont unit_font = Semibold(font(), pixels * kValueShare * kTailShare);
  for (int i = 1; i < texts.size(); ++i) {
    const Parts parts = Split(texts.at(i));
    const double wide = QFontMetricsF(value_font).horizontalAdvance(parts.main) +
                        QFontMetricsF(unit_font).horizontalAdvance(parts.tail);
    const double line = baseline - (i == 1 ? pixels * kValueShare * 1.08 : 0);
    DrawParts(painter, parts, value_font, unit_font, {width() - 1 - wide, line});
  }
}

}  // namespace kestrum
