#include "map/dot_index.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "map/projection.h"

namespace orvandi {
namespace {

// Some thousand records along a random way, with what an index needs of them.
struct Records {
  std::vector<Place> places;
  std::vector<float> values;
  std::vector<std::uint16_t> layers;
  std::vector<std::uint8_t> shown;

  explicit Records(std::size_t count) {
    std::mt19937 random(3);
    std::normal_distribution<double> step(0, 0.0004);
    Place place{51.95, 5.5};
    for (std::size_t i = 0; i < count; ++i) {
      place.latitude_deg += step(random);
      place.longitude_deg += step(random);
      places.push_back(i % 97 == 5 ? Place{std::nan(""), std::nan("")} : place);
      values.push_back(i % 89 == 7 ? std::nanf("") : static_cast<float>(i % 60));
      layers.push_back(static_cast<std::uint16_t>(i % 3));
      shown.push_back(i % 11 == 4 ? 0 : 1);
    }
  }
  bool HasDot(std::size_t i) const {
    return shown[i] != 0 && !std::isnan(values[i]) && !std::isnan(places[i].latitude_deg);
  }
  DotValues Values() const { return {values, layers, shown}; }
};

TEST(DotIndex, FindsWhatASearchThroughAllFinds) {
  const Records records(5000);
  DotIndex index;
  index.SetPositions(records.places);
  index.SetShown(records.Values());
  const QRectF bounds = index.Bounds();
  for (int i = 0; i < 40; ++i) {
    const QRectF world(bounds.left() + bounds.width() * (i % 7) / 9,
                       bounds.top() + bounds.height() * (i % 5) / 8, bounds.width() * (1 + i % 3) / 6,
                       bounds.height() * (1 + i % 4) / 7);
    std::vector<std::uint32_t> expected;
    for (std::size_t k = 0; k < records.places.size(); ++k) {
      if (!records.HasDot(k)) continue;
      const QPointF at = ToWorld(records.places[k]);
      if (at.x() >= world.left() && at.x() <= world.right() && at.y() >= world.top() &&
          at.y() <= world.bottom()) {
        expected.push_back(static_cast<std::uint32_t>(k));
      }
    }
    EXPECT_EQ(index.Within(world), expected);
  }
}

TEST(DotIndex, NearestIsTheNearest) {
  const Records records(2000);
  DotIndex index;
  index.SetPositions(records.places);
  index.SetShown(records.Values());
  const double radius = 0.00002;
  for (std::size_t i = 3; i < records.places.size(); i += 101) {
    const QPointF pointer = std::isnan(records.places[i].latitude_deg)
                                ? index.Bounds().center()
                                : ToWorld(records.places[i]) + QPointF(radius / 9, -radius / 7);
    std::int64_t expected = -1;
    double best = radius;
    for (std::size_t k = 0; k < records.places.size(); ++k) {
      if (!records.HasDot(k)) continue;
      const QPointF apart = ToWorld(records.places[k]) - pointer;
      const double distance = std::hypot(apart.x(), apart.y());
      if (distance > best) continue;
      best = distance;
      expected = static_cast<std::int64_t>(k);
    }
    EXPECT_EQ(index.Nearest(pointer, radius), expected) << i;
  }
  EXPECT_EQ(index.Nearest({0.9, 0.9}, radius), -1);
}

TEST(DotIndex, SquaresHoldEachDotOnce) {
  const Records records(3000);
  DotIndex index;
  index.SetPositions(records.places);
  index.SetShown(records.Values());
  constexpr int kZoom = 9;
  const QRectF bounds = index.Bounds();
  const double count = std::exp2(kZoom);
  std::size_t dots = 0;
  for (auto y = static_cast<std::uint32_t>(bounds.top() * count); y <= bounds.bottom() * count; ++y) {
    for (auto x = static_cast<std::uint32_t>(bounds.left() * count); x <= bounds.right() * count; ++x) {
      for (const Dot& dot : index.DotsOfSquare(kZoom, x, y, DotIndex::kDepth)) {
        EXPECT_TRUE(records.HasDot(dot.record));
        EXPECT_EQ(static_cast<std::uint32_t>(index.World(dot.record).x() * count), x);
        ++dots;
      }
    }
  }
  EXPECT_EQ(dots, index.ShownCount());
}

TEST(DotIndex, DotsThatFallTogetherShowTheirMedian) {
  const std::vector<Place> places(5, Place{51.95, 5.5});
  const std::vector<float> values = {10, 50, 20, 90, 30};
  const std::vector<std::uint16_t> layers(5, 0);
  const std::vector<std::uint8_t> shown(5, 1);
  DotIndex index;
  index.SetPositions(places);
  index.SetShown({values, layers, shown});
  const QPointF world = ToWorld(places.front());
  const auto dots = index.DotsOfSquare(8, static_cast<std::uint32_t>(world.x() * 256),
                                       static_cast<std::uint32_t>(world.y() * 256), 15);
  ASSERT_EQ(dots.size(), 1u);
  EXPECT_FLOAT_EQ(dots.front().value, 30);
}

TEST(DotIndex, GrowingGivesTheSameAsBuildingAnew) {
  const Records records(4000);
  DotIndex grown;
  const std::span<const Place> all(records.places);
  grown.SetPositions(all.first(1000));
  grown.AddPositions(all.subspan(1000, 2500));
  grown.AddPositions(all.subspan(3500));
  grown.SetShown(records.Values());
  DotIndex whole;
  whole.SetPositions(all);
  whole.SetShown(records.Values());
  EXPECT_EQ(grown.Bounds(), whole.Bounds());
  EXPECT_EQ(grown.Within(whole.Bounds()), whole.Within(whole.Bounds()));
  EXPECT_EQ(grown.Within(whole.Bounds()).size(), whole.ShownCount());
}

TEST(DotIndex, NothingToShow) {
  DotIndex index;
  index.SetPositions({});
  index.SetShown({});
  EXPECT_TRUE(index.Bounds().isNull());
  EXPECT_EQ(index.Nearest({0.5, 0.5}, 1), -1);
  EXPECT_TRUE(index.Within({0, 0, 1, 1}).empty());
}

}  // namespace
}  // namespace orvandi
