#pragma once

#include <cstddef>
#include <string>

namespace kestrum::bench {

// The text of a log: `records` readings of a second each on a winding road around a transmitter, in blocks of
// 100, the first one `start` seconds after the beginning of 2026. Distance law, antenna pattern and fading
// are made up; two antennas take turns hour by hour.
std::string GeneratedDrive(std::size_t records, std::size_t start);

}  // namespace kestrum::bench
