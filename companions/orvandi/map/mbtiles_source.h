#pragma once

#include <QThread>

#include "map/tile_source.h"

namespace orvandi {

// What an MBTiles file says about itself.
struct MbTilesInfo {
  QString name;
  QString attribution;
  QString format;  // "png", "jpg"
  int min_zoom = 0;
  int max_zoom = 0;
  QString error;  // one sentence when the file cannot be used; the rest then means nothing
};

// Opens the file only to read it. Vector tiles are refused: there is no style to paint them with.
MbTilesInfo ReadMbTilesInfo(const QString& path);

class MbTilesReader;

// Raster tiles of an MBTiles file (an SQLite database, rows counted from the south). Reading and unpacking
// happen in a thread of its own.
class MbTilesSource final : public TileSource {
  Q_OBJECT

 public:
  MbTilesSource(const QString& path, const MbTilesInfo& info, QObject* parent = nullptr);
  ~MbTilesSource() override;

  [[nodiscard]] QString Attribution() const override { return info_.attribution; }
  [[nodiscard]] int MinZoom() const override { return info_.min_zoom; }
  [[nodiscard]] int MaxZoom() const override { return info_.max_zoom; }
  void SetWanted(const QList<TileId>& tiles) override;

 private:
  MbTilesInfo info_;
  QThread thread_;
  MbTilesReader* reader_;  // lives in thread_ and ends with it
};

}  // namespace orvandi
