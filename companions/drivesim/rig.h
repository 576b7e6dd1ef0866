#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "bytes.h"

namespace kestrum::drivesim {

enum class Model { FT817, FT840, FT847, FT857, FT897 };

std::optional<Model> ModelOf(std::string_view name);
std::string_view ModelName(Model model);

/// How the set was left by its last owner.
struct RigSetup {
  std::uint32_t frequency_hz = 3630000;
  bool powered = true;           ///< FT817 only: the others cannot be switched over CAT
  bool acknowledges = true;      ///< FT817, FT857, FT897: one byte after each command that sets something
  bool five_byte_status = true;  ///< FT847: receive status as five bytes with the opcode last
};

struct Answer {
  Bytes reply;          ///< empty: the set says nothing
  bool is_ack = false;  ///< the reply only acknowledges; it carries no reading
  std::string meaning;  ///< of the command, for the log
};

/// A set as seen from its CAT socket.
class Rig {
 public:
  virtual ~Rig() = default;
  /// `meter`: what the S-meter shows now, 0 to MeterMax().
  virtual Answer Handle(const Command& command, int meter) = 0;
  /// Full deflection as the set tells it.
  virtual int MeterMax() const = 0;
};

std::unique_ptr<Rig> MakeRig(Model model, const RigSetup& setup);

/// "14200.00 kHz"
std::string FrequencyText(std::uint32_t frequency_10hz);

}  // namespace kestrum::drivesim
