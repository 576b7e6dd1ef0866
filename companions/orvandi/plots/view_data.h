#pragma once

#include <QColor>
#include <QString>
#include <cstdint>
#include <vector>

#include "analysis/units.h"
#include "map/color_scale.h"
#include "map/dot_painter.h"

namespace orvandi {

// A layer as the views show it.
struct LayerLook {
  QString name;
  QColor color;
  bool visible = true;
};

// What the views show, one element a record of all logs. Not-a-number stands for "unknown".
struct ViewData {
  std::vector<double> time_s;       // as Record::time_s
  std::vector<float> log_distance;  // log10 of the distance in km
  std::vector<float> bearing_deg;   // seen from the transmitter
  std::vector<float> level_db;      // in the decibels of the unit
  std::vector<std::uint16_t> layer;
  std::vector<std::uint8_t> shown;  // 0: left out of every view

  std::vector<LayerLook> layers;
  Unit unit = Unit::kDbMicrovoltPerM;
  ColorScale scale;  // over levels
  DotStyle::Coloring coloring = DotStyle::Coloring::kValue;

  [[nodiscard]] std::size_t Count() const { return level_db.size(); }
  [[nodiscard]] bool Shows(std::size_t record) const {
    return shown[record] != 0 && level_db[record] == level_db[record];
  }
  [[nodiscard]] QRgb ColorOf(std::size_t record) const {
    if (coloring == DotStyle::Coloring::kValue) return scale.Color(level_db[record]);
    return layers[layer[record]].color.rgb();
  }
};

}  // namespace orvandi
