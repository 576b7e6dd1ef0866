#include "map/dot_painter.h"

#include <algorithm>
#include <cmath>

namespace orvandi {
namespace {

// A square of 256 to 512 pixels is thinned to cells of 2 to 4: finer than a dot, so that tracks stay whole.
constexpr int kDetail = 7;
constexpr int kBytesPerKilobyte = 1024;

// The "over" operation on one premultiplied pixel.
QRgb Over(QRgb top, QRgb bottom) {
  const std::uint32_t keep = 255 - (top >> 24);
  const std::uint32_t red_blue = (bottom & 0x00FF00FF) * keep + 0x00800080;
  const std::uint32_t alpha_green = ((bottom >> 8) & 0x00FF00FF) * keep + 0x00800080;
  return top + (((red_blue + ((red_blue >> 8) & 0x00FF00FF)) >> 8) & 0x00FF00FF) +
         ((alpha_green + ((alpha_green >> 8) & 0x00FF00FF)) & 0xFF00FF00);
}

}  // namespace

DotSprites::DotSprites(double radius, QColor rim, double pixel_ratio)
    : radius_(radius), rim_(rim), pixel_ratio_(pixel_ratio) {}

const QImage& DotSprites::Sprite(QRgb color) {
  for (const auto& [known, image] : sprites_) {
    if (known == color) return image;
  }
  const int side = 2 * static_cast<int>(std::ceil((radius_ + 1) * pixel_ratio_)) + 1;
  QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(rim_.alpha() > 0 ? QPen(rim_, pixel_ratio_ * 0.8) : QPen(Qt::NoPen));
  painter.setBrush(QColor(color));
  const double radius = radius_ * pixel_ratio_;
  painter.drawEllipse(QPointF(side / 2.0, side / 2.0), radius, radius);
  painter.end();
  return sprites_.emplace_back(color, image).second;
}

void DotSprites::Stamp(QImage& target, QPointF device_place, QRgb color) {
  const QImage& sprite = Sprite(color);
  const int left = static_cast<int>(std::lround(device_place.x() - sprite.width() / 2.0));
  const int top = static_cast<int>(std::lround(device_place.y() - sprite.height() / 2.0));
  const int x_begin = std::max(0, -left);
  const int x_end = std::min(sprite.width(), target.width() - left);
  const int y_begin = std::max(0, -top);
  const int y_end = std::min(sprite.height(), target.height() - top);
  for (int y = y_begin; y < y_end; ++y) {
    const auto* from = reinterpret_cast<const QRgb*>(sprite.constScanLine(y));
    auto* to = reinterpret_cast<QRgb*>(target.scanLine(top + y)) + left;
    for (int x = x_begin; x < x_end; ++x) to[x] = Over(from[x], to[x]);
  }
}

QRgb DotStyle::ColorOf(const Dot& dot) const {
  if (coloring == Coloring::kValue || layer_colors.empty()) return scale.Color(dot.value) | 0xFF000000;
  return layer_colors[dot.layer % layer_colors.size()].rgb();
}

void DotPainter::SetStyle(const DotStyle& style) {
  style_ = style;
  Forget();
}

template <typename Visit>
void DotPainter::VisitSquares(const Camera& camera, Visit visit) const {
  const int zoom = static_cast<int>(std::floor(camera.Zoom()));
  const double count = std::exp2(zoom);
  const QRectF visible = camera.Visible();
  const auto cell = [count](double world) { return std::clamp(std::floor(world * count), 0.0, count - 1); };
  for (double y = cell(visible.top()); y <= cell(visible.bottom()); ++y) {
    for (double x = cell(visible.left()); x <= cell(visible.right()); ++x) {
      visit(Square{zoom, static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)});
    }
  }
}

// Dots of a square and, within a margin (a share of the square's side), of its neighbours.
template <typename Visit>
void DotPainter::VisitDots(const Square& square, double margin_squares, Visit visit) {
  const double side = std::exp2(-square.zoom);
  const QRectF world = QRectF(square.x * side, square.y * side, side, side)
                           .adjusted(-margin_squares * side, -margin_squares * side, margin_squares * side,
                                     margin_squares * side);
  const auto last = static_cast<std::int64_t>(std::exp2(square.zoom)) - 1;
  const auto to_signed = [](std::uint32_t number) { return static_cast<std::int64_t>(number); };
  for (std::int64_t y = to_signed(square.y) - 1; y <= to_signed(square.y) + 1; ++y) {
    for (std::int64_t x = to_signed(square.x) - 1; x <= to_signed(square.x) + 1; ++x) {
      if (x < 0 || y < 0 || x > last || y > last) continue;
      for (const Dot& dot : index_.DotsOfSquare(square.zoom, static_cast<std::uint32_t>(x),
                                                static_cast<std::uint32_t>(y), square.zoom + kDetail)) {
        const QPointF place = index_.World(dot.record);
        if (world.contains(place)) visit(dot, (place - QPointF(square.x, square.y) * side) / side);
      }
    }
  }
}

QImage DotPainter::Painted(const Square& square, double square_pixels, double pixel_ratio) {
  const int side = static_cast<int>(std::ceil(square_pixels * pixel_ratio));
  DotSprites sprites(style_.radius, style_.rim, pixel_ratio);
  QImage image;
  VisitDots(square, (style_.radius + 2) / square_pixels, [&](const Dot& dot, QPointF place) {
    if (image.isNull()) {
      image = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
      image.fill(Qt::transparent);
    }
    sprites.Stamp(image, place * square_pixels * pixel_ratio, style_.ColorOf(dot));
  });
  return image;
}

void DotPainter::Paint(QPainter& painter, const Camera& camera, double pixel_ratio) {
  const double pixels = camera.PixelsPerWorld();
  const QPointF corner = camera.ToScreen({0, 0});
  VisitSquares(camera, [&](const Square& square) {
    const double side = std::exp2(-square.zoom) * pixels;
    const QString key = QStringLiteral("%1 %2 %3 %4 %5")
                            .arg(square.x)
                            .arg(square.y)
                            .arg(camera.Zoom(), 0, 'f', 4)
                            .arg(pixel_ratio)
                            .arg(square.zoom);
    const QImage* known = squares_.object(key);
    QImage image = known != nullptr ? *known : Painted(square, side, pixel_ratio);
    if (known == nullptr) {
      squares_.insert(key, new QImage(image), 1 + static_cast<int>(image.sizeInBytes() / kBytesPerKilobyte));
    }
    if (image.isNull()) return;
    // Whole device pixels: copying without interpolation keeps dots sharp.
    const QPointF at = (corner + QPointF(square.x, square.y) * side) * pixel_ratio;
    image.setDevicePixelRatio(pixel_ratio);
    painter.drawImage(QPointF(std::round(at.x()), std::round(at.y())) / pixel_ratio, image);
  });
}

void DotPainter::PaintShapes(QPainter& painter, const Camera& camera) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(style_.rim, 0.4));
  const double pixels = camera.PixelsPerWorld();
  const QPointF corner = camera.ToScreen({0, 0});
  VisitSquares(camera, [&](const Square& square) {
    const double side = std::exp2(-square.zoom) * pixels;
    VisitDots(square, 0, [&](const Dot& dot, QPointF place) {
      painter.setBrush(QColor(style_.ColorOf(dot)));
      painter.drawEllipse(corner + (QPointF(square.x, square.y) + place) * side, style_.radius,
                          style_.radius);
    });
  });
  painter.restore();
}

}  // namespace orvandi
