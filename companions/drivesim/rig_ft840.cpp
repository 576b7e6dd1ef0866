#include "rig_ft840.h"

#include <algorithm>

namespace kestrum::drivesim {
namespace {

constexpr std::array<const char*, 7> kModes = {"LSB", "USB", "CW", "CWN", "AM", "AMN", "FM"};

/// The status update knows five modes; width is a flag beside them.
std::uint8_t StatusMode(std::uint8_t mode) {
  constexpr std::array<std::uint8_t, 7> kStatus = {0, 1, 2, 2, 3, 3, 4};
  return kStatus[mode];
}

std::string OnOff(const char* what, bool on) {
  return std::string(what) + (on ? " on" : " off");
}

}  // namespace

RigFt840::RigFt840(const RigSetup& setup) : vfos_{{{setup.frequency_hz / 10, 0, 0}, {1420000, 1, 0}}} {}

Answer RigFt840::Handle(const Command& command, int meter) {
  if (auto answer = HandleRead(command, meter)) return *answer;
  return {{}, false, HandleSetting(command)};
}

std::optional<Answer> RigFt840::HandleRead(const Command& command, int meter) const {
  switch (command[4]) {
    case 0xF7: {
      const auto value = static_cast<std::uint8_t>(std::clamp(meter, 0, 255));
      return Answer{{value, value, value, value, 0xF7}, false, "read meter"};
    }
    case 0x10:
      return Answer{Status(command[3]), false, "read status"};
    case 0xFA:
      return Answer{Flags(), false, "read flags"};
    default:
      return std::nullopt;
  }
}

std::string RigFt840::HandleSetting(const Command& command) {
  const std::uint8_t parameter = command[3];
  switch (command[4]) {
    case 0x00:
      split_ = parameter == 1;
      return OnOff("split", split_);
    case 0x04:
      return OnOff("lock", parameter == 1);
    case 0x05:
      second_vfo_ = parameter == 1;
      return second_vfo_ ? "VFO B" : "VFO A";
    case 0x09:
      return SetClarifier(command);
    case 0x0A:
      return SetFrequency(command);
    case 0x0C:
      return SetMode(parameter);
    case 0x0E:
      return "set pacing";
    case 0x0F:
      transmitting_ = parameter == 1;
      return OnOff("PTT", transmitting_);
    case 0x85:
      vfos_[second_vfo_ ? 0 : 1] = Current();
      return "A = B";
    default:
      return "unknown command, ignored";
  }
}

std::string RigFt840::SetFrequency(const Command& command) {
  const std::array<std::uint8_t, 4> bcd = {command[3], command[2], command[1], command[0]};
  const std::uint32_t frequency = BcdToNumber(bcd);
  std::string meaning = "set frequency " + FrequencyText(frequency);
  if (frequency < 10000 || frequency > 3000000) return meaning + ", out of range, ignored";
  Current().frequency_10hz = frequency;
  return meaning;
}

std::string RigFt840::SetMode(std::uint8_t mode) {
  if (mode >= kModes.size()) return "set mode, unknown, ignored";
  Current().mode = mode;
  return std::string("set mode ") + kModes[mode];
}

/// Third byte 0x00 or 0xFF: up or down by the first two; fourth byte: 0 off, 1 on, 0xFF set the offset.
std::string RigFt840::SetClarifier(const Command& command) {
  if (command[3] != 0xFF) return OnOff("clarifier", command[3] == 1);
  const std::array<std::uint8_t, 2> bcd = {command[1], command[0]};
  const int offset = static_cast<int>(BcdToNumber(bcd));
  Current().clarifier_10hz = command[2] == 0xFF ? -offset : offset;
  return "set clarifier offset";
}

/// Bit 7 of the first byte: VFO, not memory; bit 6: VFO B; bit 3: split. The last two tell the model.
Bytes RigFt840::Flags() const {
  const int first = 0x80 | (second_vfo_ ? 0x40 : 0x00) | (split_ ? 0x08 : 0x00);
  const int third = transmitting_ ? 0x80 : 0x00;
  return {static_cast<std::uint8_t>(first), 0x00, static_cast<std::uint8_t>(third), 0x08, 0x41};
}

/// Nine bytes: band, frequency in 10 Hz (binary, most significant first), clarifier, mode, two of flags.
Bytes RigFt840::Record(const Vfo& vfo) {
  const std::uint32_t f = vfo.frequency_10hz;
  const auto clarifier = static_cast<std::uint16_t>(vfo.clarifier_10hz);
  const bool narrow = vfo.mode == 3 || vfo.mode == 5;
  return {0x00,
          static_cast<std::uint8_t>(f >> 16 & 0xFF),
          static_cast<std::uint8_t>(f >> 8 & 0xFF),
          static_cast<std::uint8_t>(f & 0xFF),
          static_cast<std::uint8_t>(clarifier >> 8),
          static_cast<std::uint8_t>(clarifier & 0xFF),
          StatusMode(vfo.mode),
          static_cast<std::uint8_t>(narrow ? 0x80 : 0x00),
          0x00};
}

Bytes RigFt840::Status(std::uint8_t part) const {
  if (part == 0x01) return {0x00};  // memory channel
  Bytes reply;
  const std::size_t current = second_vfo_ ? 1 : 0;
  if (part == 0x02) {  // channel, what is shown, what lies behind it
    reply.push_back(0x00);
    for (const std::size_t i : {current, 1 - current}) {
      const Bytes record = Record(vfos_[i]);
      reply.insert(reply.end(), record.begin(), record.end());
    }
  } else if (part == 0x03) {
    for (const Vfo& vfo : vfos_) {
      const Bytes record = Record(vfo);
      reply.insert(reply.end(), record.begin(), record.end());
    }
  }
  return reply;
}

}  // namespace kestrum::drivesim
