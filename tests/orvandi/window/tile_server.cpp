#include "window/tile_server.h"

#include <QBuffer>
#include <QImage>
#include <QPointer>
#include <QTcpSocket>

namespace orvandi::test {
namespace {

constexpr int kDelayMs = 30;

}  // namespace

QColor TileColor(TileId tile) {
  return {40 + tile.zoom * 20, 30 + tile.x * 25 % 200, 60 + tile.y * 35 % 190};
}

QByteArray ColoredTile(const QColor& color) {
  QImage image(256, 256, QImage::Format_RGB32);
  image.fill(color);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, "PNG");
  return bytes;
}

TileServer::TileServer() {
  listen(QHostAddress::LocalHost);
  connect(this, &QTcpServer::newConnection, this, [this] {
    while (QTcpSocket* socket = nextPendingConnection()) {
      connect(socket, &QTcpSocket::readyRead, this, [this, socket] { Read(socket); });
      connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
  });
}

QString TileServer::Url() const {
  return QStringLiteral("http://127.0.0.1:%1/{z}/{x}/{y}.png").arg(serverPort());
}

void TileServer::Read(QTcpSocket* socket) {
  const QByteArray request = socket->property("request").toByteArray() + socket->readAll();
  socket->setProperty("request", request);
  if (!request.contains("\r\n\r\n")) return;
  socket->setProperty("request", QByteArray());
  headers_ = request;
  const QString path = QString::fromLatin1(request.split(' ').value(1));
  requests_ << path;
  most_ = std::max(most_, ++open_);
  const QPointer<QTcpSocket> alive(socket);
  QTimer::singleShot(kDelayMs, this, [this, alive, path] {
    --open_;
    if (alive) Reply(alive, path);
  });
}

void TileServer::Reply(QTcpSocket* socket, const QString& path) {
  const QStringList parts =
      QString(path).remove(QStringLiteral(".png")).split(QLatin1Char('/'), Qt::SkipEmptyParts);
  const TileId tile{parts.value(0).toInt(), parts.value(1).toInt(), parts.value(2).toInt()};
  const QByteArray body = status_ == 200 ? ColoredTile(TileColor(tile)) : QByteArray("no");
  socket->write("HTTP/1.1 " + QByteArray::number(status_) +
                " Answer\r\nContent-Type: image/png\r\nCache-Control: max-age=3600\r\nContent-Length: " +
                QByteArray::number(body.size()) + "\r\n\r\n" + body);
}

}  // namespace orvandi::test
