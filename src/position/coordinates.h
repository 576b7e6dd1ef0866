#pragma once

#include <string>
#include <string_view>

// Coordinate texts: degrees and decimal minutes with a hemisphere letter, as GPS receivers send them (NMEA
// 0183).
namespace kestrum {

// A typed latitude (kind "LAT") or longitude (kind "LONG") as ddmm.mmN or dddmm.mmE; empty when rejected.
std::string CheckLatLong(std::string_view text, std::string_view kind);

// Signed decimal degrees, north and east positive, with single-precision resolution; 0 when there is no ".".
double LatLongToDeg(std::string_view text);

// Feet as metres with one decimal: "10" gives "3", "1.6" gives "0.5".
std::string FeetToMetres(std::string_view feet);

// A height as typed: trimmed, with " m" appended unless empty or holding an "m".
std::string HeightText(std::string_view typed);

}  // namespace kestrum
