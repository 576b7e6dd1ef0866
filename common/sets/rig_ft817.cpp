#include "sets/rig_ft817.h"

#include <algorithm>
#include <span>
#include <utility>

namespace kestrum::sets {
namespace {

struct Band {
  std::uint32_t from_khz;
  std::uint32_t to_khz;
};
constexpr std::array<Band, 3> kBandsFt817 = {{{100, 56000}, {76000, 154000}, {420000, 470000}}};
constexpr std::array<Band, 4> kBandsFt857 = {
    {{100, 56000}, {76000, 108000}, {118000, 164000}, {420000, 470000}}};

bool Receives(Model model, std::uint32_t frequency_10hz) {
  const auto inside = [&](const Band& band) {
    return frequency_10hz >= band.from_khz * 100 && frequency_10hz <= band.to_khz * 100;
  };
  return model == Model::kFT817 ? std::any_of(kBandsFt817.begin(), kBandsFt817.end(), inside)
                                : std::any_of(kBandsFt857.begin(), kBandsFt857.end(), inside);
}

struct ModeRow {
  std::uint8_t byte;
  Mode mode;
};
constexpr std::uint8_t kFmByte = 0x08;
constexpr std::uint8_t kFmNarrowByte = 0x88;  // not on an FT817
constexpr std::array<ModeRow, 10> kModes = {{{0x00, Mode::kLsb},
                                             {0x01, Mode::kUsb},
                                             {0x02, Mode::kCw},
                                             {0x03, Mode::kCwr},
                                             {0x04, Mode::kAm},
                                             {0x06, Mode::kWfm},
                                             {kFmByte, Mode::kFm},
                                             {0x0A, Mode::kDig},
                                             {0x0C, Mode::kPkt},
                                             {kFmNarrowByte, Mode::kFmn}}};

std::optional<Mode> ModeOf(Model model, std::uint8_t byte) {
  if (model == Model::kFT817 && byte == kFmNarrowByte) return std::nullopt;
  const auto* const row = std::find_if(kModes.begin(), kModes.end(),
                                       [&](const ModeRow& candidate) { return candidate.byte == byte; });
  return row == kModes.end() ? std::nullopt : std::optional(row->mode);
}

std::string HexByte(std::uint8_t byte) {
  return HexText(std::span(&byte, 1));
}

}  // namespace

RigFt817::RigFt817(Model model, const RigSetup& setup)
    : model_(model),
      acknowledges_(setup.acknowledges),
      sleeps_(setup.sleeps),
      powered_(setup.powered || model != Model::kFT817),
      vfos_{{{setup.frequency_hz / 10, 0x00}, {1420000, 0x01}}} {}

Answer RigFt817::Ack(std::string meaning, std::uint8_t byte) const {
  return {acknowledges_ ? Bytes{byte} : Bytes{}, true, std::move(meaning)};
}

Answer RigFt817::Handle(const Command& command, std::optional<int> meter) {
  if (powered_ || !sleeps_) return HandleAwake(command, meter);
  // A sleeping set needs five bytes, whatever they are, before it hears the power command.
  if (!woken_) {
    woken_ = true;
    return {{}, false, "wake-up, the set is off"};
  }
  if (command[4] != 0x0F) return {{}, false, "not heard, the set is off"};
  powered_ = true;
  woken_ = false;
  Answer answer = Ack("power on");
  answer.change.powered = true;
  return answer;
}

Answer RigFt817::HandleAwake(const Command& command, std::optional<int> meter) {
  if (auto answer = HandleRead(command, meter)) return *answer;
  if (auto answer = HandleSetting(command)) return *answer;
  if (auto answer = HandlePower(command[4])) return *answer;
  return {{}, false, "unknown command, ignored"};
}

std::optional<Answer> RigFt817::HandleRead(const Command& command, std::optional<int> meter) const {
  switch (command[4]) {
    case 0x03: {
      Bytes reply = NumberToBcd(Current().frequency_10hz, 4);
      reply.push_back(Current().mode_byte);
      return Answer{reply, false, "read frequency and mode"};
    }
    case 0xE7:
      return Answer{ReceiveStatus(meter), false, "read receive status"};
    case 0xF7:
      return Answer{{0xFF}, false, "read transmit status"};  // all ones while receiving
    case 0xBB: {
      const unsigned address = command[0] * 256U + command[1];
      return Answer{{MemoryCell(address), MemoryCell(address + 1)}, false, "read memory"};
    }
    default:
      return std::nullopt;
  }
}

// Bit 7: squelched. FM is silent without a signal, the other modes always hiss.
Bytes RigFt817::ReceiveStatus(std::optional<int> meter) const {
  if (!meter) return {};
  const bool squelched = Current().mode_byte == kFmByte && *meter == 0;
  return {static_cast<std::uint8_t>(std::clamp(*meter, 0, MeterMax()) | (squelched ? 0x80 : 0))};
}

// The one cell that control programs need, to know the VFO in use. Bit 7: VFO, not memory; bit 0: VFO B.
std::uint8_t RigFt817::MemoryCell(unsigned address) const {
  if (address != 0x55) return 0x00;
  return second_vfo_ ? 0x81 : 0x80;
}

std::optional<Answer> RigFt817::HandleSetting(const Command& command) {
  switch (command[4]) {
    case 0x00:
      return Lock(true);
    case 0x80:
      return Lock(false);
    case 0x01:
      return SetFrequency(command);
    case 0x07:
      return SetMode(command[0]);
    case 0x0A:
      // A frequency frame of the FT840 lands here and changes nothing.
      return Ack("set CTCSS/DCS mode " + HexByte(command[0]) + ", ignored");
    case 0x81:
      second_vfo_ = !second_vfo_;
      return Ack(second_vfo_ ? "VFO B" : "VFO A");
    default:
      return std::nullopt;
  }
}

Answer RigFt817::Lock(bool wanted) {
  const bool already = std::exchange(locked_, wanted) == wanted;
  Answer answer = Ack(wanted ? "lock on" : "lock off", already ? 0xF0 : 0x00);
  answer.change.locked = wanted;
  return answer;
}

std::optional<Answer> RigFt817::HandlePower(std::uint8_t opcode) {
  if (model_ != Model::kFT817 || (opcode != 0x0F && opcode != 0x8F)) return std::nullopt;
  powered_ = opcode == 0x0F;
  Answer answer = powered_ ? Ack("power on", 0xF0) : Ack("power off");
  answer.change.powered = powered_;
  return answer;
}

Answer RigFt817::SetFrequency(const Command& command) {
  const std::uint32_t frequency = BcdToNumber(std::span(command).first(4));
  const std::string meaning = "set frequency " + FrequencyText(frequency);
  if (!Receives(model_, frequency)) return Ack(meaning + ", out of range, ignored");
  Current().frequency_10hz = frequency;
  Answer answer = Ack(meaning);
  answer.change.frequency_10hz = frequency;
  return answer;
}

Answer RigFt817::SetMode(std::uint8_t mode_byte) {
  const auto mode = ModeOf(model_, mode_byte);
  if (!mode) return Ack("set mode " + HexByte(mode_byte) + ", unknown, ignored");
  Current().mode_byte = mode_byte;
  Answer answer = Ack("set mode " + std::string(ModeName(*mode)));
  answer.change.mode = mode;
  return answer;
}

}  // namespace kestrum::sets
