#pragma once

#include <QLabel>

namespace kestrum {

// A label that draws its text as large as fits into it, never clipped: a readout.
class FitLabel : public QLabel {
  Q_OBJECT

 public:
  // `scale` is the wanted size as a multiple of the application's font; a text that is too wide for it is
  // drawn smaller. `room` is a typical text: the label asks for as much place as that needs.
  FitLabel(double scale, const QString& room, QWidget* parent);
  // From now on the text grows up to this scale when there is place.
  void GrowTo(double scale) { largest_scale_ = scale; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  // The font in which the present text is drawn.
  QFont FittingFont() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont Scaled(double scale) const;
  QFont Fit(const QString& text) const;

  double scale_;
  QString room_;
  double largest_scale_;

  // The last fit; a readout changes its digits all the time, but seldom its shape.
  struct Fitted {
    QString shape;
    QSize room;
    QFont base;
    double largest_scale = 0;
    bool operator==(const Fitted&) const = default;
  };
  mutable Fitted fitted_for_;
  mutable QFont fitted_;
};

// A label that shortens its text with "…" where it is too long, instead of widening the window. text() stays
// the whole text.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent, Qt::TextElideMode mode = Qt::ElideRight);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::TextElideMode mode_;
};

}  // namespace kestrum
