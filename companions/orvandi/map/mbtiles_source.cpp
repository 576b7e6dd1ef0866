#include "map/mbtiles_source.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTextDocumentFragment>
#include <QUuid>

#include "map/mbtiles_reader.h"

namespace orvandi {
namespace {

constexpr int kDeepestZoom = 22;

QString NewConnectionName() {
  return QStringLiteral("mbtiles-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QSqlDatabase OpenReadOnly(const QString& path, const QString& connection) {
  QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
  database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
  database.setDatabaseName(path);
  return database;
}

// Attributions come as HTML, which has no place in a line of text.
QString PlainText(const QString& html) {
  return QTextDocumentFragment::fromHtml(html).toPlainText().simplified();
}

void ReadMetadata(QSqlDatabase& database, MbTilesInfo& info) {
  QSqlQuery query(database);
  query.exec(QStringLiteral("SELECT name, value FROM metadata"));
  while (query.next()) {
    const QString key = query.value(0).toString();
    const QString value = query.value(1).toString();
    if (key == QLatin1String("name")) info.name = value;
    if (key == QLatin1String("attribution")) info.attribution = PlainText(value);
    if (key == QLatin1String("format")) info.format = value.toLower();
  }
}

void ReadZooms(QSqlDatabase& database, const QString& path, MbTilesInfo& info) {
  QSqlQuery query(database);
  if (!query.exec(QStringLiteral("SELECT min(zoom_level), max(zoom_level) FROM tiles")) || !query.next()) {
    info.error = QStringLiteral("%1 is no MBTiles file: %2")
                     .arg(QFileInfo(path).fileName(), query.lastError().databaseText());
    return;
  }
  if (query.value(1).isNull()) {
    info.error = QStringLiteral("%1 holds no tiles.").arg(QFileInfo(path).fileName());
    return;
  }
  info.min_zoom = qBound(0, query.value(0).toInt(), kDeepestZoom);
  info.max_zoom = qBound(info.min_zoom, query.value(1).toInt(), kDeepestZoom);
  if (info.format == QLatin1String("pbf") || info.format == QLatin1String("mvt")) {
    info.error = QStringLiteral("%1 holds vector tiles; Orvandi shows raster tiles (PNG, JPEG) only.")
                     .arg(QFileInfo(path).fileName());
  }
}

}  // namespace

MbTilesInfo ReadMbTilesInfo(const QString& path) {
  MbTilesInfo info;
  if (!QFileInfo(path).isFile()) {
    info.error = QStringLiteral("There is no file %1.").arg(path);
    return info;
  }
  const QString connection = NewConnectionName();
  {
    QSqlDatabase database = OpenReadOnly(path, connection);
    if (database.open()) {
      ReadMetadata(database, info);
      ReadZooms(database, path, info);
    } else {
      info.error = QStringLiteral("%1 cannot be opened: %2").arg(path, database.lastError().text());
    }
  }
  QSqlDatabase::removeDatabase(connection);
  if (info.name.isEmpty()) info.name = QFileInfo(path).completeBaseName();
  return info;
}

MbTilesReader::MbTilesReader(const QString& path) : path_(path), connection_(NewConnectionName()) {}

MbTilesReader::~MbTilesReader() {
  QSqlDatabase::removeDatabase(connection_);
}

void MbTilesReader::SetWanted(const QList<TileId>& tiles) {
  const QMutexLocker lock(&mutex_);
  wanted_ = tiles;
  if (scheduled_ || wanted_.isEmpty()) return;
  scheduled_ = true;
  QMetaObject::invokeMethod(this, &MbTilesReader::ReadNext, Qt::QueuedConnection);
}

void MbTilesReader::ReadNext() {
  TileId tile;
  {
    const QMutexLocker lock(&mutex_);
    scheduled_ = !wanted_.isEmpty();
    if (!scheduled_) return;
    tile = wanted_.takeFirst();
  }
  Q_EMIT TileReady(tile, Open() ? Read(tile) : QImage());
  QMetaObject::invokeMethod(this, &MbTilesReader::ReadNext, Qt::QueuedConnection);
}

bool MbTilesReader::Open() {
  if (QSqlDatabase::contains(connection_)) return QSqlDatabase::database(connection_).isOpen();
  return OpenReadOnly(path_, connection_).open();
}

QImage MbTilesReader::Read(TileId tile) {
  QSqlQuery query(QSqlDatabase::database(connection_));
  query.prepare(QStringLiteral(
      "SELECT tile_data FROM tiles WHERE zoom_level = ? AND tile_column = ? AND tile_row = ?"));
  query.addBindValue(tile.zoom);
  query.addBindValue(tile.x);
  query.addBindValue((1 << tile.zoom) - 1 - tile.y);
  if (!query.exec() || !query.next()) return {};
  return QImage::fromData(query.value(0).toByteArray());
}

MbTilesSource::MbTilesSource(const QString& path, const MbTilesInfo& info, QObject* parent)
    : TileSource(parent), info_(info), reader_(new MbTilesReader(path)) {
  reader_->moveToThread(&thread_);
  connect(&thread_, &QThread::finished, reader_, &QObject::deleteLater);
  connect(reader_, &MbTilesReader::TileReady, this, &TileSource::TileReady);
  thread_.start();
}

MbTilesSource::~MbTilesSource() {
  thread_.quit();
  thread_.wait();
}

void MbTilesSource::SetWanted(const QList<TileId>& tiles) {
  reader_->SetWanted(tiles);
}

}  // namespace orvandi
