#pragma once

#include <cstdint>
#include <string>

#include "signal/conversion.h"

namespace kestrum {

// What a reading was measured on. A mean, or a record, of readings on two of these is a value that never was.
struct MeasuredOn {
  std::int32_t rig_model = 0;
  std::int16_t rig_mode = 0;
  std::string frequency;        // as sent last, in kHz
  unsigned table_revision = 0;  // of the calibration table

  bool operator==(const MeasuredOn&) const = default;
};

// One reading of the S-meter and what the table made of it.
struct Reading {
  std::int16_t raw = 0;  // normally 0 to 255
  TableRow converted;
  MeasuredOn on;
  bool answered = true;  // the set has sent something
};

}  // namespace kestrum
