#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "common/fault.h"
#include "log/log.h"

namespace orvandi {

// A calibration file applied to raw values: what the logger would have written with it. The log is never
// changed; views and exports are handed the table beside it.
class Recalibration {
 public:
  struct Reading {
    std::string s_text = "S?";
    float microvolt = kUnknown;
    float millivolt_per_m = kUnknown;
  };

  // Reads the bytes of a calibration file. The reason of a fault is a sentence for the user; the table is
  // then as it was.
  kestrum::Outcome Load(std::string_view bytes);

  // Of a raw value from 0 to 255; outside of it everything is unknown.
  const Reading& Of(int raw) const;
  // "FT840 LSB 3630": what stands at the head of the file.
  const std::string& Header() const { return header_; }

 private:
  std::string header_;
  std::array<Reading, 256> readings_;
  Reading unknown_;
};

}  // namespace orvandi
