#include "analysis/distribution.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace orvandi {
namespace {

constexpr double kMostClasses = 10000;

double QuantileOfSorted(std::span<const double> sorted, double share) {
  const double place = std::clamp(share, 0.0, 1.0) * static_cast<double>(sorted.size() - 1);
  const auto low = static_cast<std::size_t>(place);
  const auto high = std::min(low + 1, sorted.size() - 1);
  return sorted[low] + (sorted[high] - sorted[low]) * (place - static_cast<double>(low));
}

}  // namespace

double Quantile(std::span<double> values, double share) {
  if (values.empty()) return std::numeric_limits<double>::quiet_NaN();
  const double place = std::clamp(share, 0.0, 1.0) * static_cast<double>(values.size() - 1);
  const auto low = static_cast<std::size_t>(place);
  const auto at_low = values.begin() + static_cast<std::ptrdiff_t>(low);
  std::nth_element(values.begin(), at_low, values.end());
  if (low + 1 == values.size()) return *at_low;
  const double next = *std::min_element(at_low + 1, values.end());
  return *at_low + (next - *at_low) * (place - static_cast<double>(low));
}

Distribution Describe(std::vector<double> values) {
  std::erase_if(values, [](double value) { return !std::isfinite(value); });
  Distribution result;
  result.count = values.size();
  if (values.empty()) return result;
  std::sort(values.begin(), values.end());
  result.least = values.front();
  result.most = values.back();
  result.mean = std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
  result.p10 = QuantileOfSorted(values, 0.1);
  result.lower_quartile = QuantileOfSorted(values, 0.25);
  result.median = QuantileOfSorted(values, 0.5);
  result.upper_quartile = QuantileOfSorted(values, 0.75);
  result.p90 = QuantileOfSorted(values, 0.9);
  return result;
}

Histogram Count(std::span<const double> values, double width) {
  Histogram histogram;
  histogram.width = width;
  double least = std::numeric_limits<double>::infinity();
  double most = -least;
  for (const double value : values) {
    if (!std::isfinite(value)) continue;
    least = std::min(least, value);
    most = std::max(most, value);
  }
  if (!(width > 0) || !(least <= most)) return histogram;
  const double first_class = std::floor(least / width);
  const double classes = std::floor(most / width) - first_class + 1;
  if (!(classes <= kMostClasses)) return histogram;
  histogram.first = first_class * width;
  histogram.counts.resize(static_cast<std::size_t>(classes));
  for (const double value : values) {
    if (!std::isfinite(value)) continue;
    const auto place = static_cast<std::size_t>(std::max(std::floor(value / width) - first_class, 0.0));
    ++histogram.counts[std::min(place, histogram.counts.size() - 1)];
  }
  return histogram;
}

}  // namespace orvandi
