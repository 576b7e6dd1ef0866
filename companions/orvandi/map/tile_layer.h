#pragma once

#include <QCache>
#include <QPainter>
#include <QSet>
#include <memory>

#include "map/projection.h"
#include "map/tile_source.h"

namespace orvandi {

// The background of the map: the tiles of a source, kept in memory. Where a tile is not there yet, the part
// of a coarser one stands in for it.
class TileLayer final : public QObject {
  Q_OBJECT

 public:
  explicit TileLayer(QObject* parent = nullptr);

  void SetSource(std::unique_ptr<TileSource> source);  // none: no background
  [[nodiscard]] bool HasSource() const { return source_ != nullptr; }
  [[nodiscard]] QString Attribution() const;
  // Whether all tiles of the last Paint were there.
  [[nodiscard]] bool Complete() const { return complete_; }

  // Paints what is there and asks the source for what is missing.
  void Paint(QPainter& painter, const Camera& camera, double pixel_ratio);

 Q_SIGNALS:
  void Changed();
  void Complaint(QString text);

 private:
  void Store(TileId tile, const QImage& image);
  void PaintTile(QPainter& painter, TileId tile, const QRectF& target);

  std::unique_ptr<TileSource> source_;
  QCache<TileId, QImage> tiles_;
  QSet<TileId> absent_;
  bool complete_ = true;
};

}  // namespace orvandi
