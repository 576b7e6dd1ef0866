#pragma once

#include <QColor>
#include <QStringList>
#include <QTcpServer>
#include <QTimer>

#include "map/tile_source.h"

class QTcpSocket;

namespace orvandi::test {

QColor TileColor(TileId tile);
QByteArray ColoredTile(const QColor& color);  // PNG

// A server of map tiles on the loopback. It answers late enough for requests to meet, and counts them.
class TileServer final : public QTcpServer {
  Q_OBJECT

 public:
  TileServer();
  [[nodiscard]] QString Url() const;
  void Answer(int status) { status_ = status; }
  [[nodiscard]] int MostAtOnce() const { return most_; }
  [[nodiscard]] const QStringList& Requests() const { return requests_; }
  [[nodiscard]] const QByteArray& LastHeaders() const { return headers_; }

 private:
  void Read(QTcpSocket* socket);
  void Reply(QTcpSocket* socket, const QString& path);

  int status_ = 200;
  int open_ = 0;
  int most_ = 0;
  QStringList requests_;
  QByteArray headers_;
};

}  // namespace orvandi::test
