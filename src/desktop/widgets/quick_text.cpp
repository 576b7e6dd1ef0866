#include "desktop/widgets/quick_text.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QList>
#include <QPainter>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace kestrum {
namespace {

// How far the smooth edge of a letter may reach beyond its outline.
constexpr double kBlur = 1.5;
// Letters from this size on, in pixels of the screen, are painted once and begin at a whole pixel.
constexpr double kLargePx = 24;

}  // namespace

void QuickText::SetFont(const QFont& font) {
  if (prepared_ && font == font_) return;
  prepared_ = true;
  font_ = font;
  const QFontMetricsF metrics(font);
  ascent_ = metrics.ascent();
  descent_ = metrics.descent();
  raw_ = QRawFont::fromFont(font);
  letters_.assign(kLetters + 1, {});
  painted_.clear();
}

QuickText::Letter& QuickText::Of(QChar letter) const {
  // The last one stands for all that are not known.
  if (letter.unicode() >= kLetters) return letters_.back();
  Letter& known = letters_.at(letter.unicode());
  if (known.asked) return known;
  known.asked = true;
  const QList<quint32> glyph = raw_.glyphIndexesForString(QString(letter));
  if (glyph.size() != 1 || letter < QLatin1Char(' ')) return known;
  known.glyph = glyph.first();
  known.width = QFontMetricsF(font_).horizontalAdvance(letter);
  const QRectF bounds = raw_.boundingRect(known.glyph);
  if (!bounds.isEmpty()) known.ink = bounds.adjusted(-kBlur, -kBlur, kBlur, kBlur);
  return known;
}

bool QuickText::Knows(const QString& text) const {
  return std::all_of(text.begin(), text.end(), [this](QChar letter) { return Of(letter).glyph != 0; });
}

double QuickText::Width(const QString& text) const {
  if (!Knows(text)) return QFontMetricsF(font_).horizontalAdvance(text);
  double width = 0;
  for (const QChar letter : text) width += Of(letter).width;
  return width;
}

void QuickText::Draw(QPainter& painter, const QPointF& place, const QString& text) const {
  constexpr double kAll = 1e6;
  Draw(painter, place, text, QRectF(-kAll, -kAll, 2 * kAll, 2 * kAll));
}

void QuickText::Draw(QPainter& painter, const QPointF& place, const QString& text, const QRectF& part) const {
  if (text.isEmpty()) return;
  if (!Knows(text)) {
    painter.setFont(font_);
    painter.drawText(place, text);
    return;
  }
  PrepareFor(painter);
  if (font_.pixelSize() * manner_.ratio >= kLargePx) {
    DrawPainted(painter, place, text, part);
  } else {
    DrawRun(painter, place, text, part);
  }
}

void QuickText::DrawRun(QPainter& painter, const QPointF& place, const QString& text,
                        const QRectF& part) const {
  QList<quint32> glyphs;
  QList<QPointF> places;
  glyphs.reserve(text.size());
  places.reserve(text.size());
  double x = 0;
  for (const QChar character : text) {
    const Letter& letter = Of(character);
    if (letter.ink.translated(place.x() + x, place.y()).intersects(part)) {
      glyphs.append(letter.glyph);
      places.append(QPointF(x, 0));
    }
    x += letter.width;
  }
  if (glyphs.isEmpty()) return;
  QGlyphRun run;
  run.setRawFont(raw_);
  run.setGlyphIndexes(glyphs);
  run.setPositions(places);
  painter.drawGlyphRun(place, run);
}

void QuickText::DrawPainted(QPainter& painter, const QPointF& place, const QString& text,
                            const QRectF& part) const {
  const QTransform to_screen = painter.deviceTransform();
  const QTransform from_screen = to_screen.inverted();
  double x = place.x();
  for (const QChar character : text) {
    Letter& letter = Of(character);
    if (letter.ink.translated(x, place.y()).intersects(part)) {
      const Painted& painted = PaintedOf(letter);
      const QPointF pen = to_screen.map(QPointF(x, place.y()));
      painter.drawImage(
          from_screen.map(QPointF(std::round(pen.x()) + painted.left, std::round(pen.y()) + painted.top)),
          painted.pixels);
    }
    x += letter.width;
  }
}

void QuickText::PrepareFor(const QPainter& painter) const {
  const Manner manner{painter.device()->devicePixelRatioF(), painter.pen().color().rgba()};
  if (manner == manner_) return;
  manner_ = manner;
  painted_.clear();
  for (Letter& letter : letters_) letter.painted = 0;
}

const QuickText::Painted& QuickText::PaintedOf(Letter& letter) const {
  if (letter.painted > 0) return painted_[letter.painted - 1];
  const double ratio = manner_.ratio;
  const QRectF ink(letter.ink.topLeft() * ratio, letter.ink.size() * ratio);
  const QRect bounds = ink.toAlignedRect();
  Painted& painted = painted_.emplace_back();
  letter.painted = painted_.size();
  painted = {QImage(bounds.size(), QImage::Format_ARGB32_Premultiplied), bounds.left(), bounds.top()};
  painted.pixels.fill(Qt::transparent);
  painted.pixels.setDevicePixelRatio(ratio);
  QPainter painter(&painted.pixels);
  painter.setPen(QColor::fromRgba(manner_.ink));
  QGlyphRun run;
  run.setRawFont(raw_);
  run.setGlyphIndexes({letter.glyph});
  run.setPositions({QPointF()});
  painter.drawGlyphRun(-QPointF(bounds.topLeft()) / ratio, run);
  return painted;
}

QRectF QuickText::InkOf(const QString& text) const {
  const double blur = kBlur + ascent_ / 2;  // accents on capitals, letters that lean over
  return QRectF(0, -ascent_, QFontMetricsF(font_).horizontalAdvance(text), ascent_ + descent_)
      .adjusted(-blur, -blur, blur, blur);
}

QRectF QuickText::Difference(const QPointF& old_place, const QString& old_text, const QPointF& place,
                             const QString& text) const {
  if (!Knows(text) || !Knows(old_text)) {
    return old_text == text && old_place == place
               ? QRectF()
               : InkOf(old_text).translated(old_place) | InkOf(text).translated(place);
  }
  QRectF part;
  double old_x = old_place.x();
  double x = place.x();
  for (qsizetype i = 0; i < std::max(text.size(), old_text.size()); ++i) {
    const QChar old_letter = i < old_text.size() ? old_text.at(i) : QChar();
    const QChar letter = i < text.size() ? text.at(i) : QChar();
    const Letter& before = Of(old_letter);
    const Letter& now = Of(letter);
    if (letter != old_letter || x != old_x || place.y() != old_place.y()) {
      part |= before.ink.translated(old_x, old_place.y());
      part |= now.ink.translated(x, place.y());
    }
    old_x += before.width;
    x += now.width;
  }
  return part;
}

void DrawRuns(QPainter& painter, const TextRuns& runs, const QRectF& part) {
  for (const TextRun& run : runs) run.letters->Draw(painter, run.place, run.text, part);
}

QRectF Difference(const TextRuns& before, const TextRuns& runs) {
  static const TextRun nothing;
  QRectF part;
  for (std::size_t i = 0; i < std::max(before.size(), runs.size()); ++i) {
    const TextRun& old = i < before.size() ? before.at(i) : nothing;
    const TextRun& now = i < runs.size() ? runs.at(i) : nothing;
    const QuickText& letters = now.letters != nullptr ? *now.letters : *old.letters;
    const QPointF old_place = old.letters != nullptr ? old.place : now.place;
    const QPointF place = now.letters != nullptr ? now.place : old.place;
    part |= letters.Difference(old_place, old.text, place, now.text);
  }
  return part;
}

}  // namespace kestrum
