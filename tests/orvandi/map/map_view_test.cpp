#include "map/map_view.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include "map/color_scale.h"

namespace orvandi {
namespace {

// A map of four records on the corners of a square of about 2 km, and a transmitter in the middle.
class MapViewTest : public ::testing::Test {
 protected:
  MapViewTest() {
    map_.resize(600, 500);
    map_.show();
    map_.Index().SetPositions(places_);
    DotStyle style;
    style.scale = {0, 60, &ViridisPalette()};
    map_.SetDots({values_, layers_, shown_}, style);
    map_.SetTransmitters({{{51.96, 5.515}, QStringLiteral("TX")}});
    map_.Fit();
    QObject::connect(&map_, &MapView::Chosen, &map_,
                     [this](const std::vector<std::uint32_t>& records, bool add) {
                       chosen_ = records;
                       added_ = add;
                       ++times_;
                     });
  }

  QPoint At(std::size_t record) const { return map_.View().ToScreen(ToWorld(places_[record])).toPoint(); }
  QColor PixelAt(QPoint place) { return map_.grab().toImage().pixelColor(place); }

  std::vector<Place> places_ = {{51.97, 5.50}, {51.97, 5.53}, {51.95, 5.50}, {51.95, 5.53}};
  std::vector<float> values_ = {0, 20, 40, 60};
  std::vector<std::uint16_t> layers_ = {0, 0, 0, 0};
  std::vector<std::uint8_t> shown_ = {1, 1, 1, 1};
  MapView map_;
  std::vector<std::uint32_t> chosen_;
  bool added_ = false;
  int times_ = 0;
};

TEST_F(MapViewTest, DotsHaveTheColourOfTheirValue) {
  EXPECT_EQ(PixelAt(At(0)).rgb(), ViridisPalette().front());
  EXPECT_EQ(PixelAt(At(3)).rgb(), ViridisPalette().back());
}

TEST_F(MapViewTest, AClickChoosesADotAndAnEmptyPlaceNothing) {
  QTest::mouseClick(&map_, Qt::LeftButton, {}, At(2) + QPoint(2, 2));
  EXPECT_EQ(chosen_, std::vector<std::uint32_t>{2});
  EXPECT_FALSE(added_);
  QTest::mouseClick(&map_, Qt::LeftButton, Qt::ControlModifier, At(1));
  EXPECT_EQ(chosen_, std::vector<std::uint32_t>{1});
  EXPECT_TRUE(added_);
  QTest::mouseClick(&map_, Qt::LeftButton, {}, At(2) + QPoint(40, -40));
  EXPECT_TRUE(chosen_.empty());
  EXPECT_EQ(times_, 3);
}

TEST_F(MapViewTest, ShiftAndDraggingChoosesARectangle) {
  QTest::mousePress(&map_, Qt::LeftButton, Qt::ShiftModifier, At(0) - QPoint(15, 15));
  QTest::mouseMove(&map_, At(0));
  QTest::mouseMove(&map_, At(2) + QPoint(15, 15));
  QTest::mouseRelease(&map_, Qt::LeftButton, Qt::ShiftModifier, At(2) + QPoint(15, 15));
  EXPECT_EQ(chosen_, (std::vector<std::uint32_t>{0, 2}));
}

TEST_F(MapViewTest, DraggingMovesTheMapAndChoosesNothing) {
  const QPoint before = At(0);
  QTest::mousePress(&map_, Qt::LeftButton, {}, QPoint(300, 200));
  QTest::mouseMove(&map_, QPoint(330, 220));
  QTest::mouseMove(&map_, QPoint(350, 230));
  QTest::mouseRelease(&map_, Qt::LeftButton, {}, QPoint(350, 230));
  EXPECT_EQ(At(0), before + QPoint(50, 30));
  EXPECT_EQ(times_, 0);
}

TEST_F(MapViewTest, TheWheelZoomsAroundThePointer) {
  const QPoint pointer = At(1);
  const double before = map_.View().Zoom();
  QWheelEvent wheel(pointer, map_.mapToGlobal(pointer), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&map_, &wheel);
  EXPECT_DOUBLE_EQ(map_.View().Zoom(), before + 0.5);
  EXPECT_LE((At(1) - pointer).manhattanLength(), 1);
}

TEST_F(MapViewTest, KeysAndButtonsMoveAndZoom) {
  const QPoint home = At(0);
  QTest::keyClick(&map_, Qt::Key_Left);
  EXPECT_GT(At(0).x(), home.x());
  const double zoom = map_.View().Zoom();
  QTest::keyClick(&map_, Qt::Key_Plus);
  EXPECT_DOUBLE_EQ(map_.View().Zoom(), zoom + 1);
  QTest::mouseClick(map_.findChild<QToolButton*>(QStringLiteral("zoomOut")), Qt::LeftButton);
  EXPECT_DOUBLE_EQ(map_.View().Zoom(), zoom);
  QTest::keyClick(&map_, Qt::Key_Home);
  EXPECT_EQ(At(0), home);
}

TEST_F(MapViewTest, HoveringTellsTheRecord) {
  QSignalSpy hovered(&map_, &MapView::Hovered);
  QTest::mouseMove(&map_, At(3) + QPoint(3, 0));
  ASSERT_GE(hovered.count(), 1);
  EXPECT_EQ(hovered.back().front().toLongLong(), 3);
}

TEST_F(MapViewTest, SquaresTakeThePlaceOfDotsAndTellTheirFigures) {
  map_.SetCells({{{51.969, 5.499}, {51.971, 5.501}, -8, QStringLiteral("\u22128.0 dB")}},
                {-10, 10, &DifferencePalette()});
  EXPECT_EQ(PixelAt(At(0)).rgb(), (ColorScale{-10, 10, &DifferencePalette()}.Color(-8)));
  EXPECT_NE(PixelAt(At(3)).rgb(), ViridisPalette().back());
}

TEST_F(MapViewTest, ChosenDotsAreMarked) {
  const QImage before = map_.grab().toImage();
  const std::vector<std::uint32_t> chosen = {1};
  map_.SetChosen(chosen);
  const QImage after = map_.grab().toImage();
  const QPoint rim = At(1) + QPoint(5, 0);
  EXPECT_NE(before.pixelColor(rim), after.pixelColor(rim));
  EXPECT_EQ(before.pixelColor(At(2)), after.pixelColor(At(2)));
}

TEST(ColorScale, StepsFromEndToEnd) {
  const ColorScale scale{10, 50, &ViridisPalette()};
  EXPECT_EQ(scale.Step(-5), 0);
  EXPECT_EQ(scale.Step(10), 0);
  EXPECT_EQ(scale.Step(30), kColorSteps / 2);
  EXPECT_EQ(scale.Step(50), kColorSteps - 1);
  EXPECT_EQ(scale.Step(500), kColorSteps - 1);
  EXPECT_EQ(scale.Step(std::nan("")), 0);
  EXPECT_EQ((ColorScale{5, 5, &ViridisPalette()}.Step(7)), 0);
}

// What colour-blind people and grey printers go by.
TEST(ColorScale, LightnessOfTheScaleRisesEvenly) {
  int before = -1;
  for (const QRgb color : ViridisPalette()) {
    EXPECT_GE(qGray(color), before);
    before = qGray(color);
  }
}

TEST(ColorScale, RoundEnds) {
  const ColorScale scale = ScaleForPercentiles(31.2, 64.9);
  EXPECT_DOUBLE_EQ(scale.low, 30);
  EXPECT_DOUBLE_EQ(scale.high, 65);
  EXPECT_DOUBLE_EQ(ScaleForPercentiles(40, 40).high, 45);
}

TEST(MapDecorations, RoundSteps) {
  EXPECT_DOUBLE_EQ(RoundStep(1), 1);
  EXPECT_DOUBLE_EQ(RoundStep(4.9), 2);
  EXPECT_DOUBLE_EQ(RoundStep(5), 5);
  EXPECT_DOUBLE_EQ(RoundStep(0.03), 0.02);
  EXPECT_DOUBLE_EQ(RoundStep(99999), 50000);
  EXPECT_DOUBLE_EQ(RoundStep(0), 1);
  EXPECT_EQ(DistanceText(0.25), QStringLiteral("250 m"));
  EXPECT_EQ(DistanceText(20), QStringLiteral("20 km"));
}

}  // namespace
}  // namespace orvandi
