#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace orvandi {

// The value below which a share (0 to 1) of the values lies, between two neighbours in proportion (type 7 of
// Hyndman and Fan 1996, as R and numpy have it). Reorders the values; not-a-number when there are none.
double Quantile(std::span<double> values, double share);

struct Distribution {
  std::size_t count = 0;
  double least = 0, most = 0, mean = 0;
  double p10 = 0, lower_quartile = 0, median = 0, upper_quartile = 0, p90 = 0;
};
// Of the values that are numbers; all figures are 0 with a count of 0.
Distribution Describe(std::vector<double> values);

// How many values fall into each class of equal width; a class begins at a whole multiple of the width.
struct Histogram {
  double first = 0;  // where the first class begins
  double width = 1;
  std::vector<std::size_t> counts;
};
// A width of 0 or less, or one that would make more than 10,000 classes, gives no class.
Histogram Count(std::span<const double> values, double width);

}  // namespace orvandi
