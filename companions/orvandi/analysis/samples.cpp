#include "analysis/samples.h"

#include <cmath>

namespace orvandi {
namespace {

constexpr double kDbPerSPoint = 6;

struct Signal {
  double microvolt = 0;
  double millivolt_per_m = 0;
};

Signal SignalOf(const Record& record, const Recalibration* recalibration) {
  if (recalibration == nullptr) return {record.microvolt, record.millivolt_per_m};
  const Recalibration::Reading& reading = recalibration->Of(record.raw);
  return {reading.microvolt, reading.millivolt_per_m};
}

}  // namespace

double ValueOf(const Log& log, const Record& record, Unit unit, const Recalibration* recalibration) {
  const Signal signal = SignalOf(record, recalibration);
  switch (unit) {
    case Unit::kDbMicrovoltPerM:
      return DbMicrovoltPerM(signal.millivolt_per_m);
    case Unit::kMillivoltPerM:
      return signal.millivolt_per_m;
    case Unit::kMicrovolt:
      return signal.microvolt;
    case Unit::kDbm:
      return DbmOfMicrovolt(signal.microvolt);
    case Unit::kSPoint:
      return SPointOfText(recalibration == nullptr ? log.SText(record)
                                                   : recalibration->Of(record.raw).s_text);
  }
  return kUnknown;
}

double LevelOf(const Log& log, const Record& record, Unit unit, const Recalibration* recalibration) {
  switch (unit) {
    case Unit::kDbMicrovoltPerM:
    case Unit::kMillivoltPerM:
      return ValueOf(log, record, Unit::kDbMicrovoltPerM, recalibration);
    case Unit::kMicrovolt:
    case Unit::kDbm:
      return ValueOf(log, record, Unit::kDbm, recalibration);
    case Unit::kSPoint:
      return kDbPerSPoint * ValueOf(log, record, Unit::kSPoint, recalibration);
  }
  return kUnknown;
}

std::vector<Sample> CollectSamples(std::span<const NamedLog> logs, const SampleChoice& choice) {
  std::vector<Sample> samples;
  for (std::uint32_t log_index = 0; log_index < logs.size(); ++log_index) {
    const Log& log = *logs[log_index].log;
    if (samples.empty()) samples.reserve(log.records.size());
    for (std::size_t index = 0; index < log.records.size(); ++index) {
      const Record& record = log.records[index];
      const auto record_index = static_cast<std::uint32_t>(index);
      if ((record.marks & ~choice.shown_marks) != 0) continue;
      if (choice.layers != nullptr && choice.layers->of_block[log_index][record.block] != choice.layer) {
        continue;
      }
      if (choice.hidden && choice.hidden(log_index, record_index)) continue;
      const auto level = static_cast<float>(LevelOf(log, record, choice.unit, choice.recalibration));
      if (!std::isfinite(level)) continue;
      samples.push_back({record.latitude_deg, record.longitude_deg, record.distance_km, record.bearing_deg,
                         level, log_index, record_index});
    }
  }
  return samples;
}

}  // namespace orvandi
