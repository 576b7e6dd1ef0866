#pragma once

#include <QHash>
#include <QNetworkAccessManager>
#include <QTimer>

#include "map/tile_source.h"

class QNetworkReply;

namespace orvandi {

// A server of raster tiles, such as "https://tile.example.org/{z}/{x}/{y}.png".
struct UrlTemplate {
  QString url;
  QString attribution;
  int min_zoom = 0;
  int max_zoom = 19;
};

// One sentence when the template cannot be used: it needs http or https and {z}, {x}, {y} (or {-y}, counted
// from the south); empty otherwise.
QString ComplaintOf(const UrlTemplate& source);
QUrl TileUrl(const QString& url_template, TileId tile);

// Tiles of a server, as such servers ask for it: at most kMaxConnections at a time, a name that says who
// asks, a cache on the disk that keeps what the server allows, and a pause after a failure.
class UrlSource final : public TileSource {
  Q_OBJECT

 public:
  static constexpr int kMaxConnections = 2;

  UrlSource(const UrlTemplate& source, const QString& cache_folder, QObject* parent = nullptr);
  ~UrlSource() override;

  [[nodiscard]] QString Attribution() const override { return source_.attribution; }
  [[nodiscard]] int MinZoom() const override { return source_.min_zoom; }
  [[nodiscard]] int MaxZoom() const override { return source_.max_zoom; }
  void SetWanted(const QList<TileId>& tiles) override;

 private:
  void StartNext();
  void Finished(TileId tile, QNetworkReply* reply);
  void PauseAfterFailure(const QString& reason);

  UrlTemplate source_;
  QNetworkAccessManager network_;
  QList<TileId> wanted_;
  QHash<TileId, QNetworkReply*> running_;
  QTimer pause_;
  int failures_ = 0;
};

}  // namespace orvandi
