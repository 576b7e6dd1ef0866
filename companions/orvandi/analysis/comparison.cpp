#include "analysis/comparison.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <optional>
#include <utility>

#include "analysis/distribution.h"
#include "log/geo.h"

namespace orvandi {
namespace {

constexpr double kMetresPerDegree = kEarthRadiusKm * 1000 * std::numbers::pi / 180;
// Quartiles of a normal distribution lie 1.349 standard deviations apart.
constexpr double kIqrOfNormal = 1.349;

using Square = std::pair<std::int64_t, std::int64_t>;  // row from the equator, column from Greenwich

// Squares of one size on the ground at one latitude.
class Grid {
 public:
  Grid(double size_m, double latitude_deg)
      : height_deg_(size_m / kMetresPerDegree),
        // At the poles the squares are not made wider than they can be.
        width_deg_(height_deg_ / std::max(std::cos(latitude_deg * std::numbers::pi / 180), 1e-3)) {}

  Square Of(const Sample& sample) const {
    return {static_cast<std::int64_t>(std::floor(sample.latitude_deg / height_deg_)),
            static_cast<std::int64_t>(std::floor(sample.longitude_deg / width_deg_))};
  }
  Cell CellOf(const Square& square) const {
    const auto row = static_cast<double>(square.first);
    const auto column = static_cast<double>(square.second);
    return {row * height_deg_, column * width_deg_, (row + 1) * height_deg_, (column + 1) * width_deg_};
  }

 private:
  double height_deg_;
  double width_deg_;
};

bool HasPlaceAndLevel(const Sample& sample) {
  return std::isfinite(sample.latitude_deg) && std::isfinite(sample.longitude_deg) &&
         std::isfinite(sample.level_db);
}

std::optional<Grid> GridFor(std::span<const Sample> a, std::span<const Sample> b, double size_m) {
  double sum = 0;
  double count = 0;
  for (const auto samples : {a, b}) {
    for (const Sample& sample : samples) {
      if (!HasPlaceAndLevel(sample)) continue;
      sum += sample.latitude_deg;
      count += 1;
    }
  }
  if (count == 0 || !(size_m >= 1)) return {};
  return Grid(size_m, sum / count);
}

// Levels by square, as ranges of one sorted list: a million samples need no million little lists.
struct Placed {
  Square square;
  double level_db = 0;
};

std::vector<Placed> PlaceSamples(std::span<const Sample> samples, const Grid& grid) {
  std::vector<Placed> placed;
  placed.reserve(samples.size());
  for (const Sample& sample : samples) {
    if (HasPlaceAndLevel(sample)) placed.push_back({grid.Of(sample), sample.level_db});
  }
  std::sort(placed.begin(), placed.end(),
            [](const Placed& x, const Placed& y) { return x.square < y.square; });
  return placed;
}

// Takes the levels of the next square off the front.
std::vector<double> TakeSquare(std::span<const Placed>& placed) {
  std::vector<double> levels;
  const Square square = placed.front().square;
  while (!placed.empty() && placed.front().square == square) {
    levels.push_back(placed.front().level_db);
    placed = placed.subspan(1);
  }
  return levels;
}

double Spread(std::vector<double>& levels) {
  return (Quantile(levels, 0.75) - Quantile(levels, 0.25)) / kIqrOfNormal;
}

Difference Subtract(std::vector<double>& a, std::vector<double>& b) {
  Difference difference;
  difference.count_a = a.size();
  difference.count_b = b.size();
  difference.median_a_db = Quantile(a, 0.5);
  difference.median_b_db = Quantile(b, 0.5);
  difference.difference_db = difference.median_a_db - difference.median_b_db;
  difference.spread_db = std::hypot(Spread(a), Spread(b));
  return difference;
}

void Conclude(Comparison& comparison) {
  std::vector<double> differences;
  for (const CellDifference& cell : comparison.cells) differences.push_back(cell.difference.difference_db);
  if (differences.empty()) return;
  comparison.median_db = Quantile(differences, 0.5);
  comparison.lower_quartile_db = Quantile(differences, 0.25);
  comparison.upper_quartile_db = Quantile(differences, 0.75);
}

std::vector<std::vector<double>> LevelsBySector(std::span<const Sample> samples, const Law& law,
                                                double sector_deg) {
  std::vector<std::vector<double>> levels(SectorCount(sector_deg));
  for (const Sample& sample : samples) {
    const double level = NormalisedLevel(sample, law);
    if (levels.empty() || !std::isfinite(level) || !std::isfinite(sample.bearing_deg)) continue;
    levels[SectorOf(sample.bearing_deg, sector_deg)].push_back(level);
  }
  return levels;
}

}  // namespace

Comparison CompareByPlace(std::span<const Sample> a, std::span<const Sample> b, double size_m,
                          std::size_t fewest_records) {
  Comparison comparison;
  const auto grid = GridFor(a, b, size_m);
  if (!grid) return comparison;
  const std::vector<Placed> all_a = PlaceSamples(a, *grid);
  const std::vector<Placed> all_b = PlaceSamples(b, *grid);
  std::span<const Placed> rest_a(all_a);
  std::span<const Placed> rest_b(all_b);
  fewest_records = std::max<std::size_t>(fewest_records, 1);
  while (!rest_a.empty() && !rest_b.empty()) {
    const Square square_a = rest_a.front().square;
    const Square square_b = rest_b.front().square;
    std::vector<double> levels_a = square_a <= square_b ? TakeSquare(rest_a) : std::vector<double>();
    std::vector<double> levels_b = square_b <= square_a ? TakeSquare(rest_b) : std::vector<double>();
    if (levels_a.size() < fewest_records || levels_b.size() < fewest_records) continue;
    comparison.cells.push_back({grid->CellOf(square_a), Subtract(levels_a, levels_b)});
  }
  Conclude(comparison);
  return comparison;
}

std::vector<SectorDifference> CompareBySector(std::span<const Sample> a, std::span<const Sample> b,
                                              const Law& law, double sector_deg, std::size_t fewest_records) {
  auto levels_a = LevelsBySector(a, law, sector_deg);
  auto levels_b = LevelsBySector(b, law, sector_deg);
  std::vector<SectorDifference> differences(levels_a.size());
  fewest_records = std::max<std::size_t>(fewest_records, 1);
  for (std::size_t index = 0; index < differences.size(); ++index) {
    SectorDifference& sector = differences[index];
    sector.bearing_deg = static_cast<double>(index) * sector_deg;
    sector.shown = std::min(levels_a[index].size(), levels_b[index].size()) >= fewest_records;
    if (sector.shown) {
      sector.difference = Subtract(levels_a[index], levels_b[index]);
    } else {
      sector.difference.count_a = levels_a[index].size();
      sector.difference.count_b = levels_b[index].size();
    }
  }
  return differences;
}

std::vector<CellMedian> MediansByPlace(std::span<const Sample> samples, double size_m,
                                       std::size_t fewest_records) {
  std::vector<CellMedian> cells;
  const auto grid = GridFor(samples, {}, size_m);
  if (!grid) return cells;
  const std::vector<Placed> placed = PlaceSamples(samples, *grid);
  std::span<const Placed> rest(placed);
  while (!rest.empty()) {
    const Cell cell = grid->CellOf(rest.front().square);
    std::vector<double> levels = TakeSquare(rest);
    if (levels.size() < fewest_records) continue;
    cells.push_back({cell, levels.size(), Quantile(levels, 0.5)});
  }
  return cells;
}

}  // namespace orvandi
