#pragma once

#include <QMutex>

#include "map/tile_source.h"

namespace orvandi {

// The part of an MBTiles source that lives in its own thread.
class MbTilesReader final : public QObject {
  Q_OBJECT

 public:
  explicit MbTilesReader(const QString& path);
  ~MbTilesReader() override;

  // From any thread: what to read next. Wakes the reader.
  void SetWanted(const QList<TileId>& tiles);

 Q_SIGNALS:
  void TileReady(TileId tile, QImage image);

 private:
  void ReadNext();
  bool Open();
  QImage Read(TileId tile);

  QString path_;
  QString connection_;
  QMutex mutex_;
  QList<TileId> wanted_;
  bool scheduled_ = false;
};

}  // namespace orvandi
