#include "analysis/pattern.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/distribution.h"

namespace orvandi {

std::size_t SectorCount(double sector_deg) {
  if (!(sector_deg > 0) || sector_deg > 360) return 0;
  const double count = std::round(360 / sector_deg);
  return std::fabs(count * sector_deg - 360) < 1e-6 && count <= 3600 ? static_cast<std::size_t>(count) : 0;
}

std::size_t SectorDivision::Of(double bearing_deg) const {
  if (count_ == 0 || !std::isfinite(bearing_deg)) return 0;
  const double turned = std::fmod(bearing_deg + sector_deg_ / 2, 360);
  const double positive = turned < 0 ? turned + 360 : turned;
  return static_cast<std::size_t>(positive / sector_deg_) % count_;
}

std::size_t SectorOf(double bearing_deg, double sector_deg) {
  return SectorDivision(sector_deg).Of(bearing_deg);
}

double NormalisedLevel(const Sample& sample, const Law& law) {
  if (!(sample.distance_km > 0) || !std::isfinite(sample.distance_km) || law.kind == Law::Kind::kNone) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  return sample.level_db + 10 * law.exponent * std::log10(static_cast<double>(sample.distance_km));
}

Pattern AntennaPattern(std::span<const Sample> samples, const Law& law, double sector_deg,
                       std::size_t fewest_records) {
  Pattern pattern;
  pattern.sector_deg = sector_deg;
  const SectorDivision sectors(sector_deg);
  const std::size_t count = sectors.Count();
  std::vector<std::vector<double>> levels(count);
  for (const Sample& sample : samples) {
    const double level = NormalisedLevel(sample, law);
    if (count == 0 || !std::isfinite(level) || !std::isfinite(sample.bearing_deg)) continue;
    levels[sectors.Of(sample.bearing_deg)].push_back(level);
  }
  pattern.sectors.resize(count);
  bool any = false;
  for (std::size_t index = 0; index < count; ++index) {
    Sector& sector = pattern.sectors[index];
    sector.bearing_deg = static_cast<double>(index) * sector_deg;
    sector.count = levels[index].size();
    sector.shown = sector.count > 0 && sector.count >= fewest_records;
    if (!sector.shown) continue;
    sector.lower_quartile_db = Quantile(levels[index], 0.25);
    sector.median_db = Quantile(levels[index], 0.5);
    sector.upper_quartile_db = Quantile(levels[index], 0.75);
    pattern.strongest_db = any ? std::max(pattern.strongest_db, sector.median_db) : sector.median_db;
    any = true;
  }
  return pattern;
}

}  // namespace orvandi
