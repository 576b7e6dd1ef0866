#include "analysis/law.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "analysis/distribution.h"
#include "analysis/pattern.h"

namespace orvandi {
namespace {

constexpr double kFreeSpaceExponent = 2;
constexpr std::size_t kFewestForAFit = 3;
// Standard deviation of log10(distance) below which the exponent would be noise: 2 % of the distance.
constexpr double kLeastSpreadOfLog = 0.01;

// A sample as a point of the line: x = log10 of the distance in km, y the level.
struct Point {
  double x = 0;
  double y = 0;
  std::size_t group = 0;
};

struct Group {
  double count = 0;
  double mean_x = 0;
  double mean_y = 0;
};

std::vector<Point> PointsOf(std::span<const Sample> samples, double sector_deg, Law& law) {
  std::vector<Point> points;
  points.reserve(samples.size());
  const SectorDivision sectors(sector_deg);
  for (const Sample& sample : samples) {
    const bool sector_known = sector_deg <= 0 || std::isfinite(sample.bearing_deg);
    if (!(sample.distance_km > 0) || !std::isfinite(sample.distance_km) || !sector_known ||
        !std::isfinite(sample.level_db)) {
      ++law.without_distance;
      continue;
    }
    const double distance_km = sample.distance_km;
    law.nearest_km = points.empty() ? distance_km : std::min(law.nearest_km, distance_km);
    law.farthest_km = std::max(law.farthest_km, distance_km);
    points.push_back(
        {std::log10(distance_km), sample.level_db, sector_deg > 0 ? sectors.Of(sample.bearing_deg) : 0});
  }
  law.used = points.size();
  return points;
}

std::vector<Group> GroupsOf(const std::vector<Point>& points, std::size_t count) {
  std::vector<Group> groups(count);
  for (const Point& point : points) {
    Group& group = groups[point.group];
    group.count += 1;
    group.mean_x += (point.x - group.mean_x) / group.count;
    group.mean_y += (point.y - group.mean_y) / group.count;
  }
  return groups;
}

// Standard deviation about the groups' lines of a given slope. The slope and each group's level are
// estimated.
double SpreadAbout(const std::vector<Point>& points, const std::vector<Group>& groups, double slope,
                   bool slope_estimated) {
  double squares = 0;
  for (const Point& point : points) {
    const Group& group = groups[point.group];
    const double rest = (point.y - group.mean_y) - slope * (point.x - group.mean_x);
    squares += rest * rest;
  }
  const auto used_groups =
      std::count_if(groups.begin(), groups.end(), [](const Group& group) { return group.count > 0; });
  const double freedom =
      static_cast<double>(points.size()) - static_cast<double>(used_groups) - (slope_estimated ? 1 : 0);
  return freedom > 0 ? std::sqrt(squares / freedom) : 0;
}

void FreeSpaceThroughMedian(const std::vector<Point>& points, const std::vector<Group>& groups, Law& law) {
  std::vector<double> levels;
  levels.reserve(points.size());
  for (const Point& point : points) levels.push_back(point.y + 10 * kFreeSpaceExponent * point.x);
  law.kind = Law::Kind::kFreeSpace;
  law.exponent = kFreeSpaceExponent;
  law.level_at_1km_db = Quantile(levels, 0.5);
  law.spread_db = SpreadAbout(points, groups, -10 * kFreeSpaceExponent, false);
}

// One slope for all groups, a level for each (analysis of covariance); with one group, a straight line.
Law Fit(std::span<const Sample> samples, double sector_deg) {
  Law law;
  const std::vector<Point> points = PointsOf(samples, sector_deg, law);
  if (points.empty()) return law;
  const std::vector<Group> groups = GroupsOf(points, sector_deg > 0 ? SectorCount(sector_deg) : 1);
  double xx = 0;
  double xy = 0;
  double mean_x = 0;
  double mean_y = 0;
  for (const Point& point : points) {
    const Group& group = groups[point.group];
    xx += (point.x - group.mean_x) * (point.x - group.mean_x);
    xy += (point.x - group.mean_x) * (point.y - group.mean_y);
    mean_x += point.x;
    mean_y += point.y;
  }
  const auto count = static_cast<double>(points.size());
  if (points.size() < kFewestForAFit || std::sqrt(xx / count) < kLeastSpreadOfLog) {
    FreeSpaceThroughMedian(points, groups, law);
    return law;
  }
  const double slope = xy / xx;
  law.kind = Law::Kind::kFitted;
  law.exponent = -slope / 10;
  law.level_at_1km_db = (mean_y - slope * mean_x) / count;
  law.spread_db = SpreadAbout(points, groups, slope, true);
  return law;
}

}  // namespace

double Law::LevelAt(double distance_km) const {
  return level_at_1km_db - 10 * exponent * std::log10(distance_km);
}

Law FitLaw(std::span<const Sample> samples) {
  return Fit(samples, 0);
}

Law FitLawWithinSectors(std::span<const Sample> samples, double sector_deg) {
  return Fit(samples, SectorCount(sector_deg) > 0 ? sector_deg : 0);
}

Law FreeSpaceThrough(double distance_km, double level_db) {
  Law law;
  if (!(distance_km > 0) || !std::isfinite(distance_km) || !std::isfinite(level_db)) return law;
  law.kind = Law::Kind::kFreeSpace;
  law.exponent = kFreeSpaceExponent;
  law.level_at_1km_db = level_db + 10 * kFreeSpaceExponent * std::log10(distance_km);
  law.nearest_km = distance_km;
  law.farthest_km = distance_km;
  law.used = 1;
  return law;
}

}  // namespace orvandi
