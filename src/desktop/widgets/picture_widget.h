#pragma once

#include <vector>

#include "desktop/widgets/dial.h"
#include "forms/control.h"

namespace kestrum {

// Paints shapes given in twips, 15 to a pixel, in their fixed pure colours. A car with its front at the top
// stands behind the first circle.
class PictureWidget : public Dial {
  Q_OBJECT

 public:
  explicit PictureWidget(QWidget* parent);

  void SetShapes(std::vector<Shape> shapes);

 signals:
  void Resized();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void PaintStill(const Shape& circle);  // ground, ticks, car and first circle
  void PaintShape(QPainter& painter, const Shape& shape) const;

  std::vector<Shape> shapes_;
};

}  // namespace kestrum
