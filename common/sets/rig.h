#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "sets/bytes.h"

namespace kestrum::sets {

enum class Model { kFT817, kFT840, kFT847, kFT857, kFT897 };

std::optional<Model> ModelOf(std::string_view name);
std::string_view ModelName(Model model);

// N: narrow, R: reverse (lower side band).
enum class Mode { kLsb, kUsb, kCw, kCwn, kCwr, kCwnr, kAm, kAmn, kFm, kFmn, kWfm, kDig, kPkt };

std::string_view ModeName(Mode mode);

// How the set was left by its last owner.
struct RigSetup {
  std::uint32_t frequency_hz = 3630000;
  bool powered = true;       // FT817 only: the others cannot be switched over CAT
  bool acknowledges = true;  // FT817, FT857, FT897: one byte after each command that sets something
  bool sleeps = true;        // FT817: when switched off it is deaf until it is woken
};

// What a command asks of the set; nothing when it only reads or is not understood.
struct Change {
  std::optional<std::uint32_t> frequency_10hz;
  std::optional<Mode> mode;
  std::optional<bool> locked;
  std::optional<bool> powered;
};

struct Answer {
  Bytes reply;               // empty: the set says nothing
  bool is_ack = false;       // the reply only acknowledges; it carries no reading
  std::string meaning = {};  // of the command, for people
  Change change = {};
};

// A set as seen from its CAT socket: what Kestrum and an independent rig-control client send to read and set
// frequency, mode, lock and meter is understood, everything else is ignored as a real set does.
class Rig {
 public:
  virtual ~Rig() = default;
  // `meter`: what the S-meter shows now, 0 to MeterMax(); without it a command that reads the meter is not
  // answered.
  virtual Answer Handle(const Command& command, std::optional<int> meter) = 0;
  // Full deflection as the set tells it.
  virtual int MeterMax() const = 0;
};

std::unique_ptr<Rig> MakeRig(Model model, const RigSetup& setup);

// "14200.00 kHz"
std::string FrequencyText(std::uint32_t frequency_10hz);

}  // namespace kestrum::sets
