#pragma once

#include <QColor>
#include <QRgb>
#include <array>

class QPainter;
class QRectF;

namespace orvandi {

inline constexpr int kColorSteps = 64;

// A palette of kColorSteps colours from low to high.
using Palette = std::array<QRgb, kColorSteps>;

// Perceptually even from dark violet over green to yellow: readable for colour-blind people and in grey
// print.
const Palette& ViridisPalette();
// For differences: blue (negative) over grey to orange (positive), which colour-blind people can tell apart.
const Palette& DifferencePalette();

// Colours of layers, in the order in which they are handed out; they come again after the last.
QColor LayerColor(int index);

// What marks chosen records in every view. It stands in none of the palettes.
QColor SelectionColor();

// Which value has which colour. Values outside take the colour of the end.
struct ColorScale {
  double low = 0;
  double high = 1;
  const Palette* palette = &ViridisPalette();

  [[nodiscard]] int Step(double value) const;  // 0 to kColorSteps - 1
  [[nodiscard]] QRgb Color(double value) const { return (*palette)[static_cast<std::size_t>(Step(value))]; }
};

// A scale over whole steps of 5 that leaves out the outermost 2 % of values on each side.
ColorScale ScaleForPercentiles(double percentile_2, double percentile_98);

}  // namespace orvandi
