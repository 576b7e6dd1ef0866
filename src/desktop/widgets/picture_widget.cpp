#include "desktop/widgets/picture_widget.h"

#include <QPainter>
#include <cmath>
#include <utility>

#include "desktop/twips.h"
#include "desktop/widgets/control_colors.h"
#include "desktop/widgets/dial_parts.h"

namespace kestrum {
namespace {

QPointF Centre(const Shape& shape) {
  return {ToPixels(shape.x1), ToPixels(shape.y1)};
}

}  // namespace

PictureWidget::PictureWidget(QWidget* parent) : Dial(10, 5, parent) {}

void PictureWidget::SetShapes(std::vector<Shape> shapes) {
  const auto same_circle = [](const Shape& a, const Shape& b) {
    return a.x1 == b.x1 && a.y1 == b.y1 && a.radius == b.radius;
  };
  if (shapes.empty() || shapes_.empty() || !same_circle(shapes.front(), shapes_.front())) still().Drop();
  shapes_ = std::move(shapes);
  update();
}

void PictureWidget::PaintShape(QPainter& painter, const Shape& shape) const {
  const QPointF start = Centre(shape);
  const QColor pure = ShapeColor(shape.color);
  const bool fades = Stale() && shape.kind == Shape::Kind::kLine;
  const QColor color = fades ? Faded(pure, palette().color(QPalette::Window)) : pure;
  if (shape.kind == Shape::Kind::kCircle) {
    const double radius = ToPixels(shape.radius);
    // Pure blue is hardly seen on a dark ground without a light line beside it.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(SchemeOf(palette()).halo, shape.pen_width + 3));
    painter.drawEllipse(start, radius, radius);
    painter.setPen(QPen(color, shape.pen_width));
    painter.drawEllipse(start, radius, radius);
    return;
  }
  const QPointF end(ToPixels(shape.x2), ToPixels(shape.y2));
  painter.setPen(QPen(color, shape.pen_width, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(start, end);
  // The line is drawn as an arrow, to be read from a metre.
  painter.save();
  painter.translate(start);
  PaintArrow(painter, end - start, std::hypot(end.x() - start.x(), end.y() - start.y()), color);
  painter.restore();
}

void PictureWidget::PaintStill(const Shape& circle) {
  const Scheme& scheme = SchemeOf(palette());
  QPainter painter(&still().Begin(*this, palette().color(QPalette::Window)));
  painter.setRenderHint(QPainter::Antialiasing);
  const double radius = ToPixels(circle.radius);
  painter.translate(Centre(circle));
  painter.setPen(Qt::NoPen);
  painter.setBrush(scheme.dial);
  painter.drawEllipse(QPointF(), radius * 1.2, radius * 1.2);
  PaintTicks(painter, radius, scheme);
  PaintCar(painter, radius, scheme);
  PaintFrontMark(painter, radius, scheme);
  painter.translate(-Centre(circle));
  PaintShape(painter, circle);
}

void PictureWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Window));
  if (shapes_.empty()) return;
  if (still().IsDue(*this)) PaintStill(shapes_.front());
  if (Stale()) painter.setOpacity(kFadedDial);
  still().Draw(painter);
  painter.setOpacity(1);
  painter.setRenderHint(QPainter::Antialiasing);
  for (std::size_t i = 1; i < shapes_.size(); ++i) PaintShape(painter, shapes_.at(i));
  if (!Stale()) return;
  painter.translate(Centre(shapes_.front()));
  PaintBadge(painter, ToPixels(shapes_.front().radius), Badge(), SchemeOf(palette()));
}

void PictureWidget::resizeEvent(QResizeEvent* event) {
  Dial::resizeEvent(event);
  emit Resized();
}

}  // namespace kestrum
