#pragma once

#include <QFont>
#include <QWidget>

#include "desktop/widgets/pressable.h"
#include "desktop/widgets/quick_text.h"

namespace kestrum {

// One line of text that paints its own ground and never asks for a new layout when the text changes: what is
// around it is neither painted nor measured again.
class TextLine : public QWidget, public Pressable {
  Q_OBJECT
  Q_PROPERTY(QString text READ text WRITE SetText)

 public:
  explicit TextLine(QWidget* parent);

  QString text() const { return text_; }
  void SetText(const QString& text);
  // At a third of its strength: no longer true.
  bool Stale() const { return stale_; }
  void SetStale(bool stale);
  void SetAlignment(Qt::Alignment alignment) {
    alignment_ = alignment;
    laid_out_ = false;
  }
  Qt::Alignment alignment() const { return alignment_; }
  // Shortens a text that is too long here.
  void SetElide(Qt::TextElideMode mode) {
    elide_ = mode;
    laid_out_ = false;
  }
  // The width that it asks for, in average characters.
  void SetRoom(int characters) { characters_ = characters; }
  // A small dot before the text carries the background colour of the control: a quiet sign.
  void UseDot() {
    has_dot_ = true;
    laid_out_ = false;
  }
  bool HasDot() const { return has_dot_; }
  void SetDot(const QColor& color);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

  // Letters for the room and the font there are; called when either has changed.
  virtual void ChooseFonts() const;
  // The pieces of the present text.
  virtual TextRuns LayOut() const;
  // Both, when anything has changed since.
  const TextRuns& Runs() const;

 private:
  QColor Ground() const;
  QColor Ink() const;
  // The ground, and the ring that tells where the keyboard is.
  void PaintGround(QPainter& painter) const;
  double DotSize() const { return height() * 0.4; }

  QString text_;
  bool stale_ = false;
  Qt::Alignment alignment_ = Qt::AlignLeft | Qt::AlignVCenter;
  Qt::TextElideMode elide_ = Qt::ElideRight;
  int characters_ = 16;
  bool has_dot_ = false;
  QColor dot_;
  mutable QuickText normal_;
  mutable QuickText smaller_;
  mutable bool fitted_ = false;    // the fonts are chosen
  mutable bool laid_out_ = false;  // `runs_` are those of the text
  mutable bool crowded_ = false;   // they are drawn smaller or shortened
  mutable TextRuns runs_;
};

// A number with its unit, as large as its longest text fits: the digits keep their size whatever the number.
// What follows the first blank ("km", "+ 60dB") is drawn smaller.
class Readout : public TextLine {
  Q_OBJECT

 public:
  // `longest` is the longest text it has to show; `scale` its least size as a multiple of the font.
  Readout(double scale, const QString& longest, QWidget* parent);

  // Where there is place the text grows up to this scale; without it, as far as there is place.
  void GrowTo(double scale) { largest_scale_ = scale; }
  // Height of the font in which texts are drawn now, in pixels; the longest text fits in it.
  double FontPixels() const;
  // Width of a text drawn in it, in pixels.
  double TextWidth(const QString& text) const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void ChooseFonts() const override;
  TextRuns LayOut() const override;

 private:
  double scale_;
  QString longest_;
  double largest_scale_;
  mutable QuickText main_;
  mutable QuickText tail_;
};

// The signal line "S8+, 38.3 uV, 15.89 mV/m": one text, drawn with a large S value and the two others beside
// it, one above the other.
class SignalLine : public TextLine {
  Q_OBJECT

 public:
  explicit SignalLine(QWidget* parent) : TextLine(parent) {}
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void ChooseFonts() const override;
  TextRuns LayOut() const override;

 private:
  mutable QuickText s_;
  mutable QuickText s_tail_;
  mutable QuickText value_;
  mutable QuickText unit_;
};

}  // namespace kestrum
