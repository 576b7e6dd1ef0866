#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "analysis/law.h"
#include "analysis/pattern.h"
#include "analysis/samples.h"

namespace orvandi {

// Two layers, A minus B. Spread: standard deviation of the difference of two single readings, estimated from
// the quartiles (IQR / 1.349 of a normal distribution) of both, added as squares.
struct Difference {
  std::size_t count_a = 0;
  std::size_t count_b = 0;
  double median_a_db = 0;
  double median_b_db = 0;
  double difference_db = 0;
  double spread_db = 0;
};

// A square of the map.
struct Cell {
  double south_deg = 0, west_deg = 0, north_deg = 0, east_deg = 0;
};
struct CellMedian {
  Cell cell;
  std::size_t count = 0;
  double median_db = 0;
};
struct CellDifference {
  Cell cell;
  Difference difference;
};
struct SectorDifference {
  double bearing_deg = 0;  // of the centre
  bool shown = false;      // enough records of both
  Difference difference;
};

struct Comparison {
  std::vector<CellDifference> cells;
  // Of the cells' differences: what to say in one number.
  double median_db = 0;
  double lower_quartile_db = 0;
  double upper_quartile_db = 0;
};

// Squares of `size_m` at the mean latitude of the samples; only those with at least `fewest_records` of each.
Comparison CompareByPlace(std::span<const Sample> a, std::span<const Sample> b, double size_m,
                          std::size_t fewest_records = 3);
// By sector seen from the transmitter, levels normalised to 1 km by the law of both layers together.
std::vector<SectorDifference> CompareBySector(std::span<const Sample> a, std::span<const Sample> b,
                                              const Law& law, double sector_deg,
                                              std::size_t fewest_records = 5);
// Medians of one layer.
std::vector<CellMedian> MediansByPlace(std::span<const Sample> samples, double size_m,
                                       std::size_t fewest_records = 3);

}  // namespace orvandi
