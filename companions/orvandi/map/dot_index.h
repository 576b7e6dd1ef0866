#pragma once

#include <QPointF>
#include <QRectF>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include "log/geo.h"

namespace orvandi {

// A dot of the map: one record, or several that lie so close together that they show as one.
struct Dot {
  std::uint32_t record = 0;  // one of those it stands for
  float value = 0;           // the median of those it stands for
  std::uint16_t layer = 0;
};

// What the dots are like, one element a record. A value that is not a number has no dot.
struct DotValues {
  std::span<const float> value;
  std::span<const std::uint16_t> layer;
  std::span<const std::uint8_t> shown;  // 0: has no dot
};

// Records in the order of a space-filling curve: every square of the quadtree is one run of them, so the dots
// of a map tile and the level of detail of a zoom are found without looking at the others.
class DotIndex {
 public:
  static constexpr int kDepth =
      24;  // squares of about 2 m at the equator; finer ones have no level of their own

  // Sorts the positions; the values and the choice of what is shown may change later without sorting again.
  // Nothing is shown until SetShown.
  // Unknown positions are not-a-number. The records get the numbers 0, 1, 2, ...
  void SetPositions(std::span<const Place> places);
  // Positions that follow those known already.
  void AddPositions(std::span<const Place> places);
  void SetShown(const DotValues& values);

  // Dots within a square of the quadtree: `zoom` halvings of the world, thinned to at most one dot in each
  // square of `zoom + detail` halvings. `level_of_detail` is the sum of both; above kDepth every record has
  // its dot.
  [[nodiscard]] std::span<const Dot> DotsOfSquare(int zoom, std::uint32_t x, std::uint32_t y,
                                                  int level_of_detail);

  // The record nearest to a place within `radius` world units; -1 when there is none.
  [[nodiscard]] std::int64_t Nearest(QPointF world, double radius) const;
  // Shown records within a rectangle of the world.
  [[nodiscard]] std::vector<std::uint32_t> Within(QRectF world) const;
  // What the shown records span; null when there are none.
  [[nodiscard]] QRectF Bounds() const { return bounds_; }
  [[nodiscard]] std::size_t Count() const { return world_x_.size(); }  // of all records
  [[nodiscard]] std::size_t ShownCount() const { return shown_.size(); }
  [[nodiscard]] QPointF World(std::uint32_t record) const { return {world_x_[record], world_y_[record]}; }

 private:
  struct Entry {
    std::uint64_t code = 0;  // bits of x and y interleaved, kDepth each
    std::uint32_t record = 0;
  };
  struct Level {
    bool thins = true;  // false: nearly every record has a square of its own, so all are taken as they are
    std::vector<std::uint64_t> codes;
    std::vector<Dot> dots;
  };

  [[nodiscard]] const Level& LevelOf(int level_of_detail);
  void Thin(int level_of_detail, Level& level) const;
  template <typename Visit>
  void VisitWithin(QRectF world, Visit visit) const;

  std::vector<Entry> order_;                // all records that have a position
  std::vector<double> world_x_, world_y_;   // by record
  std::vector<std::uint64_t> shown_codes_;  // those shown, in the order of the curve
  std::vector<Dot> shown_;
  std::map<int, Level> levels_;
  QRectF bounds_;
};

}  // namespace orvandi
