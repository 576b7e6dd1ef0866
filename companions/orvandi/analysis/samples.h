#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "analysis/layers.h"
#include "analysis/recalibration.h"
#include "analysis/units.h"
#include "log/log.h"

namespace orvandi {

// A reading as the statistics take it.
struct Sample {
  double latitude_deg = kUnknownDegrees;
  double longitude_deg = kUnknownDegrees;
  float distance_km = kUnknown;  // from the transmitter
  float bearing_deg = kUnknown;  // seen from the transmitter
  float level_db = kUnknown;     // dBuV/m, or dBm for uV and dBm, or 6 dB an S-point: always decibels
  std::uint32_t log = 0;         // where it comes from: index of the log, index of the record
  std::uint32_t record = 0;
};

// The value of a record in a unit, recalibrated where a table is given; not-a-number when unknown.
double ValueOf(const Log& log, const Record& record, Unit unit, const Recalibration* recalibration = nullptr);
// The same in decibels, so that differences and laws make sense: dBuV/m for dBuV/m and mV/m, dBm for dBm and
// uV, 6 dB an S-point.
double LevelOf(const Log& log, const Record& record, Unit unit, const Recalibration* recalibration = nullptr);

struct SampleChoice {
  Unit unit = Unit::kDbMicrovoltPerM;
  const Recalibration* recalibration = nullptr;
  std::uint8_t shown_marks = 0;  // of Mark: records with other marks are left out
  // Which layer, when layers are given; else all.
  const Layers* layers = nullptr;
  std::uint32_t layer = 0;
  // Records that are left out besides (hidden by the user); may be empty.
  std::function<bool(std::uint32_t log, std::uint32_t record)> hidden;
};

// Samples with a known level, in the order of the logs. Position, distance or bearing may be unknown.
std::vector<Sample> CollectSamples(std::span<const NamedLog> logs, const SampleChoice& choice = {});

}  // namespace orvandi
