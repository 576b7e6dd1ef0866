#include "analysis/comparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "log/geo.h"

namespace orvandi {
namespace {

Sample At(const Place& place, double level_db) {
  Sample sample;
  sample.latitude_deg = place.latitude_deg;
  sample.longitude_deg = place.longitude_deg;
  sample.level_db = static_cast<float>(level_db);
  return sample;
}

std::vector<Sample> Several(const Place& place, std::initializer_list<double> levels) {
  std::vector<Sample> samples;
  for (const double level : levels) samples.push_back(At(place, level));
  return samples;
}

void Append(std::vector<Sample>& samples, const std::vector<Sample>& more) {
  samples.insert(samples.end(), more.begin(), more.end());
}

const Place kHere{51.95, 5.53};
const Place kThere{51.96, 5.53};

TEST(Comparison, ByPlaceTakesMediansOfBoth) {
  std::vector<Sample> a = Several(kHere, {50, 52, 54, 56, 58});
  std::vector<Sample> b = Several(kHere, {40, 41, 42});
  Append(a, Several(kThere, {60, 60, 60}));
  Append(b, Several(kThere, {60, 60}));  // too few
  const Comparison comparison = CompareByPlace(a, b, 50);
  ASSERT_EQ(comparison.cells.size(), 1U);
  const Difference& difference = comparison.cells[0].difference;
  EXPECT_EQ(difference.count_a, 5U);
  EXPECT_EQ(difference.count_b, 3U);
  EXPECT_DOUBLE_EQ(difference.median_a_db, 54);
  EXPECT_DOUBLE_EQ(difference.median_b_db, 41);
  EXPECT_DOUBLE_EQ(difference.difference_db, 13);
  EXPECT_NEAR(difference.spread_db, std::hypot(4 / 1.349, 1 / 1.349), 1e-12);
  EXPECT_DOUBLE_EQ(comparison.median_db, 13);
}

TEST(Comparison, SquaresAreAsLargeAsTold) {
  for (const double size_m : {25.0, 50.0, 100.0}) {
    const auto cells = MediansByPlace(Several(kHere, {1, 2, 3}), size_m);
    ASSERT_EQ(cells.size(), 1U);
    const Cell& cell = cells[0].cell;
    EXPECT_LE(cell.south_deg, kHere.latitude_deg);
    EXPECT_GT(cell.north_deg, kHere.latitude_deg);
    EXPECT_LE(cell.west_deg, kHere.longitude_deg);
    EXPECT_GT(cell.east_deg, kHere.longitude_deg);
    const double high = DistanceKm({cell.south_deg, cell.west_deg}, {cell.north_deg, cell.west_deg});
    const double wide = DistanceKm({cell.south_deg, cell.west_deg}, {cell.south_deg, cell.east_deg});
    EXPECT_NEAR(high * 1000, size_m, 0.01);
    EXPECT_NEAR(wide * 1000, size_m, 0.01);
    EXPECT_DOUBLE_EQ(cells[0].median_db, 2);
  }
}

// Every sample is in one square, and a square holds what a plain count finds in it.
TEST(Comparison, NoSampleIsLostOrTwice) {
  std::vector<Sample> samples;
  for (int step = 0; step < 1000; ++step) {
    samples.push_back(At(Destination(kHere, step * 7.3, 0.002 * step), step % 37));
  }
  const auto cells = MediansByPlace(samples, 100, 1);
  std::size_t sum = 0;
  for (const CellMedian& cell : cells) {
    const auto inside = std::count_if(samples.begin(), samples.end(), [&](const Sample& sample) {
      return sample.latitude_deg >= cell.cell.south_deg && sample.latitude_deg < cell.cell.north_deg &&
             sample.longitude_deg >= cell.cell.west_deg && sample.longitude_deg < cell.cell.east_deg;
    });
    EXPECT_EQ(static_cast<std::size_t>(inside), cell.count);
    sum += cell.count;
  }
  EXPECT_EQ(sum, samples.size());
}

TEST(Comparison, BySectorNormalisesWithTheLaw) {
  Law law;
  law.kind = Law::Kind::kFitted;
  law.exponent = 3;
  const auto samples = [](double bearing, double distance_km, double level, int count) {
    std::vector<Sample> result(static_cast<std::size_t>(count));
    for (Sample& sample : result) {
      sample.bearing_deg = static_cast<float>(bearing);
      sample.distance_km = static_cast<float>(distance_km);
      sample.level_db = static_cast<float>(level);
    }
    return result;
  };
  const auto a = samples(90, 10, 50, 6);
  const auto b = samples(92, 1, 77, 5);
  const auto sectors = CompareBySector(a, b, law, 10);
  ASSERT_EQ(sectors.size(), 36U);
  EXPECT_TRUE(sectors[9].shown);
  EXPECT_NEAR(sectors[9].difference.difference_db, 3, 1e-6);
  EXPECT_FALSE(sectors[0].shown);
  const auto few = CompareBySector(a, samples(92, 1, 77, 4), law, 10);
  EXPECT_FALSE(few[9].shown);
  EXPECT_EQ(few[9].difference.count_a, 6U);
  EXPECT_EQ(few[9].difference.count_b, 4U);
}

TEST(Comparison, OddInputGivesNothing) {
  EXPECT_TRUE(CompareByPlace({}, {}, 50).cells.empty());
  EXPECT_TRUE(MediansByPlace(Several(kHere, {1, 2, 3}), 0).empty());
  EXPECT_TRUE(MediansByPlace(Several(kHere, {1, 2, 3}), std::nan("")).empty());
  EXPECT_TRUE(MediansByPlace(Several({std::nan(""), 5}, {1, 2, 3}), 50).empty());
  // At a pole and at the date line there are squares, too.
  EXPECT_EQ(MediansByPlace(Several({90, 0}, {1, 2, 3}), 50).size(), 1U);
  EXPECT_EQ(MediansByPlace(Several({0, 180}, {1, 2, 3}), 50).size(), 1U);
}

}  // namespace
}  // namespace orvandi
