#include "sets/rig_ft847.h"

#include <algorithm>
#include <array>
#include <span>

namespace kestrum::sets {
namespace {

struct ModeRow {
  std::uint8_t byte;
  Mode mode;
};
constexpr std::array<ModeRow, 9> kModes = {{{0x00, Mode::kLsb},
                                            {0x01, Mode::kUsb},
                                            {0x02, Mode::kCw},
                                            {0x03, Mode::kCwr},
                                            {0x04, Mode::kAm},
                                            {0x08, Mode::kFm},
                                            {0x82, Mode::kCwn},
                                            {0x83, Mode::kCwnr},
                                            {0x88, Mode::kFmn}}};

bool Receives(std::uint32_t frequency_10hz) {
  const std::uint32_t khz = frequency_10hz / 100;
  return (khz >= 100 && khz <= 76000) || (khz >= 108000 && khz <= 174000) || (khz >= 420000 && khz <= 512000);
}

}  // namespace

RigFt847::RigFt847(const RigSetup& setup) : frequency_10hz_(setup.frequency_hz / 10) {}

Answer RigFt847::Handle(const Command& command, std::optional<int> meter) {
  if (command[4] == 0x00) {
    cat_on_ = true;
    return {{}, false, "CAT on"};
  }
  if (!cat_on_) return {{}, false, "not heard, CAT is off"};
  switch (command[4]) {
    case 0x80:
      cat_on_ = false;
      return {{}, false, "CAT off"};
    case 0x01:
      return SetFrequency(command);
    case 0x03: {
      Bytes reply = NumberToBcd(frequency_10hz_, 4);
      reply.push_back(mode_byte_);
      return {reply, false, "read frequency and mode"};
    }
    case 0x07:
      return SetMode(command[0]);
    case 0xE7:
      return {ReceiveStatus(meter), false, "read receive status"};
    default:
      return {{}, false, "unknown command, ignored"};
  }
}

// The published table has one byte here. The logger expects five with the opcode last, so that form is sent.
Bytes RigFt847::ReceiveStatus(std::optional<int> meter) const {
  if (!meter) return {};
  return {static_cast<std::uint8_t>(std::clamp(*meter, 0, MeterMax())), 0x00, 0x00, 0x00, 0xE7};
}

Answer RigFt847::SetFrequency(const Command& command) {
  const std::uint32_t frequency = BcdToNumber(std::span(command).first(4));
  Answer answer{{}, false, "set frequency " + FrequencyText(frequency)};
  if (!Receives(frequency)) {
    answer.meaning += ", out of range, ignored";
    return answer;
  }
  frequency_10hz_ = frequency;
  answer.change.frequency_10hz = frequency;
  return answer;
}

// The mode stands in the first byte; a byte elsewhere is not looked at.
Answer RigFt847::SetMode(std::uint8_t mode_byte) {
  const auto* const row = std::find_if(kModes.begin(), kModes.end(),
                                       [&](const ModeRow& candidate) { return candidate.byte == mode_byte; });
  if (row == kModes.end()) return {{}, false, "set mode, unknown, ignored"};
  mode_byte_ = mode_byte;
  Answer answer{{}, false, "set mode " + std::string(ModeName(row->mode))};
  answer.change.mode = row->mode;
  return answer;
}

}  // namespace kestrum::sets
