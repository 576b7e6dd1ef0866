#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "log/log.h"

namespace orvandi {

// What makes blocks belong together.
enum class GroupBy : std::uint8_t { kFile, kAntenna, kRig, kFrequency, kDate };

// Blocks that are shown in one colour and compared as one, of one or several logs.
struct Layer {
  std::string name;  // "drive.log", "Antenna1, PWR 10W", "FT840 LSB", "3630 kHz", "2026-11-21"
  std::size_t record_count = 0;
};

struct Layers {
  std::vector<Layer> layers;                         // in the order in which they first occur
  std::vector<std::vector<std::uint32_t>> of_block;  // [log][block] gives the index of its layer
};

// A log that takes part, with its name for the user.
struct NamedLog {
  const Log* log = nullptr;
  std::string name;  // of the file, UTF-8
};

Layers MakeLayers(std::span<const NamedLog> logs, GroupBy by);

}  // namespace orvandi
