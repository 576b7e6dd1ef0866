#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

// One row per transceiver: everything that differs from set to set, from the CAT command tables of their
// manuals. Whatever depends on the rig asks its row; an unknown number has none and is sent nothing.
namespace kestrum {

// Bounds inclusive.
struct FrequencyRange {
  double lowest_khz = 0;
  double highest_khz = 0;
};

// How the S-meter is read.
enum class MeterRead {
  kReceiveStatus,           // opcode 0xE7, one byte, its low four bits are the meter
  kReceiveStatusFiveBytes,  // opcode 0xE7, five bytes, five bits of the first are the meter
  kMeter,                   // opcode 0xF7, five bytes, the first is the meter
};

// The order of the digit pairs in a frequency command.
enum class FrequencyFrame {
  kFirstPairFirst,  // opcode 1
  kLastPairFirst,   // opcode 10
  kPreviousFrame,   // not served: the frame before is sent again
};

inline constexpr int kModeCount = 7;  // USB, LSB, CW, CWN, AM, AMN, FM
inline constexpr int kNoMode = -1;

struct ModeCommand {
  std::array<int, kModeCount> mode_bytes;  // kNoMode where the set has none
  std::size_t place = 0;                   // of the mode byte in the command
  std::uint8_t opcode = 0;
};

struct RigRow {
  std::string_view name;
  bool in_menu = true;  // else it is reached by a configuration file only
  std::span<const FrequencyRange> ranges;
  MeterRead meter = MeterRead::kMeter;
  FrequencyFrame frequency = FrequencyFrame::kLastPairFirst;
  ModeCommand modes;
  std::array<std::uint8_t, 5> lock_on{};
  std::array<std::uint8_t, 5> lock_off{};
  bool has_power_command = false;
};

// Rigs are numbered from 1 in this order.
std::span<const RigRow> Rigs();
// The row of a rig number; null for an unknown one.
const RigRow* RigOf(int rig_model);
// The number of the rig of this name, without regard to letter case.
std::optional<int> RigNumber(std::string_view name);

// The serial ports that the menu offers are 1 to 6; any other number, as an odd file may hold one, is no
// port.
inline constexpr int kHighestPort = 6;
constexpr bool IsPort(int number) {
  return number >= 1 && number <= kHighestPort;
}

}  // namespace kestrum
