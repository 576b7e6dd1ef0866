#include "map/mbtiles_source.h"

#include <QFileInfo>

#include "map/mbtiles_reader.h"

// The program for Windows comes without a database: MBTiles files are refused with a sentence.
namespace orvandi {

MbTilesInfo ReadMbTilesInfo(const QString& path) {
  MbTilesInfo info;
  info.name = QFileInfo(path).completeBaseName();
  info.error =
      QStringLiteral("%1 cannot be shown: the program for Windows does not read MBTiles. Use the online map.")
          .arg(QFileInfo(path).fileName());
  return info;
}

MbTilesReader::MbTilesReader(const QString& path) : path_(path) {}

MbTilesReader::~MbTilesReader() = default;

void MbTilesReader::SetWanted(const QList<TileId>& tiles) {
  // A source is never made of a file that has been refused; should it be, it has no tile.
  for (const TileId& tile : tiles) Q_EMIT TileReady(tile, QImage());
}

MbTilesSource::MbTilesSource(const QString& path, const MbTilesInfo& info, QObject* parent)
    : TileSource(parent), info_(info), reader_(new MbTilesReader(path)) {
  reader_->setParent(this);
  connect(reader_, &MbTilesReader::TileReady, this, &TileSource::TileReady);
}

MbTilesSource::~MbTilesSource() = default;

void MbTilesSource::SetWanted(const QList<TileId>& tiles) {
  reader_->SetWanted(tiles);
}

}  // namespace orvandi
