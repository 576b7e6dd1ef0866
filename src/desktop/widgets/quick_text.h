#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QPointF>
#include <QRawFont>
#include <QString>
#include <array>

class QPainter;

namespace kestrum {

// Texts of one font, drawn without the shaping that scripts with joined letters need: for numbers, units and
// plain words that change with every reading. A text with other letters is drawn as usual.
class QuickText {
 public:
  // Costs nothing while the font stays the same.
  void SetFont(const QFont& font);
  const QFont& font() const { return font_; }

  double Ascent() const { return ascent_; }
  double Descent() const { return descent_; }
  double Width(const QString& text) const;
  // The left end of the base line stands at `place`; the colour is the painter's pen.
  void Draw(QPainter& painter, const QPointF& place, const QString& text) const;

 private:
  static constexpr int kLetters = 256;  // Latin-1
  struct Letter {
    bool asked = false;
    quint32 glyph = 0;  // 0 when the font has none
    double width = 0;
  };
  const Letter& Of(QChar letter) const;
  bool Knows(const QString& text) const;

  bool prepared_ = false;
  QFont font_;
  double ascent_ = 0;
  double descent_ = 0;
  QRawFont raw_;
  mutable std::array<Letter, kLetters> letters_{};
};

}  // namespace kestrum
