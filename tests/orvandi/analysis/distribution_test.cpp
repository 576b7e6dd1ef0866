#include "analysis/distribution.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace orvandi {
namespace {

TEST(Quantile, LiesBetweenNeighbours) {
  // The figures are those of numpy.quantile.
  std::vector<double> values = {7, 1, 3, 10, 2};
  EXPECT_DOUBLE_EQ(Quantile(values, 0), 1);
  EXPECT_DOUBLE_EQ(Quantile(values, 0.1), 1.4);
  EXPECT_DOUBLE_EQ(Quantile(values, 0.25), 2);
  EXPECT_DOUBLE_EQ(Quantile(values, 0.5), 3);
  EXPECT_DOUBLE_EQ(Quantile(values, 0.9), 8.8);
  EXPECT_DOUBLE_EQ(Quantile(values, 1), 10);
  std::vector<double> one = {4};
  EXPECT_DOUBLE_EQ(Quantile(one, 0.3), 4);
  EXPECT_TRUE(std::isnan(Quantile({}, 0.5)));
}

TEST(Describe, TellsTheSameAsQuantile) {
  const Distribution result = Describe({7, std::nan(""), 1, 3, 10, 2});
  EXPECT_EQ(result.count, 5U);
  EXPECT_DOUBLE_EQ(result.least, 1);
  EXPECT_DOUBLE_EQ(result.most, 10);
  EXPECT_DOUBLE_EQ(result.mean, 4.6);
  EXPECT_DOUBLE_EQ(result.p10, 1.4);
  EXPECT_DOUBLE_EQ(result.lower_quartile, 2);
  EXPECT_DOUBLE_EQ(result.median, 3);
  EXPECT_DOUBLE_EQ(result.upper_quartile, 7);
  EXPECT_DOUBLE_EQ(result.p90, 8.8);
  EXPECT_EQ(Describe({}).count, 0U);
  EXPECT_EQ(Describe({std::nan("")}).count, 0U);
}

TEST(Describe, TellsTheSameAsQuantileOfAnyCount) {
  for (std::size_t count = 1; count <= 60; ++count) {
    std::vector<double> values;
    for (std::size_t i = 0; i < count; ++i) values.push_back(static_cast<double>(i * 37 % 31));
    const Distribution result = Describe(values);
    EXPECT_DOUBLE_EQ(result.p10, Quantile(values, 0.1)) << count;
    EXPECT_DOUBLE_EQ(result.lower_quartile, Quantile(values, 0.25)) << count;
    EXPECT_DOUBLE_EQ(result.median, Quantile(values, 0.5)) << count;
    EXPECT_DOUBLE_EQ(result.upper_quartile, Quantile(values, 0.75)) << count;
    EXPECT_DOUBLE_EQ(result.p90, Quantile(values, 0.9)) << count;
  }
}

TEST(Histogram, ClassesBeginAtMultiplesOfTheWidth) {
  const std::vector<double> values = {-0.5, 0, 0.9, 1, 3.99, std::nan("")};
  const Histogram histogram = Count(values, 1);
  EXPECT_DOUBLE_EQ(histogram.first, -1);
  EXPECT_THAT(histogram.counts, testing::ElementsAre(1, 2, 1, 0, 1));
  EXPECT_TRUE(Count(values, 0).counts.empty());
  EXPECT_TRUE(Count(values, 1e-9).counts.empty());
  EXPECT_TRUE(Count({}, 1).counts.empty());
  EXPECT_THAT(Count(std::vector<double>{5}, 2).counts, testing::ElementsAre(1));
}

}  // namespace
}  // namespace orvandi
