#include "map/tile_layer.h"

#include <algorithm>
#include <cmath>

namespace orvandi {
namespace {

constexpr int kCacheKilobytes = 128 * 1024;
constexpr qsizetype kBytesPerKilobyte = 1024;
constexpr int kMaxTilesAtOnce = 600;  // a 4K screen shows about 200

}  // namespace

TileLayer::TileLayer(QObject* parent) : QObject(parent) {
  tiles_.setMaxCost(kCacheKilobytes);
}

void TileLayer::SetSource(std::unique_ptr<TileSource> source) {
  source_ = std::move(source);
  tiles_.clear();
  absent_.clear();
  complete_ = true;
  if (source_) {
    connect(source_.get(), &TileSource::TileReady, this, &TileLayer::Store);
    connect(source_.get(), &TileSource::Complaint, this, &TileLayer::Complaint);
  }
  Q_EMIT Complaint(QString());
  Q_EMIT Changed();
}

QString TileLayer::Attribution() const {
  return source_ ? source_->Attribution() : QString();
}

void TileLayer::Store(TileId tile, const QImage& image) {
  if (image.isNull()) {
    absent_.insert(tile);
  } else {
    // RGB32 is copied to the screen without blending.
    QImage stored = image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                  : QImage::Format_RGB32);
    const auto cost = static_cast<int>(stored.sizeInBytes() / kBytesPerKilobyte) + 1;
    tiles_.insert(tile, new QImage(std::move(stored)), cost);
  }
  Q_EMIT Changed();
}

void TileLayer::PaintTile(QPainter& painter, TileId tile, const QRectF& target) {
  for (int up = 0; up <= tile.zoom; ++up) {
    const TileId ancestor{tile.zoom - up, tile.x >> up, tile.y >> up};
    const QImage* image = tiles_.object(ancestor);
    if (image == nullptr) continue;
    const double share = std::exp2(-up);
    const double left = (tile.x - (ancestor.x << up)) * share * image->width();
    const double top = (tile.y - (ancestor.y << up)) * share * image->height();
    painter.drawImage(target, *image, QRectF(left, top, share * image->width(), share * image->height()));
    return;
  }
}

void TileLayer::Paint(QPainter& painter, const Camera& camera, double pixel_ratio) {
  if (!source_) return;
  const int wanted_zoom = static_cast<int>(std::lround(camera.Zoom() + std::log2(pixel_ratio)));
  const int zoom = std::clamp(wanted_zoom, source_->MinZoom(), source_->MaxZoom());
  const double count = std::exp2(zoom);
  const double side = camera.PixelsPerWorld() / count;
  const QRectF visible = camera.Visible();
  const auto cell = [count](double world) {
    return static_cast<int>(std::clamp(std::floor(world * count), 0.0, count - 1));
  };
  const int left = cell(visible.left()), right = cell(visible.right());
  const int top = cell(visible.top()), bottom = cell(visible.bottom());
  // Far out a source with only fine tiles would need thousands of them.
  if ((right - left + 1) * (bottom - top + 1) > kMaxTilesAtOnce) return;

  QList<TileId> missing;
  const QPointF corner = camera.ToScreen({0, 0});
  painter.save();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const auto snap = [pixel_ratio](double value) { return std::round(value * pixel_ratio) / pixel_ratio; };
  for (int y = top; y <= bottom; ++y) {
    for (int x = left; x <= right; ++x) {
      const TileId tile{zoom, x, y};
      const QPointF from(snap(corner.x() + x * side), snap(corner.y() + y * side));
      const QPointF to(snap(corner.x() + (x + 1) * side), snap(corner.y() + (y + 1) * side));
      PaintTile(painter, tile, QRectF(from, to));
      if (!tiles_.contains(tile) && !absent_.contains(tile)) missing.append(tile);
    }
  }
  painter.restore();
  complete_ = missing.isEmpty();
  const double middle_x = (left + right) / 2.0, middle_y = (top + bottom) / 2.0;
  std::sort(missing.begin(), missing.end(), [=](const TileId& a, const TileId& b) {
    return std::hypot(a.x - middle_x, a.y - middle_y) < std::hypot(b.x - middle_x, b.y - middle_y);
  });
  source_->SetWanted(missing);
}

}  // namespace orvandi
