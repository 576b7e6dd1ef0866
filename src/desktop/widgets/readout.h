#pragma once

#include <QFont>
#include <QWidget>
#include <functional>

#include "desktop/widgets/quick_text.h"

namespace kestrum {

// One line of text that paints its own ground and never asks for a new layout when the text changes: what is
// around it is neither painted nor measured again.
class TextLine : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QString text READ text WRITE SetText)

 public:
  explicit TextLine(QWidget* parent);

  QString text() const { return text_; }
  void SetText(const QString& text);
  // At a third of its strength: no longer true.
  bool Stale() const { return stale_; }
  void SetStale(bool stale);
  void SetAlignment(Qt::Alignment alignment) { alignment_ = alignment; }
  Qt::Alignment alignment() const { return alignment_; }
  // Shortens a text that is too long here.
  void SetElide(Qt::TextElideMode mode) { elide_ = mode; }
  // The width that it asks for, in average characters.
  void SetRoom(int characters) { characters_ = characters; }
  // A small dot before the text carries the background colour of the control: a quiet sign.
  void UseDot() { has_dot_ = true; }
  bool HasDot() const { return has_dot_; }
  void SetDot(const QColor& color);
  // Can be reached and pressed by the keyboard and by screen readers too.
  void MakePressable(std::function<void()> press);
  bool Pressable() const { return static_cast<bool>(press_); }
  void Press() const { press_(); }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  QColor Ground() const;
  QColor Ink() const;
  // The ground, and the ring that tells where the keyboard is.
  void PaintGround(QPainter& painter) const;

 private:
  QString text_;
  bool stale_ = false;
  Qt::Alignment alignment_ = Qt::AlignLeft | Qt::AlignVCenter;
  Qt::TextElideMode elide_ = Qt::ElideRight;
  int characters_ = 16;
  std::function<void()> press_;
  bool has_dot_ = false;
  QColor dot_;
  QuickText normal_;
  QuickText smaller_;
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
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void PrepareFonts() const;

  double scale_;
  QString longest_;
  double largest_scale_;
  mutable bool prepared_ = false;
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
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void PrepareFonts();

  bool prepared_ = false;
  QuickText s_;
  QuickText s_tail_;
  QuickText value_;
  QuickText unit_;
};

}  // namespace kestrum
