#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "route.h"

namespace kestrum::drivesim {

// "$", the body, "*", its checksum (exclusive or of the body's bytes) in two hex digits, CR LF.
std::string NmeaSentence(std::string_view body);

// ddmm.mmmm,N or dddmm.mmmm,E
std::string NmeaLatitude(double lat_deg);
std::string NmeaLongitude(double long_deg);

// `utc_s`: seconds since 1970-01-01 00:00 UTC.
std::string RmcSentence(const CarState& car, std::int64_t utc_s, bool fix);
std::string GgaSentence(const CarState& car, std::int64_t utc_s, bool fix);
std::string GsaSentence(bool fix);

// "2024-05-01T12:00:00Z" (the Z may be missing) as seconds since 1970; nothing when it is no such moment.
std::optional<std::int64_t> ParseUtc(std::string_view text);

}  // namespace kestrum::drivesim
