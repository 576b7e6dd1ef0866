#include "map/projection.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvandi {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kMaxLatitude = 85.0511287798066;  // where the Mercator square ends
constexpr double kEquatorMetres = 40075016.685578488;
constexpr double kSinglePointZoom = 16;

double Radians(double degrees) {
  return degrees * kPi / 180;
}

double Degrees(double radians) {
  return radians * 180 / kPi;
}

}  // namespace

QPointF ToWorld(Place point) {
  const double latitude = Radians(std::clamp(point.latitude_deg, -kMaxLatitude, kMaxLatitude));
  const double x = (point.longitude_deg + 180) / 360;
  const double y = (1 - std::asinh(std::tan(latitude)) / kPi) / 2;
  return {x, std::clamp(y, 0.0, 1.0)};
}

Place ToGeo(QPointF world) {
  return {Degrees(std::atan(std::sinh(kPi * (1 - 2 * world.y())))), world.x() * 360 - 180};
}

double MetresPerWorldUnit(double latitude_deg) {
  return kEquatorMetres * std::cos(Radians(latitude_deg));
}

void Camera::SetZoom(double zoom) {
  zoom_ = std::clamp(zoom, kMinZoom, kMaxZoom);
}

double Camera::PixelsPerWorld() const {
  return kTilePixels * std::exp2(zoom_);
}

double Camera::MetresPerPixel() const {
  return MetresPerWorldUnit(ToGeo(center).latitude_deg) / PixelsPerWorld();
}

QPointF Camera::ToScreen(QPointF world) const {
  return (world - center) * PixelsPerWorld() + QPointF(size.width() / 2, size.height() / 2);
}

QPointF Camera::FromScreen(QPointF screen) const {
  return center + (screen - QPointF(size.width() / 2, size.height() / 2)) / PixelsPerWorld();
}

QRectF Camera::Visible() const {
  return {FromScreen({0, 0}), FromScreen({size.width(), size.height()})};
}

void Camera::PanBy(QPointF pixels) {
  center -= pixels / PixelsPerWorld();
  center = {std::clamp(center.x(), 0.0, 1.0), std::clamp(center.y(), 0.0, 1.0)};
}

void Camera::ZoomAt(QPointF screen, double zoom) {
  const QPointF before = FromScreen(screen);
  SetZoom(zoom);
  center += before - FromScreen(screen);
  PanBy({0, 0});
}

void Camera::Fit(QRectF world, QMarginsF margins) {
  const double room_x = std::max(size.width() - margins.left() - margins.right(), size.width() / 3);
  const double room_y = std::max(size.height() - margins.top() - margins.bottom(), size.height() / 3);
  double zoom = kSinglePointZoom;
  if (world.width() > 0) zoom = std::min(zoom, std::log2(room_x / world.width() / kTilePixels));
  if (world.height() > 0) zoom = std::min(zoom, std::log2(room_y / world.height() / kTilePixels));
  SetZoom(zoom);
  center = world.center();
  PanBy({(margins.left() - margins.right()) / 2, (margins.top() - margins.bottom()) / 2});
}

}  // namespace orvandi
