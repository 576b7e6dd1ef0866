#include "analysis/recalibration.h"

#include <memory>

#include "log/line_parser.h"
#include "log/text_encoding.h"
#include "signal/calibration_text.h"
#include "text/number_text.h"
#include "text/text_file.h"

namespace orvandi {
namespace {

Recalibration::Reading ReadingOf(const kestrum::TableRow& row) {
  Recalibration::Reading reading;
  const auto number = [](const std::string& text) {
    const auto value = ParseLeadingNumber(text);
    return value ? static_cast<float>(*value) : kUnknown;
  };
  if (!row.s.empty()) reading.s_text = ToUtf8(row.s);
  reading.microvolt = number(row.microvolt);
  reading.millivolt_per_m = number(row.millivolt_per_metre);
  return reading;
}

}  // namespace

kestrum::Outcome Recalibration::Load(std::string_view bytes) {
  if (bytes.size() > kestrum::kLargestCalibration) {
    return kestrum::Fault{"", "This is no calibration file: it is too large."};
  }
  const auto text = kestrum::ReadCalibration(bytes);
  if (!text) return kestrum::Fault{"", "This is no calibration file: " + text.fault().reason + "."};
  if (text.value().fault) {
    const kestrum::Fault& fault = *text.value().fault;
    return kestrum::Fault{fault.what, "The calibration file is not whole: " + fault.reason + "."};
  }
  const auto table = std::make_unique<kestrum::S2FtableRows>(text.value().rows);
  kestrum::Tidy(*table);
  const kestrum::Band band = kestrum::BandOf(kestrum::Val(text.value().header.frequency));
  for (std::size_t raw = 0; raw < kestrum::kMeterRows; ++raw) {
    // Each value stands for itself: cells that the table leaves open are unknown, not those of the value
    // before.
    readings_[raw] = ReadingOf(kestrum::ConvertRaw(*table, static_cast<int>(raw), band));
  }
  header_ = ToUtf8(Trimmed(kestrum::SplitLines(kestrum::WithoutUtf8Mark(bytes)).front()));
  return kestrum::Done{};
}

const Recalibration::Reading& Recalibration::Of(int raw) const {
  return raw >= 0 && raw < static_cast<int>(readings_.size()) ? readings_[static_cast<std::size_t>(raw)]
                                                              : unknown_;
}

}  // namespace orvandi
