#include "position/needle.h"

#include <cmath>

#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr double kCentreOffset = 25;   // twips
constexpr double kReach = 0.7;         // of the centre's distance from the edge
constexpr double kNoAngleRadius = 30;  // twips

}  // namespace

Needle NeedleOf(std::string_view text) {
  const std::string_view angle = text.substr(0, text.find(kDegree));
  if (Trim(angle) == kNothingTold) return std::nullopt;
  return Val(angle);
}

std::vector<Shape> NeedleShapes(const Needle& needle, double width, double height) {
  const double x0 = width / 2 - kCentreOffset;
  const double y0 = height / 2 - kCentreOffset;
  if (x0 <= 0 || y0 <= 0) return {};  // not laid out yet

  Shape circle;
  circle.x1 = x0;
  circle.y1 = y0;
  circle.radius = kReach * x0;
  circle.color = Color::kBlue;

  Shape hand = circle;
  hand.color = Color::kRed;
  if (!needle) {
    hand.radius = kNoAngleRadius;
    return {circle, hand};
  }
  // Kept on purpose: the reach follows width and height separately.
  const double angle = (*needle - 90) * kRadiansPerDegree;
  hand.kind = Shape::Kind::kLine;
  hand.radius = 0;
  hand.x2 = x0 + kReach * x0 * std::cos(angle);
  hand.y2 = y0 + kReach * y0 * std::sin(angle);
  return {circle, hand};
}

}  // namespace kestrum
