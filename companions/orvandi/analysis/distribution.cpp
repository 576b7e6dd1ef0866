#include "analysis/distribution.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace orvandi {
namespace {

constexpr double kMostClasses = 10000;

// Growing shares of the same values: what lies below one of them is not sorted again for the next.
class GrowingQuantiles {
 public:
  explicit GrowingQuantiles(std::span<double> values) : values_(values) {}
  double At(double share) {
    const std::size_t last = values_.size() - 1;
    const double place = std::clamp(share, 0.0, 1.0) * static_cast<double>(last);
    const auto below = static_cast<std::size_t>(place);
    const double value = Sorted(below);
    const double next = Sorted(std::min(below + 1, last));
    return value + (next - value) * (place - static_cast<double>(below));
  }

 private:
  // The value that stands at a place once all are sorted.
  double Sorted(std::size_t place) {
    if (place >= settled_) {
      const auto from = values_.begin() + static_cast<std::ptrdiff_t>(settled_);
      std::nth_element(from, values_.begin() + static_cast<std::ptrdiff_t>(place), values_.end());
      settled_ = place + 1;
    }
    return values_[place];
  }

  std::span<double> values_;
  std::size_t settled_ = 0;  // nothing behind is smaller than what stands before it
};

}  // namespace

double Quantile(std::span<double> values, double share) {
  if (values.empty()) return std::numeric_limits<double>::quiet_NaN();
  return GrowingQuantiles(values).At(share);
}

Distribution Describe(std::vector<double> values) {
  std::erase_if(values, [](double value) { return !std::isfinite(value); });
  Distribution result;
  result.count = values.size();
  if (values.empty()) return result;
  const auto [least, most] = std::minmax_element(values.begin(), values.end());
  result.least = *least;
  result.most = *most;
  result.mean = std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
  GrowingQuantiles quantiles(values);
  result.p10 = quantiles.At(0.1);
  result.lower_quartile = quantiles.At(0.25);
  result.median = quantiles.At(0.5);
  result.upper_quartile = quantiles.At(0.75);
  result.p90 = quantiles.At(0.9);
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
