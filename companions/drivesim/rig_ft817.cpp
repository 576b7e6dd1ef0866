#include "rig_ft817.h"

#include <algorithm>
#include <span>

namespace kestrum::drivesim {
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
  return model == Model::FT817 ? std::any_of(kBandsFt817.begin(), kBandsFt817.end(), inside)
                               : std::any_of(kBandsFt857.begin(), kBandsFt857.end(), inside);
}

/// Name of a mode byte, empty when the set has no such mode.
std::string_view ModeText(Model model, std::uint8_t mode) {
  switch (mode) {
    case 0x00:
      return "LSB";
    case 0x01:
      return "USB";
    case 0x02:
      return "CW";
    case 0x03:
      return "CWR";
    case 0x04:
      return "AM";
    case 0x06:
      return "WFM";
    case 0x08:
      return "FM";
    case 0x0A:
      return "DIG";
    case 0x0C:
      return "PKT";
    case 0x88:
      return model == Model::FT817 ? std::string_view{} : "FMN";
    default:
      return {};
  }
}

std::string HexByte(std::uint8_t byte) {
  return HexText(std::span(&byte, 1));
}

}  // namespace

RigFt817::RigFt817(Model model, const RigSetup& setup)
    : model_(model),
      acknowledges_(setup.acknowledges),
      powered_(setup.powered || model != Model::FT817),
      vfos_{{{setup.frequency_hz / 10, 0x00}, {1420000, 0x01}}} {}

Answer RigFt817::Ack(std::string meaning, std::uint8_t byte) const {
  return {acknowledges_ ? Bytes{byte} : Bytes{}, true, std::move(meaning)};
}

Answer RigFt817::Switch(bool& state, bool wanted, const char* meaning) const {
  const bool already = state == wanted;
  state = wanted;
  return Ack(meaning, already ? 0xF0 : 0x00);
}

Answer RigFt817::Handle(const Command& command, int meter) {
  if (powered_) return HandleAwake(command, meter);
  // A sleeping set needs five bytes, whatever they are, before it hears the power command.
  if (!woken_) {
    woken_ = true;
    return {{}, false, "wake-up, the set is off"};
  }
  if (command[4] != 0x0F) return {{}, false, "not heard, the set is off"};
  powered_ = true;
  woken_ = false;
  return Ack("power on");
}

Answer RigFt817::HandleAwake(const Command& command, int meter) {
  if (auto answer = HandleRead(command, meter)) return *answer;
  if (auto answer = HandleSwitch(command[4])) return *answer;
  if (auto answer = HandleSetting(command)) return *answer;
  if (auto answer = HandlePower(command[4])) return *answer;
  return {{}, false, "unknown command, ignored"};
}

std::optional<Answer> RigFt817::HandleRead(const Command& command, int meter) const {
  switch (command[4]) {
    case 0x03: {
      Bytes reply = NumberToBcd(Current().frequency_10hz, 4);
      reply.push_back(Current().mode);
      return Answer{reply, false, "read frequency and mode"};
    }
    case 0xE7: {
      // Bit 7: squelched. FM is silent without a signal, the other modes always hiss.
      const bool squelched = Current().mode == 0x08 && meter == 0;
      const int status = std::clamp(meter, 0, 15) | (squelched ? 0x80 : 0);
      return Answer{{static_cast<std::uint8_t>(status)}, false, "read receive status"};
    }
    case 0xF7: {
      // All ones while receiving; else bit 7 is 0, bit 5 tells split, and the low bits hold the power meter.
      const int status = transmitting_ ? (split_ ? 0x28 : 0x08) : 0xFF;
      return Answer{{static_cast<std::uint8_t>(status)}, false, "read transmit status"};
    }
    case 0xBD:
      return Answer{transmitting_ ? Bytes{0x80, 0x00} : Bytes{0x00}, false, "read transmit meters"};
    case 0xBB: {
      const unsigned address = command[0] * 256U + command[1];
      return Answer{{Eeprom(address), Eeprom(address + 1)}, false, "read memory"};
    }
    default:
      return std::nullopt;
  }
}

/// The few cells of the set's memory that control programs look at.
std::uint8_t RigFt817::Eeprom(unsigned address) const {
  const unsigned split_cell = model_ == Model::FT817 ? 0x7A : 0x8D;
  if (address == 0x55) return second_vfo_ ? 0x81 : 0x80;  // bit 7: VFO, not memory; bit 0: VFO B
  if (address == split_cell) return split_ ? 0x80 : 0x00;
  return 0x00;
}

std::optional<Answer> RigFt817::HandleSwitch(std::uint8_t opcode) {
  switch (opcode) {
    case 0x00:
      return Switch(locked_, true, "lock on");
    case 0x80:
      return Switch(locked_, false, "lock off");
    case 0x08:
      return Switch(transmitting_, true, "PTT on");
    case 0x88:
      return Switch(transmitting_, false, "PTT off");
    case 0x05:
      return Switch(clarifier_, true, "clarifier on");
    case 0x85:
      return Switch(clarifier_, false, "clarifier off");
    case 0x02:
      return Switch(split_, true, "split on");
    case 0x82:
      return Switch(split_, false, "split off");
    default:
      return std::nullopt;
  }
}

std::optional<Answer> RigFt817::HandleSetting(const Command& command) {
  switch (command[4]) {
    case 0x01:
      return SetFrequency(command);
    case 0x07:
      return SetMode(command[0]);
    case 0x0A:
      return SetTone(command[0]);
    case 0x81:
      second_vfo_ = !second_vfo_;
      return Ack(second_vfo_ ? "VFO B" : "VFO A");
    case 0xF5:
      return Ack("set clarifier offset");
    case 0x09:
      return Ack("set repeater shift direction");
    case 0xF9:
      return Ack("set repeater shift");
    case 0x0B:
      return Ack("set CTCSS tone");
    case 0x0C:
      return Ack("set DCS code");
    default:
      return std::nullopt;
  }
}

std::optional<Answer> RigFt817::HandlePower(std::uint8_t opcode) {
  if (model_ != Model::FT817) return std::nullopt;
  if (opcode == 0x0F) return Ack("power on", 0xF0);
  if (opcode != 0x8F) return std::nullopt;
  powered_ = false;
  transmitting_ = false;
  return Ack("power off");
}

Answer RigFt817::SetFrequency(const Command& command) {
  const std::uint32_t frequency = BcdToNumber(std::span(command).first(4));
  const std::string meaning = "set frequency " + FrequencyText(frequency);
  if (!Receives(model_, frequency)) return Ack(meaning + ", out of range, ignored");
  Current().frequency_10hz = frequency;
  return Ack(meaning);
}

Answer RigFt817::SetMode(std::uint8_t mode) {
  const std::string_view text = ModeText(model_, mode);
  if (text.empty()) return Ack("set mode " + HexByte(mode) + ", unknown, ignored");
  Current().mode = mode;
  return Ack("set mode " + std::string(text));
}

/// On these sets 0x0A is no frequency command: an FT840 frame changes nothing here.
Answer RigFt817::SetTone(std::uint8_t mode) {
  switch (mode) {
    case 0x0A:
      return Ack("DCS on");
    case 0x2A:
      return Ack("CTCSS on");
    case 0x4A:
      return Ack("CTCSS encoder on");
    case 0x8A:
      return Ack("CTCSS and DCS off");
    default:
      return Ack("CTCSS/DCS mode " + HexByte(mode) + ", unknown, ignored");
  }
}

}  // namespace kestrum::drivesim
