#pragma once

#include <QPixmap>
#include <QRectF>

class QColor;
class QPainter;
class QWidget;

namespace kestrum {

// What a widget paints once and shows again until it is dropped or the widget's size or its screen's scale
// changes.
class StillPicture {
 public:
  void Drop() { pixels_ = QPixmap(); }
  bool IsDue(const QWidget& widget) const;
  // A fresh ground of the widget's size, to be painted on.
  QPixmap& Begin(const QWidget& widget, const QColor& ground);
  void Draw(QPainter& painter) const { Draw(painter, QRectF(QPointF(), pixels_.deviceIndependentSize())); }
  // Only this part, in the widget's pixels.
  void Draw(QPainter& painter, const QRectF& part) const;

 private:
  QPixmap pixels_;
};

}  // namespace kestrum
