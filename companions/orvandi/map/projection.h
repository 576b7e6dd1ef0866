#pragma once

#include <QMarginsF>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include "log/geo.h"

namespace orvandi {

// Web Mercator on a unit square: x grows to the east, y to the south, the north-west corner is (0, 0).
// Latitudes beyond the square (about 85 degrees) land on its edge.
QPointF ToWorld(Place point);
Place ToGeo(QPointF world);

// Metres on the ground that one unit of the square spans at a latitude.
double MetresPerWorldUnit(double latitude_deg);

// What part of the world a map shows. Sizes are in device independent pixels.
class Camera {
 public:
  static constexpr double kTilePixels = 256;  // a tile at a whole zoom
  static constexpr double kMinZoom = 1;
  static constexpr double kMaxZoom = 21;

  QPointF center{0.5, 0.5};
  QSizeF size{1, 1};

  [[nodiscard]] double Zoom() const { return zoom_; }
  void SetZoom(double zoom);  // kept within kMinZoom and kMaxZoom
  [[nodiscard]] double PixelsPerWorld() const;
  [[nodiscard]] double MetresPerPixel() const;

  [[nodiscard]] QPointF ToScreen(QPointF world) const;
  [[nodiscard]] QPointF FromScreen(QPointF screen) const;
  [[nodiscard]] QRectF Visible() const;  // in world units

  void PanBy(QPointF pixels);
  // The place under `screen` stays where it is.
  void ZoomAt(QPointF screen, double zoom);
  // Shows the whole of `world` within margins (in pixels); a single point is shown at a street's scale.
  void Fit(QRectF world, QMarginsF margins);

 private:
  double zoom_ = 3;
};

}  // namespace orvandi
