#pragma once

#include <QPixmap>
#include <QWidget>
#include <vector>

#include "forms/control.h"

namespace kestrum {

// Paints shapes given in twips, 15 to a pixel, in their fixed pure colours. A car with its front at the top
// stands behind the first circle.
class PictureWidget : public QWidget {
  Q_OBJECT

 public:
  explicit PictureWidget(QWidget* parent);

  void SetShapes(std::vector<Shape> shapes);
  void SetStale(bool stale);
  bool Stale() const { return stale_; }
  // Stands across the picture while it is stale.
  void SetBadge(const QString& badge);
  QString Badge() const { return badge_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void Resized();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void PaintStill(const Shape& circle);
  void PaintShape(QPainter& painter, const Shape& shape) const;

  std::vector<Shape> shapes_;
  bool stale_ = false;
  QString badge_;
  QPixmap still_;  // ground, ticks, car and first circle
};

}  // namespace kestrum
