#include "desktop/widgets/readout.h"

#include <QAccessible>
#include <QEvent>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "desktop/widgets/scheme.h"

namespace kestrum {
namespace {

constexpr double kTailShare = 0.55;      // size of what follows the first blank
constexpr double kLineHeight = 1.16;     // of a font, in its pixel size
constexpr double kSmallestShare = 0.75;  // of its font, before a text is shortened
constexpr double kMeasurePx = 100;       // size in which texts are measured
constexpr double kLargestWithoutEnd = 1000;
constexpr double kValueShare = 0.46;  // size of the values against the S value
constexpr double kSecondLine = 1.08;  // how far two values stand apart, in their size

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
  return QFontMetricsF(Semibold(base, kMeasurePx)).horizontalAdvance(parts.main) +
         QFontMetricsF(Semibold(base, kMeasurePx)).horizontalAdvance(parts.tail) * kTailShare;
}

// The main part and what follows it smaller; `place` is the left end of their base line.
void AddParts(TextRuns& runs, const Parts& parts, const QuickText& main, const QuickText& tail,
              const QPointF& place) {
  runs.push_back({&main, parts.main, place});
  runs.push_back({&tail, parts.tail, place + QPointF(main.Width(parts.main), 0)});
}

double PartsWidth(const Parts& parts, const QuickText& main, const QuickText& tail) {
  return main.Width(parts.main) + tail.Width(parts.tail);
}

}  // namespace

TextLine::TextLine(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TextLine::SetText(const QString& text) {
  if (text == text_) return;
  const bool comparable = fitted_ && laid_out_ && !crowded_;
  text_ = text;
  laid_out_ = false;
  if (!comparable) {
    update();
  } else {
    const TextRuns before = std::exchange(runs_, {});
    const TextRuns& runs = Runs();
    if (crowded_) {
      update();
    } else {
      update(Difference(before, runs).toAlignedRect());
    }
  }
  if (!QAccessible::isActive()) return;
  QAccessibleEvent renamed(this, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&renamed);
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

void TextLine::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fitted_ = false;
}

void TextLine::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) fitted_ = false;
}

const TextRuns& TextLine::Runs() const {
  if (!fitted_) ChooseFonts();
  if (!fitted_ || !laid_out_) runs_ = LayOut();
  fitted_ = laid_out_ = true;
  return runs_;
}

void TextLine::ChooseFonts() const {
  normal_.SetFont(font());
}

TextRuns TextLine::LayOut() const {
  QRectF room = rect();
  if (has_dot_) room.setLeft(DotSize() * 1.6);
  const QuickText* letters = &normal_;
  QString shown = text_;
  const double wide = normal_.Width(text_);
  crowded_ = wide > room.width();
  if (crowded_) {
    // A little smaller first, then shortened.
    QFont smaller = font();
    const double share = std::max(room.width() / wide, kSmallestShare);
    smaller.setPixelSize(std::max(6, static_cast<int>(BasePixels(*this) * share)));
    smaller_.SetFont(smaller);
    letters = &smaller_;
    if (smaller_.Width(text_) > room.width()) {
      shown = QFontMetricsF(smaller).elidedText(text_, elide_, room.width());
    }
  }
  double left = room.left();
  const double rest = std::max(0.0, room.width() - letters->Width(shown));
  if ((alignment_ & Qt::AlignRight) != 0) left += rest;
  if ((alignment_ & Qt::AlignHCenter) != 0) left += rest / 2;
  return {{letters, shown, {left, (height() + letters->Ascent() - letters->Descent()) / 2}}};
}

void TextLine::paintEvent(QPaintEvent* event) {
  const TextRuns& runs = Runs();
  QPainter painter(this);
  PaintGround(painter);
  const QColor ink = Ink();
  painter.setPen(ink);
  if (has_dot_) {
    const double size = DotSize();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(dot_);
    painter.drawEllipse(QRectF(1, (height() - size) / 2, size, size));
  }
  DrawRuns(painter, runs, event->rect());
}

Readout::Readout(double scale, const QString& longest, QWidget* parent)
    : TextLine(parent), scale_(scale), longest_(longest), largest_scale_(kLargestWithoutEnd) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize Readout::sizeHint() const {
  const double pixels = BasePixels(*this) * scale_;
  return {static_cast<int>(std::ceil(WidthAt100(font(), longest_) * pixels / kMeasurePx)) + 2,
          static_cast<int>(std::ceil(pixels * kLineHeight))};
}

QSize Readout::minimumSizeHint() const {
  return sizeHint();
}

void Readout::ChooseFonts() const {
  const double by_width = (width() - 2) * kMeasurePx / std::max(1.0, WidthAt100(font(), longest_));
  const double pixels = std::min({by_width, height() / kLineHeight, BasePixels(*this) * largest_scale_});
  main_.SetFont(Semibold(font(), pixels));
  tail_.SetFont(Semibold(font(), pixels * kTailShare));
}

double Readout::FontPixels() const {
  Runs();
  return main_.font().pixelSize();
}

double Readout::TextWidth(const QString& text) const {
  Runs();
  return PartsWidth(Split(text), main_, tail_);
}

TextRuns Readout::LayOut() const {
  const double baseline = (height() + main_.Ascent() - main_.Descent()) / 2;
  const Parts parts = Split(text());
  double left = 1;
  if ((alignment() & (Qt::AlignRight | Qt::AlignHCenter)) != 0) {
    const double rest = width() - 1 - PartsWidth(parts, main_, tail_);
    left = (alignment() & Qt::AlignRight) != 0 ? rest : rest / 2;
  }
  TextRuns runs;
  AddParts(runs, parts, main_, tail_, {left, baseline});
  return runs;
}

QSize SignalLine::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 30, fontMetrics().height() * 3};
}

QSize SignalLine::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 20, fontMetrics().height() * 2};
}

void SignalLine::ChooseFonts() const {
  // "S9" and "+ 60dB" beside "50000.0 uV" and "20750.0 mV/m" are the longest.
  const double s_width = WidthAt100(font(), QStringLiteral("S9 + 60dB"));
  const double value_width = WidthAt100(font(), QStringLiteral("20750.0 mV/m"));
  const double pixels = std::min(
      height() / kLineHeight, width() * kMeasurePx / (s_width + value_width * kValueShare + kMeasurePx / 3));
  s_.SetFont(Semibold(font(), pixels));
  s_tail_.SetFont(Semibold(font(), pixels * kTailShare));
  value_.SetFont(Semibold(font(), pixels * kValueShare));
  unit_.SetFont(Semibold(font(), pixels * kValueShare * kTailShare));
}

TextRuns SignalLine::LayOut() const {
  const QStringList texts = text().split(QStringLiteral(", "));
  const double baseline = (height() + s_.Ascent() - s_.Descent()) / 2;
  TextRuns runs;
  AddParts(runs, Split(texts.value(0)), s_, s_tail_, {1, baseline});
  for (int i = 1; i < texts.size(); ++i) {
    const Parts parts = Split(texts.at(i));
    const double left = width() - 1 - PartsWidth(parts, value_, unit_);
    const double line = baseline - (i == 1 ? value_.font().pixelSize() * kSecondLine : 0);
    AddParts(runs, parts, value_, unit_, {left, line});
  }
  return runs;
}

}  // namespace kestrum
