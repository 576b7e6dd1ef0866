#include "map/tile_source.h"

#include <QHashFunctions>

namespace orvandi {

size_t qHash(const TileId& tile, size_t seed) noexcept {
  return qHashMulti(seed, tile.zoom, tile.x, tile.y);
}

}  // namespace orvandi
