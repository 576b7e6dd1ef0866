#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

namespace orvandi {

// One square picture of a map: column x from the west and row y from the north among 2^zoom each.
struct TileId {
  int zoom = 0;
  int x = 0;
  int y = 0;
  friend bool operator==(const TileId&, const TileId&) = default;
};

size_t qHash(const TileId& tile, size_t seed = 0) noexcept;

// Where the pictures of a map come from. All of it runs in the thread of its owner; a source that has to wait
// does so elsewhere and tells when it is done.
class TileSource : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  [[nodiscard]] virtual QString Attribution() const = 0;
  [[nodiscard]] virtual int MinZoom() const = 0;
  [[nodiscard]] virtual int MaxZoom() const = 0;
  // What is wanted now, the most wanted first. Replaces what was wanted before: what is no longer in the list
  // is not begun any more.
  virtual void SetWanted(const QList<TileId>& tiles) = 0;

 Q_SIGNALS:
  // A null image: the source has no such tile.
  void TileReady(TileId tile, QImage image);
  // One sentence for the user when something is wrong; empty when it is well again.
  void Complaint(QString text);
};

}  // namespace orvandi
