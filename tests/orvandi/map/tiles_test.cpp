#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QPainter>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "map/mbtiles_source.h"
#include "map/tile_layer.h"
#include "map/url_source.h"
#include "support_process/qt_waits.h"
#include "window/tile_server.h"

namespace orvandi {
namespace {

using kestrum::process::WaitFor;
using test::ColoredTile;
using test::TileServer;
using ::testing::HasSubstr;

// An MBTiles file with one red tile at zoom 2, column 1, row 1 from the north (2 from the south).
QString WriteMbTiles(const QTemporaryDir& folder, const QString& format) {
  const QString path = folder.filePath(QStringLiteral("map.mbtiles"));
  {
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("writer"));
    database.setDatabaseName(path);
    EXPECT_TRUE(database.open());
    QSqlQuery query(database);
    query.exec(QStringLiteral("CREATE TABLE metadata (name TEXT, value TEXT)"));
    query.exec(
        QStringLiteral("CREATE TABLE tiles (zoom_level INTEGER, tile_column INTEGER, tile_row INTEGER, "
                       "tile_data BLOB)"));
    query.exec(QStringLiteral("INSERT INTO metadata VALUES ('name', 'Test map'), ('format', '%1'), "
                              "('attribution', '&copy; <a href=\"x\">Makers</a> of maps')")
                   .arg(format));
    query.prepare(QStringLiteral("INSERT INTO tiles VALUES (2, 1, 2, ?)"));
    query.addBindValue(ColoredTile(Qt::red));
    EXPECT_TRUE(query.exec());
  }
  QSqlDatabase::removeDatabase(QStringLiteral("writer"));
  return path;
}

TEST(MbTiles, ReadsWhatTheFileSaysOfItself) {
  const QTemporaryDir folder;
  const MbTilesInfo info = ReadMbTilesInfo(WriteMbTiles(folder, QStringLiteral("png")));
  EXPECT_EQ(info.error, QString());
  EXPECT_EQ(info.name, QStringLiteral("Test map"));
  EXPECT_EQ(info.attribution, QStringLiteral("\u00A9 Makers of maps"));
  EXPECT_EQ(info.min_zoom, 2);
  EXPECT_EQ(info.max_zoom, 2);
}

TEST(MbTiles, RefusesWithAReason) {
  const QTemporaryDir folder;
  EXPECT_THAT(ReadMbTilesInfo(WriteMbTiles(folder, QStringLiteral("pbf"))).error.toStdString(),
              HasSubstr("vector tiles"));
  QFile text(folder.filePath(QStringLiteral("text.mbtiles")));
  ASSERT_TRUE(text.open(QIODevice::WriteOnly));
  text.write(QByteArray(5000, 'x'));
  text.close();
  EXPECT_THAT(ReadMbTilesInfo(text.fileName()).error.toStdString(),
              HasSubstr("text.mbtiles is no MBTiles file"));
  EXPECT_THAT(ReadMbTilesInfo(folder.filePath(QStringLiteral("none"))).error.toStdString(),
              HasSubstr("no file"));
}

TEST(MbTiles, RowsAreCountedFromTheSouth) {
  const QTemporaryDir folder;
  const QString path = WriteMbTiles(folder, QStringLiteral("png"));
  MbTilesSource source(path, ReadMbTilesInfo(path));
  QHash<TileId, QImage> got;
  QObject::connect(&source, &TileSource::TileReady, &source,
                   [&](TileId tile, const QImage& image) { got.insert(tile, image); });
  source.SetWanted({{2, 1, 1}, {2, 1, 2}});
  ASSERT_TRUE(WaitFor([&] { return got.size() == 2; }));
  EXPECT_EQ(got.value({2, 1, 1}).pixelColor(10, 10), QColor(Qt::red));
  EXPECT_TRUE(got.value({2, 1, 2}).isNull());
}

TEST(UrlTemplate, Complaints) {
  const auto complaint = [](const char* url) { return ComplaintOf({QString::fromLatin1(url), {}, 0, 19}); };
  EXPECT_EQ(complaint("https://tiles.example.org/{z}/{x}/{y}.png"), QString());
  EXPECT_EQ(complaint("http://127.0.0.1:8080/{z}/{x}/{-y}"), QString());
  EXPECT_THAT(complaint("file:///etc/{z}/{x}/{y}").toStdString(), HasSubstr("https://"));
  EXPECT_THAT(complaint("https:///{z}/{x}/{y}").toStdString(), HasSubstr("server"));
  EXPECT_THAT(complaint("https://tiles.example.org/{z}/{x}.png").toStdString(), HasSubstr("{y}"));
  EXPECT_THAT(complaint("").toStdString(), HasSubstr("https://"));
}

TEST(UrlTemplate, FillsIn) {
  EXPECT_EQ(TileUrl(QStringLiteral("https://a.org/{z}/{x}/{y}.png"), {3, 5, 2}).toString(),
            QStringLiteral("https://a.org/3/5/2.png"));
  EXPECT_EQ(TileUrl(QStringLiteral("https://a.org/{z}/{x}/{-y}.png"), {3, 5, 2}).toString(),
            QStringLiteral("https://a.org/3/5/5.png"));
}

TEST(UrlSource, AsksPolitely) {
  TileServer server;
  const QTemporaryDir cache;
  UrlSource source({server.Url(), QStringLiteral("makers"), 0, 19}, cache.path());
  int ready = 0;
  QObject::connect(&source, &TileSource::TileReady, &source, [&](TileId, const QImage& image) {
    EXPECT_EQ(image.size(), QSize(256, 256));
    ++ready;
  });
  QList<TileId> tiles;
  for (int x = 0; x < 8; ++x) tiles << TileId{3, x, 4};
  source.SetWanted(tiles);
  ASSERT_TRUE(WaitFor([&] { return ready == 8; }));
  EXPECT_EQ(server.MostAtOnce(), 2);
  EXPECT_EQ(server.Requests().size(), 8);
  EXPECT_THAT(server.LastHeaders().toStdString(), HasSubstr("User-Agent: Orvandi/"));
}

TEST(UrlSource, AsksOnceForWhatItMayKeep) {
  TileServer server;
  const QTemporaryDir cache;
  for (int visit = 0; visit < 2; ++visit) {
    UrlSource source({server.Url(), {}, 0, 19}, cache.path());
    bool ready = false;
    QObject::connect(&source, &TileSource::TileReady, &source, [&](TileId, const QImage& image) {
      EXPECT_FALSE(image.isNull());
      ready = true;
    });
    source.SetWanted({{1, 0, 1}});
    ASSERT_TRUE(WaitFor([&] { return ready; }));
  }
  EXPECT_EQ(server.Requests().size(), 1);
}

TEST(UrlSource, AMissingTileIsNoFailureAndAFailingServerIsLeftAlone) {
  TileServer server;
  const QTemporaryDir cache;
  UrlSource source({server.Url(), {}, 0, 19}, cache.path());
  QSignalSpy complaints(&source, &TileSource::Complaint);
  int absent = 0;
  QObject::connect(&source, &TileSource::TileReady, &source,
                   [&](TileId, const QImage& image) { absent += image.isNull() ? 1 : 0; });
  server.Answer(404);
  source.SetWanted({{1, 0, 0}});
  ASSERT_TRUE(WaitFor([&] { return absent == 1; }));
  EXPECT_EQ(complaints.count(), 0);
  server.Answer(503);
  source.SetWanted({{4, 0, 0}, {4, 1, 0}, {4, 2, 0}, {4, 3, 0}, {4, 4, 0}, {4, 5, 0}});
  ASSERT_TRUE(WaitFor([&] { return complaints.count() >= 1; }));
  EXPECT_THAT(complaints.front().front().toString().toStdString(), HasSubstr("does not answer"));
  source.SetWanted({{4, 6, 0}});
  QCoreApplication::processEvents();
  EXPECT_LE(server.Requests().size(), 3);  // the missing one and the two that were on their way
}

TEST(TileLayer, PaintsTilesWhereTheyBelongAndCoarserOnesUntilThen) {
  TileServer server;
  const QTemporaryDir cache;
  TileLayer layer;
  layer.SetSource(
      std::make_unique<UrlSource>(UrlTemplate{server.Url(), QStringLiteral("makers"), 0, 2}, cache.path()));
  EXPECT_EQ(layer.Attribution(), QStringLiteral("makers"));
  Camera camera;
  camera.size = QSizeF(600, 600);
  camera.SetZoom(1);
  const auto paint = [&] {
    QImage image(600, 600, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    layer.Paint(painter, camera, 1);
    return image;
  };
  paint();
  EXPECT_FALSE(layer.Complete());
  ASSERT_TRUE(WaitFor([&] {
    paint();
    return layer.Complete();
  }));
  const QImage near = paint();
  EXPECT_EQ(near.pixelColor(100, 100), test::TileColor({1, 0, 0}));
  EXPECT_EQ(near.pixelColor(400, 100), test::TileColor({1, 1, 0}));
  EXPECT_EQ(near.pixelColor(20, 20), QColor(Qt::white));  // beyond the world
  server.Answer(503);
  camera.SetZoom(2);
  EXPECT_EQ(paint().pixelColor(100, 100), test::TileColor({1, 0, 0}));  // a part of the coarser one
}

}  // namespace
}  // namespace orvandi
