#include "cat/rig_commands.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "cat/frequency_digits.h"
#include "config/hint_line.h"
#include "text/number_text.h"

namespace kestrum {
namespace {

constexpr std::chrono::milliseconds kSetNeeds{50};
constexpr std::uint8_t kReadReceiveStatus = 231;
constexpr std::uint8_t kReadMeter = 247;

constexpr int kModeCount = 7;
constexpr int kNone = -1;

struct ModeCommand {
  std::array<int, kModeCount> mode_bytes;  // USB, LSB, CW, CWN, AM, AMN, FM
  std::size_t position = 0;                // of the mode byte
  std::uint8_t opcode = 0;
};

// Kept on purpose: the FT857 is served like the FT817, the FT897 not at all.
constexpr std::array kModeCommands{
    ModeCommand{{1, 0, 2, 3, 4, 4, 8}, 0, 7},
    ModeCommand{{1, 0, 2, 3, 4, 5, 6}, 3, 12},
    ModeCommand{{1, 0, 2, 130, 4, kNone, 136}, 3, 7},
    ModeCommand{{1, 0, 2, 3, 4, 4, 8}, 0, 7},
    ModeCommand{{kNone, kNone, kNone, kNone, kNone, kNone, kNone}, 0, 0},
};

bool IsRig(int rig_model) {
  return rig_model >= kFT817 && rig_model <= kFT897;
}

// Digits are taken from the number's text, not from what was typed: units and leading zeros are gone.
void FillFrame(CatFrame& frame, int rig_model, double khz) {
  const std::string digits = PadDigits(NumberText(khz));
  const auto pair = [&digits](std::size_t n) { return "0" + digits.substr(2 * n, 2); };
  if (rig_model == kFT817) {
    frame = {pair(0), pair(1), pair(2), pair(3), "001"};
  } else if (rig_model == kFT840 || rig_model == kFT857) {
    // Kept on purpose: the FT857 gets the FT840's frequency command.
    frame = {pair(3), pair(2), pair(1), pair(0), "010"};
  }
  // Kept on purpose: FT847 and FT897 are not served yet and get the previous frame again.
}

}  // namespace

RigCommands::RigCommands(State& state, Form1& form, const Ports& ports, CatLink& link)
    : state_(state), form_(form), ports_(ports), link_(link) {}

bool RigCommands::ReadRssi() {
  bool answered = false;
  switch (state_.settings.RigModel) {
    case kFT817:
    case kFT857:
    case kFT897:
      answered = ReadReceiveStatus();
      break;
    case kFT840:
      answered = ReadMeter();
      break;
    case kFT847:
      answered = ReadStatusFiveBytes();
      break;
    default:
      break;
  }
  Run(on_reading);
  return answered;
}

bool RigCommands::IsNotRead() const {
  // Kept on purpose: FT857 and FT897 have no power button, yet they are read only while it shows "on".
  const int rig_model = state_.settings.RigModel;
  const bool asks_the_button = rig_model == kFT817 || rig_model == kFT857 || rig_model == kFT897;
  return asks_the_button && PowerIsOff(form_);
}

bool RigCommands::ReadReceiveStatus() {
  if (IsNotRead()) return false;
  if (!link_.IsOpen()) {
    state_.RssiRaw = 0;
    link_.CommentNotOpen();
    return false;
  }
  const auto reply = link_.Transact(kReadReceiveStatus);
  if (reply.bytes[4] != 0) {
    state_.RssiRaw = 0;
    link_.Comment(reply.nothing_received ? "Nothing rx-ed!" : "Wrong CatCmd rx-ed!");
    return !reply.nothing_received;
  }
  // The reply proper is one byte, so silence and short replies pass as readings too; kept on purpose.
  state_.RssiRaw = static_cast<std::int16_t>((reply.bytes[0] & 15) * 16);
  link_.Comment("Done");
  return !reply.nothing_received;
}

bool RigCommands::ReadMeter() {
  if (!link_.IsOpen()) {
    state_.RssiRaw = 0;
    link_.CommentNotOpen();
    return false;
  }
  const auto reply = link_.Transact(kReadMeter);
  if (reply.bytes[4] == kReadMeter) {
    state_.RssiRaw = reply.bytes[0];
    link_.Comment("Done");
    return true;
  }
  state_.RssiRaw = 0;
  link_.Comment(reply.bytes[4] != 0 ? "Wrong CatCmd rx-ed!" : "Nothing rx-ed!");
  return !reply.nothing_received;
}

bool RigCommands::ReadStatusFiveBytes() {
  // Kept on purpose: this set alone says nothing about a closed port and keeps its last reading.
  if (!link_.IsOpen()) {
    link_.ShowTrouble();
    return false;
  }
  const auto reply = link_.Transact(kReadReceiveStatus);
  if (reply.bytes[4] != kReadReceiveStatus) {
    state_.RssiRaw = 0;
    // Kept on purpose: a wrong reply of this set has always been told with these words.
    link_.Comment("Comport not open !");
    return !reply.nothing_received;
  }
  // Five bits in steps of 32 leave the calibration table, which ends at 255.
  state_.RssiRaw = static_cast<std::int16_t>(std::min((reply.bytes[0] & 31) * 32, 255));
  link_.Comment("Done");
  return true;
}

void RigCommands::SetFrequency(const std::string& text) {
  const int rig_model = state_.settings.RigModel;
  if (rig_model == kFT817 && PowerIsOff(form_)) return;
  const double khz = TypedKhz(text);
  if (!InFreqRange(rig_model, khz)) {
    ports_.beeper.Beep();
    return;
  }
  form_.lblFreq.caption = NumberText(khz) + " kHz";
  FillFrame(link_.frame, rig_model, khz);
  link_.SendCatFrame();
}

void RigCommands::SetMode(int mode) {
  const auto buttons = ModeButtons(form_);
  if (mode == 0) {
    constexpr std::array kAskedInOrder{kLsb, kUsb, kCw, kCwn, kAm, kAmn, kFm};
    for (const int candidate : kAskedInOrder) {
      if (buttons[static_cast<std::size_t>(candidate - 1)]->checked) mode = candidate;
    }
  }
  if (mode < 1 || mode > kModeCount) return;
  const auto index = static_cast<std::size_t>(mode - 1);
  if (mode != state_.settings.RigMode) Run(block_ends);
  for (auto* button : buttons) button->checked = button == buttons[index];
  state_.settings.RigMode = static_cast<std::int16_t>(mode);

  form_.lblCatCmd.caption = "TX Cmd=Setting the mode";
  if (!link_.IsOpen()) {
    link_.CommentNotOpen();
    return;
  }
  const int rig_model = state_.settings.RigModel;
  if (!IsRig(rig_model)) return;
  const ModeCommand& command = kModeCommands[static_cast<std::size_t>(rig_model - 1)];
  const int mode_byte = command.mode_bytes[index];
  if (mode_byte == kNone) return;
  CatLink::Bytes bytes;
  bytes.value[command.position] = static_cast<std::uint8_t>(mode_byte);
  bytes.value[4] = command.opcode;
  link_.Write(bytes);
}

void RigCommands::CatLock(bool on) {
  const int rig_model = state_.settings.RigModel;
  if (!link_.IsOpen() || !IsRig(rig_model)) return;
  if (rig_model == kFT840) {
    if (on) {
      link_.SendDirect({{0, 0, 0, 1, 4}}, "0,0,0,1,[4]");
    } else {
      link_.SendDirect({{0, 0, 0, 0, 4}}, "0,0,0,0,[4]");
    }
  } else if (on) {
    link_.SendDirect({{0, 0, 0, 0, 0}}, "0,0,0,0,[0]");
  } else {
    link_.SendDirect({{0, 0, 0, 0, 128}}, "0,0,0,0,[128]");
  }
}

void RigCommands::CatPowerOnOff(bool on) {
  auto& caption = form_.cmdFT817OnOff.caption;
  if (!link_.IsOpen() || state_.settings.RigModel != kFT817) {
    caption = kPowerOffCaption;
    return;
  }
  form_.tmrMain.Stop();
  link_.SendDirect({{0, 0, 0, 0, 0}}, "0, 0, 0, 0, [0]");
  ports_.clock.Sleep(kSetNeeds);
  if (!on) {
    // Kept on purpose: tmrMain stays stopped, a sleeping set has nothing to tell.
    caption = kPowerOffCaption;
    link_.SendDirect({{0, 0, 0, 0, 143}}, "0, 0, 0, 0, [143]");
    state_.measuring_stopped = true;
    ShowHint(state_, form_);
    return;
  }
  caption = kPowerOnCaption;
  link_.SendDirect({{0, 0, 0, 0, 15}}, "0, 0, 0, 0, [15]");
  ports_.clock.Sleep(kSetNeeds);
  SetFrequency(form_.lblFreq.caption);
  ports_.clock.Sleep(kSetNeeds);
  SetMode(state_.settings.RigMode);
  StartMeasuring(state_, form_);
}

}  // namespace kestrum
