#include "map/url_source.h"

#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QUrl>
#include <algorithm>

namespace orvandi {
namespace {

constexpr qint64 kCacheBytes = qint64{200} * 1024 * 1024;
constexpr qint64 kMaxTileBytes = qint64{4} * 1024 * 1024;
constexpr int kTimeoutMs = 15'000;
constexpr int kFirstPauseMs = 2'000;
constexpr int kLongestPauseMs = 60'000;
constexpr int kHttpNotFound = 404;
constexpr int kHttpGone = 410;

QString UserAgent() {
  return QStringLiteral("Orvandi/" ORVANDI_VERSION " (map of field-strength logs; Kestrum)");
}

}  // namespace

QString ComplaintOf(const UrlTemplate& source) {
  const QUrl url(QString(source.url).remove(QLatin1Char('{')).remove(QLatin1Char('}')));
  if (!url.isValid() || url.host().isEmpty() ||
      (url.scheme() != QLatin1String("http") && url.scheme() != QLatin1String("https"))) {
    return QStringLiteral("The address has to begin with https:// or http:// and to name a server.");
  }
  const bool row = source.url.contains(QLatin1String("{y}")) || source.url.contains(QLatin1String("{-y}"));
  if (!row || !source.url.contains(QLatin1String("{z}")) || !source.url.contains(QLatin1String("{x}"))) {
    return QStringLiteral(
        "The address has to hold {z}, {x} and {y}, where zoom, column and row of a tile go.");
  }
  return {};
}

QUrl TileUrl(const QString& url_template, TileId tile) {
  QString url = url_template;
  url.replace(QLatin1String("{z}"), QString::number(tile.zoom));
  url.replace(QLatin1String("{x}"), QString::number(tile.x));
  url.replace(QLatin1String("{y}"), QString::number(tile.y));
  url.replace(QLatin1String("{-y}"), QString::number((1 << tile.zoom) - 1 - tile.y));
  return QUrl(url);
}

UrlSource::UrlSource(const UrlTemplate& source, const QString& cache_folder, QObject* parent)
    : TileSource(parent), source_(source) {
  auto* cache = new QNetworkDiskCache(&network_);
  cache->setCacheDirectory(cache_folder);
  cache->setMaximumCacheSize(kCacheBytes);
  network_.setCache(cache);
  network_.setTransferTimeout(kTimeoutMs);
  pause_.setSingleShot(true);
  connect(&pause_, &QTimer::timeout, this, &UrlSource::StartNext);
}

UrlSource::~UrlSource() {
  for (QNetworkReply* reply : std::as_const(running_)) {
    reply->disconnect(this);
    reply->abort();
  }
}

void UrlSource::SetWanted(const QList<TileId>& tiles) {
  wanted_ = tiles;
  wanted_.removeIf([this](TileId tile) { return running_.contains(tile); });
  StartNext();
}

void UrlSource::StartNext() {
  while (!pause_.isActive() && running_.size() < kMaxConnections && !wanted_.isEmpty()) {
    const TileId tile = wanted_.takeFirst();
    QNetworkRequest request(TileUrl(source_.url, tile));
    request.setHeader(QNetworkRequest::UserAgentHeader, UserAgent());
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::PreferCache);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    QNetworkReply* reply = network_.get(request);
    running_.insert(tile, reply);
    connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received, qint64) {
      if (received > kMaxTileBytes) reply->abort();
    });
    connect(reply, &QNetworkReply::finished, this, [this, tile, reply] { Finished(tile, reply); });
  }
}

void UrlSource::Finished(TileId tile, QNetworkReply* reply) {
  running_.remove(tile);
  reply->deleteLater();
  const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (reply->error() == QNetworkReply::NoError) {
    const QImage image = QImage::fromData(reply->readAll());
    if (failures_ > 0) Q_EMIT Complaint(QString());
    failures_ = 0;
    Q_EMIT TileReady(tile, image);
  } else if (status == kHttpNotFound || status == kHttpGone) {
    Q_EMIT TileReady(tile, QImage());
  } else {
    PauseAfterFailure(reply->errorString());
  }
  StartNext();
}

void UrlSource::PauseAfterFailure(const QString& reason) {
  const int pause = std::min(kLongestPauseMs, kFirstPauseMs << std::min(failures_, 5));
  ++failures_;
  pause_.start(pause);
  Q_EMIT Complaint(QStringLiteral("The map server does not answer: %1. Next attempt in %2 s.")
                       .arg(reason)
                       .arg(pause / 1000));
}

}  // namespace orvandi
