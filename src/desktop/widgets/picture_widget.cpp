#include "desktop/widgets/picture_widget.h"

#include <QPainter>
#include <utility>

#include "desktop/twips.h"
#include "desktop/widgets/control_colors.h"

namespace kestrum {

PictureWidget::PictureWidget(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PictureWidget::SetShapes(std::vector<Shape> shapes) {
  shapes_ = std::move(shapes);
  update();
}

QSize PictureWidget::sizeHint() const {
  const int side = fontMetrics().height() * 10;
  return {side, side};
}

QSize PictureWidget::minimumSizeHint() const {
  const int side = fontMetrics().height() * 5;
  return {side, side};
}

void PictureWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor ground =
      palette().color(QPalette::Window).lightness() < 128 ? QColor(0xE0, 0xE0, 0xE0) : Qt::white;
  painter.fillRect(rect(), ground);
  painter.setBrush(Qt::NoBrush);
  for (const Shape& shape : shapes_) {
    painter.setPen(QPen(ShapeColor(shape.color), shape.pen_width, Qt::SolidLine, Qt::RoundCap));
    const QPointF start(ToPixels(shape.x1), ToPixels(shape.y1));
    if (shape.kind == Shape::Kind::kCircle) {
      painter.drawEllipse(start, ToPixels(shape.radius), ToPixels(shape.radius));
    } else {
      painter.drawLine(start, QPointF(ToPixels(shape.x2), ToPixels(shape.y2)));
    }
  }
}

void PictureWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  emit Resized();
}

}  // namespace kestrum
