#include "map/dot_index.h"

#include <algorithm>
#include <cmath>

#include "map/projection.h"
#include "map/wide_registers.h"

namespace orvandi {
namespace {

constexpr std::uint32_t kCells = 1U << DotIndex::kDepth;
constexpr std::size_t kMostLevels = 6;  // kept at a time

// Spreads the lower 32 bits so that there is a free bit after each.
std::uint64_t SpreadBits(std::uint64_t bits) {
  bits = (bits | (bits << 16)) & 0x0000FFFF0000FFFFULL;
  bits = (bits | (bits << 8)) & 0x00FF00FF00FF00FFULL;
  bits = (bits | (bits << 4)) & 0x0F0F0F0F0F0F0F0FULL;
  bits = (bits | (bits << 2)) & 0x3333333333333333ULL;
  return (bits | (bits << 1)) & 0x5555555555555555ULL;
}

std::uint64_t Interleave(std::uint32_t x, std::uint32_t y) {
  return SpreadBits(x) | (SpreadBits(y) << 1);
}

std::uint32_t CellOf(double world) {
  return static_cast<std::uint32_t>(std::clamp(world * kCells, 0.0, static_cast<double>(kCells - 1)));
}

float MedianValue(std::span<const Dot> dots, std::vector<float>& scratch) {
  if (dots.size() == 1) return dots.front().value;
  scratch.clear();
  for (const Dot& dot : dots) scratch.push_back(dot.value);
  const auto middle = scratch.begin() + static_cast<std::ptrdiff_t>(scratch.size() / 2);
  std::nth_element(scratch.begin(), middle, scratch.end());
  return *middle;
}

}  // namespace

void DotIndex::SetPositions(std::span<const Place> places) {
  order_.clear();
  world_x_.clear();
  world_y_.clear();
  AddPositions(places);
}

void DotIndex::AddPositions(std::span<const Place> places) {
  const auto by_curve = [](const Entry& a, const Entry& b) {
    return a.code != b.code ? a.code < b.code : a.record < b.record;
  };
  const auto known = static_cast<std::ptrdiff_t>(order_.size());
  if (order_.empty()) {
    order_.reserve(places.size());
    world_x_.reserve(places.size());
    world_y_.reserve(places.size());
  }
  ForgetWideRegisters();
  for (const Place& place : places) {
    const auto record = static_cast<std::uint32_t>(world_x_.size());
    const QPointF world = ToWorld(place);
    world_x_.push_back(world.x());
    world_y_.push_back(world.y());
    if (std::isnan(place.latitude_deg) || std::isnan(place.longitude_deg)) continue;
    order_.push_back({Interleave(CellOf(world.x()), CellOf(world.y())), record});
  }
  std::sort(order_.begin() + known, order_.end(), by_curve);
  std::inplace_merge(order_.begin(), order_.begin() + known, order_.end(), by_curve);
  shown_.clear();
  shown_codes_.clear();
  levels_.clear();
  bounds_ = {};
}

void DotIndex::SetShown(const DotValues& values) {
  shown_.clear();
  shown_codes_.clear();
  levels_.clear();
  shown_.reserve(order_.size());
  shown_codes_.reserve(order_.size());
  double left = 2, top = 2, right = -1, bottom = -1;
  for (const Entry& place : order_) {
    const std::uint32_t record = place.record;
    if (values.shown[record] == 0 || std::isnan(values.value[record])) continue;
    const double x = world_x_[record];
    const double y = world_y_[record];
    left = std::min(left, x);
    right = std::max(right, x);
    top = std::min(top, y);
    bottom = std::max(bottom, y);
    shown_codes_.push_back(place.code);
    shown_.push_back({record, values.value[record], values.layer[record]});
  }
  bounds_ = shown_.empty() ? QRectF() : QRectF(QPointF(left, top), QPointF(right, bottom));
}

void DotIndex::Thin(int level_of_detail, Level& level) const {
  const int shift = 2 * (kDepth - level_of_detail);
  std::vector<float> scratch;
  std::size_t begin = 0;
  while (begin < shown_.size()) {
    const std::uint64_t cell = shown_codes_[begin] >> shift;
    std::size_t end = begin + 1;
    while (end < shown_.size() && shown_codes_[end] >> shift == cell) ++end;
    Dot dot = shown_[begin + (end - begin) / 2];
    dot.value = MedianValue(std::span(shown_).subspan(begin, end - begin), scratch);
    level.codes.push_back(shown_codes_[begin]);
    level.dots.push_back(dot);
    begin = end;
  }
  level.thins = level.dots.size() < shown_.size() - shown_.size() / 4;
  if (!level.thins) level = {.thins = false, .codes = {}, .dots = {}};
}

const DotIndex::Level& DotIndex::LevelOf(int level_of_detail) {
  if (levels_.size() > kMostLevels && !levels_.contains(level_of_detail)) levels_.clear();
  const auto [found, fresh] = levels_.try_emplace(level_of_detail);
  if (fresh) Thin(level_of_detail, found->second);
  return found->second;
}

std::span<const Dot> DotIndex::DotsOfSquare(int zoom, std::uint32_t x, std::uint32_t y, int level_of_detail) {
  if (zoom < 0 || zoom > kDepth) return {};
  const int shift = 2 * (kDepth - zoom);
  const std::uint64_t first = Interleave(x, y) << shift;
  const std::uint64_t last = first + ((std::uint64_t{1} << shift) - 1);
  const Level* level = level_of_detail < kDepth ? &LevelOf(level_of_detail) : nullptr;
  const bool all = level == nullptr || !level->thins;
  const std::vector<std::uint64_t>& codes = all ? shown_codes_ : level->codes;
  const std::vector<Dot>& dots = all ? shown_ : level->dots;
  const auto begin = std::lower_bound(codes.begin(), codes.end(), first);
  const auto end = std::upper_bound(begin, codes.end(), last);
  return std::span(dots).subspan(static_cast<std::size_t>(begin - codes.begin()),
                                 static_cast<std::size_t>(end - begin));
}

template <typename Visit>
void DotIndex::VisitWithin(QRectF world, Visit visit) const {
  if (shown_.empty() || !(world.width() >= 0) || !(world.height() >= 0)) return;
  // Squares about as large as the rectangle: at most nine of them touch it.
  const double extent = std::max({world.width(), world.height(), 1.0 / kCells});
  const int zoom = std::clamp(static_cast<int>(std::floor(-std::log2(extent))), 0, kDepth);
  const int shift = kDepth - zoom;
  const std::uint32_t x_end = CellOf(world.right()) >> shift;
  const std::uint32_t y_end = CellOf(world.bottom()) >> shift;
  for (std::uint32_t y = CellOf(world.top()) >> shift; y <= y_end; ++y) {
    for (std::uint32_t x = CellOf(world.left()) >> shift; x <= x_end; ++x) {
      const std::uint64_t first = Interleave(x, y) << (2 * shift);
      const std::uint64_t last = first + ((std::uint64_t{1} << (2 * shift)) - 1);
      const auto begin = std::lower_bound(shown_codes_.begin(), shown_codes_.end(), first);
      const auto end = std::upper_bound(begin, shown_codes_.end(), last);
      for (auto at = begin - shown_codes_.begin(); at < end - shown_codes_.begin(); ++at) {
        visit(shown_[static_cast<std::size_t>(at)].record);
      }
    }
  }
}

std::int64_t DotIndex::Nearest(QPointF world, double radius) const {
  std::int64_t nearest = -1;
  double best = radius * radius;
  VisitWithin({world.x() - radius, world.y() - radius, 2 * radius, 2 * radius}, [&](std::uint32_t record) {
    const double x = world_x_[record] - world.x();
    const double y = world_y_[record] - world.y();
    const double distance = x * x + y * y;
    if (distance > best) return;
    best = distance;
    nearest = record;
  });
  return nearest;
}

std::vector<std::uint32_t> DotIndex::Within(QRectF world) const {
  std::vector<std::uint32_t> records;
  VisitWithin(world, [&](std::uint32_t record) {
    const double x = world_x_[record];
    const double y = world_y_[record];
    if (x < world.left() || x > world.right() || y < world.top() || y > world.bottom()) return;
    records.push_back(record);
  });
  std::sort(records.begin(), records.end());
  return records;
}

}  // namespace orvandi
