#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "analysis/law.h"
#include "analysis/samples.h"

namespace orvandi {

// Sectors whose width divides 360, seen from the transmitter. Sector i is centred on i times the width, so
// that the first one points to the north.
std::size_t SectorCount(double sector_deg);
std::size_t SectorOf(double bearing_deg, double sector_deg);
// The same for many bearings.
class SectorDivision {
 public:
  explicit SectorDivision(double sector_deg) : sector_deg_(sector_deg), count_(SectorCount(sector_deg)) {}
  [[nodiscard]] std::size_t Count() const { return count_; }
  [[nodiscard]] std::size_t Of(double bearing_deg) const;

 private:
  double sector_deg_;
  std::size_t count_;
};

struct Sector {
  double bearing_deg = 0;  // of its centre
  std::size_t count = 0;   // records in it
  bool shown = false;      // enough of them; the figures below are 0 else
  double lower_quartile_db = 0;
  double median_db = 0;
  double upper_quartile_db = 0;
};

struct Pattern {
  double sector_deg = 10;
  std::vector<Sector> sectors;  // all of them, 360 / sector_deg
  double strongest_db = 0;      // highest median of the shown sectors, 0 when there is none
};

// Each level is moved to a distance of 1 km by the law, then the medians are taken by sector.
Pattern AntennaPattern(std::span<const Sample> samples, const Law& law, double sector_deg,
                       std::size_t fewest_records = 5);

// Level of a sample at 1 km by the law; not-a-number where the distance is unknown or 0.
double NormalisedLevel(const Sample& sample, const Law& law);

}  // namespace orvandi
