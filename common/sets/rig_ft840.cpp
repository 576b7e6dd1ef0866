#include "sets/rig_ft840.h"

#include <algorithm>

namespace kestrum::sets {
namespace {

constexpr std::array<Mode, 7> kModes = {Mode::kLsb, Mode::kUsb, Mode::kCw, Mode::kCwn,
                                        Mode::kAm,  Mode::kAmn, Mode::kFm};

// The status update knows five modes; width is a flag beside them.
std::uint8_t StatusMode(Mode mode) {
  switch (mode) {
    case Mode::kLsb:
      return 0;
    case Mode::kUsb:
      return 1;
    case Mode::kCw:
    case Mode::kCwn:
      return 2;
    case Mode::kAm:
    case Mode::kAmn:
      return 3;
    default:
      return 4;
  }
}

}  // namespace

RigFt840::RigFt840(const RigSetup& setup)
    : vfos_{{{setup.frequency_hz / 10, Mode::kLsb}, {1420000, Mode::kUsb}}} {}

Answer RigFt840::Handle(const Command& command, std::optional<int> meter) {
  if (auto answer = HandleRead(command, meter)) return *answer;
  return HandleSetting(command);
}

std::optional<Answer> RigFt840::HandleRead(const Command& command, std::optional<int> meter) const {
  switch (command[4]) {
    case 0xF7:
      return Answer{Meter(meter), false, "read meter"};
    case 0x10:
      return Answer{Status(command[3]), false, "read status"};
    case 0xFA:
      return Answer{Flags(), false, "read flags"};
    default:
      return std::nullopt;
  }
}

// The value four times, then the opcode.
Bytes RigFt840::Meter(std::optional<int> meter) const {
  if (!meter) return {};
  const auto value = static_cast<std::uint8_t>(std::clamp(*meter, 0, MeterMax()));
  return {value, value, value, value, 0xF7};
}

Answer RigFt840::HandleSetting(const Command& command) {
  const std::uint8_t parameter = command[3];
  switch (command[4]) {
    case 0x04: {
      Answer answer{{}, false, parameter == 1 ? "lock on" : "lock off"};
      answer.change.locked = parameter == 1;
      return answer;
    }
    case 0x05:
      second_vfo_ = parameter == 1;
      return {{}, false, second_vfo_ ? "VFO B" : "VFO A"};
    case 0x0A:
      return SetFrequency(command);
    case 0x0C:
      return SetMode(parameter);
    case 0x0E:
      return {{}, false, "set pacing"};
    default:
      return {{}, false, "unknown command, ignored"};
  }
}

Answer RigFt840::SetFrequency(const Command& command) {
  const std::array<std::uint8_t, 4> bcd = {command[3], command[2], command[1], command[0]};
  const std::uint32_t frequency = BcdToNumber(bcd);
  Answer answer{{}, false, "set frequency " + FrequencyText(frequency)};
  if (frequency < 10000 || frequency > 3000000) {
    answer.meaning += ", out of range, ignored";
    return answer;
  }
  Current().frequency_10hz = frequency;
  answer.change.frequency_10hz = frequency;
  return answer;
}

Answer RigFt840::SetMode(std::uint8_t mode_byte) {
  if (mode_byte >= kModes.size()) return {{}, false, "set mode, unknown, ignored"};
  Current().mode = kModes[mode_byte];
  Answer answer{{}, false, "set mode " + std::string(ModeName(Current().mode))};
  answer.change.mode = Current().mode;
  return answer;
}

// Bit 7 of the first byte: VFO, not memory; bit 6: VFO B. The last two tell the model.
Bytes RigFt840::Flags() const {
  return {static_cast<std::uint8_t>(second_vfo_ ? 0xC0 : 0x80), 0x00, 0x00, 0x08, 0x41};
}

// Nine bytes: band, frequency in 10 Hz (binary, most significant first), clarifier, mode, two of flags.
Bytes RigFt840::Record(const Vfo& vfo) {
  const std::uint32_t f = vfo.frequency_10hz;
  const bool narrow = vfo.mode == Mode::kCwn || vfo.mode == Mode::kAmn;
  return {0x00,
          static_cast<std::uint8_t>(f >> 16 & 0xFF),
          static_cast<std::uint8_t>(f >> 8 & 0xFF),
          static_cast<std::uint8_t>(f & 0xFF),
          0x00,
          0x00,
          StatusMode(vfo.mode),
          static_cast<std::uint8_t>(narrow ? 0x80 : 0x00),
          0x00};
}

Bytes RigFt840::Status(std::uint8_t part) const {
  const std::size_t current = second_vfo_ ? 1 : 0;
  Bytes reply;
  const auto append = [&](const Vfo& vfo) {
    const Bytes record = Record(vfo);
    reply.insert(reply.end(), record.begin(), record.end());
  };
  if (part == 0x02) {  // memory channel, what is shown, what lies behind it
    reply.push_back(0x00);
    append(vfos_[current]);
    append(vfos_[1 - current]);
  } else if (part == 0x03) {
    for (const Vfo& vfo : vfos_) append(vfo);
  }
  return reply;
}

}  // namespace kestrum::sets
