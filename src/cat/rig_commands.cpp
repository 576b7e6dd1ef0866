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

// Digits are taken from the number's text, not from what was typed: units and leading zeros are gone.
void FillFrame(CatFrame& frame, FrequencyFrame order, double khz) {
  const std::string digits = PadDigits(NumberText(khz));
  const auto pair = [&digits](std::size_t n) { return "0" + digits.substr(2 * n, 2); };
  switch (order) {
    case FrequencyFrame::kFirstPairFirst:
      frame = {pair(0), pair(1), pair(2), pair(3), "001"};
      break;
    case FrequencyFrame::kLastPairFirst:
      frame = {pair(3), pair(2), pair(1), pair(0), "010"};
      break;
    case FrequencyFrame::kPreviousFrame:
      break;
  }
}

// The text that the echo shows for a lock command.
std::string LockEcho(const std::array<std::uint8_t, 5>& bytes) {
  std::string echo;
  for (std::size_t i = 0; i + 1 < bytes.size(); ++i) echo += ShortNumber(bytes[i]) + ",";
  return echo + "[" + ShortNumber(bytes.back()) + "]";
}

}  // namespace

RigCommands::RigCommands(State& state, Form1& form, const PortSet<Clock, Beeper>& ports, CatLink& link)
    : state_(state), form_(form), ports_(ports), link_(link) {}

bool RigCommands::ReadRssi() {
  const RigRow* rig = RigOf(state_.settings.RigModel);
  const bool answered = rig != nullptr && Read(rig->meter);
  Run(on_reading);
  return answered;
}

bool RigCommands::Read(MeterRead way) {
  switch (way) {
    case MeterRead::kReceiveStatus:
      return ReadReceiveStatus();
    case MeterRead::kReceiveStatusFiveBytes:
      return ReadStatusFiveBytes();
    case MeterRead::kMeter:
      break;
  }
  return ReadMeter();
}

bool RigCommands::IsNotRead() const {
  // Kept on purpose: FT857 and FT897 have no power button, yet they are read only while it shows "on".
  const RigRow* rig = RigOf(state_.settings.RigModel);
  return rig != nullptr && rig->meter == MeterRead::kReceiveStatus && PowerIsOff(form_);
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
  const RigRow* rig = RigOf(state_.settings.RigModel);
  if (rig != nullptr && rig->has_power_command && PowerIsOff(form_)) return;
  const double khz = TypedKhz(text);
  if (!InFreqRange(state_.settings.RigModel, khz)) {
    ports_.beeper.Beep();
    return;
  }
  form_.lblFreq.caption = NumberText(khz) + " kHz";
  FillFrame(link_.frame, rig->frequency, khz);
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
  const RigRow* rig = RigOf(state_.settings.RigModel);
  if (rig == nullptr || rig->modes.mode_bytes[index] == kNoMode) return;
  CatLink::Bytes bytes;
  bytes.value[rig->modes.place] = static_cast<std::uint8_t>(rig->modes.mode_bytes[index]);
  bytes.value[4] = rig->modes.opcode;
  link_.Write(bytes);
}

void RigCommands::CatLock(bool on) {
  const RigRow* rig = RigOf(state_.settings.RigModel);
  if (!link_.IsOpen() || rig == nullptr) return;
  const auto& bytes = on ? rig->lock_on : rig->lock_off;
  link_.SendDirect({bytes}, LockEcho(bytes));
}

void RigCommands::CatPowerOnOff(bool on) {
  auto& caption = form_.cmdFT817OnOff.caption;
  const RigRow* rig = RigOf(state_.settings.RigModel);
  if (!link_.IsOpen() || rig == nullptr || !rig->has_power_command) {
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
