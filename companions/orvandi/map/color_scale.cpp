#include "map/color_scale.h"

#include <algorithm>
#include <cmath>

#include "analysis/palette.h"

namespace orvandi {
namespace {

// Colours at even distances; between them the palette is linear.
constexpr std::array<QRgb, 7> kDifference = {0x0B4F9E, 0x3C8CCB, 0x9CC7E4, 0xC9CACC,
                                             0xF2BE85, 0xE0812C, 0xA64500};

// Okabe and Ito's colours without black and yellow, which vanish on one of the backgrounds.
constexpr std::array<QRgb, 6> kLayers = {0x0072B2, 0xE69F00, 0x009E73, 0xCC79A7, 0xD55E00, 0x56B4E9};

int Mix(int from, int to, double share) {
  return static_cast<int>(std::lround(from + (to - from) * share));
}

template <std::size_t Count>
Palette Spread(const std::array<QRgb, Count>& anchors) {
  Palette palette{};
  for (std::size_t i = 0; i < palette.size(); ++i) {
    const double place =
        static_cast<double>(i) * static_cast<double>(Count - 1) / static_cast<double>(palette.size() - 1);
    const auto lower = std::min(static_cast<std::size_t>(place), Count - 2);
    const double share = place - static_cast<double>(lower);
    const QRgb from = anchors[lower];
    const QRgb to = anchors[lower + 1];
    palette[i] = qRgb(Mix(qRed(from), qRed(to), share), Mix(qGreen(from), qGreen(to), share),
                      Mix(qBlue(from), qBlue(to), share));
  }
  return palette;
}

}  // namespace

const Palette& ViridisPalette() {
  static const Palette palette = [] {
    Palette steps{};
    for (std::size_t i = 0; i < steps.size(); ++i) {
      const Colour colour = Viridis(static_cast<double>(i) / static_cast<double>(steps.size() - 1));
      steps[i] = qRgb(colour.red, colour.green, colour.blue);
    }
    return steps;
  }();
  return palette;
}

const Palette& DifferencePalette() {
  static const Palette palette = Spread(kDifference);
  return palette;
}

QColor LayerColor(int index) {
  const auto count = static_cast<int>(kLayers.size());
  return QColor(kLayers[static_cast<std::size_t>(((index % count) + count) % count)]);
}

QColor SelectionColor() {
  return {0xE6, 0x1E, 0x6E};
}

int ColorScale::Step(double value) const {
  if (!(high > low) || std::isnan(value)) return 0;
  const double share = std::clamp((value - low) / (high - low), 0.0, 1.0);
  return std::min(static_cast<int>(share * kColorSteps), kColorSteps - 1);
}

ColorScale ScaleForPercentiles(double percentile_2, double percentile_98) {
  constexpr double kStep = 5;
  ColorScale scale;
  scale.low = std::floor(percentile_2 / kStep) * kStep;
  scale.high = std::ceil(percentile_98 / kStep) * kStep;
  if (scale.high - scale.low < kStep) scale.high = scale.low + kStep;
  return scale;
}

}  // namespace orvandi
