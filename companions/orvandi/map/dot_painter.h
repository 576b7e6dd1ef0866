#pragma once

#include <QCache>
#include <QColor>
#include <QImage>
#include <QPainter>
#include <vector>

#include "map/color_scale.h"
#include "map/dot_index.h"
#include "map/projection.h"

namespace orvandi {

// A round dot with a rim, as an image for each colour.
class DotSprites {
 public:
  // radius in device independent pixels; the rim keeps dots apart and visible on any background.
  DotSprites(double radius, QColor rim, double pixel_ratio);
  [[nodiscard]] const QImage& Sprite(QRgb color);
  // Lays the sprite over `target` (premultiplied, any pixel ratio) with its middle at a place in target's own
  // pixels.
  void Stamp(QImage& target, QPointF device_place, QRgb color);
  [[nodiscard]] double Radius() const { return radius_; }

 private:
  double radius_;
  QColor rim_;
  double pixel_ratio_;
  std::vector<std::pair<QRgb, QImage>> sprites_;
};

// How dots are painted; a change of any of it paints all anew.
struct DotStyle {
  enum class Coloring { kValue, kLayer };
  Coloring coloring = Coloring::kValue;
  ColorScale scale;
  std::vector<QColor> layer_colors;
  double radius = 3.5;
  QColor rim;

  [[nodiscard]] QRgb ColorOf(const Dot& dot) const;
};

// Paints the dots of an index. What is painted is kept in square images, so that panning only copies them.
class DotPainter {
 public:
  explicit DotPainter(DotIndex& index) : index_(index) { squares_.setMaxCost(kCacheKilobytes); }

  void SetStyle(const DotStyle& style);
  [[nodiscard]] const DotStyle& Style() const { return style_; }
  // Forgets what is painted: the index has changed.
  void Forget() { squares_.clear(); }

  // Onto a screen with pixel_ratio device pixels to one of the painter's.
  void Paint(QPainter& painter, const Camera& camera, double pixel_ratio);
  // As shapes, for files that are made of shapes.
  void PaintShapes(QPainter& painter, const Camera& camera);

 private:
  static constexpr int kCacheKilobytes = 96 * 1024;
  struct Square {
    int zoom = 0;
    std::uint32_t x = 0;
    std::uint32_t y = 0;
  };
  template <typename Visit>
  void VisitSquares(const Camera& camera, Visit visit) const;
  template <typename Visit>
  void VisitDots(const Square& square, double margin_squares, Visit visit);
  QImage Painted(const Square& square, double square_pixels, double pixel_ratio);

  DotIndex& index_;
  DotStyle style_;
  QCache<QString, QImage> squares_;
};

}  // namespace orvandi
