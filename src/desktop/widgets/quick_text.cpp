#include "desktop/widgets/quick_text.h"

#include <QFontMetricsF>
#include <QList>
#include <QPainter>
#include <algorithm>

namespace kestrum {

void QuickText::SetFont(const QFont& font) {
  if (prepared_ && font == font_) return;
  prepared_ = true;
  font_ = font;
  const QFontMetricsF metrics(font);
  ascent_ = metrics.ascent();
  descent_ = metrics.descent();
  raw_ = QRawFont::fromFont(font);
  letters_.fill({});
}

const QuickText::Letter& QuickText::Of(QChar letter) const {
  static const Letter unknown;
  if (letter.unicode() >= kLetters) return unknown;
  Letter& known = letters_.at(letter.unicode());
  if (known.asked) return known;
  known.asked = true;
  const QList<quint32> glyph = raw_.glyphIndexesForString(QString(letter));
  if (glyph.size() != 1 || letter < QLatin1Char(' ')) return known;
  known.glyph = glyph.first();
  known.width = QFontMetricsF(font_).horizontalAdvance(letter);
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
  if (text.isEmpty()) return;
  if (!Knows(text)) {
    painter.setFont(font_);
    painter.drawText(place, text);
    return;
  }
  QList<quint32> glyphs;
  QList<QPointF> places;
  glyphs.reserve(text.size());
  places.reserve(text.size());
  double x = 0;
  for (const QChar letter : text) {
    glyphs.append(Of(letter).glyph);
    places.append(QPointF(x, 0));
    x += Of(letter).width;
  }
  QGlyphRun run;
  run.setRawFont(raw_);
  run.setGlyphIndexes(glyphs);
  run.setPositions(places);
  painter.drawGlyphRun(place, run);
}

}  // namespace kestrum
