#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/fault.h"
#include "signal/conversion.h"

// The text of a calibration file: a line with rig, mode and frequency, then rows 0 to 255 of the table, three
// cells each. Pure functions; nothing here knows a form or a file.
namespace kestrum {

inline constexpr std::uint64_t kLargestCalibration = 1U << 20U;  // bytes

// What the first line says. What it does not say stays as it is.
struct CalibrationHeader {
  std::optional<int> rig_model;  // 1 to 5
  std::optional<int> rig_mode;   // 1 to 7
  std::string frequency;         // kHz, above 0
};
// A first line without a frequency is a fault: it is that of some other file.
Result<CalibrationHeader> ReadCalibrationHeader(std::string_view line);

struct CalibrationText {
  CalibrationHeader header;
  S2FtableRows rows;           // not tidied
  std::optional<Fault> fault;  // a row is missing or wrong; the rows, and the cells, before it are there
};
// A file without a usable header is a fault as a whole.
Result<CalibrationText> ReadCalibration(std::string_view bytes);

std::string WriteCalibration(const std::string& header, const S2FtableRows& rows);

}  // namespace kestrum
