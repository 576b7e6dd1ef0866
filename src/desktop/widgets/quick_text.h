#pragma once

#include <QFont>
#include <QImage>
#include <QPointF>
#include <QRawFont>
#include <QRectF>
#include <QString>
#include <array>
#include <cstddef>
#include <vector>

class QPainter;

namespace kestrum {

// Texts of one font, drawn without the shaping that scripts with joined letters need: for numbers, units and
// plain words that change with every reading. Large letters are painted once and copied from then on: the
// toolkit draws them anew from their outlines each time. A text with other letters is drawn as usual.
class QuickText {
 public:
  // Costs nothing while the font stays the same.
  void SetFont(const QFont& font);
  const QFont& font() const { return font_; }

  double Ascent() const { return ascent_; }
  double Descent() const { return descent_; }
  double Width(const QString& text) const;
  // The left end of the base line stands at `place`; the colour is the painter's pen. Letters that do not
  // reach into `part` may be left out.
  void Draw(QPainter& painter, const QPointF& place, const QString& text, const QRectF& part) const;
  // The same, whole.
  void Draw(QPainter& painter, const QPointF& place, const QString& text) const;
  // What has to be painted anew when a text at one place takes the place of another; empty when nothing.
  QRectF Difference(const QPointF& old_place, const QString& old_text, const QPointF& place,
                    const QString& text) const;

 private:
  static constexpr int kLetters = 256;  // Latin-1
  // A painted letter; `left` and `top` tell where it stands against the pen, in pixels of the screen.
  struct Painted {
    QImage pixels;
    int left = 0;
    int top = 0;
  };
  struct Letter {
    bool asked = false;
    quint32 glyph = 0;  // 0 when the font has none
    double width = 0;
    QRectF ink;               // what it may paint, the pen at the origin
    std::size_t painted = 0;  // place in `painted_`, counted from 1; 0 for none yet
  };
  // For what screen and in what colour letters are painted.
  struct Manner {
    double ratio = 0;
    QRgb ink = 0;
    bool operator==(const Manner&) const = default;
  };
  Letter& Of(QChar letter) const;
  const Painted& PaintedOf(Letter& letter) const;
  void PrepareFor(const QPainter& painter) const;
  void DrawRun(QPainter& painter, const QPointF& place, const QString& text, const QRectF& part) const;
  void DrawPainted(QPainter& painter, const QPointF& place, const QString& text, const QRectF& part) const;
  bool Knows(const QString& text) const;
  // The same for a whole text that has other letters.
  QRectF InkOf(const QString& text) const;

  bool prepared_ = false;
  QFont font_;
  double ascent_ = 0;
  double descent_ = 0;
  QRawFont raw_;
  mutable Manner manner_;
  mutable std::vector<Letter> letters_;
  mutable std::vector<Painted> painted_;
};

// A piece of a line: what it says, in which letters, and where its base line begins.
struct TextRun {
  const QuickText* letters = nullptr;
  QString text;
  QPointF place;
};
using TextRuns = std::vector<TextRun>;

void DrawRuns(QPainter& painter, const TextRuns& runs, const QRectF& part);
// What has to be painted anew when `runs` take the place of `before`, of the same letters in the same order.
QRectF Difference(const TextRuns& before, const TextRuns& runs);

}  // namespace kestrum
