#include <QImage>
#include <cmath>

#include "desktop/desktop_fixture.h"
#include "desktop/widgets/pelorus_widget.h"
#include "desktop/widgets/picture_widget.h"
#include "position/needle.h"

// Where the needles are painted, told from the pixels.
namespace kestrum::test {
namespace {

struct Spot {
  int pixels = 0;
  double right = 0;     // mean distance from the centre, in pixels
  double down = 0;      // mean distance from the centre, in pixels
  double farthest = 0;  // from the centre
};

Spot SpotOf(const QImage& image, const QPointF& centre, const QColor& color) {
  Spot spot;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y) != color) continue;
      ++spot.pixels;
      spot.right += x - centre.x();
      spot.down += y - centre.y();
      spot.farthest = std::max(spot.farthest, std::hypot(x - centre.x(), y - centre.y()));
    }
  }
  if (spot.pixels > 0) {
    spot.right /= spot.pixels;
    spot.down /= spot.pixels;
  }
  return spot;
}

struct Direction {
  const char* text;
  int right;
  int down;
};
constexpr Direction kDirections[] = {{"000", 0, -1}, {"090", 1, 0}, {"180", 0, 1}, {"270", -1, 0}};

void ExpectDirection(const Spot& spot, const Direction& direction) {
  ASSERT_GT(spot.pixels, 20) << direction.text;
  const double along = direction.right * spot.right + direction.down * spot.down;
  const double across = direction.right * spot.down + direction.down * spot.right;
  EXPECT_GT(along, 10) << direction.text;
  EXPECT_LT(std::fabs(across), 2) << direction.text;
}

using NeedlePictureTest = BoundForms;

TEST_F(NeedlePictureTest, TheMinimalDisplayPointsWhereTheTextSays) {
  Picture& picture = forms.form5.Picture1;
  forms.form5.visible = true;
  binder.Sync();
  QApplication::processEvents();
  auto* widget = Find<PictureWidget>(QStringLiteral("Form5"), QStringLiteral("Picture1"));
  const QPointF centre((picture.width / 2 - 25) / 15, (picture.height / 2 - 25) / 15);
  const QColor red(255, 0, 0);
  const QColor blue(0, 0, 255);
  for (const Direction& direction : kDirections) {
    picture.shapes = NeedleShapes(NeedleOf(direction.text), picture.width, picture.height);
    binder.Sync();
    const QImage image = widget->grab().toImage();
    ExpectDirection(SpotOf(image, centre, red), direction);
    EXPECT_NEAR(SpotOf(image, centre, blue).farthest, 0.7 * centre.x(), 3);
  }
  picture.shapes = NeedleShapes(std::nullopt, picture.width, picture.height);
  binder.Sync();
  const Spot none = SpotOf(widget->grab().toImage(), centre, red);
  EXPECT_GT(none.pixels, 0);
  EXPECT_LT(none.farthest, 30.0 / 15 + 4) << "a small circle only";
}

TEST_F(NeedlePictureTest, TheCompassRosePointsWhereTheTextSays) {
  ShowForm1();
  auto* rose = Find<PelorusWidget>(QStringLiteral("Form1"), QStringLiteral("Picture1"));
  const QPointF centre = QRectF(rose->rect()).center();
  const QColor needle(0xFF, 0x00, 0x00);
  for (const Direction& direction : kDirections) {
    forms.form1.Picture1.needle = NeedleOf(direction.text);
    binder.Sync();
    ExpectDirection(SpotOf(rose->grab().toImage(), centre, needle), direction);
  }
  forms.form1.Picture1.needle.reset();
  binder.Sync();
  EXPECT_EQ(SpotOf(rose->grab().toImage(), centre, needle).pixels, 0);
}

}  // namespace
}  // namespace kestrum::test
