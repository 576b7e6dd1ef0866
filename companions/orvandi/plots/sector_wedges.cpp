#include "plots/sector_wedges.h"

#include <algorithm>
#include <cmath>

namespace orvandi {
namespace {

constexpr double kArcStepDeg = 1;

int StepsOf(double from_deg, double to_deg) {
  return std::max(1, static_cast<int>(std::ceil((to_deg - from_deg) / kArcStepDeg)));
}

}  // namespace

SectorWedges::SectorWedges(QCustomPlot* plot, QCPPolarAxisAngular* angular, QCPPolarAxisRadial* radial)
    : QCPLayerable(plot, QStringLiteral("main")), angular_(angular), radial_(radial) {}

void SectorWedges::applyDefaultAntialiasingHint(QCPPainter* painter) const {
  painter->setAntialiasing(true);
}

QPointF SectorWedges::At(double angle_deg, double level) const {
  return radial_->coordToPixel(angle_deg, std::clamp(level, radial_->range().lower, radial_->range().upper));
}

void SectorWedges::DrawRing(QCPPainter* painter, const Wedge& wedge) const {
  QPolygonF shape;
  const int steps = StepsOf(wedge.from_deg, wedge.to_deg);
  const double step = (wedge.to_deg - wedge.from_deg) / steps;
  for (int i = 0; i <= steps; ++i) shape << At(wedge.from_deg + i * step, wedge.outer);
  for (int i = steps; i >= 0; --i) shape << At(wedge.from_deg + i * step, wedge.inner);
  painter->setPen(wedge.rim.alpha() > 0 ? QPen(wedge.rim, 1) : QPen(Qt::NoPen));
  painter->setBrush(wedge.fill);
  painter->drawPolygon(shape);
}

void SectorWedges::draw(QCPPainter* painter) {
  for (const Wedge& wedge : wedges) DrawRing(painter, wedge);
  painter->setBrush(Qt::NoBrush);
  if (has_zero_circle && radial_->range().contains(zero_circle)) {
    QPolygonF circle;
    for (int i = 0; i <= 360; ++i) circle << At(i, zero_circle);
    painter->setPen(QPen(zero_color, 1.6));
    painter->drawPolyline(circle);
  }
  painter->setPen(QPen(mark_color, 4, Qt::SolidLine, Qt::FlatCap));
  for (const auto& [from, to] : marked_deg) {
    QPolygonF arc;
    const int steps = StepsOf(from, to);
    for (int i = 0; i <= steps; ++i) arc << At(from + (to - from) * i / steps, radial_->range().upper);
    painter->drawPolyline(arc);
  }
}

}  // namespace orvandi
