#include "rig_ft847.h"

#include <algorithm>
#include <span>

namespace kestrum::drivesim {
namespace {

struct Mode {
  std::uint8_t byte;
  const char* text;
};
constexpr std::array<Mode, 9> kModes = {{{0x00, "LSB"},
                                         {0x01, "USB"},
                                         {0x02, "CW"},
                                         {0x03, "CWR"},
                                         {0x04, "AM"},
                                         {0x08, "FM"},
                                         {0x82, "CWN"},
                                         {0x83, "CWNR"},
                                         {0x88, "FMN"}}};
constexpr std::array<const char*, 3> kReceivers = {"", " of satellite RX", " of satellite TX"};

bool Receives(std::uint32_t frequency_10hz) {
  const std::uint32_t khz = frequency_10hz / 100;
  return (khz >= 100 && khz <= 76000) || (khz >= 108000 && khz <= 174000) || (khz >= 420000 && khz <= 512000);
}

}  // namespace

RigFt847::RigFt847(const RigSetup& setup)
    : five_byte_status_(setup.five_byte_status),
      vfos_{{{setup.frequency_hz / 10, 0x00}, {14590000, 0x08}, {43580000, 0x08}}} {}

Answer RigFt847::Handle(const Command& command, int meter) {
  const std::uint8_t opcode = command[4];
  if (opcode == 0x00) {
    cat_on_ = true;
    return {{}, false, "CAT on"};
  }
  if (!cat_on_) return {{}, false, "not heard, CAT is off"};
  if (opcode == 0xE7) {
    const auto status = static_cast<std::uint8_t>(std::clamp(meter, 0, 31));
    // The published table has one byte here. The logger expects five with the opcode last, so that form is
    // sent unless the one-byte form is asked for.
    if (five_byte_status_) return {{status, 0x00, 0x00, 0x00, 0xE7}, false, "read receive status"};
    return {{status}, false, "read receive status"};
  }
  if (opcode == 0xF7) {
    return {{static_cast<std::uint8_t>(transmitting_ ? 0x08 : 0x80)}, false, "read transmit status"};
  }
  if (auto meaning = HandleSwitch(opcode)) return {{}, false, *meaning};
  return HandleVfo(command);
}

std::optional<std::string> RigFt847::HandleSwitch(std::uint8_t opcode) {
  switch (opcode) {
    case 0x80:
      cat_on_ = false;
      return "CAT off";
    case 0x08:
      transmitting_ = true;
      return "PTT on";
    case 0x88:
      transmitting_ = false;
      return "PTT off";
    case 0x4E:
      return "satellite mode on";
    case 0x8E:
      return "satellite mode off";
    case 0x09:
    case 0x49:
    case 0x89:
      return "set repeater shift direction";
    case 0xF9:
      return "set repeater shift";
    default:
      return std::nullopt;
  }
}

Answer RigFt847::HandleVfo(const Command& command) {
  const std::size_t receiver = command[4] >> 4;
  if (receiver >= vfos_.size()) return {{}, false, "unknown command, ignored"};
  Vfo& vfo = vfos_[receiver];
  const std::string of = kReceivers[receiver];
  switch (command[4] & 15) {
    case 0x01: {
      const std::uint32_t frequency = BcdToNumber(std::span(command).first(4));
      const std::string meaning = "set frequency " + FrequencyText(frequency) + of;
      if (!Receives(frequency)) return {{}, false, meaning + ", out of range, ignored"};
      vfo.frequency_10hz = frequency;
      return {{}, false, meaning};
    }
    case 0x03: {
      Bytes reply = NumberToBcd(vfo.frequency_10hz, 4);
      reply.push_back(vfo.mode);
      return {reply, false, "read frequency and mode" + of};
    }
    case 0x07: {
      // The mode stands in the first byte; a byte elsewhere is not looked at.
      const auto mode =
          std::find_if(kModes.begin(), kModes.end(), [&](const Mode& row) { return row.byte == command[0]; });
      if (mode == kModes.end()) return {{}, false, "set mode, unknown, ignored"};
      vfo.mode = mode->byte;
      return {{}, false, std::string("set mode ") + mode->text + of};
    }
    case 0x0A:
      return {{}, false, "CTCSS/DCS mode" + of};
    case 0x0B:
      return {{}, false, "set CTCSS tone" + of};
    case 0x0C:
      return {{}, false, "set DCS code" + of};
    default:
      return {{}, false, "unknown command, ignored"};
  }
}

}  // namespace kestrum::drivesim
