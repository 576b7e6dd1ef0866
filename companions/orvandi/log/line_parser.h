#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "log/log.h"

// One line of a log, without its line end. Everything here is independent of the locale, and takes the point
// and the comma as decimal sign: the fields are separated by a comma and a blank.
namespace orvandi {

inline constexpr std::size_t kRecordFields = 11;

// Seconds since midnight of "hh:mm:ss".
std::optional<std::int32_t> ParseTimeOfDay(std::string_view text);

// Decimal degrees of "5156.0633N" or "00535.5991E", to all its digits; nothing when it is no such text or
// lies off the globe. (The core reads two decimals of the minutes on purpose; a map needs them all.)
std::optional<double> ParseLatitude(std::string_view text);
std::optional<double> ParseLongitude(std::string_view text);

// The number at the start of a text, "4.47" of "4.47 km" or ".5" of ".5 km"; nothing when there is none, as
// in "???".
std::optional<double> ParseLeadingNumber(std::string_view text);

enum class LineKind : std::uint8_t { kBlank, kDashes, kHeader, kRecord, kOther };
// By its beginning: a header begins with a date, a record with a time of day.
LineKind KindOf(std::string_view line);

// Date and time, transmitter, rig and antenna of a header; nothing when its date cannot be. `complete` tells
// whether it goes on to the rig.
struct Header {
  Block block;
  bool complete = false;
};
std::optional<Header> ParseHeader(std::string_view line);

enum class RecordFault : std::uint8_t { kNone, kTorn, kBadTime };
// What stands in a record. Distances and bearings are as logged; the time is seconds since midnight.
struct ParsedRecord {
  RecordFault fault = RecordFault::kNone;
  Record record;
  std::string_view s_text;  // a part of the line
};
ParsedRecord ParseRecord(std::string_view line);

}  // namespace orvandi
