#include "map/projection.h"

#include <gtest/gtest.h>

namespace orvandi {
namespace {

TEST(Projection, KnownPlaces) {
  // Column and row of a tile at zoom 10, as every map of such tiles counts them.
  struct Row {
    Place place;
    int x, y;
  };
  for (const Row& row : {Row{{52.52, 13.405}, 550, 335}, Row{{51.95, 5.5333}, 527, 338},
                         Row{{-33.87, 151.21}, 942, 614}, Row{{0.0001, 0.0001}, 512, 511}}) {
    const QPointF world = ToWorld(row.place);
    EXPECT_EQ(static_cast<int>(world.x() * 1024), row.x) << row.place.latitude_deg;
    EXPECT_EQ(static_cast<int>(world.y() * 1024), row.y) << row.place.latitude_deg;
  }
}

TEST(Projection, ThereAndBack) {
  for (double latitude = -80; latitude <= 80; latitude += 16) {
    for (double longitude = -179; longitude <= 179; longitude += 35.8) {
      const Place back = ToGeo(ToWorld({latitude, longitude}));
      EXPECT_NEAR(back.latitude_deg, latitude, 1e-9);
      EXPECT_NEAR(back.longitude_deg, longitude, 1e-9);
    }
  }
}

TEST(Projection, PolesLieOnTheEdge) {
  EXPECT_DOUBLE_EQ(ToWorld({90, 0}).y(), 0);
  EXPECT_DOUBLE_EQ(ToWorld({-90, 0}).y(), 1);
}

TEST(Projection, ZoomKeepsThePlaceUnderThePointer) {
  Camera camera;
  camera.size = QSizeF(800, 600);
  camera.center = ToWorld({51.95, 5.5});
  camera.SetZoom(11);
  const QPointF pointer(123, 456);
  const QPointF before = camera.FromScreen(pointer);
  camera.ZoomAt(pointer, 13.5);
  const QPointF after = camera.FromScreen(pointer);
  EXPECT_NEAR(before.x(), after.x(), 1e-12);
  EXPECT_NEAR(before.y(), after.y(), 1e-12);
  camera.SetZoom(99);
  EXPECT_DOUBLE_EQ(camera.Zoom(), Camera::kMaxZoom);
}

TEST(Projection, FitShowsAllWithinItsMargins) {
  Camera camera;
  camera.size = QSizeF(800, 600);
  const QRectF world(ToWorld({52.1, 5.2}), ToWorld({51.8, 5.9}));
  camera.Fit(world, QMarginsF(50, 20, 90, 30));
  const QPointF corner = camera.ToScreen(world.topLeft());
  const QPointF other = camera.ToScreen(world.bottomRight());
  EXPECT_GE(corner.x(), 50 - 1e-6);
  EXPECT_GE(corner.y(), 20 - 1e-6);
  EXPECT_LE(other.x(), 710 + 1e-6);
  EXPECT_LE(other.y(), 570 + 1e-6);
}

TEST(Projection, OnePointIsShownAtTheScaleOfAStreet) {
  Camera camera;
  camera.size = QSizeF(800, 600);
  const QPointF point = ToWorld({51.95, 5.5});
  camera.Fit(QRectF(point, point), QMarginsF(10, 10, 10, 10));
  EXPECT_DOUBLE_EQ(camera.Zoom(), 16);
  EXPECT_NEAR(camera.ToScreen(point).x(), 400, 1e-6);
}

}  // namespace
}  // namespace orvandi
